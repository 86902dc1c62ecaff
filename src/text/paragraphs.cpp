#include "paragraphs.h"

#include "drawabletextprivate.h"

namespace drawabletext {

void splitParagraphs(DrawableTextPrivate &) {}

} // namespace drawabletext
namespace drawabletext {
QStringList readLines(const QString &text)
{
    return {text};
}
} // namespace drawabletext
