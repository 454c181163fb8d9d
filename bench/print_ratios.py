#!/usr/bin/env python3
"""Prints the ratios that targets.tsv asks for, of the shortest times of all runs, as tables in Markdown.

What else the machine does only ever adds to a time, so that the shortest is nearest to the program's own.

    print_ratios.py targets.tsv embedded=run1.json native=run1.json embedded=run2.json ...
"""
import json
import math
import sys

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
NOT_MEASURED = "not measured"


def shortest_times(arguments):
    """The shortest times by name, and those for an item where a benchmark counts items."""
    times, item_times = {}, {}
    for argument in arguments:
        platform, _, path = argument.partition("=")
        with open(path, encoding="utf-8") as file:
            runs = json.load(file)["benchmarks"]
        for run in runs:
            if run["run_type"] == "iteration":
                name = ("native:" if platform == "native" else "") + run["run_name"]
                # Processor time: what waits does not count.
                times.setdefault(name, []).append(run["cpu_time"] * NANOSECONDS[run["time_unit"]])
                if "items_per_second" in run:
                    item_times.setdefault(name, []).append(NANOSECONDS["s"] / run["items_per_second"])
    return [{name: min(values) for name, values in each.items()} for each in (times, item_times)]


def verdict(kind, limit, is_met):
    if kind in ("figure", "growth"):
        return ""
    return f"{limit}{' as a goal' if kind == 'goal' else ''}, {'met' if is_met else '**missed**'}"


def readable(nanoseconds):
    for unit in ("s", "ms", "us"):
        if nanoseconds >= NANOSECONDS[unit]:
            return f"{nanoseconds / NANOSECONDS[unit]:.4g} {unit}"
    return f"{nanoseconds:.4g} ns"


def row(kind, limit, ours, rival, times, item_times):
    """Our time, the rival's, how they compare, and what that says."""
    if ours not in times or (rival != "-" and rival not in times):
        return "", "", "", NOT_MEASURED
    if kind == "item":
        each = item_times[ours]
        return readable(times[ours]), "", f"{each:.2f} ns", verdict(kind, f"{limit} ns", each <= float(limit))
    if rival == "-":
        return readable(times[ours]), "", "", ""
    ratio = times[ours] / times[rival]
    is_growth = kind in ("exponent", "growth")
    value = math.log10(ratio) if is_growth else ratio
    shown = f"10^{value:.3f}" if is_growth else f"{value:.2f}"
    is_met = limit == "-" or value <= float(limit)
    return readable(times[ours]), readable(times[rival]), shown, verdict(kind, limit, is_met)


def main():
    times, item_times = shortest_times(sys.argv[2:])
    are_all_measured = True
    for line in open(sys.argv[1], encoding="utf-8"):
        if line.startswith("## "):
            print(f"\n#{line}\n| What | Against | Ours | Theirs | Ratio | Limit |\n|---|---|---|---|---|---|")
        elif not line.startswith("#"):
            kind, limit, ours, rival, meaning = line.rstrip("\n").split("\t")
            what, _, whom = meaning.partition(" : ")
            cells = row(kind, limit, ours, rival, times, item_times)
            print("| " + " | ".join((what, whom, *cells)) + " |")
            are_all_measured &= cells[-1] != NOT_MEASURED
    if not are_all_measured:
        sys.exit("Some rows were not measured.")


if __name__ == "__main__":
    main()
