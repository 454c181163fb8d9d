#!/usr/bin/env python3
"""Compares the property lists of this library with those of other software, in both directions.

    check_property_lists.py <property_lists program> <directory> [<plistutil program>]

The library writes property lists of every kind. Python's plistlib and libplist's plistutil read each and write it
anew in both formats, and the library reads that. In between, the plain forms are compared.
"""
import datetime
import pathlib
import plistlib
import struct
import subprocess
import sys

# What the other software cannot hold: which of it, the list, the format that it reads, and the reason. An exclusion
# that is not needed any more fails the check.
EXCLUSIONS = {
    ("plistlib", "unpaired-surrogates", "binary"): "Python decodes UTF-16 strictly",
    ("plistlib", "control-characters", "xml"): "Expat refuses control characters, as XML 1.0 does",
    ("plistlib", "carriage-returns", "xml"): "Expat makes line feeds of carriage returns, as XML 1.0 says",
}
# The same of what it writes from the format that it read: in which format.
CONVERSION_EXCLUSIONS = {
    ("plistlib", "control-characters", "binary", "xml"): "plistlib writes no control characters in XML",
    ("plistlib", "carriage-returns", "binary", "xml"): "plistlib writes line feeds for carriage returns in XML",
    ("plistlib", "dates-with-fractions", "binary", "xml"): "dates in XML have no fractions",
    ("plistutil", "dates-with-fractions", "binary", "xml"): "dates in XML have no fractions",
    ("plistutil", "unpaired-surrogates", "binary", "xml"): "UTF-8 has none; libplist takes two for a pair",
}

REFERENCE_DATE = datetime.datetime(2001, 1, 1)


def bits(value):
    return struct.pack(">d", value).hex()


def plain_string(text):
    return "s" + text.encode("utf-16-be", "surrogatepass").hex()


def plain_form(value):
    """The same as plainForm in PropertyListTrees.cpp."""
    if isinstance(value, str):
        return plain_string(value)
    if isinstance(value, bool):
        return "b1" if value else "b0"
    if isinstance(value, int):
        return f"i{value}"
    if isinstance(value, float):
        return "r" + bits(value)
    if isinstance(value, datetime.datetime):
        return "d" + bits((value - REFERENCE_DATE).total_seconds())
    if isinstance(value, bytes):
        return "x" + value.hex()
    if isinstance(value, list):
        return "[" + ",".join(plain_form(item) for item in value) + "]"
    if isinstance(value, dict):
        entries = sorted((plain_string(key), plain_form(item)) for key, item in value.items())
        return "{" + ",".join(f"{key}:{item}" for key, item in entries) + "}"
    return f"?{value}"


def shortened(text):
    return text if len(text) < 200 else text[:200] + "..."


class Check:
    def __init__(self, program, directory):
        self.program = program
        self.directory = directory
        self.compared = 0
        self.mistakes = []
        self.exclusions_met = set()

    def fail(self, where, text):
        self.mistakes.append(f"{where}: {text}")

    def compare(self, where, found, expected, key, exclusions):
        self.compared += 1
        if key in exclusions:
            self.exclusions_met.add(key)
            if found == expected:
                self.fail(where, "is excluded, and yet the same")
        elif found != expected:
            self.fail(where, f"\n  found    {shortened(found)}\n  expected {shortened(expected)}")

    def own_forms(self, files):
        shown = subprocess.run([self.program, "show", *files], check=True, capture_output=True, text=True)
        return shown.stdout.splitlines()


def names_and_files(directory):
    for path in sorted(directory.glob("*.plist")):
        name, form, _ = path.name.rsplit(".", 2)
        yield name, form, path


def read_by_plistlib(path):
    try:
        return plistlib.loads(path.read_bytes()), None
    except Exception as problem:  # whatever it is, the list was not read
        return None, f"!{problem!r}"


def check_plistlib(check, expected):
    """What the library wrote is read by plistlib, and what that writes is read by the library."""
    target = check.directory / "plistlib"
    target.mkdir(exist_ok=True)
    written = []
    for name, form, path in names_and_files(check.directory / "own"):
        value, problem = read_by_plistlib(path)
        found = problem or plain_form(value)
        check.compare(f"plistlib, {path.name}", found, expected[name], ("plistlib", name, form), EXCLUSIONS)
        if found != expected[name]:
            continue
        for target_form, target_format in (("binary", plistlib.FMT_BINARY), ("xml", plistlib.FMT_XML)):
            target_path = target / f"{name}.from-{form}.{target_form}.plist"
            try:
                target_path.write_bytes(plistlib.dumps(value, fmt=target_format))
            except Exception as problem:
                key = ("plistlib", name, form, target_form)
                check.compare(f"plistlib writing {target_path.name}", f"!{problem!r}", expected[name], key,
                              CONVERSION_EXCLUSIONS)
                continue
            written.append((name, form, target_form, target_path))
    compare_written(check, "plistlib", written, expected)


def check_plistutil(check, plistutil, expected):
    """What the library wrote is converted by plistutil, and the result is read by the library."""
    target = check.directory / "plistutil"
    target.mkdir(exist_ok=True)
    written = []
    for name, form, path in names_and_files(check.directory / "own"):
        for target_form, option in (("binary", "bin"), ("xml", "xml")):
            target_path = target / f"{name}.from-{form}.{target_form}.plist"
            target_path.unlink(missing_ok=True)
            subprocess.run([plistutil, "-i", path, "-o", target_path, "-f", option], capture_output=True)
            if not target_path.exists():
                target_path.write_bytes(b"")
            written.append((name, form, target_form, target_path))
    compare_written(check, "plistutil", written, expected)


def compare_written(check, writer, written, expected):
    forms = check.own_forms([path for *_, path in written])
    for (name, form, target_form, path), found in zip(written, forms, strict=True):
        check.compare(f"{writer}, {path.name}", found, expected[name], (writer, name, form, target_form),
                      CONVERSION_EXCLUSIONS)


def main():
    program, directory = sys.argv[1], pathlib.Path(sys.argv[2])
    own = directory / "own"
    subprocess.run([program, "write", own], check=True)
    expected = {path.stem: path.read_text().rstrip("\n") for path in own.glob("*.txt")}

    check = Check(program, directory)
    for (name, form, path), found in zip(names_and_files(own), check.own_forms(
            [path for *_, path in names_and_files(own)]), strict=True):
        check.compare(f"read back, {path.name}", found, expected[name], ("own", name, form), {})
    check_plistlib(check, expected)
    if len(sys.argv) > 3:
        check_plistutil(check, sys.argv[3], expected)
    for key in EXCLUSIONS.keys() | CONVERSION_EXCLUSIONS.keys():
        if key not in check.exclusions_met and not (key[0] == "plistutil" and len(sys.argv) <= 3):
            check.fail(" ".join(key), "is excluded, but was not met")

    print("\n".join(check.mistakes))
    print(f"{check.compared} comparisons, {len(check.mistakes)} mistakes")
    return 1 if check.mistakes or not check.compared else 0


if __name__ == "__main__":
    sys.exit(main())
