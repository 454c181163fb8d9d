#!/usr/bin/env bash
# Compares what programs linked with a build's shared library rely on with the description that is stored for its platform:
#
#   abi_test.sh LIBRARY SOURCE_DIRECTORY PLATFORM
set -uo pipefail

library=$1
source=$2
[[ $3 == embedded ]] && stored=platform/embedded/TessarinFoundation.abi.xz ||
    stored=platform/native/TessarinFoundation-native.abi.xz

for tool in abidw abidiff xz; do
    command -v $tool >/dev/null || { echo "$tool is missing (packages abigail-tools, xz-utils)" >&2 && exit 1; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# verdict EARLIER LATER: same, more (nothing else than additions), changed or unreadable. The differences are in
# $work/report.
verdict() {
    # Exit statuses of abidiff: 1 and 2 are errors, 4 is added for a change, 8 for one that surely breaks programs.
    abidiff --no-show-locs "$1" "$2" >"$work/report" 2>&1
    local status=$?
    # The first lines count: "2 Removed, 1 Changed (3 filtered out), 4 Added functions". It is for us to say that nothing
    # but additions breaks no program.
    if ((status & 3)); then
        echo unreadable
    elif ((status == 0)); then
        echo same
    elif ((status & 8)) || grep -E 'changes summary:' "$work/report" | grep -qvE ': 0 Removed, 0 Changed( |,)' ||
        grep -qE 'SONAME changed|architecture changed' "$work/report"; then
        echo changed
    else
        echo more
    fi
}

xz --decompress --stdout "$source/$stored" >"$work/stored.abi" &&
    "$source/tools/describe_abi.sh" "$library" >"$work/built.abi" || exit 1
[[ $(grep -c '<function-decl' "$work/built.abi") -gt 50 ]] ||
    { echo "$library has no debug information that tells of its functions" >&2 && exit 1; }

how="tools/describe_abi.sh $library | xz -9 >$stored"
case $(verdict "$work/stored.abi" "$work/built.abi") in
    same) ;;
    more)
        cat "$work/report" >&2
        echo "FAILED: the library offers more than $stored says. Record it: $how" >&2
        failures=1
        ;;
    unreadable)
        cat "$work/report" >&2
        echo "FAILED: abidiff cannot compare the library with $stored" >&2
        failures=1
        ;;
    changed)
        cat "$work/report" >&2
        echo "FAILED: programs that were linked with the library that $stored describes may break." \
            "If that is meant, it is a new framework version (TESSARIN_FRAMEWORK_VERSION), recorded by: $how" >&2
        failures=1
        ;;
esac

# What would be refused: the stored description, changed.
# is_judged VERDICT WHAT EARLIER LATER
is_judged() {
    cmp --silent "$3" "$4" && { echo "FAILED: nothing was changed: $2" >&2 && failures=1; }
    local found
    found=$(verdict "$3" "$4")
    [[ $found == "$1" ]] || { echo "FAILED: $2: judged '$found' instead of '$1'" >&2 && failures=1; }
}
name=TSSREqualAudioComponentDescriptions
sed -e "/<elf-symbol name='$name'/d" -e "/<function-decl name='$name'/,/<\/function-decl>/d" "$work/stored.abi" \
    >"$work/without.abi"
is_judged changed "a function that is gone" "$work/stored.abi" "$work/without.abi"
is_judged more "a function that is new" "$work/without.abi" "$work/stored.abi"
sed "s/\(<class-decl name='AudioStreamBasicDescription' size-in-bits=\)'320'/\1'384'/" "$work/stored.abi" >"$work/wider.abi"
is_judged changed "a structure that has grown" "$work/stored.abi" "$work/wider.abi"
sed "/<function-decl name='$name'/,/<\/function-decl>/ { /name='right'/d }" "$work/stored.abi" >"$work/fewer.abi"
is_judged changed "a parameter that is gone" "$work/stored.abi" "$work/fewer.abi"
sed "s/soname='[^']*'/soname='libOther.so.B'/" "$work/stored.abi" >"$work/renamed.abi"
is_judged changed "another name of the library" "$work/stored.abi" "$work/renamed.abi"

[[ $failures -eq 0 ]] && echo "The library's binary interface is the one that $stored describes."
exit $failures
