#!/usr/bin/env bash
# Prints what programs that were linked with a shared library rely on: its names, and the layouts of the types that
# they take and return. The library needs debug information, and is one that GCC has built.
#
#   tools/describe_abi.sh build/dev/libTessarinFoundation.so | xz -9 >platform/embedded/TessarinFoundation.abi.xz
#   tools/describe_abi.sh build/native/libTessarinFoundation-native.so |
#       xz -9 >platform/native/TessarinFoundation-native.abi.xz
#
# tests/install/abi_test.sh compares a build with what is stored.
set -euo pipefail

# Source files are named as seen from the project's directory, wherever the build directory is.
project=$(cd "$(dirname "$0")/.." && pwd)
abidw --headers-dir "$project/include" --drop-private-types --exported-interfaces-only --no-corpus-path \
    --no-comp-dir-path --no-show-locs --type-id-style hash "$1" |
    sed -E "s#^( *<abi-instr.* path=')(\.{0,2}/)*(${project#/}/)?#\1#"
