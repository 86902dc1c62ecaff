#!/usr/bin/env python3
"""Writes the type reference: one HTML page per QML type of the module, and an index.

What there is comes from plugins.qmltypes, so a page lists what the built module really offers; what it means comes
from the headers' doc comments as Doxygen reads them; how it is used comes from an example file per type. A type
or a member without a comment is an error, a type without an example, and an example without a type.
"""

import argparse
import html
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass, field

STYLE = """
body { max-width: 60em; margin: 2em auto; padding: 0 1em; font: 16px/1.5 sans-serif; color: #1f2328; }
a { color: #0b57d0; text-decoration: none; }
h2 { margin-top: 2em; border-bottom: 1px solid #d0d7de; }
table { border-collapse: collapse; width: 100%; }
td, th { padding: .4em .8em .4em 0; border-bottom: 1px solid #eaeef2; text-align: left; vertical-align: top; }
code, pre { font: 14px/1.45 monospace; }
pre { padding: 1em; background: #f6f8fa; border-radius: 6px; overflow-x: auto; }
.type { color: #57606a; }
"""

# What QML calls Qt's own types.
QML_NAMES = {
    "QString": "string", "QColor": "color", "QFont": "font", "QUrl": "url", "QVariant": "var", "QJSValue": "var",
    "QVariantList": "list", "QVariantMap": "object", "QStringList": "list of string", "QPoint": "point",
    "QPointF": "point", "QSize": "size", "QSizeF": "size", "QRect": "rect", "QRectF": "rect", "qlonglong": "int",
    "QList<QColor>": "list of color", "QList<QUrl>": "list of url", "QQuickItem": "Item", "QWindow": "Window",
}


@dataclass
class Member:
    kind: str  # Property, Signal or Method
    name: str
    type: str = ""
    is_read_only: bool = False
    parameters: list = field(default_factory=list)  # of (type, name)


@dataclass
class Type:
    class_name: str
    base: str = ""
    qml_name: str = ""
    is_singleton: bool = False
    members: list = field(default_factory=list)
    enums: dict = field(default_factory=dict)  # name: list of (value's name, number)


def blocks(text):
    """The blocks "Name { ... }" of a type description, as (name, body); those inside a block stay in its body."""
    found, position = [], 0
    opening = re.compile(r"(\w+)\s*\{")
    while match := opening.search(text, position):
        depth, end = 1, match.end()
        in_string = False
        while depth:
            character = text[end]
            if character == '"':
                in_string = not in_string
            elif not in_string:
                depth += {"{": 1, "}": -1}.get(character, 0)
            end += 1
        found.append((match.group(1), text[match.end():end - 1]))
        position = end
    return found


def own_text(body):
    """`body` without its inner blocks."""
    for _, inner in blocks(body):
        body = body.replace(inner, "", 1)
    return body


def text_of(body, key):
    match = re.search(rf'\b{key}:\s*"([^"]*)"', body)
    return match.group(1) if match else ""


def read_member(kind, body):
    own = own_text(body)
    member = Member(kind, text_of(own, "name"), text_of(own, "type"), "isReadonly: true" in own)
    if "isList: true" in own:
        member.type = f"list of {member.type}"
    for name, parameter in blocks(body):
        if name == "Parameter":
            member.parameters.append((text_of(parameter, "type"), text_of(parameter, "name")))
    return member


def read_types(path):
    """The types of the module by class name."""
    (_, module), = blocks(path.read_text(encoding="utf-8"))
    types = {}
    for kind, body in blocks(module):
        if kind != "Component":
            continue
        own = own_text(body)
        exported = re.search(r'exports:\s*\[\s*"[^"]*/(\w+) ', own)
        entry = Type(text_of(own, "name"), text_of(own, "prototype"), exported.group(1) if exported else "",
                     "isSingleton: true" in own)
        for name, inner in blocks(body):
            if name == "Enum":
                entry.enums[text_of(inner, "name")] = re.findall(r'"(\w+)":\s*(-?\d+)', inner)
            elif name in ("Property", "Signal", "Method"):
                entry.members.append(read_member(name, inner))
        types[entry.class_name] = entry
    return types


def rendered(element):
    """A Doxygen description as HTML."""
    if element is None:
        return ""
    parts = [html.escape(element.text or "", quote=False)]
    for child in element:
        inner = rendered(child)
        tag = {"computeroutput": "code", "emphasis": "em", "bold": "strong", "itemizedlist": "ul", "listitem": "li",
               "para": "p", "verbatim": "pre"}.get(child.tag)
        parts.append(f"<{tag}>{inner}</{tag}>" if tag else inner)
        parts.append(html.escape(child.tail or "", quote=False))
    return "".join(parts)


def description(definition):
    """The brief and the detailed description, as one HTML text."""
    parts = [rendered(definition.find(name)).strip() for name in ("briefdescription", "detaileddescription")]
    return "\n".join(part for part in parts if part)


@dataclass
class Comments:
    """What the headers say about one class."""
    whole: str
    members: dict  # (kind, name): list of (number of parameters, HTML)

    def of_enum(self, name):
        return next((text for _, text in self.members.get(("enum", name), [])), "")

    def of(self, member):
        kinds = {"Property": ("property",), "Signal": ("signal",), "Method": ("slot", "function")}[member.kind]
        for kind in kinds:
            candidates = self.members.get((kind, member.name), [])
            # Default values give forms with fewer parameters; they share the comment of the whole form.
            for count, text in sorted(candidates):
                if count >= len(member.parameters) and text:
                    return text
        return ""


