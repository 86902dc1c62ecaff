#pragma once

#include <QColor>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QString>

/// A palette and a theme colour from an image file, computed off the GUI thread.
///
/// Set `colorCount` and `algorithm` first, then `source`; the result is there with `ready()`. A picture that
/// can't be read, or a `colorCount` outside 2 to 256, leaves `state` at `Initing` and everything else as it
/// was.
class ImageColorTheme : public QObject
{
    Q_OBJECT
    /// Path of the picture; a "file:" or "qrc:" URL is turned into one. Setting it starts the work, unless it
    /// is empty: then only the palette is cleared.
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    /// First colour of the palette; invalid before the first one. May be set by hand.
    Q_PROPERTY(QColor themeColor READ themeColor WRITE setThemeColor NOTIFY themeColorChanged)
    /// Colours to find, 2 to 256; a hint for `MMCQ`, a limit for `CUBE`. Takes effect with the next work.
    /// Default: 10.
    Q_PROPERTY(int colorCount READ colorCount WRITE setColorCount NOTIFY colorCountChanged)
    /// Where the work stands.
    Q_PROPERTY(State state READ state WRITE setState NOTIFY stateChanged)
    /// How colours are found. Takes effect with the next work. Default: `CUBE`.
    Q_PROPERTY(Algorithm algorithm READ algorithm WRITE setAlgorithm NOTIFY algorithmChanged)

public:
    /// Where the work stands: not begun, under way, done.
    enum State : int { UnInit, Initing, Ready };
    Q_ENUM(State)
    /// How the colours are found: by cutting boxes of colours at their medians, or by counting colours in a
    /// cube of fixed cells.
    enum Algorithm : int { MMCQ, CUBE };
    Q_ENUM(Algorithm)

    explicit ImageColorTheme(QObject *parent = nullptr);
    /// Waits for a running worker, which may still name this object.
    ~ImageColorTheme() override;

    [[nodiscard]] QString source() const;
    [[nodiscard]] QColor themeColor() const;
    [[nodiscard]] int colorCount() const;
    [[nodiscard]] State state() const;
    [[nodiscard]] Algorithm algorithm() const;

public Q_SLOTS:
    void setSource(const QString &source);
    void setThemeColor(const QColor &themeColor);
    void setColorCount(int colorCount);
    void setState(State state);
    void setAlgorithm(Algorithm algorithm);

    /// Works on the present `source` again, with the present `colorCount` and `algorithm`. Waits for a
    /// running worker.
    void init();
    /// Takes over the worker's palette; waits for its last step.
    void processFinished();
    /// The colours of the last finished work, the theme colour first.
    [[nodiscard]] QList<QColor> getPalette() const;
    /// The colour at `index`: the first one for a negative index, white past the end.
    [[nodiscard]] QColor getColor(int index) const;

Q_SIGNALS:
    /// The palette is there.
    void ready();
    void sourceChanged(QString source);
    void themeColorChanged(QColor themeColor);
    void colorCountChanged(int colorCount);
    void stateChanged(State state);
    void algorithmChanged(Algorithm algorithm);

private:
    QString path;
    QColor theme;
    int count = 10;
    QList<QColor> palette;
    QFuture<QList<QColor>> task;
    State currentState = UnInit;
    Algorithm currentAlgorithm = CUBE;
};

/// The workers: the palette of the picture at `path`, and a queued call of `processFinished` on `target`, if
/// there is one, as soon as the main work is done. Without a picture or with a bad count the palette is empty
/// and nothing is called.
[[nodiscard]] QList<QColor> processMmcq(const QString &path, int colorCount, QObject *target);
[[nodiscard]] QList<QColor> processCube(const QString &path, int colorCount, QObject *target);
