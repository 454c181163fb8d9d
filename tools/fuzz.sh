#!/usr/bin/env bash
# Builds the fuzzers and lets each of them search for the given number of seconds, as many side by side as there are
# processors. What they find lies in build/fuzz/findings, one folder a target; the script fails if there is anything.
#
#   tools/fuzz.sh 600
#   tools/fuzz.sh 60 XMLPropertyList StringsFile
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
targets=("${@:2}")
((${#targets[@]})) || for source in fuzz/*_fuzz.cpp; do targets+=("$(basename "$source" _fuzz.cpp)"); done

tools/install_packages.sh clang libclang-rt-14-dev cmake ninja-build libgtest-dev
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target "${targets[@]/%/_fuzz}" -- --quiet

findings=$PWD/build/fuzz/findings
rm -rf "$findings"
search() { # target
    local work=build/fuzz/search/$1
    mkdir -p "$work" "$findings/$1"
    if "build/fuzz/fuzz/$1_fuzz" -timeout=10 -max_total_time="$seconds" -print_final_stats=1 \
        -artifact_prefix="$findings/$1/" "$work" "fuzz/corpus/$1" >"$findings/$1/log" 2>&1; then
        echo "$1: nothing in $(sed -n 's/^stat::number_of_executed_units: *//p' "$findings/$1/log") inputs"
        rm -r "${findings:?}/$1"
    else
        echo "$1: FOUND, see $findings/$1"
    fi
}
export -f search
export seconds findings
printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -c 'search {}'
rmdir "$findings" # which fails where something was found
