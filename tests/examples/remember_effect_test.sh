#!/usr/bin/env bash
# Runs remember_effect as its user would: remember_effect_test.sh PROGRAM COMPONENTS
set -uo pipefail

program=$1
components=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
preferences=$work/preferences.plist
failures=0

complain() {
    echo "FAILED: $*" >&2
    failures=$((failures + 1))
}

# run ARGUMENT...: leaves what the program wrote in $work/out and $work/err, and its exit status in $status.
run() {
    "$program" "$@" >"$work/out" 2>"$work/err"
    status=$?
}

# succeeds WHAT ARGUMENT...
succeeds() {
    local what=$1
    shift
    run "$@"
    [[ $status -eq 0 ]] || complain "$what: exit status $status: $(cat "$work/err")"
    [[ ! -s $work/err ]] || complain "$what: wrote to standard error: $(cat "$work/err")"
}

# prints WHAT LINE: the last run wrote that line.
prints() {
    grep -qxF -- "$2" "$work/out" || complain "$1: no line \"$2\" in: $(cat "$work/out")"
}

# refuses STATUS TEXT ARGUMENT...: the exit status, and one line on standard error that holds the text; nothing on
# standard output, and the preferences file as it was.
refuses() {
    local expected=$1 text=$2
    shift 2
    rm -rf "$work/before"
    [[ ! -e $preferences ]] || cp -p "$preferences" "$work/before"
    run "$@"
    [[ $status -eq $expected ]] || complain "$*: exit status $status instead of $expected"
    [[ $(wc -l <"$work/err") -eq 1 ]] || complain "$*: not one line on standard error: $(cat "$work/err")"
    grep -qF -- "$text" "$work/err" || complain "$*: no \"$text\" in: $(cat "$work/err")"
    [[ ! -s $work/out ]] || complain "$*: wrote to standard output: $(cat "$work/out")"
    if [[ -e $work/before ]]; then
        cmp -s "$preferences" "$work/before" || complain "$*: the preferences file changed"
    else
        [[ ! -e $preferences ]] || complain "$*: a preferences file appeared"
    fi
    local left
    left=$(find "$work" -maxdepth 1 -name 'preferences.plist?*')
    [[ -z $left ]] || complain "$*: left behind: $left"
}

property_list() {
    printf '%s\n' '<?xml version="1.0" encoding="UTF-8"?>' \
        '<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">' \
        '<plist version="1.0">' "$1" '</plist>'
}

# kept IDENTIFIER FORMAT: makes a preferences file.
kept() {
    property_list "<dict><key>effect</key>$1<key>streamFormat</key>$2</dict>" >"$preferences"
}

# bundle NAME DICTIONARY...: makes a bundle that declares components, and prints its path.
bundle() {
    local name=$1
    shift
    mkdir -p "$work/$name.component/Contents"
    property_list "<dict><key>AudioComponents</key><array>$*</array></dict>" \
        >"$work/$name.component/Contents/Info.plist"
    echo "$work/$name.component"
}

# component TYPE SUBTYPE MANUFACTURER NAME [VERSION]
component() {
    echo "<dict><key>type</key><string>$1</string><key>subtype</key><string>$2</string>" \
        "<key>manufacturer</key><string>$3</string><key>name</key><string>$4</string>" \
        "<key>version</key>${5:-<integer>1</integer>}</dict>"
}

numbers() {
    local number
    echo "<array>"
    for number in "$@"; do echo "<integer>$number</integer>"; done
    echo "</array>"
}

offered=(--components "$components")
place=(--preferences "$preferences")
stereo=(--rate 48000 --channels 2 --bits 24)
good_identifier="<string>Acme: aufx; dely; Acme</string>"
good_format=$(numbers 48000 1819304813 12 6 1 6 2 24 0)

# ---- what works ------------------------------------------------------------------------------------------------------

succeeds help --help
prints help "Usage:"

succeeds list list "${offered[@]}"
prints list "aufx dely Acme  Acme: Delay, version 1.2.0"
prints list "aumu poly FnTh  Fennel & Thyme: Poly Synth, version 1.5.2"
prints list "augn tone FnTh  Fennel & Thyme: Tone Generator, version 1.0.0"
[[ $(wc -l <"$work/out") -eq 7 ]] || complain "list: not seven components"

succeeds "list of bundles" list --components "$components/AcmeDynamics.component" \
    "$components/AcmeDelay.component/Contents/Info.plist" --components "$components/QuillmoorReverb.component"
[[ $(wc -l <"$work/out") -eq 4 ]] || complain "list of bundles: not four components"

