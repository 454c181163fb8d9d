#!/usr/bin/env bash
# The application with a window, on a display of the test's own: what it keeps it finds again.
#
#   session_window_test.sh PROGRAM COMPONENTS KEPT_SESSION
#
# KEPT_SESSION.plist is a session, KEPT_SESSION.txt what is printed of it.
set -euo pipefail
program=$1
components=$2
kept_session=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
session=$work/session.plist

fail() {
    echo "$*" >&2
    exit 1
}

# opens ARGUMENTS...: starts the application and kills it when it has kept its session, which it does with every change.
opens() {
    touch "$work/before"
    "$program" -SessionFile "$session" -Components "$components" -GSX11HandlesWindowDecorations NO "$@" \
        2>"$work/err" &
    local application=$! attempt
    for ((attempt = 0; attempt < 300; ++attempt)); do
        [[ ! $session -nt $work/before ]] || break
        sleep 0.1
    done
    sleep 0.5 # it goes on running
    [[ -z ${picture-} ]] || import -window root "$picture"
    kill -KILL "$application" || fail "it ended by itself: $(cat "$work/err")"
    wait "$application" 2>/dev/null || true
    [[ $session -nt $work/before ]] || fail "nothing was kept: $(cat "$work/err")"
}

printed() { "$program" -SessionFile "$session" -Print YES; }

opens -Effect "Acme: aufx; dely; Acme"
printed >"$work/first"
grep -qx 'effect         Acme: aufx; dely; Acme' "$work/first" || fail "another effect: $(cat "$work/first")"
grep -qx 'window         top left at 200, 700' "$work/first" || fail "another corner: $(cat "$work/first")"

picture=$work/picture.png opens
printed | diff "$work/first" - || fail "another session after the next start"

# The screen shows more than an empty display does: the window's parts in their colours.
read -r width height colours < <(identify -format '%w %h %k\n' "$work/picture.png")
[[ $width == 1440 && $height == 900 ]] || fail "a picture of $width by $height"
((colours >= 16)) || fail "a picture of $colours colours"

# What somebody else writes is found too, and keys that are not the application's stay.
sed -i 's|<real>75</real>|<real>50</real>|; s|<real>700</real>|<real>650</real>|
        s|<key>meters</key>|<key>recent</key><string>mix</string><key>meters</key>|' "$session"
opens
printed >"$work/third"
grep -q 'saturation 50,' "$work/third" || fail "another colour: $(cat "$work/third")"
grep -qx 'window         top left at 200, 650' "$work/third" || fail "another corner: $(cat "$work/third")"
grep -q '<string>mix</string>' "$session" || fail "a key is gone: $(cat "$session")"

# A session whose every part is damaged is a new one, and can be opened.
rm "$session"
printed >"$work/new"
cat >"$session" <<END
<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0"><dict>
<key>effect</key><array/>
<key>streamFormat</key><array>$(printf '<string>a</string>%.0s' {1..9})</array>
<key>color</key><dict><key>Hue</key><array/></dict>
<key>order</key><dict><key>keypath</key><string>name</string><key>ascending</key><true/>
<key>selector</key><string>hide:</string></dict>
<key>meters</key><string>on</string>
<key>windowTopLeftPoint</key><array><dict/><integer>1</integer></array>
</dict></plist>
END
printed | diff "$work/new" - || fail "another session of damaged parts"
opens
printed | diff "$work/new" - || fail "another session after the damaged one was opened"

# What the program in C++ prints of a session, this one prints as well.
"$program" -SessionFile "$kept_session.plist" -Print YES | diff - "$kept_session.txt" || fail "prints another session"

echo '<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><array/></plist>' >"$session"
! printed 2>"$work/err" || fail "an array is taken for a session"
grep -q 'cannot be read as a property list of a dictionary' "$work/err" || fail "another reason: $(cat "$work/err")"

# What is there and cannot be read is no new session: here a folder, which even root cannot read as a file.
rm "$session"
mkdir "$session"
! printed 2>"$work/err" || fail "what cannot be read is taken for a new session"
grep -q 'cannot be read' "$work/err" || fail "another reason: $(cat "$work/err")"
echo "all as expected"
