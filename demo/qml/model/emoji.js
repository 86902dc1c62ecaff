.pragma library

// What the picker offers, by group.
const groups = [
    { title: "Smileys", emoji: "😀 😃 😄 😁 😆 😅 🤣 😂 🙂 🙃 😉 😊 😇 🥰 😍 🤩 😘 😗 😋 😛 😜 🤪 🤑 🤗 🤭 🤫 🤔 🤐 😐 😶 😏 😒 🙄 😬 😌 😔 😴 😷 🤒 🥵 🥶 🥳 😎 🤓 😕 😮 😳 🥺 😭 😱 😤 😡 👻 👽 🤖 😺" },
    { title: "People", emoji: "👋 👋🏽 👌 ✌️ 🤞🏿 👍 👍🏻 👍🏼 👍🏽 👍🏾 👍🏿 👏 🙌 🤝 🙏 💪 👩‍💻 👨🏽‍🚀 🧑‍🎨 👩🏿‍🔬 🧑‍🚒 👮‍♀️ 🕵️ 🤷‍♂️ 🤦🏼‍♀️ 🧘 🏃‍♀️ 👨‍👩‍👧‍👦 👩‍👩‍👦 👩‍❤️‍👨 👭 🧑‍🤝‍🧑" },
    { title: "Animals and food", emoji: "🐶 🐱 🦊 🐻 🐼 🐨 🦁 🐸 🐙 🦋 🐝 🐢 🦕 🐳 🌵 🌲 🍀 🌸 🍎 🍋 🍉 🍇 🍓 🥑 🥐 🧀 🍕 🍜 🍣 🍰 ☕ 🍵" },
    { title: "Places and things", emoji: "🚗 🚲 🚀 ✈️ ⛵ 🏔️ 🏖️ 🌋 🏠 🌆 🌙 ☀️ ⛅ 🌈 ❄️ 🔥 💧 🎈 🎉 🎁 🏆 ⚽ 🎲 🎸 📷 💡 💻 📱 🔒 🔑 🛠️ ⏰" },
    { title: "Symbols and flags", emoji: "❤️ 🧡 💛 💚 💙 💜 🖤 💔 ❣️ 💯 ✅ ❌ ❓ ‼️ ♻️ ⚠️ 🔔 ➕ #️⃣ 1️⃣ 2️⃣ 🔟 ©️ ™️ 🏳️‍🌈 🏴‍☠️ 🇩🇪 🇨🇳 🇸🇦 🇮🇳 🇯🇵 🇧🇷 🏴󠁧󠁢󠁳󠁣󠁴󠁿" },
]

function all() {
    return groups.reduce((list, group) => list.concat(group.emoji.split(" ")), [])
}

// The name of an emoji: its code points.
function keyOf(emoji) {
    const points = []
    for (let i = 0; i < emoji.length; i += emoji.codePointAt(i) > 0xffff ? 2 : 1)
        points.push(emoji.codePointAt(i).toString(16))
    return points.join("-")
}
