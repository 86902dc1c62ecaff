#pragma once

#include <QSharedPointer>

class DrawableTextPrivate;

/// The road from a text and its properties to laid-out paragraphs. Runs on any thread that owns the state.
namespace drawabletext {

/// From this many UTF-16 units on, a text without a line limit is laid out on a worker.
constexpr int workerThreshold = 500;

/// Runs every step in its order; a step with a gate only if its dirty bit is set, which it clears. Painting
/// the emoji is not among them: it follows once the item has its size.
void runSteps(DrawableTextPrivate &state);

/// Paints the emoji picture if it is out of date.
void runEmojiImageStep(DrawableTextPrivate &state);

/// What a worker does with a snapshot: lay it out, paint its emoji and announce it to the item, as far as the
/// item still wants it.
void layOutSnapshot(const QSharedPointer<DrawableTextPrivate> &snapshot);

} // namespace drawabletext
