#!/usr/bin/env bash
# Examines the framework for macOS that tools/build_macos_framework.sh builds, with LLVM's tools, and compiles and links a
# client of it. Nothing is run.
#
#   tests/install/check_macos_framework.sh [--update] [framework]
#
# --update writes tests/install/macos_exported_symbols.txt anew instead of comparing with it.
set -euo pipefail
cd "$(dirname "$0")/../.."
here=tests/install
exported=$here/macos_exported_symbols.txt
stubs=cmake/apple-stubs

is_updating=false
if [[ ${1:-} == --update ]]; then
    is_updating=true
    shift
fi
framework=${1:-build/macos/TessarinFoundation.framework}
contents=$framework/Versions/A
binary=$contents/TessarinFoundation
build=build/macos
zig=${ZIG:-$(command -v zig || echo "$build/zig/package/zig")}
export ZIG_GLOBAL_CACHE_DIR=$PWD/$build/zig-cache ZIG_LOCAL_CACHE_DIR=$PWD/$build/zig-cache
export LC_ALL=C

source "$here/checks.sh"
# expect what wanted found
expect() {
    if [[ $2 == "$3" ]]; then
        echo "ok: $1"
    else
        complain "$1"
        diff <(echo "$2") <(echo "$3") | sed 's/^</wanted:/; s/^>/found: /' >&2 || true
    fi
}

[[ -f $binary ]] || { echo "There is no $binary; tools/build_macos_framework.sh makes it." >&2 && exit 1; }

# ---- Layout
for link in Versions/Current:A TessarinFoundation:Versions/Current/TessarinFoundation Headers:Versions/Current/Headers \
    Resources:Versions/Current/Resources; do
    expect "${link%%:*} leads to ${link#*:}" "${link#*:}" "$(readlink "$framework/${link%%:*}")"
