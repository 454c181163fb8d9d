#!/usr/bin/env python3
"""Puts the compiled examples into the documentation, or with --check fails when it does not show them as they are.

A block that begins with ```LANGUAGE FILE shows that file:

    ```cpp examples/readme/cpp_example.cpp
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BLOCK = re.compile(r"^(```\w+ (\S+)\n)(.*?)^```$", re.M | re.S)


def with_examples(text):
    return BLOCK.sub(lambda block: block[1] + (ROOT / block[2]).read_text(encoding="utf-8") + "```", text)


def main():
    check = sys.argv[1:] == ["--check"]
    stale = []
    shown = set()
    for page in [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]:
        text = page.read_text(encoding="utf-8")
        shown.update(block[1] for block in BLOCK.findall(text))
        updated = with_examples(text)
        if updated != text:
            stale.append(page.relative_to(ROOT).as_posix())
            if not check:
                page.write_text(updated, encoding="utf-8")
    guides = {path.relative_to(ROOT).as_posix() for path in (ROOT / "examples" / "guides").glob("*.[cm]*")}
    for example in sorted(guides - shown):
        print(f"{example} is shown by no page", file=sys.stderr)
    if check and stale:
        print("Not as the examples are, run tools/update_examples.py:", *stale, file=sys.stderr)
    if guides - shown or (check and stale):
        return 1
    print(f"The documentation shows {len(shown)} compiled examples.")
    return 0


if __name__ == "__main__":
    sys.exit(main())
