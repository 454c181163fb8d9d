#!/usr/bin/env python3
"""Writes the Unicode tables of the embedded platform from the Unicode Character Database.

    tools/generate_unicode_tables.py [--ucd /usr/share/unicode]

The database is Debian's package unicode-data. The result, platform/embedded/foundation/UnicodeTables.generated.cpp and
UnicodeDecompositions.generated.cpp, is kept in the source tree, so that building needs neither this program nor the
database.
"""

import argparse
import pathlib
import re

COLUMNS = 110
FOUNDATION = pathlib.Path(__file__).resolve().parent.parent / "platform/embedded/foundation"


def fields_of(path):
    for line in path.read_text(encoding="utf-8").splitlines():
        line = line.split("#")[0].strip()
        if line:
            yield [field.strip() for field in line.split(";")]


def code_points(text):
    return [int(code, 16) for code in text.split()]


class Database:
    def __init__(self, directory):
        self.version = re.search(r"-(\d+\.\d+\.\d+)", (directory / "CaseFolding.txt").read_text().splitlines()[0])[1]
        self.category = {}
        self.combining_class = {}
        self.decomposition = {}
        self.lower = {}
        self.upper = {}
        first = None
        for fields in fields_of(directory / "UnicodeData.txt"):
            code = int(fields[0], 16)
            if fields[1].endswith(", First>"):
                first = code
                continue
            for each in range(first if first is not None else code, code + 1):
                self.category[each] = fields[2]
            first = None
            if fields[3] != "0":
                self.combining_class[code] = int(fields[3])
            if fields[5] and not fields[5].startswith("<"):
                self.decomposition[code] = code_points(fields[5])
            if fields[12]:
                self.upper[code] = [int(fields[12], 16)]
            if fields[13]:
                self.lower[code] = [int(fields[13], 16)]
        for fields in fields_of(directory / "SpecialCasing.txt"):
            if len(fields) > 5 and fields[4]:
                continue  # holds for some languages or contexts only
            code = int(fields[0], 16)
            self.lower[code] = code_points(fields[1])
            self.upper[code] = code_points(fields[3])
        self.folding = {}
        for code, status, mapping, *_ in fields_of(directory / "CaseFolding.txt"):
            if status in "CF" and int(code, 16) <= 0xFFFF:
                self.folding[int(code, 16)] = code_points(mapping)

    def fully_decomposed(self, code):
        if code not in self.decomposition:
            return [code]
        return [part for each in self.decomposition[code] for part in self.fully_decomposed(each)]

    def ranges(self, belongs):
        result = []
        for code in sorted(code for code, category in self.category.items() if belongs(category)):
            if result and result[-1][1] == code - 1:
                result[-1][1] = code
            else:
                result.append([code, code])
        return result


def value_ranges(values):
    """Runs of consecutive keys with the same value: [first, last, value]."""
    result = []
    for key, value in sorted(values.items()):
        if result and result[-1][1] == key - 1 and result[-1][2] == value:
            result[-1][1] = key
        else:
            result.append([key, key, value])
    return result


def mapping_runs(mapping):
    """One-to-one mappings as [first, last, step, distance]; the characters of a run are 1 or 2 apart."""
    result = []
    for code, mapped in sorted(mapping.items()):
        if len(mapped) != 1 or mapped[0] == code:
            continue
        distance = mapped[0] - code
        if result and result[-1][3] == distance:
            run = result[-1]
            gap = code - run[1]
            if gap in (1, 2) and (run[0] == run[1] or gap == run[2]):
                run[1] = code
                run[2] = gap
                continue
        result.append([code, code, 1, distance])
    return result


def packed(items):
    """The items, separated by commas, in lines as long as may be."""
    lines, line = [], ""
    for item in items:
        if len(line) + len(item) + 1 > COLUMNS:
            lines.append(line)
            line = ""
        line += f"{item},"
    return "\n".join(lines + [line])


