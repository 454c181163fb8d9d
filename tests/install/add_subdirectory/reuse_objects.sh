#!/usr/bin/env bash
# Stands before the compiler in a build of the project that holds the library: for the library's own sources it gives
# the object files that the build under test has made of them, and everything else it leaves to the compiler.
#
#   REUSED_OBJECTS=build/dev/CMakeFiles/tessarin_objects.dir reuse_objects.sh COMPILER ARGUMENT...
set -euo pipefail

output=
for ((i = 1; i < $#; ++i)); do
    if [[ ${!i} == -o ]]; then
        next=$((i + 1))
        output=${!next}
    fi
done
if [[ $output != *CMakeFiles/tessarin_objects.dir/* ]]; then
    exec "$@"
fi
cp "$REUSED_OBJECTS/${output##*CMakeFiles/tessarin_objects.dir/}" "$output"
