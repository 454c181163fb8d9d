#!/usr/bin/env python3
"""Writes the tables of quantities and their texts that the tests compare with: tests/data/quantities/*.tsv.

    tools/generate_quantity_tables.py

The texts come from Python's own decimal arithmetic: repr gives the shortest decimal number that reads back as
the same double, and decimal rounds it. The tables are the same each time.
"""
import decimal
import pathlib
import random

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "tests/data/quantities"
SHORT = ["", "k", "M", "G", "T", "P", "E", "Z", "Y"]
LONG = ["", "kilo", "mega", "giga", "tera", "peta", "exa", "zetta", "yotta"]
AUTOMATIC = 65535
EXACT = decimal.Context(prec=1000, rounding=decimal.ROUND_HALF_EVEN)


def number_text(value, precision):
    # More digits than any double has change nothing.
    digit = decimal.Decimal(1).scaleb(-min(precision, 400), EXACT)
    text = f"{EXACT.quantize(decimal.Decimal(repr(value)), digit):f}"
    return text.rstrip("0").rstrip(".") if "." in text else text


def scaled(size, unit):
    value = float(size)
    if unit != AUTOMATIC:
        return value * 2.0 ** (-10 * unit), unit
    # Counted in integers: the fewest steps after which one more would leave 1 or less of the rounded size.
    whole = int(value)
    steps = next(steps for steps in range(9) if whole <= 1024 ** (steps + 1))
    return value / 1024**steps, steps


def size_text(size, unit, precision, is_long, is_separate):
    value, index = scaled(size, unit)
    prefix = LONG[index] if is_long else (SHORT + LONG)[index]
    word = ("byte" if value < 2 else "bytes") if is_long else "B"
    return number_text(value, precision) + (" " if is_separate else "") + prefix + word


def sizes(chance):
    """Sizes at and around everything that is special, and sizes of every magnitude."""
    for power in range(65):
        for size in (2**power - 1, 2**power, 2**power + 1, 3 * 2**power // 2, 5 * 2**power // 4):
            if size < 2**64:
                yield size
    for unit in range(7):
        for thousandths in (1, 250, 500, 999, 1500, 1999, 2000, 2500, 9995, 1023999):
            if thousandths * 1024**unit // 1000 < 2**64:
                yield thousandths * 1024**unit // 1000
    for _ in range(400):
        yield chance.getrandbits(chance.randint(1, 64))


def time_text(seconds):
    def cut(number, divisor):  # towards zero, in integers
        return abs(number) // divisor * (1 if number >= 0 else -1)

    def padded(number):  # as C writes it: the sign counts
        return str(number).rjust(2, "0") if number >= 0 else str(number)

    minutes = cut(seconds, 60)
    if seconds < 3660:
        return f"{minutes} : {padded(seconds - 60 * minutes)}"
    if seconds >= 3600000:
        return "999:59:59"
    return f"{seconds // 3600} : {padded(minutes % 60)} : {padded(seconds % 60)}"


def durations(chance):
    for edge in (0, 60, 3600, 3660, 7200, 86400, 3600000, 2**31, 2**63 - 60, -60, -3600, -(2**63) + 60):
        yield from range(edge - 60, min(edge + 61, 2**63))
    for _ in range(200):
        yield chance.randint(3660, 3599999)
        yield chance.randint(-(2**63), 3660)


def write(name, columns, rows):
    unique = list(dict.fromkeys(rows))
    with open(FOLDER / name, "w", encoding="utf-8", newline="\n") as file:
        file.write(f"# Written by tools/generate_quantity_tables.py. Columns, separated by tabs: {columns}.\n")
        for row in unique:
            file.write("\t".join(str(column) for column in row) + "\n")
    print(f"{name}: {len(unique)} rows")


def main():
    chance = random.Random(1024)
    rows = []
    for size in sizes(chance):
        for precision in (chance.randint(0, 3), chance.randint(4, 60)):
            is_long = chance.random() < 0.5
            last_unit = 8 if is_long else 17
            for unit in (AUTOMATIC, chance.randint(0, 2), chance.randint(3, last_unit)):
                is_separate = chance.random() < 0.5
                rows.append((size, unit, precision, int(is_long), int(is_separate),
                             size_text(size, unit, precision, is_long, is_separate)))
    write("sizes.tsv", "bytes, unit, precision, long, separate, text", rows)
    write("durations.tsv", "seconds, text", ((seconds, time_text(seconds)) for seconds in durations(chance)))


if __name__ == "__main__":
    main()
