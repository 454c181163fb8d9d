#!/usr/bin/env bash
# Opens the application on a display of its own and takes a picture of it (packages xvfb, imagemagick).
#
#   take_screenshot.sh PROGRAM SESSION_FILE COMPONENTS PICTURE
set -euo pipefail
if [[ $# -ne 4 ]]; then
    sed -n '2,4s/^# \?//p' "$0" >&2
    exit 2
fi
export PROGRAM=$1 SESSION=$2 COMPONENTS=$3 PICTURE=$4

# No window manager runs there, so that the title bars are left to GNUstep.
xvfb-run --auto-servernum --server-args "-screen 0 1440x900x24" bash -c '
    "$PROGRAM" -SessionFile "$SESSION" -Components "$COMPONENTS" -GSX11HandlesWindowDecorations NO &
    program=$!
    trap "kill $program" EXIT
    sleep 3 # until everything is drawn
    kill -0 $program || exit 1
    import -window root -crop 840x560+0+0 +repage "$PICTURE" # where the application is
'
