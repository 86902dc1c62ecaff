#!/usr/bin/env python3
"""Extracts the pictures of all emoji from a colour font with PNG strikes (CBDT) into one file for the library.

Usage: extract_emoji_pictures.py font.ttf emojikeys.txt output.pak

Needs fontTools. The strikes are kept as they are: they are smaller than anything scaled to the library's size, and
the library scales each when it is first shown. Layout of the file: see emoji/src/picturefile.h.
"""

import os
import struct
import sys

from fontTools.ttLib import TTFont

from emojilist import list_hash, read_key_list

SINGLE, LIGATURE, EXTENSION = 1, 4, 7


def substitutions(font):
    """The font's lookups in their order, each as (type, mapping). A colour font needs no more to join sequences."""
    for lookup in font["GSUB"].table.LookupList.Lookup:
        for table in lookup.SubTable:
            kind = lookup.LookupType
            if kind == EXTENSION:
                kind, table = table.ExtensionLookupType, table.ExtSubTable
            if kind == SINGLE:
                yield kind, table.mapping
            elif kind == LIGATURE:
                # Longest first: a family is more than the couple it begins with.
                yield kind, {
                    first: sorted(ligatures, key=lambda ligature: -len(ligature.Component))
                    for first, ligatures in table.ligatures.items()
                }


def apply_ligatures(glyphs, ligatures):
    result = []
    position = 0
    while position < len(glyphs):
        for ligature in ligatures.get(glyphs[position], ()):
            behind = position + 1 + len(ligature.Component)
            if glyphs[position + 1 : behind] == ligature.Component:
                result.append(ligature.LigGlyph)
                position = behind
                break
        else:
            result.append(glyphs[position])
            position += 1
    return result


def glyph_of(key, cmap, lookups):
    """The one glyph that the font has for this sequence, or None."""
    glyphs = [cmap.get(int(point, 16)) for point in key.split("-")]
    if None in glyphs:
        return None
    for kind, mapping in lookups:
        if kind == SINGLE:
            glyphs = [mapping.get(glyph, glyph) for glyph in glyphs]
        else:
            glyphs = apply_ligatures(glyphs, mapping)
    return glyphs[0] if len(glyphs) == 1 else None


def strike(font):
    """Glyph name to PNG data of the largest strike."""
    sizes = [located.bitmapSizeTable.ppemY for located in font["CBLC"].strikes]
    bitmaps = font["CBDT"].strikeData[sizes.index(max(sizes))]
    return {name: bitmap.imageData for name, bitmap in bitmaps.items() if bitmap.imageData}


def main():
    font_path, keys_path, output = sys.argv[1:]
    keys = read_key_list(keys_path)
    font = TTFont(font_path, lazy=True)
    cmap = font.getBestCmap()
    lookups = list(substitutions(font))
    bitmaps = strike(font)

    table = b""
    blobs = []
    known = {}
    position = 16 + 8 * len(keys)
    missing = []
    for key in keys:
        picture = bitmaps.get(glyph_of(key, cmap, lookups), b"")
        if not picture:
            missing.append(key)
        elif picture not in known:  # some flags share their picture
            known[picture] = position
            blobs.append(picture)
            position += len(picture)
        table += struct.pack("<2L", known.get(picture, 0), len(picture))
    if missing:
        print(f"{font_path} has no picture for {len(missing)} emoji: {' '.join(missing)}", file=sys.stderr)
    if len(missing) == len(keys):
        sys.exit(1)

    # Renamed when whole, so that an interrupted build leaves no half file.
    with open(output + ".part", "wb") as out:
        out.write(struct.pack("<4sLQ", b"EMJ1", len(keys), list_hash(keys)) + table)
        out.writelines(blobs)
    os.replace(output + ".part", output)


if __name__ == "__main__":
    main()
