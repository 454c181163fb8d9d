#!/usr/bin/env bash
# Installs a build, moves what was installed, and builds and runs applications with it as their authors would:
#
#   install_test.sh BUILD_DIRECTORY SOURCE_DIRECTORY PLATFORM COMPILER...
set -uo pipefail

build=$1
source=$2
platform=$3
shift 3
compilers=("$@")
here=$source/tests/install
[[ $platform == embedded ]] && package=TessarinFoundation || package=TessarinFoundation-native
source "$here/checks.sh"
export -n LD_LIBRARY_PATH

# prints_expected WHAT COMMAND...: the application works.
prints_expected() {
    local what=$1
    shift
    "$@" >"$work/output" 2>"$work/errors" || complain "$what: exit status $?: $(cat "$work/errors")"
    diff "$here/expected_output.txt" "$work/output" >"$work/difference" ||
        complain "$what: not the expected output: $(cat "$work/difference")"
}

started=$SECONDS
section() {
    echo "$1 ($((SECONDS - started)) s)"
}

# ---- what is installed -----------------------------------------------------------------------------------------------

section "What is installed"
quietly "cmake --install" cmake --install "$build" --prefix "$work/installed" || exit 1
prefix=$work/moved
mv "$work/installed" "$prefix"
libdir=$(dirname "$(find "$prefix" -name "lib$package.a")")
library=$libdir/lib$package.so.A

diff <(cd "$source/include" && find TessarinFoundation TessarinPlatform -type f | sort) \
    <(cd "$prefix/include" && find . -type f | sed 's|^\./||' | sort) || complain "not the public headers"

files=$(cd "$libdir" && find . -maxdepth 1 ! -type d | sort | xargs)
[[ $files == "./lib$package.a ./lib$package.so ./lib$package.so.A" ]] || complain "not the library's files: $files"
readelf --dynamic "$library" >"$work/dynamic"
grep -qF "soname: [lib$package.so.A]" "$work/dynamic" || complain "not the name inside the library"
! grep -E 'R(UN)?PATH|TEXTREL' "$work/dynamic" || complain "a run path or a text relocation in the library"

diff "$source/platform/$platform/exported_symbols.txt" <("$source/tools/list_exported_symbols.sh" "$library") ||
    complain "the exported names (>) are not those of platform/$platform/exported_symbols.txt (<);" \
        "where that is meant, tools/list_exported_symbols.sh prints the new list"

for directory in "$source" "$build" "$work"; do
    found=$(grep -rlaF "$directory" "$prefix")
    [[ -z $found ]] || complain "$directory is named in: $found"
done
# In what is read as text, no absolute path at all but in comments.
found=$(grep -rnIE '(^|[" ;=(])/[a-z]+/' "$prefix" | grep -vE ':[0-9]+: *(#|//)')
[[ -z $found ]] || complain "absolute paths: $found"

# ---- CMake -----------------------------------------------------------------------------------------------------------

for compiler in "${compilers[@]}"; do
    name=$(basename "$compiler")
    section "find_package, $name"
    consumers=$work/consumers-$name
    quietly "find_package, $name: configuring" cmake -S "$here/find_package" -B "$consumers" -G Ninja \
        -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_PREFIX_PATH="$prefix" \
        -DPLATFORM="$platform" || continue
    quietly "find_package, $name: building" cmake --build "$consumers" || continue
    programs=(default_20 shared_23 static_23)
    [[ $platform == embedded ]] || programs+=(objective_c_shared objective_c_static)
    for program in "${programs[@]}"; do
        prints_expected "find_package, $name, $program" "$consumers/$program"
    done
    [[ $(ldd "$consumers/default_20") == *"lib$package.so.A => $library "* ]] ||
        complain "find_package, $name: the default is not the shared library"
    [[ $(ldd "$consumers/static_23") != *TessarinFoundation* ]] ||
        complain "find_package, $name: the static library is not linked statically"
done

# ---- pkg-config ------------------------------------------------------------------------------------------------------

section "pkg-config"
export PKG_CONFIG_PATH=$libdir/pkgconfig
unset PKG_CONFIG_LIBDIR
[[ $(pkg-config --modversion $package) == "$(pkg-config --modversion "$libdir/pkgconfig/$package.pc")" ]] ||
    complain "pkg-config finds another package"
read -ra definitions <<<"$([[ $platform == embedded ]] || echo -DCONSUMER_IS_NATIVE)"
read -ra flags <<<"$(pkg-config --cflags --libs $package)"
compiler=${compilers[0]}
quietly "pkg-config, shared" "$compiler" -std=c++20 "${definitions[@]}" "$here/consumer.cpp" "${flags[@]}" \
    -o "$work/pkg_config_shared" &&
    prints_expected "pkg-config, shared" env LD_LIBRARY_PATH="$libdir" "$work/pkg_config_shared"

