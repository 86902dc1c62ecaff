#!/usr/bin/env python3
"""Generates the font with the glyphs of the window buttons.

Usage: generate_icon_font.py output.ttf

The window buttons show their glyphs at 16 pixels per em, the round ones at 10. An em of 1280 units divides by both:
a pixel is 80 units in one and 128 in the other. Edges that lie on those multiples stay sharp on the screen, also at
twice the scale. The em box itself is the line: the ascent is the em and the descent nothing, so that a glyph
centred in the em is centred in its button.
"""

import sys

from truetype import Font, Glyph, build

EM = 1280
PIXEL = 80  # at 16 pixels per em; also the width of a stroke
ROUND_PIXEL = 128  # at 10 pixels per em

# The window glyphs fill 10 of the 16 pixels, as caption buttons usually do.
LOW = 3 * PIXEL
HIGH = 13 * PIXEL
MIDDLE = EM // 2


def glyph(*contours):
    return Glyph(EM, list(contours))


def box(left, bottom, right, top):
    """Clockwise: filled."""
    return [(left, bottom), (left, top), (right, top), (right, bottom)]


def hole(left, bottom, right, top):
    return list(reversed(box(left, bottom, right, top)))


def frame(left, bottom, right, top, stroke=PIXEL):
    return box(left, bottom, right, top), hole(left + stroke, bottom + stroke, right - stroke, top - stroke)


def bar(bottom):
    return box(LOW, bottom, HIGH, bottom + PIXEL)


def menu():
    # One pixel has no middle between two: like the minimise line, the middle one lies in the row below the centre.
    return glyph(*(bar(MIDDLE - PIXEL + rows * PIXEL) for rows in (4, 0, -4)))


def minimise():
    return glyph(bar(MIDDLE - PIXEL))


def maximise():
    return glyph(*frame(LOW, LOW, HIGH, HIGH))


def restore():
    """A window in front of another one, of which an angle is seen; one outline, so that no seams show."""
    shift = 2 * PIXEL
    front = HIGH - shift  # right and upper edge of the window in front
    back = LOW + shift  # left and lower edge of the one behind
    outer = [(LOW, LOW), (LOW, front), (back, front), (back, HIGH), (HIGH, HIGH), (HIGH, back), (front, back), (front, LOW)]
    angle = [
        (back + PIXEL, front),
        (front, front),
        (front, back + PIXEL),
        (HIGH - PIXEL, back + PIXEL),
        (HIGH - PIXEL, HIGH - PIXEL),
        (back + PIXEL, HIGH - PIXEL),
    ]
    return glyph(outer, hole(LOW + PIXEL, LOW + PIXEL, front - PIXEL, front - PIXEL), angle)


def close():
    # Half the stroke along an axis. Slanting strokes look thinner than upright ones, so this is more than a pixel.
    half = 64
    return glyph(
        [
            (HIGH - half, HIGH),
            (HIGH, HIGH - half),
            (MIDDLE + half, MIDDLE),
            (HIGH, LOW + half),
            (HIGH - half, LOW),
            (MIDDLE, MIDDLE - half),
            (LOW + half, LOW),
            (LOW, LOW + half),
            (MIDDLE - half, MIDDLE),
            (LOW, HIGH - half),
            (LOW + half, HIGH),
            (MIDDLE, MIDDLE + half),
        ]
    )


def zoom():
    """Two corners that point away from each other; used at 10 pixels per em only."""
    low = 2 * ROUND_PIXEL
    high = 8 * ROUND_PIXEL
    leg = 5 * ROUND_PIXEL
    return glyph(
        [(low, high), (low + leg, high), (low, high - leg)],
        [(high, low), (high - leg, low), (high, low + leg)],
    )


FONT = Font(
    family="window-buttons",
    units_per_em=EM,
    ascent=EM,
    descent=0,
    notdef=glyph(*frame(LOW, PIXEL, HIGH, EM - PIXEL)),
    characters={
        0xE61A: menu(),
        0xE628: zoom(),
        0xE8A7: minimise(),
        0xE93C: close(),
        0xEBB0: restore(),
        0xEBC1: maximise(),
    },
)


def main():
    with open(sys.argv[1], "wb") as out:
        out.write(build(FONT))


if __name__ == "__main__":
    main()