# remembers NAME RATE CHANNELS BITS: what restore prints is what choose printed.
remembers() {
    succeeds "choose $*" choose "$1" --rate "$2" --channels "$3" --bits "$4" "${offered[@]}" "${place[@]}"
    cp "$work/out" "$work/chosen"
    succeeds "restore $*" restore "${offered[@]}" "${place[@]}"
    cmp -s "$work/out" "$work/chosen" || complain "$*: restored something else: $(diff "$work/chosen" "$work/out")"
}

remembers Delay 48000 2 24
prints restore "component     Acme: Delay"
prints restore "manufacturer  Acme"
prints restore "identifier    Acme: aufx; dely; Acme"
prints restore "sample rate   48000 frames per second"
prints restore "format        lpcm, flags 12"
prints restore "frame         6 bytes, channels: 2"
prints restore "channel       24 bits"
remembers "Acme: Delay" 44100 1 16
remembers "Fennel & Thyme: Poly Synth" 96000 8 32
prints restore "format        lpcm, flags 9"
remembers "Hall Reverb" 44055.944 2 16
remembers "Tone Generator" 1000000 1024 8
remembers Limiter 1 1 8

property_list '<dict><key>windowFrame</key><string>0 0 800 600</string><key>recent</key><array>
    <string>a &amp; b</string><true/><real>0.5</real></array><key>effect</key><integer>7</integer></dict>' >"$preferences"
remembers Delay 48000 2 24
for kept in windowFrame '<string>0 0 800 600</string>' '<string>a &amp; b</string>' '<true/>' '<real>0.5</real>' \
    '<string>Acme: aufx; dely; Acme</string>' '<integer>1819304813</integer>'; do
    grep -qF -- "$kept" "$preferences" || complain "no $kept in: $(cat "$preferences")"
done

(cd "$work" && "$program" choose Delay "${stereo[@]}" "${offered[@]}" --preferences plain.plist >/dev/null) \
    || complain "a file name without a directory is refused"
[[ -s $work/plain.plist ]] || complain "a file name without a directory is not written"

newer=$(bundle Newer "$(component aufx dely Acme 'Acme: Delay' '<integer>131072</integer>')")
succeeds "two versions" choose Delay "${stereo[@]}" --components "$components" "$newer" "${place[@]}"

nameless=$(bundle Nameless "$(component aufx solo Acme 'Solo')")
succeeds "no manufacturer name" choose Solo "${stereo[@]}" --components "$nameless" "${place[@]}"
prints "no manufacturer name" "manufacturer  (none)"
prints "no manufacturer name" "identifier    aufx; solo; Acme"
succeeds "no manufacturer name" restore --components "$nameless" "${place[@]}"

# ---- the command line ------------------------------------------------------------------------------------------------

for existing in no yes; do
    rm -f "$preferences"
    [[ $existing == no ]] || kept "$good_identifier" "$good_format"
    refuses 2 "no command"
    refuses 2 'unknown command "remember"' remember
    refuses 2 "list needs --components" list
    refuses 2 "--components needs a value" list --components
    refuses 2 "--components needs a value" list --components ""
    refuses 2 'unknown option "--rates"' choose Delay --rates 48000
    refuses 2 "list takes no --rate" list --rate 48000
    refuses 2 'unexpected argument "all"' list all "${offered[@]}"
    refuses 2 "choose needs the name" choose "${stereo[@]}" "${offered[@]}" "${place[@]}"
    refuses 2 "choose needs --rate" choose Delay --channels 2 --bits 24 "${offered[@]}" "${place[@]}"
    refuses 2 "choose needs --preferences" choose Delay "${stereo[@]}" "${offered[@]}"
    refuses 2 "--preferences needs a value" choose Delay "${stereo[@]}" "${offered[@]}" --preferences
    refuses 2 "--preferences needs a value" choose Delay "${stereo[@]}" --preferences "${offered[@]}"
    refuses 2 "--rate is given twice" choose Delay "${stereo[@]}" --rate 1 "${offered[@]}" "${place[@]}"
    refuses 2 "restore needs --preferences" restore "${offered[@]}"
    refuses 2 "well-formed UTF-8" choose $'\xff' "${stereo[@]}" "${offered[@]}" "${place[@]}"
    for rate in fast "" 0 -48000 48000Hz 48,0 " 48000" 0x10 1000001 1e400 nan inf; do
        refuses 2 "--rate" choose Delay --rate "$rate" --channels 2 --bits 24 "${offered[@]}" "${place[@]}"
    done
    for channels in two "" 0 -2 2.5 "2 " +2 1025 4294967298 99999999999999999999; do
        refuses 2 "--channels" choose Delay --rate 48000 --channels "$channels" --bits 24 "${offered[@]}" "${place[@]}"
    done
    for bits in many "" 0 -16 12 64 16.0; do
        refuses 2 "--bits" choose Delay --rate 48000 --channels 2 --bits "$bits" "${offered[@]}" "${place[@]}"
    done
