#pragma once

#include <QTextLine>
#include <QTextOption>
#include <QVector>

class QTextLayout;

namespace drawabletext {

/// `value` as Qt's fixed-point text geometry can hold it: within some 33 million either way, 0 for what is
/// not a number.
[[nodiscard]] double boundedForText(double value);

/// Breaks the lines of one layout between its `beginLayout()` and `endLayout()`, with the results of
/// `QTextLine::setLineWidth` and without the work in it that changes nothing.
class LineBreaker
{
public:
    /// `layout` has its text and text option, and outlives the breaker.
    explicit LineBreaker(QTextLayout &layout);
    ~LineBreaker();
    Q_DISABLE_COPY(LineBreaker)

    /// The next line, not broken yet; invalid behind the last.
    [[nodiscard]] QTextLine nextLine();

    /// Breaks the current line at `width`. It may be any number: what is out of Qt's range counts as the
    /// nearest that is not.
    void setLineWidth(double width);

private:
    /// Greatest heights of a stretch of text, of which a line's height is made.
    struct Heights;

    [[nodiscard]] bool isInLongRun();
    void findRun(int from);
    void measureRun(int from);
    [[nodiscard]] bool breakInsideRun(double width);
    void raiseToRun();

    QTextLayout &layout;
    QTextOption option;
    QTextOption anywhereOption; ///< `option`, but breaking between any two characters
    QTextLine line;
    bool lineIsBroken = false;
    bool mayHaveLongRuns = false;
    int runEnd = 0;               ///< first position behind the current line's start where a word may end
    int runFirstItem = 0;         ///< first item of Qt's own that the run has a part in
    QVector<Heights> heightsFrom; ///< for each item of a long run, those of the run from there to its end
};

} // namespace drawabletext
