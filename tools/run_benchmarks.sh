#!/usr/bin/env bash
# Builds the benchmarks for both platforms, runs those that bench/targets.tsv names, heading by heading, and prints
# the ratios that it asks for. The number of rounds can be given:
#
#   tools/run_benchmarks.sh 9
set -euo pipefail
cd "$(dirname "$0")/.."
rounds=${1:-5}

packages=(
    g++ cmake ninja-build libbenchmark-dev pkg-config python3
    juce-modules-source-data zlib1g-dev                                                         # rivals
    libabsl-dev libboost-dev libfmt-dev libglib2.0-dev libplist-dev libroaring-dev qt6-base-dev # more of them
    gobjc libgnustep-base-dev libgnustep-gui-dev
)
tools/install_packages.sh "${packages[@]}"

for preset in bench bench-native; do
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" -- --quiet
done

results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT
runs=()
# What stands under one heading is measured by a process of its own, the native platform's directly behind: rivals
# then meet the same neighbours on the machine, and a heap that only they have used.
run() { # preset, platform, heading, round, names
    (($# > 4)) || return 0
    local result=$results/$2-$3-$4.json
    "build/$1/bench/tessarin_benchmarks" --benchmark_filter="^($(IFS='|'; echo "${*:5}"))\$" \
        --benchmark_min_time=0.05 --benchmark_repetitions=3 --benchmark_enable_random_interleaving=true \
        --benchmark_out="$result" --benchmark_out_format=json >"$results/log" 2>&1 || { cat "$results/log"; exit 1; }
    runs+=("$2=$result")
}
# names PATTERN HEADING: of the benchmarks under a heading of the given number, those that match.
names() {
    awk -F'\t' -v heading="$2" '/^## / { ++number } !/^#/ && number == heading { print $3; print $4 }' \
        bench/targets.tsv | grep -E "$1" | sort -u
}
headings=$(grep -c '^## ' bench/targets.tsv)
for ((round = 1; round <= rounds; ++round)); do
    echo "Round $round of $rounds"
    for ((heading = 1; heading <= headings; ++heading)); do
        mapfile -t embedded < <(names '^[A-Z]' "$heading")
        mapfile -t native < <(names '^native:' "$heading")
        run bench embedded "$heading" "$round" "${embedded[@]}"
        run bench-native native "$heading" "$round" "${native[@]#native:}"
    done
done

echo
bench/print_ratios.py bench/targets.tsv "${runs[@]}"
