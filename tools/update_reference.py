#!/usr/bin/env python3
"""Writes docs/reference.md, the table of the library's whole interface, from its public headers.

With --check it changes nothing, and fails when the table is not what the headers say, or when an operation lacks one of
its faces, its implementation or a test.
"""

import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
HEADERS = ROOT / "include" / "TessarinFoundation"
ROOMS = ["audio", "collections", "strings", "values", "configurations", "interface"]
OWN_CLASSES_TESTS = ["values", "concurrency"]
REFERENCE = ROOT / "docs" / "reference.md"
FORMATS = ROOT / "tools" / "stored_formats.tsv"

Operation = collections.namedtuple("Operation", "owner selector cpp header source tests")
Symbol = collections.namedtuple("Symbol", "name kind header source tests")
Format = collections.namedtuple("Format", "name writer reader text source tests")


def read(path):
    return path.read_text(encoding="utf-8")


def without_comments(text):
    return re.sub(r"//[^\n]*", "", text)


def relative(path):
    return path.relative_to(ROOT).as_posix()


def owner_of(path):
    """The class that a file is about: 'NSColor+TessarinExtensions_test.cpp' is about NSColor."""
    return re.match(r"\w*?(?=[+_.])|\w*", path.name).group(0)


def faces(text):
    """The Objective-C and the C++ part of a header; the same text twice when it serves both."""
    split = re.search(r"^#if defined\(__OBJC__\)$(.*?)^#else$(.*)^#endif", text, re.M | re.S)
    parts = (split.group(1), split.group(2)) if split else ("", text)
    return tuple(without_comments(part) for part in parts)


def selector_of(declaration):
    """The selector of a method declaration: '- (void)move:(id)item to:(int)place' gives 'move:to:'."""
    rest = re.sub(r"^\s*\([^)]*\)\s*", "", declaration[1:])
    words = re.findall(r"(\w+)\s*:", rest)
    return "".join(word + ":" for word in words) if words else re.match(r"\w+", rest).group(0)


def methods_of(body):
    for declaration in re.findall(r"^([-+]\s*\([^;]*);", body, re.M):
        yield declaration[0], selector_of(declaration)
    for attributes, name in re.findall(r"@property\s*\(([^)]*)\)[^;]*?(\w+);", body):
        yield "-", name
        if "readwrite" in attributes:
            yield "-", "set" + name[0].upper() + name[1:] + ":"


def cpp_name(selector):
    return selector.rstrip(":").replace(":", "_") if selector.endswith(":") else selector


class Project:
    def __init__(self):
        self.sources = {path: read(path) for room in ROOMS for path in sorted((ROOT / room).glob("*.cpp"))}
        self.tests = {path: read(path) for path in sorted((ROOT / "tests").rglob("*_test.cpp"))}
        self.client = "".join(read(path) for path in sorted((ROOT / "tests" / "objc").glob("*Client.m")))
        self.problems = []

    def naming(self, files, pattern):
        return [path for path, text in files.items() if re.search(pattern, text)]

    def source_of(self, what, pattern, owner=""):
        found = self.naming(self.sources, pattern)
        found.sort(key=lambda path: owner_of(path) != owner)
        if not found:
            self.problems.append(f"{what} is declared and not implemented")
        return relative(found[0]) if found else ""

    def tests_of(self, what, pattern, first, owner=""):
        # The names of a class's own operations are words such as lock, which other tests use too.
        tests = {path: text for path, text in self.tests.items()
                 if not owner.startswith("TSSR") or path.parent.name in OWN_CLASSES_TESTS}
        found = self.naming(tests, pattern)
        if not found:
            self.problems.append(f"{what} is named by no test")
        found.sort(key=lambda path: (path.stem.split("_")[0] != first, owner_of(path) != owner, relative(path)))
        return ", ".join(path.stem for path in found[:3]) + (" …" if len(found) > 3 else "")

    def operations(self, header):
        objective_c, cpp = faces(read(header))
        interfaces = re.findall(r"@interface\s+(\w+)\s*(\(|:)(.*?)@end", objective_c, re.S)
        for owner, kind, body in interfaces:
            for sign, selector in methods_of(body):
                name = cpp_name(selector)
                what = f"{sign}[{owner} {selector}]"
                if not re.search(rf"\b{name}\(", cpp):
                    self.problems.append(f"{what} has no C++ face")
                # "sends all" of a selector in plain Objective-C, by its first word
                if not re.search(rf"\b{selector.split(':')[0]}\b", self.client):
                    self.problems.append(f"{what} is not sent by the client in Objective-C")
                yield Operation(owner, sign + selector, name, header.name,
                                self.source_of(what, rf'"{re.escape(selector)}"', owner),
                                self.tests_of(what, rf"\b{name}\b", header.stem, owner))

    def inherited(self, declared):
        """What the library's own classes answer in their own way, and inherit the declaration of."""
        definition = re.compile(r'ClassDefinition \w+\{\s*\{\.name = "(\w+)"(.*?)\}\}\};', re.S)
        for path, text in self.sources.items():
            for owner, body in definition.findall(text):
                for selector in re.findall(r'instanceMethod\(\s*"([^"]+)"', body):
                    if selector == "dealloc" or (owner, "-" + selector) in declared:
                        continue
                    name = "copy" if selector == "copyWithZone:" else cpp_name(selector)
                    what = f"-[{owner} {selector}]"
                    yield Operation(owner, "-" + selector, name, owner + ".h", relative(path),
                                    self.tests_of(what, rf"\b{name}\(", owner, owner))

    def symbols(self, header):
        text = without_comments(read(header))
        declarations = re.search(r"TESSARIN_C_DECLARATIONS_BEGIN(.*)TESSARIN_C_DECLARATIONS_END", text, re.S)
        for declaration in re.findall(r"TESSARIN_EXPORT([^;]*);", declarations.group(1) if declarations else ""):
            name = re.search(r"\b(TSSR\w+)\b", declaration).group(1)
            kind = "constant" if "extern" in declaration else "function"
            if not re.search(rf"\b{name}\b", self.client):
                self.problems.append(f"{name} is not used by the client in Objective-C")
            yield Symbol(name, kind, header.name, self.source_of(name, rf"\b{name}\b"),
                         self.tests_of(name, rf"\b{name}\b", header.stem))

    def undeclared(self, operations):
        declared = {operation.selector for operation in operations}
        groups = re.compile(r'(instance|class)Method\(\s*"([^"]+)"')
        for path, text in self.sources.items():
            for group in re.findall(r"const ExtensionGroup \w+\{(.*?)\};", text, re.S):
                for kind, selector in groups.findall(group):
                    if ("-" if kind == "instance" else "+") + selector not in declared:
                        self.problems.append(f"{selector} of {relative(path)} is in no header")

    def formats(self):
        for line in read(FORMATS).splitlines():
            if line.startswith("#"):
                continue
            name, writer, reader, text = line.split("\t")
            pattern = rf"\"{re.escape(text)}\"|\b{re.escape(text)}\("
            # What only tests show has the source of its writer.
            shown = rf'"{re.escape(writer)}"' if text == "FF0000FF" else pattern
            source = self.source_of(f"'{text}'", shown)
            yield Format(name, writer, reader, text, source, self.tests_of(f"'{text}'", pattern, ""))


