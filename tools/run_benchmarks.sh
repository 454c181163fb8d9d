#!/usr/bin/env bash
# Builds the benchmarks for both platforms, runs the two programs by turns, and prints the ratios of
# bench/targets.tsv. The number of rounds can be given:
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
run() { # preset, platform, round, filter
    local result=$results/$2-$3.json
    "build/$1/bench/tessarin_benchmarks" --benchmark_filter="$4" --benchmark_min_time=0.05 \
        --benchmark_repetitions=3 --benchmark_enable_random_interleaving=true \
        --benchmark_out="$result" --benchmark_out_format=json >"$results/log" 2>&1 || { cat "$results/log"; exit 1; }
    runs+=("$2=$result")
}
# Where GNUstep is the rival, or measured for itself.
native=(
    'Array(Merge|Removal|Indexes)/(Array|ByHand)'
    StreamFormat/Array
    UniqueIndexer/Library
    'KeyedArchive/Archive/1000$'
    KeyedArchive/Unarchive
    Placing
    'SortDescriptors/(Name|LengthAndName)/1000$'
    SortDescriptorConfiguration
    AttributedString
    Color/
    'PropertyList/(Read|Write)'
)
for ((round = 1; round <= rounds; ++round)); do
    echo "Round $round of $rounds"
    run bench embedded "$round" .
    run bench-native native "$round" "$(IFS='|'; echo "${native[*]}")"
done

echo
bench/print_ratios.py bench/targets.tsv "${runs[@]}"
