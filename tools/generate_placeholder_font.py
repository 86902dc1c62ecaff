#!/usr/bin/env python3
"""Generates the font that makes the placeholders of emoji and tabs blank and as wide as they should be.

Usage: generate_placeholder_font.py output.ttf
"""

import sys

from truetype import Font, Glyph, build

EM = 1024  # a power of two: fractions of it scale exactly

FONT = Font(
    family="Component Placeholders",
    units_per_em=EM,
    # Lower than any text font, so that a placeholder never changes the height of the line that it stands in.
    ascent=EM // 4,
    descent=0,
    notdef=Glyph(advance=EM // 2),
    characters={
        0xEEEE: Glyph(advance=EM * 5 // 4),  # an emoji, a little larger than the text around it
        0xEEEF: Glyph(advance=EM * 2),  # a tab
    },
)


def main():
    with open(sys.argv[1], "wb") as out:
        out.write(build(FONT))


if __name__ == "__main__":
    main()