done
project_version=$(sed -n 's/^project(TessarinFoundation VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
expect "Info.plist names the binary, the identifier and the version" \
    "TessarinFoundation tessarin.TessarinFoundation FMWK $project_version 11.0" \
    "$(python3 -c 'import plistlib, sys
information = plistlib.load(open(sys.argv[1], "rb"))
print(*(information[key] for key in ("CFBundleExecutable", "CFBundleIdentifier", "CFBundlePackageType",
                                     "CFBundleShortVersionString", "LSMinimumSystemVersion")))' \
        "$contents/Resources/Info.plist")"
expect "every public header is there" "$(cd include && find . -name '*.h' | sed 's|^./TessarinFoundation/|./|' | sort)" \
    "$(cd "$contents/Headers" && find . -name '*.h' | sort)"
expect "no header names another as the source tree does" "" \
    "$(grep -rEl '^# *(include|import) +"' "$contents/Headers" || true)"

# ---- The binary
expect "the binary is for both architectures" "arm64 x86_64" \
    "$(llvm-lipo-14 -archs "$binary" | tr ' ' '\n' | sort | xargs)"
expect "it names no file of the machine that built it" "" \
    "$(strings -a "$binary" | grep -F -e "$PWD" -e /home/ -e /root/ | head -n 3 || true)"

# Names that a library's stub lists, as the compiler writes them.
listed_in_stub() {
    sed -n -E -e 's/^      - (.*)$/\1/p' -e 's/^    objc-eh-types: +\[ (.*) \]$/_OBJC_EHTYPE_$_\1/p' "$1" | sort
}
# What a binary requires, as lines "symbol from library".
required_by() {
    llvm-nm-14 -m -u "$1" | sed -n -E 's/^ +\(undefined\) (weak )?external ([^ ]+) \((.*)\)$/\2 \3/p' | sort
}

# How many functions are called when a binary is loaded, by the sizes of the sections that list them.
initialisers() {
    awk '/ __mod_init_func / { print "0x" $3 }' | python3 -c 'import sys; print(sum(int(size, 16) for size in sys.stdin) // 8)'
}

for architecture in arm64 x86_64; do
    echo "---- $architecture"
    thin=$work/$architecture
    llvm-lipo-14 "$binary" -thin "$architecture" -output "$thin"
    commands=$(llvm-otool-14 -l "$thin")

    expect "install name" "@executable_path/../Frameworks/TessarinFoundation.framework/Versions/A/TessarinFoundation" \
        "$(llvm-otool-14 -D "$thin" | tail -n 1)"
    expect "compatibility and current version" "1.0.0 $project_version" \
        "$(awk '/cmd LC_ID_DYLIB/ { inside = 1 } inside && /current version/ { current = $3 }
                inside && /compatibility version/ { print $3, current; exit }' <<<"$commands")"
    expect "the first macOS that it runs on" "macos 11.0" \
        "$(awk '/cmd LC_BUILD_VERSION/ { inside = 1 } inside && /platform/ { platform = $2 }
                inside && /minos/ { print platform, $2; exit }' <<<"$commands")"
    expect "the libraries that it requires" "$(cat $here/macos_libraries.txt)" \
        "$(llvm-otool-14 -L "$thin" | sed -n 's/^\t\(\/[^ ]*\) (.*/\1/p' | sort)"
    expect "a signature, without which arm64 loads nothing" "$([[ $architecture == arm64 ]] && echo 1 || echo 0)" \
        "$(grep -c 'cmd LC_CODE_SIGNATURE' <<<"$commands" || true)"

    # What is exported, as the dynamic linker finds it. BOOL is a signed char on x86_64.
    llvm-objdump-14 --macho --exports-trie "$thin" | sed -n 's/^0x[0-9A-F]*  \([^ ]*\).*/\1/p' >"$work/exports"
    shown=$(sed 's/^_//' "$work/exports" | llvm-cxxfilt-14 | sed 's/signed char/bool/g' | sort -u)
    if $is_updating && [[ $architecture == arm64 ]]; then
        echo "$shown" >$exported
    fi
    expect "exported symbols are those of $exported" "$(cat $exported)" "$shown"

    # What is required of others: found in the library that the linker found it in, by its stub.
    required_by "$thin" >"$work/required"
    expect "every required symbol is bound to a library" "$(llvm-nm-14 -u "$thin" | wc -l)" \
        "$(grep -c ' from ' "$work/required")"
    while read -r stub; do
        name=$(basename "$stub" .tbd)
        expect "what it requires of $name is listed in the stub" "" \
            "$(comm -23 <(sed -n "s/ from $name\$//p" "$work/required" | sort) <(listed_in_stub "$stub"))"
        # Local symbols count too.
        [[ $stub == */usr/lib/* ]] || expect "nothing of $name is defined a second time" "" \
            "$(comm -12 <(llvm-nm-14 -U --format=just-symbols "$thin" | sort -u) <(listed_in_stub "$stub"))"
    done < <(find $stubs -name '*.tbd' | sort)
    cat "$work/required" >>"$work/required_by_any"

    # What attaches operations and makes classes is referred to by nothing else.
    expect "every initialiser of the object files is in the binary" \
        "$(find "$build/$architecture/CMakeFiles" -name '*.o' -exec llvm-objdump-14 --macho --section-headers {} + |
            initialisers)" \
        "$(llvm-objdump-14 --macho --section-headers "$thin" | initialisers)"

    # The encoding of TSSRUniqueIndexer's freeIndex: and setShouldLock:.
    boolean=$([[ $architecture == arm64 ]] && echo B || echo c)
    for encoding in "$boolean@:q" "v@:$boolean"; do
        expect "methods are encoded as $encoding" 1 "$(strings -n 4 -a "$thin" | grep -cxF "$encoding" || true)"
    done
done

echo "---- A client in C++"
if [[ -x $zig ]]; then
    library_directory=$("$zig" env | python3 -c 'import json, sys; print(json.load(sys.stdin)["lib_dir"])')
    for architecture in arm64 x86_64; do
        "$zig" c++ -target "${architecture/arm64/aarch64}-macos.11.0" -std=c++20 -O2 -Wall -Wextra -Werror \
            -F "$(dirname "$framework")" -c $here/macos_client.cpp -o "$work/client.o" ||
            complain "the client is compiled for $architecture"
        clang++ --target="$architecture-apple-macos11.0" -fuse-ld=lld -mlinker-version=609 \
            --ld-path="$(command -v ld64.lld || command -v ld64.lld-14)" -isysroot $stubs -nodefaultlibs \
            "$work/client.o" -F "$(dirname "$framework")" -framework TessarinFoundation -framework CoreFoundation \
            -framework CoreServices -lobjc -lc++ -L "$library_directory/libc/darwin" -lSystem.11 -o "$work/client" ||
            complain "the client is linked for $architecture"
        required_by "$work/client" >>"$work/required_by_any"
        expect "the client for $architecture loads the framework from its bundle" 1 \
            "$(llvm-otool-14 -L "$work/client" | grep -c '@executable_path/../Frameworks/TessarinFoundation.framework/')"
        expect "it looks structures up apart where the runtime does" "$([[ $architecture == x86_64 ]] && echo 1 || echo 0)" \
            "$(llvm-nm-14 -u "$work/client.o" | grep -c _class_getMethodImplementation_stret || true)"
    done
else
    complain "Zig is neither in PATH nor in build/macos, so that no client was compiled"
fi

echo "---- Stubs"
while read -r stub; do
    name=$(basename "$stub" .tbd)
    expect "the stub of $name lists nothing that is not used" "" \
        "$(comm -13 <(sed -n "s/ from $name\$//p" "$work/required_by_any" | sort -u) <(listed_in_stub "$stub"))"
done < <(find $stubs -name '*.tbd' | sort)

if [[ $failures -gt 0 ]]; then
    echo "$failures checks failed." >&2
    exit 1
fi
echo "All checks of the framework passed; it was not run."
