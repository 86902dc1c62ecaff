#pragma once

#include "drawabletextarea.h"

#include <QQuickWindow>

/// The state of the input box, for its own sources.
struct DrawableTextArea::State
{
    // ---- properties
    QString untrimmedContent;
    QString selectedContent;
    int maxCharacterCount = -1;
    int maxContinuousReturn = -1;
    bool aiteEnabled = false;
    bool hashTagEnabled = false;
    bool dropEnabled = false;
    bool enableTab = false;
    bool upDownKeyEnabled = false;
    bool spellcheckEnabled = false;
    int aiteFrom = -1;
    int aiteLen = 0;
    int hashTagFrom = -1;
    int hashTagLen = 0;
    QColor aiteColor = QColor(QStringLiteral("steelblue"));
    QPointer<QValidator> validator;
    QJSValue aiteNameFunction;
    UserTextBlocks aiteBlocks; ///< mentions of `untrimmedContent`
    UserTextBlocks userBlocks; ///< for the next content that is set
    int visualFrom = 0;
    int visualTo = 0;
    double visualX = 0;
    double visualY = 0;
    double visualWidth = 0;
    double visualHeight = 0;
    bool needUpdateEmoji = false;
    bool needUpdateSpelling = false;

    // ---- content
    quint16 aiteSerial = 0;           ///< of the mention that was inserted last
    bool contentNotifications = true; ///< false while a change of several steps goes on: one sync at its end
    bool wrapsAnywhere = false;       ///< because of a long paragraph
    QTimer deferredSyncTimer;
    QTimer spellingTimer;              ///< a checker's delay; nothing waits for it yet
    QVector<TextSpan> selectionBlocks; ///< mentions of the selection, in display positions
    bool hadSelection = false;         ///< when the selection was looked at last

    // ---- keys
    enum class VerticalKey { None, Up, Down };
    VerticalKey upDownDirection = VerticalKey::None;
    bool undoPending = false;
    int undoDelta = 0;
    bool scanAiteOnMove = false; ///< only while the base class handles a key or a release
    bool scanTagOnMove = false;
    QString preeditCopy;
    QChar aiteSign = QLatin1Char('@');
    QChar hashTagSign = QLatin1Char('#');

    // ---- painting
    QVector<SpellingError> spellingErrors;        ///< for a checker to fill
    QSGSimpleTextureNode *emojiNode = nullptr;    ///< child of the item's node, render thread only
    QSGSimpleTextureNode *spellingNode = nullptr; ///< the same
};

/// While it lives, changes of the document are not reported: one report follows a change of several steps.
class DrawableTextArea::Silence
{
public:
    explicit Silence(DrawableTextArea &area)
        : area(&area)
        , before(area.d->contentNotifications)
    {
        area.d->contentNotifications = false;
    }
    ~Silence()
    {
        // The client's functions run meanwhile, and may delete the box.
        if (area)
            area->d->contentNotifications = before;
    }
    Q_DISABLE_COPY(Silence)

private:
    QPointer<DrawableTextArea> area;
    bool before = true;
};