done

# ---- the components --------------------------------------------------------------------------------------------------

refuses 1 'no component is named "Phaser"' choose Phaser "${stereo[@]}" "${offered[@]}" "${place[@]}"
refuses 1 'no component is named "delay"' choose delay "${stereo[@]}" "${offered[@]}" "${place[@]}"
refuses 1 '"Compressor" is ambiguous: Acme: Compressor' choose Compressor "${stereo[@]}" "${offered[@]}" "${place[@]}"
refuses 1 'There is no' list --components "$work/missing"
refuses 1 'There is no' list --components "$work/two
lines"
mkdir -p "$work/empty" "$work/hollow.component"
refuses 1 "nothing under --components" list --components "$work/empty"
refuses 1 "nothing under --components" list --components "$(bundle Declares0)"
refuses 1 "holds neither Contents/Info.plist nor Info.plist" list --components "$work/hollow.component"

# faulty TEXT DICTIONARY: a bundle is refused as a whole, even though its first dictionary is right.
faulty() {
    local path
    path=$(bundle Faulty "$(component aufx good Acme 'Acme: Good')" "$2")
    refuses 1 "Faulty.component/Contents/Info.plist: entry 2 of AudioComponents $1" list --components "$path"
}
faulty "is no dictionary" "<string>aufx</string>"
faulty "has no type" "<dict/>"
faulty "has a type that" "$(component auf good Acme 'Acme: Good')"
faulty "has a subtype that" "$(component aufx tooLong Acme 'Acme: Good')"
faulty "has a manufacturer that" "$(component aufx good Ā234 'Acme: Good')"
faulty "has a subtype that" "$(component aufx good Acme 'Acme: Good' |
    sed 's|<string>good</string>|<integer>1735356260</integer>|')"
faulty "has no name" "$(component aufx good Acme 'Acme: Good' | sed 's|name|title|')"
faulty "has a name that" "$(component aufx good Acme 'Acme: Good' | sed 's|<string>Acme: Good</string>|<true/>|')"
for version in '<string>1</string>' '<integer>-1</integer>' '<integer>4294967296</integer>' '<real>1.5</real>' \
    '<true/>'; do
    faulty "has a version that" "$(component aufx good Acme 'Acme: Good' "$version")"
done
damaged=$work/damaged.component
mkdir "$damaged"
for content in '' '<?xml version="1.0"?><plist version="1.0"><dict><key>Audio' 'bplist00damaged' '{ a = 1;' $'\x01\x02\x03'; do
    printf '%s' "$content" >"$damaged/Info.plist"
    refuses 1 "damaged.component/Info.plist is no property list" list --components "$damaged"
done
property_list "<array/>" >"$damaged/Info.plist"
refuses 1 "holds no dictionary" list --components "$damaged"
for contents in "" "<key>AudioComponents</key><string>none</string>"; do
    property_list "<dict>$contents</dict>" >"$damaged/Info.plist"
    refuses 1 "has no array AudioComponents" list --components "$damaged"
done

semicolon=$(bundle Semicolon "$(component aufx 'a;b ' Acme 'Acme: Semicolon')")
refuses 1 "cannot be kept in one line" choose Semicolon "${stereo[@]}" --components "$semicolon" "${place[@]}"

# ---- the preferences -------------------------------------------------------------------------------------------------

rm -f "$preferences"
refuses 1 "there is no preferences file" restore "${offered[@]}" "${place[@]}"
refuses 1 "there is no directory" choose Delay "${stereo[@]}" "${offered[@]}" --preferences "$work/missing/file.plist"
refuses 1 "there is no directory" choose Delay "${stereo[@]}" "${offered[@]}" \
    --preferences "$components/AcmeDelay.component/Contents/Info.plist/file.plist"
refuses 1 "is a directory" choose Delay "${stereo[@]}" "${offered[@]}" --preferences "$work/empty"
refuses 1 "is a directory" restore "${offered[@]}" --preferences "$work/empty"
refuses 1 "names a directory" choose Delay "${stereo[@]}" "${offered[@]}" --preferences "$work/new/"