def array(type_name, name, items):
    items = list(items)
    return f"constexpr {type_name} {name}[] = {{\n{packed(items)}\n}};\n"


def initialiser(*values):
    return "{" + ",".join(values) + "}"


def hexadecimal(code):
    return f"0x{code:X}"


def range_table(name, ranges):
    return array("Range", f"{name}Data", (initialiser(*map(hexadecimal, each)) for each in ranges))


def case_tables(name, mapping):
    runs = (initialiser(hexadecimal(first), hexadecimal(last), str(step), str(distance))
            for first, last, step, distance in mapping_runs(mapping))
    expansions = (initialiser(hexadecimal(code), initialiser(*(hexadecimal(each) for each in mapped)), str(len(mapped)))
                  for code, mapped in sorted(mapping.items()) if len(mapped) > 1)
    return (array("CaseRun", f"{name}Runs", runs) + "\n"
            + array("CaseExpansion", f"{name}Expansions", expansions))


def header(database, what):
    return f"""// {what}
// Unicode {database.version}. Generated by tools/generate_unicode_tables.py; not to be edited.
// clang-format off
#include "platform/embedded/foundation/UnicodeTables.h"

namespace tessarin::unicode {{
namespace {{

"""


def tables(database):
    letters = range_table("letterOrMark", database.ranges(lambda category: category[0] in "LM"))
    alphanumerics = range_table("alphanumeric", database.ranges(lambda category: category[0] in "LMN"))
    classes = array("CombiningClassRun", "combiningClassData",
                    (initialiser(hexadecimal(first), hexadecimal(last), str(value))
                     for first, last, value in value_ranges(database.combining_class)))
    digits = range_table("decimalDigit", database.ranges(lambda category: category == "Nd"))
    return (header(database, "Kinds of characters, combining classes and letter case.")
            + "\n".join([letters, alphanumerics, digits, classes, case_tables("lowercase", database.lower),
                         case_tables("uppercase", database.upper), case_tables("folding", database.folding)])
            + """
} // namespace

const std::span<const Range> letterOrMarkRanges = letterOrMarkData;
const std::span<const Range> alphanumericRanges = alphanumericData;
const std::span<const Range> decimalDigitRanges = decimalDigitData;
const std::span<const CombiningClassRun> combiningClassRuns = combiningClassData;
const CaseTable lowercaseTable = {lowercaseRuns, lowercaseExpansions};
const CaseTable uppercaseTable = {uppercaseRuns, uppercaseExpansions};
const CaseTable foldingTable = {foldingRuns, foldingExpansions};

} // namespace tessarin::unicode
""")


def decompositions(database):
    parts, entries = [], []
    for code in sorted(database.decomposition):
        decomposed = database.fully_decomposed(code)
        entries.append(initialiser(hexadecimal(code), str(len(parts)), str(len(decomposed))))
        parts += decomposed
    return (header(database, "Canonical decompositions, Hangul apart.")
            + "\n".join([array("char32_t", "decompositionParts", map(hexadecimal, parts)),
                         array("Decomposition", "decompositionEntries", entries)])
            + """
} // namespace

const std::span<const char32_t> decompositionCharacters = decompositionParts;
const std::span<const Decomposition> decompositionTable = decompositionEntries;

} // namespace tessarin::unicode
""")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--ucd", type=pathlib.Path, default=pathlib.Path("/usr/share/unicode"))
    database = Database(parser.parse_args().ucd)
    # Folding is done after decomposition, and its result is not decomposed again.
    for code, mapped in database.folding.items():
        assert code in database.decomposition or all(database.fully_decomposed(each) == [each] for each in mapped)
    (FOUNDATION / "UnicodeTables.generated.cpp").write_text(tables(database), encoding="utf-8")
    (FOUNDATION / "UnicodeDecompositions.generated.cpp").write_text(decompositions(database), encoding="utf-8")


if __name__ == "__main__":
    main()
