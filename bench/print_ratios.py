#!/usr/bin/env python3
"""Prints the ratios that targets.tsv asks for, of the medians over all runs.

    print_ratios.py targets.tsv embedded=run1.json native=run1.json embedded=run2.json ...
"""
import json
import math
import statistics
import sys

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def medians(arguments):
    """The median times by name, and the median times for an item where a benchmark counts items."""
    times, item_times = {}, {}
    for argument in arguments:
        platform, _, path = argument.partition("=")
        with open(path, encoding="utf-8") as file:
            runs = json.load(file)["benchmarks"]
        for run in runs:
            if run["run_type"] == "iteration":
                name = ("native:" if platform == "native" else "") + run["run_name"]
                # Processor time: the machine's other work does not count.
                times.setdefault(name, []).append(run["cpu_time"] * NANOSECONDS[run["time_unit"]])
                if "items_per_second" in run:
                    item_times.setdefault(name, []).append(NANOSECONDS["s"] / run["items_per_second"])
    return [{name: statistics.median(values) for name, values in each.items()} for each in (times, item_times)]


def verdict(kind, limit, ratio):
    if kind == "figure":
        return ""
    value = math.log10(ratio) if kind == "exponent" else ratio
    word = "pass" if value <= float(limit) else "miss"
    return (word if kind == "goal" else word.upper()) + f" ({kind} {limit})"


def readable(nanoseconds):
    for unit in ("s", "ms", "us"):
        if nanoseconds >= NANOSECONDS[unit]:
            return f"{nanoseconds / NANOSECONDS[unit]:.4g} {unit}"
    return f"{nanoseconds:.4g} ns"


def main():
    times, item_times = medians(sys.argv[2:])
    print(f"{'ours':>10} {'rival':>10} {'ratio':>9}  ")
    for line in open(sys.argv[1], encoding="utf-8"):
        if line.startswith("#"):
            continue
        kind, limit, ours, rival, meaning = line.rstrip("\n").split("\t")
        if ours not in times or (rival != "-" and rival not in times):
            print(f"{'':>10} {'':>10} {'':>9}  {meaning}: not measured")
            continue
        if kind == "item":
            each = item_times[ours]
            print(f"{readable(times[ours]):>10} {'':>10} {each:>6.2f} ns  {meaning}  {verdict(kind, limit, each)}")
            continue
        if rival == "-":
            print(f"{readable(times[ours]):>10} {'':>10} {'':>9}  {meaning}")
            continue
        ratio = times[ours] / times[rival]
        shown = f"10^{math.log10(ratio):.3f}" if kind == "exponent" else f"{ratio:.2f}"
        print(f"{readable(times[ours]):>10} {readable(times[rival]):>10} {shown:>9}  {meaning}"
              f"  {verdict(kind, limit, ratio)}".rstrip())


if __name__ == "__main__":
    main()
