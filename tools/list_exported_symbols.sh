#!/usr/bin/env bash
# Prints the names that a shared library exports, as a C++ author writes them:
#
#   tools/list_exported_symbols.sh build/dev/libTessarinFoundation.so >platform/embedded/exported_symbols.txt
#   tools/list_exported_symbols.sh build/native/libTessarinFoundation-native.so >platform/native/exported_symbols.txt
set -euo pipefail

nm --dynamic --defined-only --demangle --without-symbol-versions "$1" | grep -v ' A TESSARIN_' | cut -d' ' -f3- |
    LC_ALL=C sort -u
