#!/usr/bin/env bash
# Puts the compiled examples into README.md, or with --check fails when README.md does not show them as they are.
set -euo pipefail
cd "$(dirname "$0")/.."

# README.md with the code between ```LANGUAGE and ``` replaced by a file's contents.
with_example() { # LANGUAGE FILE
    awk -v language="$1" -v file="$2" '
        $0 == "```" language { print; while ((getline line < file) > 0) print line; inside = 1; next }
        inside && $0 == "```" { inside = 0 }
        !inside'
}

updated=$(with_example cpp examples/readme/cpp_example.cpp <README.md |
    with_example objc examples/readme/objc_example.m)
if [[ "${1-}" == --check ]]; then
    diff README.md <(printf '%s\n' "$updated") && echo "README.md shows the compiled examples."
else
    printf '%s\n' "$updated" >README.md
fi
