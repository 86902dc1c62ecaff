.pragma library
.import "linkify.js" as Linkify
.import "people.js" as People
.import "emoji.js" as Emoji

// The history that a fresh client begins with. The same on every run but for the dates, which count back from now.

const minute = 60000
const day = 86400000
const longLength = 100000

const conversations = [
    { id: "aurora", title: "Aurora design", members: [1, 2, 3, 4, 5, 6] },
    { id: "1-2", title: "", members: [1, 2] },
    { id: "emoji", title: "Emoji lab 🧪", members: [1, 2, 3, 6] },
    { id: "mei", title: "", members: [1, 3] },
    { id: "night", title: "Night reads 📚", members: [1, 2, 5] },
    { id: "omar", title: "", members: [1, 4] },
    { id: "release", title: "Release train 🚂", members: [1, 2, 5, 6] },
    { id: "lunch", title: "Lunch club 🍜", members: [1, 2, 3, 4, 6] },
    { id: "hiking", title: "Hiking 🥾⛰️", members: [1, 2, 5] },
    { id: "priya", title: "", members: [1, 6] },
]

const lines = [
    "Morning all ☀️",
    "The new bubbles are in. Corners are 14 now, and the time sits behind the last line instead of under it.",
    "看起来很棒！不过第二行的行距好像有点紧，特别是中文和 emoji 混排的时候 🤔",
    "@李梅 can you send me a picture of the tight line? I only see it with two emoji in a row: 🎉🎉",
    "صباح الخير جميعاً، الترجمة العربية جاهزة للمراجعة اليوم.",
    "@李梅 شكراً! سأراجعها بعد الظهر 🙏",
    "I put the notes here: https://docs.example.org/aurora/spacing#bubbles",
    "Questions to design@example.org please, not to me 😅",
    "#aurora is green again ✅",
    "👍🏽",
    "Has anybody tried it on the 4K screen yet?\nI have one at home, so I can look tonight.\n\nOr tomorrow, if the train is late again.",
    "会议改到下午三点，地点不变。请大家提前看一下 https://example.com/会议/议程 里的内容。",
    "Yes, unless #blocker-7 comes back. It better doesn't.",
    "Tabs\tand  double  spaces should survive, too.",
    "I measured scrolling: one thousand messages, no frame above 12 ms 🎯",
    "哈哈哈 😂😂😂",
    "The colour of mentions now comes from the theme, so @Alice no longer looks like a link.",
    "👩‍💻👨🏽‍🚀🧑‍🎨",
    "Reminder: the office is closed on Monday 🎈",
    "请看一下这个颜色值：#3d6df2 是不是太亮了？",
    "I like it. Calm, but you still see where to press.",
    "Could somebody with a right-to-left keyboard test the composer?",
    "أنا أستطيع. أعطوني ساعة واحدة ☕",
    "Done. Works, but the caret jumps once when I mix English وعربي in one line.",
    "Filed as #caret-12, thanks @عمر",
    "Quote of the day: “Measure twice, lay out once.”",
    "(See https://example.org/wiki/Kerning_(typography) for why.)",
    "周末有人去爬山吗？天气预报说是晴天 🌤️⛰️",
    "+1 🥾",
    "My address changed, please use priya@qa.example.com from now on.",
    "A longer one, so that we see how several lines look. The quick brown fox jumps over the lazy dog while the dog, being lazy, does not even look up; it has seen foxes before, and none of them ever stayed for dinner.",
    "长一点的中文消息：我们在周一讨论了新的排版引擎。它按段落分别布局，避免行首出现标点符号，并且把表情符号当作一个字符来处理，这样换行就不会把一个家庭拆散了。",
    "رسالة أطول قليلاً بالعربية: ناقشنا يوم الاثنين محرك التنضيد الجديد، وهو يعالج كل فقرة على حدة ويحافظ على اتجاه النص الصحيح حتى مع وجود كلمات مثل Aurora داخل الجملة.",
    "❤️",
    "🇩🇪 → 🇨🇳 → 🇮🇳 → 🇸🇦 what a round trip",
    "Numbers for the board: 4.2 M messages, 0 crashes, 1 very happy @Priya",
    "Is the emoji picker part of this release? #question",
    "Next one. First the text has to be perfect.",
    "OK",
    "好的",
    "حسناً 👌",
    "Two things from the review:\n1. The date separator needs more air.\n2. Long links such as https://builds.example.net/artifacts/2021/06/aurora-desktop-5.15.4-nightly-x86_64.tar.gz?token=abcdef should break anywhere, not push the bubble wide.",
    "Who broke the nightly? 👀",
    "It was me. Fixed five minutes later, sorry 🙇‍♀️",
    "混合文本测试：English words、中文标点，还有 العربية في الوسط,以及数字 12345 和 emoji 👨‍👩‍👧‍👦。",
    "من فضلكم لا ترسلوا الملفات الكبيرة هنا، استخدموا الرابط www.example.org/files بدلاً من ذلك.",
    "@Bob @Jonas are we still on for the release on Thursday?",
    "Yes 🚀",
    "Build 1187 is up: https://builds.example.net/1187",
    "Works on my machine 🤷‍♂️",
]

