// DrawableTextArea beside the TextArea that it is made from, which holds as many plain characters.

#include "corpus.h"
#include "measure.h"
#include "textarea/drawabletextarea.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMimeData>

#include <memory>

namespace {

constexpr quint32 seed = 20200518;
constexpr double boxWidth = 400.0;
constexpr int mentions = 20;

using Box = std::unique_ptr<QQuickTextArea>;

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

Box shown(QQuickTextArea *area)
{
    QFont font;
    font.setPixelSize(16);
    area->setFont(font);
    area->setWidth(boxWidth);
    area->setWrapMode(QQuickTextEdit::Wrap);
    return Box(area);
}

/// A box with a message of `length` characters, `emoji` of them emoji, and mentions; `mentions` of them.
Box ours(int length, int emoji)
{
    auto *area = new DrawableTextArea;
    Box box = shown(area);
    area->setAiteEnabled(true);
    const QString message = Corpus(seed).longMessage(length, emoji);
    for (int i = 0; i < mentions; ++i) {
        area->insertText(message.mid(i * message.size() / mentions, message.size() / mentions));
        area->insertAite(QStringLiteral("@member %1").arg(i), {{QStringLiteral("userId"), i + 1}});
    }
    return box;
}

/// A box with as many plain characters as `like` has characters, in the same lines.
Box plain(QQuickTextArea &like)
{
    QString text = like.getText(0, like.length());
    for (QChar &c : text) {
        if (c == QChar(0xEEEE))
            c = QLatin1Char('m');
        else if (c == QChar::ParagraphSeparator)
            c = QLatin1Char('\n');
    }
    Box box = shown(new QQuickTextArea);
    box->setText(text);
    return box;
}

/// Presses `count` keys at the end of the message; the median cost of one, in milliseconds.
double typeKeys(QQuickTextArea &area, int count)
{
    area.setCursorPosition(area.length());
    const QString letters = QStringLiteral("the quick brown fox jumps over the lazy dog ");
    const int before = area.length();
    QVector<double> costs;
    for (int i = 0; i < count; ++i) {
        const QChar letter = letters.at(i % letters.size());
        QKeyEvent press(QEvent::KeyPress, int(letter.toUpper().unicode()), Qt::NoModifier, letter);
        QElapsedTimer timer;
        timer.start();
        QCoreApplication::sendEvent(&area, &press);
        costs.append(milliseconds(timer));
    }
    if (area.length() != before + count)
        qFatal("Not all keys were typed");
    return median(costs);
}

Contender typing(const char *name, std::function<Box()> make)
{
    constexpr int keys = 1000;
    return {QString::fromLatin1(name), [make = std::move(make)] { return typeKeys(*make(), keys); }};
}

Row keyRow()
{
    constexpr int length = 3000;
    constexpr int emoji = 500;
    Row row{QStringLiteral("A key in a box with 500 emoji and 20 mentions, of 1,000"),
            QStringLiteral("ms"),
            {},
            {}};
    row.contenders = {typing("DrawableTextArea", [] { return ours(length, emoji); }),
                      typing("TextArea", [] { return plain(*ours(length, emoji)); })};
    row.targets = {{1, 3.0}};
    row.limit = 8.0;
    row.rounds = 5;
    return row;
}

/// The cost of a key may grow with the message, but no faster than it.
Row growthRow(int length)
{
    constexpr int shortest = 1000;
    Row row{QStringLiteral("A key in a message of %1 characters, a tenth of them emoji").arg(length),
            QStringLiteral("ms"),
            {},
            {}};
    row.contenders = {typing("DrawableTextArea", [length] { return ours(length, length / 10); }),
                      typing("with 1,000 characters", [] { return ours(shortest, shortest / 10); }),
                      typing("TextArea", [length] { return plain(*ours(length, length / 10)); })};
    row.targets = {{1, double(length) / shortest}};
    row.rounds = 3;
    return row;
}

/// A message without line ends, which is one word to the layout.
Box oneLine(int length)
{
    auto *area = new DrawableTextArea;
    Box box = shown(area);
    area->insertText(QStringLiteral("a few words and ").repeated(length / 16));
    return box;
}

Row oneLineRow(int length)
{
    constexpr int shortest = 1000;
    Row row{QStringLiteral("A key in a message of %1 characters in one line").arg(length),
            QStringLiteral("ms"),
            {},
            {}};
    row.contenders = {typing("DrawableTextArea", [length] { return oneLine(length); }),
                      typing("with 1,000 characters", [] { return oneLine(shortest); }),
                      typing("TextArea", [length] { return plain(*oneLine(length)); })};
    row.targets = {{1, double(length) / shortest}};
    row.limit = 8.0;
    row.rounds = 3;
    return row;
}

Row pasteRow()
{
    constexpr int length = 5000;
    constexpr int emoji = 500;
    Row row{QStringLiteral("Paste 5,000 characters with 500 emoji and 20 mentions"),
            QStringLiteral("ms"),
            {},
            {}};
    static QJSEngine engine;
    row.contenders = {{QStringLiteral("DrawableTextArea"),
                       [] {
                           const Box source = ours(length, emoji);
                           source->selectAll();
                           static_cast<DrawableTextArea *>(source.get())->copy();
                           auto *area = new DrawableTextArea;
                           const Box box = shown(area);
                           area->setAiteEnabled(true);
                           area->setAiteNameFunction(
                               engine.evaluate(QStringLiteral("(function(json, text) { return text; })")));
                           QElapsedTimer timer;
                           timer.start();
                           area->paste();
                           const double cost = milliseconds(timer);
                           if (area->length() != source->length() || area->aiteList().size() != mentions)
                               qFatal("Not all was pasted");
                           return cost;
                       }},
                      {QStringLiteral("TextArea"), [] {
                           const Box source = plain(*ours(length, emoji));
                           QGuiApplication::clipboard()->setText(source->text());
                           const Box box = shown(new QQuickTextArea);
                           QElapsedTimer timer;
                           timer.start();
                           box->paste();
                           const double cost = milliseconds(timer);
                           if (box->length() != source->length())
                               qFatal("Not all was pasted");
                           return cost;
                       }}};
    row.targets = {{1, 6.0}};
    row.limit = 100.0;
    row.rounds = 15;
    return row;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    bool allMet = true;
    printHead();
    for (Row row : {keyRow(), pasteRow(), growthRow(5000), growthRow(10'000), growthRow(20'000),
                    oneLineRow(5000), oneLineRow(20'000)}) {
        if (arguments.value(2).toInt() > 0)
            row.rounds = arguments.value(2).toInt();
        if (row.title.contains(arguments.value(1), Qt::CaseInsensitive) && !measure(row))
            allMet = false;
    }
    return allMet ? 0 : 1;
}
