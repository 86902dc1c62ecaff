#!/usr/bin/env python3
"""The type reference says something about every type and member, and notices when one has no comment.

Usage: test_typereference.py plugins.qmltypes [unittest options]
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
TOOL = ROOT / "tools" / "typereference.py"

types_file = pathlib.Path()

TYPES = """import QtQuick.tooling 1.2
Module {
    Component {
        name: "Lamp"
        prototype: "QObject"
        exports: ["module/Lamp 1.0"]
        Enum { name: "Light"; values: { "Off": 0, "On": 1 } }
        Property { name: "watts"; type: "int" }
        Signal { name: "wattsChanged"; Parameter { name: "watts"; type: "int" } }
        Signal { name: "burnt" }
        Method { name: "setWatts"; Parameter { name: "watts"; type: "int" } }
        Method { name: "dim"; Parameter { name: "share"; type: "double" } }
        Method { name: "dim" }
    }
}
"""


def descriptions(text):
    brief = f"<para>{text}</para>" if text else ""
    return f"<briefdescription>{brief}</briefdescription><detaileddescription/>"


def comment(kind, name, text, parameters=0):
    return (f'<memberdef kind="{kind}"><name>{name}</name>{"<param/>" * parameters}'
            f"{descriptions(text)}</memberdef>")


class Lamp:
    """A module of one type, whose comments a test can take away."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.whole = "A lamp."
        self.members = {"Light": ("enum", "How bright."), "watts": ("property", "In watts."),
                        "burnt": ("signal", "It broke."), "dim": ("slot", "Turns it down.")}

    def run(self):
        for name in ("xml", "examples", "output"):
            (self.folder / name).mkdir()
        (self.folder / "lamp.qmltypes").write_text(TYPES)
        (self.folder / "examples" / "Lamp.qml").write_text("Lamp {}\n")
        members = "".join(comment(kind, name, text, name == "dim") for name, (kind, text) in self.members.items())
        (self.folder / "xml" / "classLamp.xml").write_text(
            f"<doxygen><compounddef>{members}{descriptions(self.whole)}</compounddef></doxygen>")
        return make_reference(self.folder / "lamp.qmltypes", self.folder / "xml", self.folder / "examples",
                              self.folder / "output")


def make_reference(types, comments, examples, output):
    return subprocess.run([sys.executable, "-B", TOOL, "--types", types, "--comments", comments,
                           "--examples", examples, "--output", output],
                          stderr=subprocess.PIPE, universal_newlines=True, check=False)


class TypeReference(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def test_everything_that_the_module_offers_is_explained(self):
        if not shutil.which("doxygen"):
            self.skipTest("needs doxygen")
        settings = (ROOT / "docs" / "Doxyfile").read_text() + f"\nOUTPUT_DIRECTORY = {self.folder}\n"
        subprocess.run(["doxygen", "-"], input=settings, universal_newlines=True, cwd=ROOT, check=True)
        output = self.folder / "pages"
        output.mkdir()
        result = make_reference(types_file, self.folder / "xml", ROOT / "docs" / "examples", output)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        pages = {path.stem for path in output.glob("*.html")} - {"index"}
        self.assertEqual(pages, {path.stem for path in (ROOT / "docs" / "examples").glob("*.qml")})
        self.assertGreaterEqual(len(pages), 21)  # one more where web sockets are built

    def test_a_page_says_what_the_comments_say(self):
        lamp = Lamp(self.folder)
        result = lamp.run()
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        page = (self.folder / "output" / "Lamp.html").read_text()
        for text in ("A lamp.", "In watts.", "It broke.", "How bright.", "<code>On</code> 1", "dim(double share)"):
            self.assertIn(text, page)
        self.assertEqual(page.count("Turns it down."), 2, "the form without parameters shares the comment")

    def test_what_has_no_comment_is_named(self):
        for name in ("Light", "watts", "burnt", "dim"):
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                lamp = Lamp(folder)
                lamp.members[name] = (lamp.members[name][0], "")
                result = lamp.run()
                self.assertEqual(result.returncode, 1)
                self.assertIn(f"Lamp.{name} has no comment", result.stderr)

    def test_a_type_without_a_comment_is_named(self):
        lamp = Lamp(self.folder)
        lamp.whole = ""
        result = lamp.run()
        self.assertEqual(result.returncode, 1)
        self.assertIn("Lamp: its class has no comment", result.stderr)


if __name__ == "__main__":
    types_file = pathlib.Path(sys.argv.pop(1))
    unittest.main()