const direct = [
    [2, "Hey Alice, do you have a minute?"],
    [1, "For you always 🙂"],
    [2, "The search now jumps between matches and marks them. Try it with Ctrl+F."],
    [1, "Oh nice. It even finds 中文 and العربية!"],
    [2, "Next are mentions in the composer. @Alice would become a little block that you delete in one stroke."],
    [1, "Please make it feel light. People type fast 💨"],
    [2, "Promise 🤝"],
    [1, "By the way, the picture from yesterday: https://photos.example.org/2021/harbour.jpg"],
    [2, "Beautiful! Where was that?"],
    [1, "Down at the old harbour, just before the rain 🌧️"],
]

const chinese = [
    [3, "你好！新的文本引擎昨天晚上跑完了全部测试 🎉"],
    [1, "太好了！性能怎么样？"],
    [3, "十万字的消息也不会卡住界面。布局在后台线程完成，滚动的时候完全不用重新排版。"],
    [3, "行首不会再出现“，”“。”“！”这样的标点了，你可以缩小窗口看看效果。"],
    [1, "明天我来写文档，资料发到 mei@example.org 可以吗？"],
    [3, "可以的，谢谢 😊 #文档"],
]

const arabic = [
    [4, "مرحباً! هل وصلتك النسخة الجديدة من الترجمة؟"],
    [1, "نعم، شكراً جزيلاً 🌹"],
    [4, "لاحظت أن الروابط مثل https://example.org/ar تظهر الآن بشكل صحيح داخل النص العربي."],
    [4, "بقي سؤال واحد فقط: هل نكتب الأرقام ١٢٣ أم 123؟ #ترجمة"],
]

const release = [
    [5, "Branch is cut. Only fixes from here on, please."],
    [6, "Regression run: 1,204 passed, 2 failed, both are known: #flaky-tooltip and #flaky-drag"],
    [2, "I take the tooltip."],
    [5, "@Bob @Priya thank you! Release notes draft: https://docs.example.org/release/5.15/notes-draft-for-review-before-thursday"],
]

const lunch = [
    [6, "Noodles or salad? 🍜🥗"],
    [3, "面条！"],
    [4, "Noodles 🍜"],
    [1, "Whatever has the shorter queue, I have a call at one and the last time we waited so long that I presented with chopsticks in my hand 🥢😂"],
]

const hiking = [
    [5, "Saturday, 8:00, platform 4. Bring water, a hat and good shoes. It is 18 km with 900 m up; the hut at the top sells soup 🍲"],
    [2, "Count me in 🥾"],
]

const priya = [
    [6, "Found one: select across two paragraphs, press Ctrl+C, and the line end is there. That is right, isn't it?"],
    [1, "It is 🙂"],
]

const prose = [
    "The lamp had burned low when the letters began to arrange themselves.",
    "Nobody in the harbour had expected the tide to keep its promise, and yet it came back every night.",
    "窗外下着小雨，街上的灯一盏一盏地亮了起来。",
    "She counted the steps, forgot the number, and started again from the top.",
    "他说：“慢慢来，故事不会走远。”于是我们又坐下来，听完了剩下的一半。",
    "A cat, a bicycle and three umbrellas make a still life if you wait long enough 🐈🚲☂️.",
    "By morning the page was full, and the margins had begun to whisper about a second volume.",
    "人们常说夜里读书最安静，可是书里的人从来不睡觉。",
    "There was a knock, then a pause, then the sound of somebody thinking better of it.",
]

const arabicProse = [
    "وفي آخر الليل هدأت المدينة ولم يبق إلا صوت البحر.",
    "قالت له: لا تستعجل، فالحكاية تعرف طريقها إلى البيت، ومن يصبر يسمعها حتى النهاية.",
]

// Small and fast, and the same on every machine.
function generator(seed) {
    let state = seed
    return below => {
        state = (state * 1103515245 + 12345) % 2147483648
        return Math.floor(state / 2147483648 * below)
    }
}

