#!/usr/bin/env bash
# Has gdb show objects, and compares with what they hold: printers_test.sh GDB PROGRAM PRINTERS
set -euo pipefail
export LC_ALL=C.UTF-8
gdb=$1 program=$2 printers=$3

shown=$("$gdb" --quiet --batch --nx -iex "set auto-load off" -ex "set print pretty off" -ex "set width 0" \
    -ex "source $printers" -ex "break stop" -ex run -ex up \
    -ex "print missing" -ex "print narrow" -ex "print wide" -ex "print yes" -ex "print negative" -ex "print largest" \
    -ex "print half" -ex "print effects" -ex "print settings" -ex "print indexes" \
    -ex "print orange" -ex "print gray" -ex "print named" -ex "print other" "$program" 2>&1 |
    sed -n 's/^\$[0-9]* = //p' | sed 's/: 0x[0-9a-f]*>/>/')

diff <(echo "$shown") - <<'EXPECTED'
nil
"a \"quoted\" line"
"Größe: ∞"
YES
-5
18446744073709551615
0.5
NSArray of 3 = {"Delay", -5, NSArray of 0}
NSMutableDictionary of 1 = {["gain"] = 0.5}
NSMutableIndexSet {2-6, 4096-12287, 1000000}
NSColor genericRGB 1 0.5 0, alpha 0.25
NSColor deviceGray 0.5, alpha 1
<NSColor>
<NSNull>
EXPECTED
echo "gdb shows every object as it is."