for content in '' 'hello' '<?xml version="1.0"?><plist version="1.0"><dict><key>effect' 'bplist00damaged' $'\x01\x02\x03'; do
    printf '%s' "$content" >"$preferences"
    refuses 1 "is damaged" restore "${offered[@]}" "${place[@]}"
    refuses 1 "is damaged" choose Delay "${stereo[@]}" "${offered[@]}" "${place[@]}"
done
property_list "<array/>" >"$preferences"
refuses 1 "is damaged" restore "${offered[@]}" "${place[@]}"
refuses 1 "is damaged" choose Delay "${stereo[@]}" "${offered[@]}" "${place[@]}"

property_list "<dict/>" >"$preferences"
refuses 1 "keeps no component" restore "${offered[@]}" "${place[@]}"
for identifier in "<integer>1</integer>" "<array/>"; do
    kept "$identifier" "$good_format"
    refuses 1 "keeps no component" restore "${offered[@]}" "${place[@]}"
done
for identifier in "" "Acme" "Acme: aufx; dely" "Acme: aufx; dely; Acme; more" "Acme: aufx; delay; Acme" "A: B: aufx; dely; Acme"; do
    kept "<string>$identifier</string>" "$good_format"
    refuses 1 "is no identifier of a component" restore "${offered[@]}" "${place[@]}"
done
kept "<string>Acme: aufx; gone; Acme</string>" "$good_format"
refuses 1 "is not among those registered" restore "${offered[@]}" "${place[@]}"

for format in "<string>48000</string>" "<dict/>" "<integer>9</integer>"; do
    kept "$good_identifier" "$format"
    refuses 1 "keeps no array of numbers" restore "${offered[@]}" "${place[@]}"
done
kept "$good_identifier" "<array/>"
refuses 1 "of 0 numbers" restore "${offered[@]}" "${place[@]}"
kept "$good_identifier" "$(numbers 48000 1819304813 12 6 1 6 2 24)"
refuses 1 "of 8 numbers" restore "${offered[@]}" "${place[@]}"
kept "$good_identifier" "${good_format/<integer>6<\/integer>/<string>6<\/string>}"
refuses 1 "number 4 of the stream format is no number" restore "${offered[@]}" "${place[@]}"
for wrong in "0 1819304813 12 6 1 6 2 24 0" "-1 1819304813 12 6 1 6 2 24 0"; do
    # shellcheck disable=SC2086 # the words are the numbers
    kept "$good_identifier" "$(numbers $wrong)"
    refuses 1 "number 1 of the stream format is out of range" restore "${offered[@]}" "${place[@]}"
done
kept "$good_identifier" "$(numbers 48000 1819304813 12 6 1 6 -2 24 0)"
refuses 1 "number 7 of the stream format is out of range" restore "${offered[@]}" "${place[@]}"
kept "$good_identifier" "$(numbers 48000 4294967296 12 6 1 6 2 24 0)"
refuses 1 "number 2 of the stream format is out of range" restore "${offered[@]}" "${place[@]}"

# No user may make files in this directory; write permissions do not bind root.
if [[ -d /proc/self ]]; then
    refuses 1 "cannot be written" choose Delay "${stereo[@]}" "${offered[@]}" --preferences /proc/self/preferences.plist
fi
kept "$good_identifier" "$good_format"
locked=$work/locked
mkdir "$locked"
cp "$preferences" "$locked/preferences.plist"
chmod a-w "$locked"
if [[ ! -w $locked ]]; then
    refuses 1 "cannot be written" choose Delay "${stereo[@]}" "${offered[@]}" --preferences "$locked/preferences.plist"
    refuses 1 "cannot be written" choose Delay "${stereo[@]}" "${offered[@]}" --preferences "$locked/new.plist"
    chmod u+w "$locked"
    chmod a-w "$locked/preferences.plist"
    refuses 1 "cannot be written" choose Delay "${stereo[@]}" "${offered[@]}" --preferences "$locked/preferences.plist"
    chmod a-r "$locked/preferences.plist"
    refuses 1 "cannot be read" restore "${offered[@]}" --preferences "$locked/preferences.plist"
    chmod u+rw "$locked/preferences.plist"
    cmp -s "$locked/preferences.plist" "$preferences" || complain "a write-protected preferences file changed"
    [[ $(find "$locked" -type f | wc -l) -eq 1 ]] || complain "a file was left behind in $locked"
fi
chmod u+w "$locked"

if [[ $failures -ne 0 ]]; then
    echo "$failures failures" >&2
    exit 1
fi
echo "all as expected"
