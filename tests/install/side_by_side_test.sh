#!/usr/bin/env bash
# Installs an embedded and a native build into one prefix, and uses both from there:
#
#   side_by_side_test.sh EMBEDDED_BUILD_DIRECTORY NATIVE_BUILD_DIRECTORY
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

quietly() {
    "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }
}

for build in "$@"; do
    quietly cmake --install "$build" --prefix "$work/$(basename "$build")"
    quietly cmake --install "$build" --prefix "$work/installed"
done
# What both install is the same, so that it does not matter which came last.
cd "$work"
for build in "$@"; do
    (cd "$(basename "$build")" && find . -type f) | while read -r file; do
        cmp "$(basename "$build")/$file" "installed/$file"
    done
done

mv installed moved
quietly cmake -S "$here/side_by_side" -B consumers -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_PREFIX_PATH="$work/moved"
quietly cmake --build consumers
for program in default native_shared embedded_static; do
    consumers/$program | diff "$here/expected_output.txt" - || { echo "$program failed" >&2; exit 1; }
done
[[ $(ldd consumers/default) == *libTessarinFoundation.so.A* ]] || { echo "The default is not embedded" >&2; exit 1; }

plug_ins=(consumers/libplug_in_{native,embedded_static,embedded}.so)
consumers/host "${plug_ins[@]}" >output
expected=$((2 * ${#plug_ins[@]} + 1))
diff output <(for ((i = 0; i < expected; ++i)); do cat "$here/expected_output.txt"; done) ||
    { echo "They do not work in one process" >&2; exit 1; }
echo "The embedded and the native library work side by side."
