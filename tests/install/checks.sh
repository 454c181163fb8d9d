# What tests of what an application sees have in common; they source it. $work is a directory of the test's own.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

complain() {
    echo "FAILED: $*" >&2
    failures=$((failures + 1))
}

# quietly WHAT COMMAND...: complains, with what the command wrote, when it fails.
quietly() {
    local what=$1
    shift
    "$@" >"$work/log" 2>&1 && return
    complain "$what"
    cat "$work/log" >&2
    return 1
}
