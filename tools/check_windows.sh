#!/usr/bin/env bash
# Builds the library and its tests for Windows and runs them under Wine. Not part of ./check, which builds enough.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install_packages.sh g++ cmake ninja-build g++-mingw-w64-x86-64-posix wine64 libgtest-dev
cmake --preset windows >/dev/null
cmake --build --preset windows
ctest --preset windows
