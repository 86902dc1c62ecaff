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