def table(titles, rows):
    yield "| " + " | ".join(titles) + " |"
    yield "|" + "---|" * len(titles)
    for row in rows:
        yield "| " + " | ".join(row) + " |"


def code(text):
    return f"`{text}`" if text else ""


def document(symbols, operations, formats):
    yield "# Reference"
    yield ""
    yield "The whole interface, one row each, written by `tools/update_reference.py` from the public headers, which say"
    yield "what each operation does, and from the tables of the library's own classes. `-` marks what instances answer,"
    yield "`+` what the class itself answers."
    yield ""
    yield f"{sum(s.kind == 'function' for s in symbols)} functions, {sum(s.kind == 'constant' for s in symbols)} constant,"
    extensions = [o for o in operations if not o.owner.startswith("TSSR")]
    yield (f"{len(extensions)} operations on {len({o.owner for o in extensions})} classes of the platform, "
           f"{len({o.owner for o in operations if o.owner.startswith('TSSR')})} classes with "
           f"{len(operations) - len(extensions)} operations.")
    yield ""
    yield "## Functions and constants"
    yield ""
    yield from table(["Name", "Kind", "Header", "Source", "Tests"],
                     [(code(s.name), s.kind, code(s.header), code(s.source), s.tests) for s in symbols])
    for title, wanted in [("Operations on the platform's classes", False), ("Classes", True)]:
        yield ""
        yield f"## {title}"
        yield ""
        yield from table(["Class", "Operation", "In C++", "Header", "Source", "Tests"],
                         [(code(o.owner), code(o.selector), code(o.cpp), code(o.header), code(o.source), o.tests)
                          for o in operations if o.owner.startswith("TSSR") == wanted])
    yield ""
    yield "## Stored formats"
    yield ""
    yield "What applications keep, and every later version reads. The headers give the layouts."
    yield ""
    yield from table(["What", "Written by", "Read by", "Shown by", "Source", "Tests"],
                     [(f.name, code(f.writer), f.reader, code(f.text), code(f.source), f.tests) for f in formats])


def main():
    project = Project()
    headers = sorted(HEADERS.glob("*.h"))
    symbols = [symbol for header in headers for symbol in project.symbols(header)]
    operations = [operation for header in headers for operation in project.operations(header)]
    operations += project.inherited({(operation.owner, operation.selector) for operation in operations})
    operations.sort(key=lambda operation: operation.owner)
    formats = list(project.formats())
    project.undeclared(operations)
    text = "\n".join(document(symbols, operations, formats)) + "\n"

    if sys.argv[1:] == ["--check"]:
        if not REFERENCE.exists() or read(REFERENCE) != text:
            project.problems.append("docs/reference.md is not up to date: run tools/update_reference.py")
    else:
        REFERENCE.write_text(text, encoding="utf-8")
    for problem in project.problems:
        print(problem, file=sys.stderr)
    if project.problems:
        return 1
    print(f"docs/reference.md: {len(symbols)} symbols, {len(operations)} operations, {len(formats)} stored formats.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