function longText() {
    const next = generator(7)
    let text = "Chapter 1"
    for (let chapter = 1; text.length < longLength; ) {
        let paragraph = ""
        for (let left = 4 + next(8); left > 0; --left)
            paragraph += (paragraph ? " " : "") + prose[next(prose.length)]
        text += "\n\n" + paragraph
        if (next(5) === 0)
            text += "\n\n" + arabicProse[next(arabicProse.length)]
        if (next(14) === 0)
            text += "\n\nChapter " + ++chapter + " " + ["🌙", "⭐", "🌊", "🕯️"][next(4)]
    }
    const end = /[\ud800-\udbff]/.test(text[longLength - 2]) ? longLength - 2 : longLength - 1
    return text.slice(0, end) + ".".repeat(longLength - end)
}

function message(conversation, serial, author, text, time, kind) {
    return { id: [conversation, serial].join("-"), conversation: conversation, author: author, text: text,
             blocks: kind === "notice" ? [] : Linkify.blocks(text), kind: kind || "text", time: time }
}

// A script of [author, text], three minutes apart, that ended `ago` milliseconds before `now`.
function scripted(conversation, script, now, ago) {
    return script.map((entry, i) => message(conversation, i, entry[0], entry[1],
                                            now - ago - (script.length - 1 - i) * 3 * minute))
}

// Who writes in the script that `line` has more of than a name; nobody in particular for Latin.
function speakerOf(line) {
    const letters = pattern => (line.match(pattern) || []).length
    if (letters(/[\u4e00-\u9fff]/g) > 4)
        return 3
    return letters(/[\u0620-\u064a]/g) > 8 ? 4 : 0
}

function auroraHistory(now) {
    const next = generator(42)
    const members = [1, 1, 2, 5, 6]
    const count = 400
    const history = []
    // The gaps are drawn from the end backwards, so that the last day is always well filled.
    let time = now - 6 * minute
    const times = []
    for (let i = 0; i < count; ++i) {
        times.unshift(time)
        time -= (next(9) === 0 ? 90 + next(400) : 1 + next(7)) * minute
    }
    let author = 1
    for (let i = 0; i < count; ++i) {
        if (i % 97 === 0) {
            const invited = 3 + next(4)
            history.push(message("aurora", i, author, Linkify.inBand(People.nameOf(author), author, Linkify.kind.mention)
                                 + " added " + Linkify.inBand(People.nameOf(invited), invited, Linkify.kind.mention)
                                 + " to the group", times[i], "notice"))
            continue
        }
        if (next(3) > 0)
            author = members[next(members.length)]
        const tail = count - i
        // The newest ones are the lines as they stand above, in order, for a look that makes sense.
        const line = tail <= lines.length ? lines[lines.length - tail] : lines[next(lines.length)]
        while (line.indexOf("@" + People.nameOf(author)) !== -1)
            author = members[next(members.length)]
        history.push(message("aurora", i, speakerOf(line) || author, line, times[i]))
    }
    return history
}

function emojiHistory(now) {
    const next = generator(11)
    const all = Emoji.all()
    const script = Emoji.groups.map((group, i) => [[3, 6, 2, 1, 6][i],
                                                   group.title + ":\n" + group.emoji.replace(/ /g, "")])
    script.push([6, "Text in between 🎯 must keep its line 📐 and its baseline 🧵 with every 🧩 in it."])
    script.push([3, "一行里有很多表情😀中文😃夹在😄中间😁也要对齐😆"])
    script.push([1, all[next(all.length)] + all[next(all.length)] + all[next(all.length)]])
    script.push([2, "👩🏽‍🤝‍👩🏻 one, 👨‍👩‍👧‍👦 one, 🏴󠁧󠁢󠁷󠁬󠁳󠁿 one, 🇯🇵 one, 1️⃣ one. Five in all ✅"])
    return scripted("emoji", script, now, 50 * minute)
}

function nightHistory(now) {
    return scripted("night", [
        [5, "Anything good lately? 📖"],
        [2, "I wrote something myself. It got a bit long, a hundred thousand characters or so 😇"],
        [2, longText()],
        [1, "Saved for the weekend ❤️"],
    ], now, 5 * 60 * minute)
}

function history(now) {
    return [].concat(
        auroraHistory(now),
        scripted("1-2", direct, now, 21 * minute),
        emojiHistory(now),
        scripted("mei", chinese, now, 140 * minute),
        nightHistory(now),
        scripted("omar", arabic, now, day),
        scripted("release", release, now, day + 3 * 60 * minute),
        scripted("lunch", lunch, now, 2 * day),
        scripted("hiking", hiking, now, 3 * day),
        scripted("priya", priya, now, 9 * day))
}
