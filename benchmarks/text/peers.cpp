#include "peers.h"

#include "corpus.h"
#include "text/drawabletext.h"

#include <emoji/emojiconvert.h>
#include <emoji/emojimanager.h>

#include <QPixmap>
#include <QUrl>

namespace {

// The same font, size and wrapping for all; the emoji of the rich text are as large as ours. The font holds
// what most of the messages are written in: with another one, Qt's search for fonts that can stand in is what
// is measured.
const char *const sources[] = {
    R"(import QtQuick 2.15
       import component.benchmark 1.0
       DrawableText {
           font { family: "Noto Sans CJK SC"; pixelSize: 14 }
           mouseEnabled: true; selectByMouse: true
       })",
    R"(import QtQuick 2.15
       Text {
           font { family: "Noto Sans CJK SC"; pixelSize: 14 }
           textFormat: Text.PlainText; wrapMode: Text.Wrap
       })",
    R"(import QtQuick 2.15
       TextEdit {
           font { family: "Noto Sans CJK SC"; pixelSize: 14 }
           textFormat: TextEdit.RichText; wrapMode: TextEdit.Wrap
           readOnly: true; selectByMouse: true
       })",
};

constexpr int pictureSize = 16;

QString widthProperty(Peers::Kind kind)
{
    return kind == Peers::Ours ? QStringLiteral("maxWidth") : QStringLiteral("width");
}

} // namespace

Peers::Peers()
{
    qmlRegisterType<DrawableText>("component.benchmark", 1, 0, "DrawableText");
    writePictures();
    for (const char *source : sources) {
        components.push_back(std::make_unique<QQmlComponent>(&engine));
        components.back()->setData(source, QUrl());
        if (!components.back()->isReady())
            qFatal("%s", qPrintable(components.back()->errorString()));
    }
}

void Peers::writePictures()
{
    for (const QString &emoji : Corpus::emoji()) {
        const QString key = EmojiConvert::instance()->emojiUnicode(emoji);
        EmojiManager::EmojiInfo info;
        if (!EmojiManager::instance()->emoji(key, info))
            qFatal("There are no emoji pictures to compare with");
        const QString path = pictures.filePath(key + QStringLiteral(".png"));
        info.pixmap->copy(info.x, info.y, info.width, info.height).save(path);
        pictureTags.insert(emoji, QStringLiteral("<img src=\"%1\" width=\"%2\" height=\"%2\">")
                                      .arg(QUrl::fromLocalFile(path).toString())
                                      .arg(pictureSize));
    }
}

QString Peers::content(Kind kind, const QString &message) const
{
    if (kind != RichText)
        return message;
    QString html = message.toHtmlEscaped();
    // The longest first: an emoji can begin another one.
    QStringList emoji = Corpus::emoji();
    std::sort(emoji.begin(), emoji.end(),
              [](const QString &a, const QString &b) { return a.size() > b.size(); });
    for (const QString &one : qAsConst(emoji))
        html.replace(one, pictureTags.value(one));
    return html.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
}

std::unique_ptr<QQuickItem> Peers::create(Kind kind, const QString &content, double width)
{
    QObject *object =
        components.at(std::size_t(kind))
            ->createWithInitialProperties({{widthProperty(kind), width}, {QStringLiteral("text"), content}});
    auto *item = qobject_cast<QQuickItem *>(object);
    if (!item)
        qFatal("%s", qPrintable(components.at(std::size_t(kind))->errorString()));
    return std::unique_ptr<QQuickItem>(item);
}

void Peers::setWidth(Kind kind, QQuickItem &item, double width)
{
    item.setProperty(widthProperty(kind).toUtf8().constData(), width);
}
