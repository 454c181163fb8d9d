#!/usr/bin/env bash
# Fails when a C++ or Objective-C file is not formatted as .clang-format says.
set -euo pipefail
cd "$(dirname "$0")/.."

sources() {
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        # Files not yet known to git are checked too, so that the answer is the same before and after a commit.
        git ls-files -z --cached --others --exclude-standard -- '*.h' '*.cpp' '*.mm' '*.m' ':!:*.generated.*'
    else
        find . -path ./build -prune -o -type f -name '*.generated.*' -prune -o \
            \( -name '*.h' -o -name '*.cpp' -o -name '*.mm' -o -name '*.m' \) -print0
    fi
}
sources | xargs -0 --no-run-if-empty clang-format --dry-run -Werror
echo "Every file is formatted."
