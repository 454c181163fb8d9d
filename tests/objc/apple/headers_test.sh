#!/usr/bin/env bash
# Compiles the public headers as Clang for macOS reads them, in Objective-C and Objective-C++, with automatic reference
# counting and without, against declarations that stand in for the system's own:
#
#   headers_test.sh CLANG SOURCE_DIRECTORY
#
# Nothing is linked or run.
set -uo pipefail

clang=$1
source=$2
here=$source/tests/objc/apple
command -v "$clang" >/dev/null || { echo "$clang is missing" >&2 && exit 1; }
source "$source/tests/install/checks.sh"

# Every header of the system that ours import is the one file of its framework.
grep -rhoE '# *import <(Foundation|AppKit|AudioToolbox)/[^>]+>' "$source/include" | sed -E 's/.*<(.*)>/\1/' |
    sort -u >"$work/imported"
[[ $(wc -l <"$work/imported") -gt 10 ]] || complain "the headers import nothing"
while read -r header; do
    mkdir -p "$work/system/$(dirname "$header")"
    echo "#import \"$here/$(dirname "$header").h\"" >"$work/system/$header"
done <"$work/imported"

options=(-ffreestanding -isysroot "$work" -isystem "$work/system" -I "$source/include" -Wall -Wextra -Werror)
compile() { # LANGUAGE ARCHITECTURE ARC OPTION...
    local language=$1 architecture=$2 counting=-fno-objc-arc
    [[ $3 == 0 ]] || counting=-fobjc-arc
    shift 3
    [[ $language == objective-c ]] || set -- -std=c++20 -nostdinc++ "$@"
    "$clang" --target="$architecture-apple-macos11.0" -x "$language" $counting "${options[@]}" "$@"
}

for language in objective-c objective-c++; do
    for architecture in arm64 x86_64; do
        for arc in 0 1; do
            what="$language, $architecture, $([[ $arc == 1 ]] && echo "counted automatically" || echo "counted by hand")"
            compile $language $architecture $arc -DEXPECTED_ARC=$arc -fsyntax-only "$here/client.m" ||
                complain "$what: the client"
            # Each alone, and twice.
            for header in "$source"/include/TessarinFoundation/*.h; do
                printf '#import "%s"\n#include "%s"\n' "$header" "$header" >"$work/alone.m"
                compile $language $architecture $arc -fsyntax-only "$work/alone.m" ||
                    complain "$what: $(basename "$header") alone"
            done
        done
    done
done

# What is owned, as automatic reference counting sees it: an initialiser consumes its receiver, and its result is the
# caller's; what is stored through a pointer of the audio functions is the caller's too, and is retained just once, to be
# returned from here.
calls_in() { # FUNCTION: what it calls of the runtime, a line each
    sed -n "/^define .*@$1(/,/^}/p" "$work/client.ll" | grep -oE '@llvm\.objc\.[A-Za-z]+'
}
compile objective-c arm64 1 -DEXPECTED_ARC=1 -O1 -S -emit-llvm "$here/client.m" -o "$work/client.ll" ||
    complain "the client is not compiled"
[[ $(calls_in initialisedDescriptor) == *autoreleaseReturnValue && \
    $(calls_in initialisedDescriptor) != *retainAutoreleasedReturnValue* ]] ||
    complain "tessarin_initWithConfiguration: is no initialiser:" "$(calls_in initialisedDescriptor)"
[[ $(calls_in storedManufacturer | grep -cx '@llvm.objc.retain') -eq 1 ]] ||
    complain "a manufacturer's name is not retained once:" "$(calls_in storedManufacturer)"

# This would notice.
printf '#import <TessarinFoundation/TSSRUniqueIndexer.h>\nvoid change(TSSRUniqueIndexer* indexer);\n%s\n' \
    'void change(TSSRUniqueIndexer* indexer) { indexer.usedIndexes = nil; }' >"$work/wrong.m"
compile objective-c arm64 0 -fsyntax-only "$work/wrong.m" 2>/dev/null && complain "whatever is written is compiled"

[[ $failures -eq 0 ]] && echo "The headers are what Clang for macOS understands."
exit $((failures != 0))