# With the static library alone, since a linker prefers a shared one.
cp -R "$prefix" "$work/static"
rm "$work/static/${libdir#"$prefix/"}"/*.so*
export PKG_CONFIG_PATH=$work/static/${libdir#"$prefix/"}/pkgconfig
read -ra flags <<<"$(pkg-config --static --cflags --libs $package)"
quietly "pkg-config, static" "$compiler" -std=c++20 "${definitions[@]}" -DCONSUMER_IS_STATIC "$here/consumer.cpp" \
    -o "$work/pkg_config_static" "${flags[@]}" && prints_expected "pkg-config, static" "$work/pkg_config_static"

if [[ $platform == native ]]; then
    read -ra objective_c <<<"$(gnustep-config --objc-flags) -MF $work/dependencies -Wno-multichar"
    quietly "pkg-config, Objective-C, static" gcc "${objective_c[@]}" "$here/consumer.m" -o "$work/objective_c_static" \
        "${flags[@]}" && prints_expected "pkg-config, Objective-C, static" "$work/objective_c_static"
    export PKG_CONFIG_PATH=$libdir/pkgconfig
    read -ra flags <<<"$(pkg-config --cflags --libs $package)"
    quietly "pkg-config, Objective-C, shared" gcc "${objective_c[@]}" "$here/consumer.m" -o "$work/objective_c_shared" \
        "${flags[@]}" &&
        prints_expected "pkg-config, Objective-C, shared" env LD_LIBRARY_PATH="$libdir" "$work/objective_c_shared"
fi

# ---- add_subdirectory ------------------------------------------------------------------------------------------------

section "add_subdirectory"
export REUSED_OBJECTS=$build/CMakeFiles/tessarin_objects.dir
for static in OFF ON; do
    quietly "add_subdirectory, configuring" cmake -S "$here/add_subdirectory" -B "$work/holder-$static" -G Ninja \
        -DCMAKE_CXX_COMPILER="${compilers[0]}" -DCMAKE_BUILD_TYPE=Debug -DLIBRARY_DIRECTORY="$source" \
        -DTESSARIN_PLATFORM="$platform" -DSTATIC=$static \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$here/add_subdirectory/reuse_objects.sh" \
        -DCMAKE_OBJC_COMPILER_LAUNCHER="$here/add_subdirectory/reuse_objects.sh" &&
        quietly "add_subdirectory, building" cmake --build "$work/holder-$static" --target consumer
done
prints_expected "add_subdirectory, static" "$work/holder-ON/consumer"

# ---- bundles ---------------------------------------------------------------------------------------------------------

# loads_its_own WHAT BUNDLE: moved elsewhere, the application has the library from the framework beside it.
loads_its_own() {
    local what=$1 bundle=$work/elsewhere/Player.app framework
    rm -rf "$work/elsewhere"
    mkdir "$work/elsewhere"
    cp -R "$2" "$bundle"
    framework=$bundle/Contents/Frameworks/TessarinFoundation.framework
    program=$(echo "$bundle"/Contents/MacOS/*)

    (cd / && env -i "$program" loaded) >"$work/output" 2>"$work/errors" || complain "$what: $(cat "$work/errors")"
    diff <(cat "$here/expected_output.txt" && echo "loaded $framework/Versions/A/TessarinFoundation") "$work/output" ||
        complain "$what: not the expected output"
    [[ $(readelf --dynamic "$program" | grep -E 'R(UN)?PATH') == \
        *'[$ORIGIN/../Frameworks/TessarinFoundation.framework/Versions/A]' ]] || complain "$what: not the expected run path"

    [[ $(readlink "$framework/Versions/Current") == A ]] || complain "$what: Versions/Current is not A"
    for link in TessarinFoundation Headers Resources; do
        [[ $(readlink "$framework/$link") == Versions/Current/$link && -e $framework/$link ]] || complain "$what: $link"
    done
    [[ -f $framework/Versions/A/TessarinFoundation && ! -L $framework/Versions/A/TessarinFoundation ]] ||
        complain "$what: the library is not in the framework"
    grep -qF '<string>FMWK</string>' "$framework/Resources/Info.plist" || complain "$what: Info.plist"
    ! grep -n @ "$framework/Resources/Info.plist" || complain "$what: unfilled places in Info.plist"
    [[ -f $framework/Headers/TSSRAudio.h && -f $framework/Headers/TessarinPlatform/AudioTypes.h ]] ||
        complain "$what: no headers"
}

section "Bundles"
loads_its_own "bundle, build tree" "$build/tests/install/bundled_player.app"
loads_its_own "bundle, add_subdirectory" "$work/holder-OFF/consumer.app"
loads_its_own "bundle, installed package" "$work/consumers-$(basename "$compiler")/player.app"
# The bundle that the documentation shows, with its texts, where the platform looks for them in such a place.
if [[ $platform == embedded ]]; then
    quietly "examples/bundle: configuring" cmake -S "$source/examples/bundle" -B "$work/player" -G Ninja \
        -DCMAKE_CXX_COMPILER="${compilers[0]}" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_PREFIX_PATH="$prefix" &&
        quietly "examples/bundle: building" cmake --build "$work/player" &&
        quietly "examples/bundle: installing" cmake --install "$work/player" --prefix "$work/applications"
    rm -rf "$work/player"
    player=$work/applications/player.app/Contents/MacOS/player
    [[ $(cd / && env -i "$player") == "Length of the recording: 1 : 02 : 05" ]] || complain "examples/bundle, in English"
    [[ $(cd / && env -i LANG=de_DE.UTF-8 "$player") == "Dauer der Aufnahme: 1 : 02 : 05" ]] ||
        complain "examples/bundle, in German"
fi
framework=$work/elsewhere/Player.app/Contents/Frameworks/TessarinFoundation.framework
[[ $platform == embedded ]] || definitions+=(-DTESSARIN_NATIVE)
quietly "the framework's headers" "$compiler" -std=c++20 -fsyntax-only "${definitions[@]}" -I"$framework/Headers" \
    "$here/consumer.cpp"

section "Done"
if [[ $failures -ne 0 ]]; then
    echo "$failures failures" >&2
    exit 1
fi
