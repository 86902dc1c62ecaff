#include "layout.h"

#include "drawabletextprivate.h"

namespace drawabletext {

void layoutParagraphs(DrawableTextPrivate &) {}

} // namespace drawabletext
namespace drawabletext {
void prepareLayout(QTextLayout &, const DrawableTextPrivate &, const QString &, QTextOption::WrapMode) {}
} // namespace drawabletext
