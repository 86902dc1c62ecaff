"""The list of emoji that all generators share: read from Unicode's emoji-test.txt or from the checked-in key list."""

import hashlib
import re
from dataclasses import dataclass, field

VARIATION_SELECTOR_16 = 0xFE0F

LINE = re.compile(r"^(?P<points>[0-9A-F ]+?)\s*;\s*(?P<status>[a-z-]+)\s*# \S+ E[0-9.]+ (?P<name>.+)$")


@dataclass
class Emoji:
    """A fully qualified emoji; its place in the list is its index everywhere."""

    points: tuple
    name: str
    group: str
    subgroup: str


@dataclass
class EmojiTest:
    version: str = ""
    emoji: list = field(default_factory=list)


def read_emoji_test(path):
    """The fully qualified emoji of emoji-test.txt in the file's order. Components are no emoji of their own."""
    result = EmojiTest()
    group = subgroup = ""
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            if line.startswith("# Version: "):
                result.version = line.split(":", 1)[1].strip()
            elif line.startswith("# group: "):
                group = line.split(":", 1)[1].strip()
            elif line.startswith("# subgroup: "):
                subgroup = line.split(":", 1)[1].strip()
            match = LINE.match(line)
            if match and match["status"] == "fully-qualified":
                points = tuple(int(point, 16) for point in match["points"].split())
                result.emoji.append(Emoji(points, match["name"], group, subgroup))
    return result


def key_points(points):
    """What identifies an emoji: its code points without presentation selectors."""
    return tuple(point for point in points if point != VARIATION_SELECTOR_16)


def key(points):
    return "-".join(f"{point:x}" for point in key_points(points))


def list_hash(keys):
    """Ties a picture file to the list that the library was built with."""
    digest = hashlib.sha256("\n".join(keys).encode("ascii")).digest()
    return int.from_bytes(digest[:8], "little")


def read_key_list(path):
    with open(path, encoding="ascii") as lines:
        return [line.strip() for line in lines if line.strip() and not line.startswith("#")]
