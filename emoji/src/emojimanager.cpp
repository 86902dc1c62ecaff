#include "emoji/emojimanager.h"

#include "emojidata.h"
#include "emojitrie.h"
#include "picturefile.h"

#include <QAtomicPointer>
#include <QGuiApplication>
#include <QPixmap>

#include <memory>
#include <vector>

namespace {

/// Pictures are kept at this size: in between the 18 to 24 pixels of running text on usual screens and the 64
/// of single large emoji on fine ones, it loses least in both directions.
constexpr int pictureSide = 72;

bool canMakePixmaps()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

} // namespace

/// One slot per emoji. A picture is published once, is never changed and never goes away again, so that
/// nobody who draws from it on another thread needs a lock.
class EmojiManager::Pictures
{
    Q_DISABLE_COPY(Pictures)

public:
    explicit Pictures(const QString &path)
        : file(path)
        , pixmaps(std::size_t(emoji::emojiCount))
    {}

    ~Pictures()
    {
        for (const Slot &slot : pixmaps)
            delete slot.loadAcquire();
    }

    [[nodiscard]] bool exist() const { return file.isOpen(); }

    /// A null pixmap where the file has no usable picture.
    [[nodiscard]] QPixmap *at(int index)
    {
        Slot &slot = pixmaps[std::size_t(index)];
        if (QPixmap *known = slot.loadAcquire())
            return known;
        // Two threads may decode the same picture. That is rare and cheaper than to have them all wait for a
        // lock.
        const QImage image = file.picture(index, pictureSide);
        auto own = std::make_unique<QPixmap>(QPixmap::fromImage(image, Qt::NoOpaqueDetection));
        QPixmap *winner = nullptr;
        if (slot.testAndSetOrdered(nullptr, own.get(), winner))
            return own.release();
        return winner;
    }

private:
    using Slot = QAtomicPointer<QPixmap>;

    const emoji::PictureFile file;
    std::vector<Slot> pixmaps;
};

EmojiManager *EmojiManager::instance()
{
    // Left to the end of the process: workers may still draw while static objects are destroyed.
    static auto *manager = new EmojiManager(emoji::PictureFile::installedPath());
    return manager;
}

EmojiManager::EmojiManager(const QString &pictures)
    : pictures(new Pictures(pictures))
{}

EmojiManager::~EmojiManager() = default;

bool EmojiManager::emoji(const QString &key, EmojiInfo &info)
{
    info = {};
    const int index = emoji::indexOfKey(key);
    if (index < 0 || !pictures->exist() || !canMakePixmaps())
        return false;
    QPixmap *picture = pictures->at(index);
    if (picture->isNull())
        return false;
    info = {picture, 0, 0, picture->width(), picture->height()};
    return true;
}
