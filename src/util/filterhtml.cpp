#include "filterhtml.h"

#include <QByteArray>
#include <QLatin1String>
#include <QStringView>

namespace clipboard {
namespace {

const QLatin1String emojiScheme("image://emojicache/");

/// Far above the path of any emoji. Foreign text can pass a whole document off as one, and the names of a
/// thousand tags would each repeat it.
constexpr int longestReference = 4096;

struct ContainerTag
{
    QLatin1String name;
    QLatin1String end;
};

const ContainerTag containerTags[] = {
    {QLatin1String("style"), QLatin1String("</style>")},
    {QLatin1String("script"), QLatin1String("</script>")},
    {QLatin1String("xml"), QLatin1String("</xml>")},
};

/// Finds a text that is looked for again and again from places that only move forward, without walking the
/// same stretch twice.
class ForwardSearch
{
public:
    explicit ForwardSearch(QLatin1String wanted)
        : wanted(wanted)
    {}

    /// The first place at or behind `from` in `text`; -1 if there is none. `text` may only have grown since
    /// the last call, and `from` may only have moved forward.
    int find(const QString &text, int from)
    {
        if (found < from) {
            found = text.indexOf(wanted, qMax(from, searched));
            // Text that is appended later can complete what the end only begins.
            if (found < 0)
                searched = qMax(from, text.size() - wanted.size() + 1);
        }
        return found;
    }

private:
    QLatin1String wanted;
    int found = -1;
    int searched = 0;
};

/// Walks the input once. At each moment the text as a whole is `out`, in which no tag is left to look at,
/// followed by the input from `at` on.
class HtmlFilter
{
public:
    explicit HtmlFilter(const QString &html)
        : in(html)
    {
        out.reserve(in.size());
    }

    QString run()
    {
        while (stepToTag()) {
            const int tagEnd = tagEnds.find(in, at);
            if (tagEnd < 0)
                break;
            takeTag(tagEnd);
        }
        keepTo(in.size());

        int lineFeeds = 0;
        while (lineFeeds < out.size() && out[lineFeeds] == QLatin1Char('\n'))
            ++lineFeeds;
        out.remove(0, lineFeeds);
        return out.replace(QLatin1String("<br />"), QLatin1String("<br/>"));
    }

private:
    void keepTo(int end)
    {
        out.append(in.constData() + at, end - at);
        at = end;
    }

    bool stepToTag()
    {
        const int tag = in.indexOf(QLatin1Char('<'), at);
        if (tag >= 0)
            keepTo(tag);
        return tag >= 0;
    }

    /// Only the beginning of a name is compared, so "<styled>" counts as "style": what clients send depends
    /// on it.
    [[nodiscard]] bool tagBegins(QLatin1String name) const
    {
        return QStringView(in).mid(at + 1, name.size()) == name;
    }

    void takeTag(int tagEnd)
    {
        for (int i = 0; i < 3; ++i) {
            if (tagBegins(containerTags[i].name)) {
                cutContainer(containerTags[i].end, containerEnds[i]);
                return;
            }
        }
        if (tagBegins(QLatin1String("br")))
            keepTo(tagEnd + 1);
        else if (tagBegins(QLatin1String("img")))
            takePicture(tagEnd);
        else
            at = tagEnd + 1;
    }

    void cutContainer(QLatin1String end, ForwardSearch &search)
    {
        const int found = search.find(in, at);
        if (found >= 0) {
            at = found + end.size();
            return;
        }
        // Without an end, the place one before the text stands for it. Clients know what that makes of a tag
        // at the very beginning; further on it would repeat the text for ever, and the rest goes.
        const int resume = end.size() - 1;
        at = out.size() < resume ? at + resume - out.size() : in.size();
    }

    /// An emoji picture becomes its code, any other picture goes. The first reference to an emoji in the
    /// whole text counts, also for the tags around it: fragments with emoji have one each.
    void takePicture(int tagEnd)
    {
        const int inOut = schemesInOut.find(out, 0);
        const int scheme = inOut < 0 ? schemes.find(in, at) : inOut;
        if (scheme < 0) {
            at = tagEnd + 1;
            return;
        }

        const int begin = scheme + emojiScheme.size();
        const int quoteInOut = inOut < 0 ? -1 : quotesInOut.find(out, begin);
        const int quote =
            quoteInOut >= 0 ? -1 : (inOut < 0 ? quotesBehindSchemes.find(in, begin) : quotes.find(in, at));
        if (quoteInOut < 0 && quote < 0) {
            keepTo(tagEnd + 1);
            return;
        }

        QString reference;
        if (quoteInOut >= 0)
            reference = out.mid(begin, qMin(quoteInOut - begin, longestReference + 1));
        else if (inOut < 0)
            reference = in.mid(begin, qMin(quote - begin, longestReference + 1));
        else
            reference =
                out.mid(begin, longestReference + 1) + in.mid(at, qMin(quote - at, longestReference + 1));
        appendEmoji(reference);
        at = tagEnd + 1;
    }

    /// A name that holds markup is no emoji's and would bring back what this filter takes out.
    void appendEmoji(const QString &reference)
    {
        if (reference.size() > longestReference)
            return;
        const QString path = QString::fromUtf8(QByteArray::fromBase64(reference.toUtf8()));
        const QString file = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
        const QString name = file.left(file.indexOf(QLatin1Char('.')));
        if (!name.contains(QLatin1Char('<')))
            out += QLatin1String("[:") + name + QLatin1String(":]");
    }

    const QString in;
    int at = 0;
    QString out;
    ForwardSearch tagEnds{QLatin1String(">")};
    ForwardSearch containerEnds[3] = {ForwardSearch(containerTags[0].end),
                                      ForwardSearch(containerTags[1].end),
                                      ForwardSearch(containerTags[2].end)};
    ForwardSearch schemes{emojiScheme};
    ForwardSearch schemesInOut{emojiScheme};
    ForwardSearch quotes{QLatin1String("\"")};
    ForwardSearch quotesBehindSchemes{QLatin1String("\"")};
    ForwardSearch quotesInOut{QLatin1String("\"")};
};

} // namespace

QString filterHtml(const QString &html)
{
    return HtmlFilter(html).run();
}

} // namespace clipboard
