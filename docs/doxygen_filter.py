#!/usr/bin/env python3
"""What doxygen reads of a file: the plain comments of a header as documentation, examples in them as code.

In the headers a line that is indented by three spaces behind // is an example.
"""

import re
import sys


def header(text):
    lines = []
    previous_is_comment = False
    for number, line in enumerate(text.splitlines()):
        comment = re.match(r"^(\s*)//( ?)(.*)$", line)
        if not comment:
            previous_is_comment = False
            lines.append(line)
            continue
        indent, _, words = comment.groups()
        if words.startswith("----"):
            lines.append(line)
            continue
        if not previous_is_comment and number == 0:
            lines.append(f"{indent}/// @file")
        previous_is_comment = True
        # Markdown takes four spaces for an example, and names nothing by @, # or \.
        if words.startswith("  "):
            words = "  " + words
        else:
            words = re.sub(r"([@\\#<>])", r"\\\1", words)
        lines.append(f"{indent}/// {words}".rstrip())
    return "\n".join(lines) + "\n"


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        text = file.read()
    sys.stdout.write(header(text))


if __name__ == "__main__":
    main()
