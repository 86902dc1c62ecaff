#include "corpus.h"

#include <cmath>

namespace {

const QStringList &words(int language)
{
    static const QStringList chinese =
        QString::fromUtf8("你好 今天 天气 不错 我们 晚上 一起 吃饭 明天 开会 项目 进度 怎么样 "
                          "收到 谢谢 没问题 文件 已经 发给 你 了 请 查看 一下 周末 去 爬山 吗 "
                          "地址 在 北京 上海 电话 联系 客户 反馈 很 好 我 觉得 可以 再 讨论")
            .split(QLatin1Char(' '));
    static const QStringList english =
        QStringLiteral("hello the meeting is at five can you send me that file thanks sounds good see you "
                       "tomorrow I think we should ship it this week what about lunch please review my pull "
                       "request build failed again on Windows restarting now office WiFi is slow OK yes no "
                       "probably definitely https://example.org/path?query=1 v2.15.3 API QML")
            .split(QLatin1Char(' '));
    static const QStringList arabic =
        QString::fromUtf8("مرحبا كيف حالك اليوم الاجتماع غدا شكرا لك أرسل الملف من "
                          "فضلك نعم لا حسنا إلى اللقاء العمل جيد جدا")
            .split(QLatin1Char(' '));
    return language == 0 ? chinese : language == 1 ? english : arabic;
}

} // namespace

Corpus::Corpus(quint32 seed)
    : random(seed)
{}

const QStringList &Corpus::emoji()
{
    static const QStringList emoji = {
        QString::fromUtf8("\U0001F600"),
        QString::fromUtf8("\U0001F602"),
        QString::fromUtf8("\U0001F44D"),
        QString::fromUtf8("\U0001F389"),
        QString::fromUtf8("\u2764\ufe0f"),
        QString::fromUtf8("\U0001F914"),
        QString::fromUtf8("\U0001F44D\U0001F3FD"),
        QString::fromUtf8("\U0001F1E8\U0001F1F3"),
        QString::fromUtf8("\U0001F468\u200D\U0001F469\u200D\U0001F467"),
        QString::fromUtf8("\U0001F64F"),
    };
    return emoji;
}

QStringList Corpus::messages(int count)
{
    QStringList result;
    result.reserve(count);
    for (int i = 0; i < count; ++i) {
        // Most messages are short and few are long: the logarithm of the length is what is even.
        const int length = int(std::exp(1.0 + random.generateDouble() * 4.6));
        const QString text = sentence(anyLanguage(), length);
        result.append(random.bounded(10) < 4 ? withEmoji(text, random.bounded(1, 4)) : text);
    }
    return result;
}

QStringList Corpus::shortMessages(int count, int emojiEvery)
{
    QStringList result;
    result.reserve(count);
    for (int i = 0; i < count; ++i) {
        const QString text = sentence(anyLanguage(), random.bounded(2, 36));
        result.append(emojiEvery > 0 && i % emojiEvery == 0 ? withEmoji(text, 1) : text);
    }
    return result;
}

QStringList Corpus::messagesWithEmoji(int count, int emoji)
{
    QStringList result;
    result.reserve(count);
    for (int i = 0; i < count; ++i)
        result.append(withEmoji(sentence(anyLanguage(), random.bounded(40, 120)), emoji));
    return result;
}

QString Corpus::longMessage(int length, int emoji)
{
    QStringList paragraphs;
    int written = 0;
    while (written < length) {
        paragraphs.append(sentence(anyLanguage(), qMin(length - written, random.bounded(40, 400))));
        written += paragraphs.constLast().size() + 1;
    }
    for (int i = 0; i < emoji; ++i) {
        QString &paragraph = paragraphs[random.bounded(paragraphs.size())];
        paragraph = withEmoji(paragraph, 1);
    }
    return paragraphs.join(QLatin1Char('\n'));
}

Corpus::Language Corpus::anyLanguage()
{
    const int share = random.bounded(100);
    if (share < 45)
        return Language::Chinese;
    if (share < 80)
        return Language::English;
    return share < 87 ? Language::Arabic : Language::Mixed;
}

QString Corpus::anyEmoji()
{
    return emoji().at(random.bounded(emoji().size()));
}

QString Corpus::word(Language language)
{
    const int index = language == Language::Mixed ? random.bounded(3) : int(language);
    const QStringList &list = words(index);
    const QString &word = list.at(random.bounded(list.size()));
    if (index != 0)
        return word + QLatin1Char(' ');
    static const QString marks = QString::fromUtf8("，。！？");
    return random.bounded(6) == 0 ? word + marks.at(random.bounded(marks.size())) : word;
}

QString Corpus::sentence(Language language, int length)
{
    QString text;
    while (text.size() < length)
        text += word(language);
    return text.trimmed();
}

QString Corpus::withEmoji(const QString &text, int count)
{
    // Between code points and outside other emoji, so that each is one.
    QStringList pieces = {text};
    for (int i = 0; i < count; ++i) {
        const int index = 2 * random.bounded((pieces.size() + 1) / 2);
        const QString piece = pieces.at(index);
        const int at = random.bounded(piece.size() + 1);
        pieces.replace(index, piece.mid(at));
        pieces.insert(index, anyEmoji());
        pieces.insert(index, piece.left(at));
    }
    return pieces.join(QString());
}