def read_comments(folder, class_name):
    path = folder / ("class" + class_name.replace("_", "__") + ".xml")
    if not path.is_file():
        return Comments("", {})
    definition = ElementTree.parse(path).getroot().find("compounddef")
    members = {}
    for entry in definition.iter("memberdef"):
        key = (entry.get("kind"), entry.findtext("name"))
        members.setdefault(key, []).append((len(entry.findall("param")), description(entry)))
    return Comments(description(definition), members)


def qml_type(name):
    name = name.rstrip("*")
    if name.startswith("list of "):
        return "list of " + qml_type(name[len("list of "):])
    return QML_NAMES.get(name, name)


def signature(member):
    parameters = ", ".join(f"{qml_type(kind)} {name}".strip() for kind, name in member.parameters)
    result = f' <span class="type">: {html.escape(qml_type(member.type))}</span>' if member.type else ""
    return f"<code>{member.name}({html.escape(parameters)})</code>{result}"


def is_accessor(member, properties):
    """Whether `member` is the setter or the change signal that each property has."""
    if member.kind == "Signal" and member.name.endswith("Changed"):
        return member.name[:-len("Changed")] in properties
    if member.kind == "Method" and re.match("set[A-Z]", member.name):
        return member.name[3].lower() + member.name[4:] in properties
    return False


def table(heading, rows):
    if not rows:
        return ""
    cells = "".join(f"<tr><td>{left}</td><td>{right}</td></tr>\n" for left, right in rows)
    return f"<h2>{heading}</h2>\n<table>\n{cells}</table>\n"


def page(title, body):
    return (f'<!DOCTYPE html>\n<html lang="en">\n<head><meta charset="utf-8"><title>{title}</title>\n'
            f"<style>{STYLE}</style></head>\n<body>\n{body}</body>\n</html>\n")


def enum_text(values, text):
    listed = ", ".join(f"<code>{value}</code> {number}" for value, number in values)
    return f"{text}<p>{listed}</p>" if text else ""


def type_page(entry, comments, example):
    """The page of a type, and the names of its members without a comment."""
    properties = {member.name for member in entry.members if member.kind == "Property"}
    rows = {"Property": [], "Signal": [], "Method": []}
    unexplained = []
    for member in entry.members:
        text = comments.of(member)
        if not text and not is_accessor(member, properties):
            unexplained.append(member.name)
        if member.kind == "Property":
            access = ", read-only" if member.is_read_only else ""
            about = f'<span class="type">: {html.escape(qml_type(member.type))}{access}</span>'
            rows["Property"].append((f"<code>{member.name}</code> {about}", text))
        elif text or not is_accessor(member, properties):
            rows[member.kind].append((signature(member), text))
    enums = [(f"<code>{name}</code>", enum_text(values, comments.of_enum(name)))
             for name, values in entry.enums.items()]
    unexplained += [name for name in entry.enums if not comments.of_enum(name)]

    kind = "Singleton" if entry.is_singleton else f"Inherits {html.escape(qml_type(entry.base))}"
    accessors = ("<p>Each writable property has a slot <code>set</code> with its name, and a property that can change\n"
                 "a signal with its name and <code>Changed</code>.</p>\n") if properties else ""
    text = page(entry.qml_name, f'<p><a href="index.html">All types</a></p>\n<h1>{entry.qml_name}</h1>\n'
                f'<p class="type">{kind}</p>\n{comments.whole}\n'
                f"<h2>Example</h2>\n<pre>{html.escape(example.rstrip(), quote=False)}</pre>\n"
                + table("Properties", rows["Property"]) + accessors
                + table("Signals", rows["Signal"]) + table("Methods", rows["Method"]) + table("Enumerations", enums))
    return text, unexplained


def first_sentence(text):
    plain = re.sub(r"<[^>]+>", "", text)
    return re.split(r"(?<=[.:])\s", plain, maxsplit=1)[0].rstrip(":") if plain else ""


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    for option in ("types", "comments", "examples", "output"):
        parser.add_argument(f"--{option}", type=pathlib.Path, required=True)
    arguments = parser.parse_args()

    entries = sorted((entry for entry in read_types(arguments.types).values() if entry.qml_name),
                     key=lambda entry: entry.qml_name)
    mistakes = []
    index = []
    for entry in entries:
        comments = read_comments(arguments.comments, entry.class_name)
        example = arguments.examples / f"{entry.qml_name}.qml"
        if not comments.whole:
            mistakes.append(f"{entry.qml_name}: its class has no comment")
        if not example.is_file():
            mistakes.append(f"{entry.qml_name}: {example} is missing")
            continue
        text, unexplained = type_page(entry, comments, example.read_text(encoding="utf-8"))
        mistakes += [f"{entry.qml_name}.{name} has no comment" for name in unexplained]
        (arguments.output / f"{entry.qml_name}.html").write_text(text, encoding="utf-8")
        index.append((f'<a href="{entry.qml_name}.html">{entry.qml_name}</a>', first_sentence(comments.whole)))
    names = {entry.qml_name for entry in entries}
    mistakes += [f"{path}: there is no such type" for path in sorted(arguments.examples.glob("*.qml"))
                 if path.stem not in names]
    if not entries:
        mistakes.append(f"{arguments.types} describes no type")

    head = "<h1>component</h1>\n<pre>import com.ostrel.im.component 1.0</pre>\n"
    (arguments.output / "index.html").write_text(page("component", head + table("Types", index)), encoding="utf-8")
    for mistake in mistakes:
        print(f"typereference: {mistake}", file=sys.stderr)
    return 1 if mistakes else 0


if __name__ == "__main__":
    sys.exit(main())
