#pragma once

#include <QTextOption>

class DrawableTextPrivate;
class QTextLayout;

namespace drawabletext {

/// Prepares `layout` for one paragraph: font, text option and text, without formats. An empty paragraph is
/// laid out as a line end, which gives it a line of its own.
void prepareLayout(QTextLayout &layout, const DrawableTextPrivate &state, const QString &text,
                   QTextOption::WrapMode wrapMode);

/// Lays every paragraph out in lines and takes the sizes of the whole. Stops, leaving everything as it is,
/// once the state is abandoned.
void layoutParagraphs(DrawableTextPrivate &state);

} // namespace drawabletext
