#!/usr/bin/env python3
"""Runs each generator into a temporary folder and compares with what is checked in.

Usage: test_generated_files.py emoji-test.txt [unittest options]
"""

import os
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOLS = os.path.join(ROOT, "tools")
EMOJI_VERSION = "15.0"  # of the checked-in data

sys.dont_write_bytecode = True
sys.path.insert(0, TOOLS)

from emojilist import read_emoji_test  # noqa: E402
from truetype import CHECKSUM, checksum  # noqa: E402

emoji_test_file = ""


def read(*parts):
    with open(os.path.join(*parts), "rb") as file:
        return file.read()


def generate(tool, *arguments):
    subprocess.run([sys.executable, "-B", os.path.join(TOOLS, tool), *arguments], check=True)


class GeneratedFiles(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def assertMadeAgain(self, tool, *path):
        output = os.path.join(self.folder, path[-1])
        generate(tool, output)
        self.assertEqual(read(output), read(ROOT, *path))

    def test_placeholder_font(self):
        self.assertMadeAgain("generate_placeholder_font.py", "emoji", "placeholder.ttf")

    def test_icon_font(self):
        self.assertMadeAgain("generate_icon_font.py", "src", "qml", "image", "iconfont.ttf")

    def test_transparent_picture(self):
        self.assertMadeAgain("generate_transparent_picture.py", "src", "qml", "image", "transparent.png")

    def test_emoji_data(self):
        if not os.path.exists(emoji_test_file) or read_emoji_test(emoji_test_file).version != EMOJI_VERSION:
            self.skipTest(f"needs emoji-test.txt {EMOJI_VERSION} (Debian: unicode-data)")
        generate("generate_emoji_data.py", emoji_test_file, self.folder)
        names = sorted(os.listdir(self.folder))
        self.assertEqual(names, ["emojikeys.txt", "emojinames_data.cpp", "emojitrie_data.cpp"])
        for name in names:
            self.assertEqual(read(self.folder, name), read(ROOT, "emoji", "src", name), name)


class Fonts(unittest.TestCase):
    """What font readers other than the one at hand may insist on."""

    def fonts(self):
        yield read(ROOT, "emoji", "placeholder.ttf")
        yield read(ROOT, "src", "qml", "image", "iconfont.ttf")

    def test_checksums_add_up(self):
        for data in self.fonts():
            self.assertEqual(checksum(data), CHECKSUM)

    def test_tables_stand_in_order_aligned_and_inside(self):
        for data in self.fonts():
            count = int.from_bytes(data[4:6], "big")
            tags = []
            end = 12 + 16 * count
            for entry in range(12, 12 + 16 * count, 16):
                tags.append(data[entry : entry + 4])
                stored, offset, length = (int.from_bytes(data[entry + at : entry + at + 4], "big") for at in (4, 8, 12))
                self.assertEqual(offset % 4, 0)
                self.assertEqual(offset, end)
                end = offset + (length + 3) // 4 * 4
                if tags[-1] != b"head":  # whose checksum leaves out the sum of the whole
                    self.assertEqual(checksum(data[offset : offset + length]), stored)
            self.assertEqual(end, len(data))
            self.assertEqual(tags, sorted(tags))


if __name__ == "__main__":
    emoji_test_file = sys.argv.pop(1)
    unittest.main()
