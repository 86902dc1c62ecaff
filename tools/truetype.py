"""Writes small TrueType fonts of straight outlines. The same input gives the same bytes everywhere."""

import struct
from dataclasses import dataclass, field

MAGIC = 0x5F0F3CF5
CHECKSUM = 0xB1B0AFBA
CREATED = 3786912000  # a fixed date, 2024-01-01, in seconds since 1904


@dataclass
class Glyph:
    """Contours are lists of (x, y); outer ones run clockwise, holes anti-clockwise."""

    advance: int
    contours: list = field(default_factory=list)

    def bounds(self):
        points = [point for contour in self.contours for point in contour]
        if not points:
            return 0, 0, 0, 0
        xs, ys = zip(*points)
        return min(xs), min(ys), max(xs), max(ys)


@dataclass
class Font:
    family: str
    units_per_em: int
    ascent: int
    descent: int  # below the baseline, positive
    notdef: Glyph
    characters: dict  # code point (BMP) -> Glyph


def outline(glyph):
    """The glyf entry, with coordinates as 16-bit deltas: not the smallest form, but the simplest."""
    if not glyph.contours:
        return b""
    points = [point for contour in glyph.contours for point in contour]
    data = struct.pack(">h4h", len(glyph.contours), *glyph.bounds())
    last = -1
    for contour in glyph.contours:
        last += len(contour)
        data += struct.pack(">H", last)
    data += struct.pack(">H", 0)  # no instructions
    data += bytes([1] * len(points))  # all on the curve
    for axis in (0, 1):
        previous = 0
        for point in points:
            data += struct.pack(">h", point[axis] - previous)
            previous = point[axis]
    return data + b"\0" * (-len(data) % 4)


def character_map(code_points):
    """A format 4 table; `code_points` ascend, and the n-th belongs to glyph n + 1."""
    segments = []
    for number, point in enumerate(code_points, start=1):
        if segments and segments[-1][1] == point - 1:
            segments[-1][1] = point
        else:
            segments.append([point, point, (number - point) & 0xFFFF])
    segments.append([0xFFFF, 0xFFFF, 1])
    count = len(segments)
    selector = count.bit_length() - 1
    search = 2 << selector
    ends, starts, deltas = ([segment[i] for segment in segments] for i in (1, 0, 2))
    words = [count * 2, search, selector, count * 2 - search, *ends, 0, *starts, *deltas, *([0] * count)]
    table = struct.pack(f">3H{len(words)}H", 4, 6 + len(words) * 2, 0, *words)
    header = struct.pack(">2H", 0, 2)
    for platform, encoding in ((0, 3), (3, 1)):
        header += struct.pack(">2HL", platform, encoding, 20)
    return header + table


def names(font):
    texts = {
        1: font.family,
        2: "Regular",
        3: font.family,
        4: font.family,
        5: "Version 1.000",
        6: font.family.replace(" ", ""),
    }
    header = struct.pack(">3H", 0, len(texts), 6 + 12 * len(texts))
    storage = b""
    for number, text in texts.items():
        data = text.encode("utf-16-be")
        header += struct.pack(">6H", 3, 1, 0x409, number, len(data), len(storage))
        storage += data
    return header + storage


def checksum(data):
    data += b"\0" * (-len(data) % 4)
    return sum(struct.unpack(f">{len(data) // 4}L", data)) & 0xFFFFFFFF


def build(font):
    code_points = sorted(font.characters)
    glyphs = [font.notdef] + [font.characters[point] for point in code_points]
    outlines = [outline(glyph) for glyph in glyphs]
    boxes = [glyph.bounds() for glyph in glyphs]
    box = (min(b[0] for b in boxes), min(b[1] for b in boxes), max(b[2] for b in boxes), max(b[3] for b in boxes))
    widest = max(glyph.advance for glyph in glyphs)
    offsets = [sum(len(data) for data in outlines[:n]) for n in range(len(outlines) + 1)]
    points = max(sum(len(contour) for contour in glyph.contours) for glyph in glyphs)
    contours = max(len(glyph.contours) for glyph in glyphs)

    tables = {
        b"OS/2": struct.pack(
            ">Hh3H11h10B4L4s3H3h2H2L2h3H",
            4, sum(g.advance for g in glyphs) // len(glyphs), 400, 5, 0,
            *(font.units_per_em // 2, font.units_per_em // 2, 0, 0) * 2,
            font.units_per_em // 20, font.units_per_em // 4, 0,
            *[0] * 10,
            0, 1 << (60 - 32), 0, 0,  # bit 60: private use area
            b"NONE", 0x40, code_points[0], code_points[-1],
            font.ascent, -font.descent, 0, font.ascent, font.descent,
            1, 0, 0, 0, 0, 0, 0,
        ),
        b"cmap": character_map(code_points),
        b"glyf": b"".join(outlines) or b"\0",
        b"head": struct.pack(
            ">4L2H2Q4h2H3h",
            0x10000, 0x10000, 0, MAGIC, 0x000B, font.units_per_em, CREATED, CREATED, *box, 0, 6, 2, 1, 0,
        ),
        b"hhea": struct.pack(
            ">L3hH11hH",
            0x10000, font.ascent, -font.descent, 0, widest, box[0],
            min(g.advance - b[2] for g, b in zip(glyphs, boxes)), box[2], 1, *[0] * 7, len(glyphs),
        ),
        b"hmtx": b"".join(struct.pack(">Hh", g.advance, b[0]) for g, b in zip(glyphs, boxes)),
        b"loca": struct.pack(f">{len(offsets)}L", *offsets),
        b"maxp": struct.pack(">L14H", 0x10000, len(glyphs), points, contours, 0, 0, 1, *[0] * 8),
        b"name": names(font),
        b"post": struct.pack(">2L2h5L", 0x30000, 0, -font.units_per_em // 10, font.units_per_em // 20, *[0] * 5),
    }  # fmt: skip

    count = len(tables)
    selector = count.bit_length() - 1
    search = 16 << selector
    directory = struct.pack(">L4H", 0x10000, count, search, selector, count * 16 - search)
    body = b""
    head = 0
    for tag, data in sorted(tables.items()):
        position = 12 + 16 * count + len(body)
        if tag == b"head":
            head = position
        directory += struct.pack(">4s3L", tag, checksum(data), position, len(data))
        body += data + b"\0" * (-len(data) % 4)
    font_file = bytearray(directory + body)
    struct.pack_into(">L", font_file, head + 8, (CHECKSUM - checksum(bytes(font_file))) & 0xFFFFFFFF)
    return bytes(font_file)
