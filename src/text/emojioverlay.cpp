#include "emojioverlay.h"

#include "drawabletextprivate.h"
#include "fuzzy.h"

#include <emoji/emojimanager.h>

#include <QDebug>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace drawabletext {
namespace {

/// 256 megabytes: the picture of a text that is a hundred thousand lines long. No scene graph shows more.
constexpr double maximalPixels = 128.0 * 1024 * 1024;

/// Rows that are painted in one go: QPainter leaves out what lies beyond 32,767 pixels.
constexpr int bandHeight = 16384;

/// An emoji keeps this distance from the edges of its place in the text.
constexpr double margin = 1.0;

/// A transparent picture for `size`, null where it can't be or would be absurd.
QImage emptyPicture(double width, double height, double ratio)
{
    const double columns = std::ceil(ratio * width);
    const double rows = std::ceil(ratio * height);
    // Written so that what is not a number fails.
    if (!(columns >= 1.0 && rows >= 1.0 && columns * rows <= maximalPixels))
        return {};
    // Two bytes a pixel: a long message's picture is large, and the loss of colour is hardly seen at the size
    // of a letter.
    QImage picture(int(columns), int(rows), QImage::Format_ARGB4444_Premultiplied);
    if (picture.isNull())
        return {};
    picture.setDevicePixelRatio(ratio);
    // All zeros is transparent. QImage::fill would set up a painter for this format.
    std::memset(picture.bits(), 0, std::size_t(picture.sizeInBytes()));
    return picture;
}

/// Finds the lines of ascending positions in one walk over the layout, where asking the layout would walk
/// from its first line each time.
class LineFinder
{
public:
    explicit LineFinder(const QTextLayout &layout)
        : layout(layout)
    {}

    /// The line that holds `position`; invalid where none does. Quick where positions ascend.
    [[nodiscard]] QTextLine lineAt(int position)
    {
        if (index < layout.lineCount() && layout.lineAt(index).textStart() > position)
            index = 0;
        for (; index < layout.lineCount(); ++index) {
            const QTextLine line = layout.lineAt(index);
            if (line.textStart() + line.textLength() > position)
                return line;
        }
        return layout.lineForTextPosition(position);
    }

private:
    const QTextLayout &layout;
    int index = 0;
};

bool hasRecords(const DrawableTextPrivate &state)
{
    return std::any_of(state.emojis.cbegin(), state.emojis.cend(),
                       [](const QVector<EmojiRecord> &records) { return !records.isEmpty(); });
}

void paintEmoji(QPainter &painter, const EmojiRecord &record)
{
    EmojiManager::EmojiInfo info;
    if (EmojiManager::instance()->emoji(record.unicode, info))
        painter.drawPixmap(record.rect, *info.pixmap, QRectF(info.x, info.y, info.width, info.height));
}

/// Puts each record where its placeholder stands, and returns those that stand on a line. Ends early once the
/// state is abandoned.
QVector<const EmojiRecord *> placeRecords(DrawableTextPrivate &state)
{
    QVector<const EmojiRecord *> placed;
    placed.reserve(state.emojiCount);
    const QSizeF size(state.emojiSize - 2 * margin, state.emojiSize - 2 * margin);
    const int count = qMin(state.emojis.size(), state.layouts.size());
    for (int i = 0; i < count; ++i) {
        const QTextLayout &layout = *state.layouts.at(i);
        LineFinder lines(layout);
        for (EmojiRecord &record : state.emojis[i]) {
            if (state.isAbandoned())
                return placed;
            const QTextLine line = lines.lineAt(record.pos);
            if (!line.isValid()) {
                qDebug() << "Line is invalid,pos:" << record.pos;
                continue;
            }
            const QPointF corner(line.cursorToX(record.pos) + layout.position().x() + margin,
                                 layout.position().y() + line.y() + margin);
            record.rect = QRectF(corner, size);
            placed.append(&record);
        }
    }
    return placed;
}

/// Paints what the rows of the picture from `firstRow` on show, as many as `band` has.
void paintBand(DrawableTextPrivate &state, const QVector<const EmojiRecord *> &records, QImage &band,
               int firstRow)
{
    const double ratio = state.emojiImage.devicePixelRatio();
    band.setDevicePixelRatio(ratio);
    const double top = firstRow / ratio;
    const double bottom = top + band.height() / ratio;
    QPainter painter(&band);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    painter.translate(0.0, -top);
    for (const EmojiRecord *record : records) {
        if (state.isAbandoned())
            return;
        if (record->rect.bottom() > top && record->rect.top() < bottom)
            paintEmoji(painter, *record);
    }
}

} // namespace

void renderEmojiImage(DrawableTextPrivate &state)
{
    if (isFuzzyZero(state.contentWidth) || isFuzzyZero(state.contentHeight))
        return;
    // Most messages have no emoji; a transparent picture would be all that their memory goes to.
    if (!hasRecords(state)) {
        state.emojiImage = QImage();
        return;
    }
    const double ratio = qGuiApp ? qGuiApp->devicePixelRatio() : 1.0;
    state.emojiImage = emptyPicture(qMin(state.maxWidth, state.contentWidth), state.contentHeight, ratio);
    if (state.emojiImage.isNull())
        return;

    const QVector<const EmojiRecord *> records = placeRecords(state);
    // An image keeps the paint engine of its first painter, which takes more memory than the picture of a
    // short message: that of a band goes with it.
    QImage &picture = state.emojiImage;
    for (int row = 0; row < picture.height(); row += bandHeight) {
        QImage band(picture.scanLine(row), picture.width(), qMin(bandHeight, picture.height() - row),
                    picture.bytesPerLine(), picture.format());
        paintBand(state, records, band, row);
    }
}

} // namespace drawabletext
