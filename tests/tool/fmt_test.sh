#!/bin/sh
# Formats files as a person would. Usage: fmt_test.sh PROGRAM EXAMPLES
set -u
program=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}
# returns STATUS COMMAND...: the exact exit status; leaves the output in `out` and `err`.
returns() {
    status=$1
    shift
    "$@" >out 2>err
    got=$?
    [ "$got" = "$status" ] || fail "$*: status $got, expected $status: $(cat err)"
}

mkdir folder
cp "$examples/tolerances.fed" untidy.fed
chmod 640 untidy.fed
"$program" fmt untidy.fed >folder/tidy.fed
returns 0 "$program" fmt --check folder
[ -s out ] && fail "a formatted file would change"
returns 1 "$program" fmt --check untidy.fed folder
[ "$(cat out)" = untidy.fed ] || fail "--check names other files"
returns 0 "$program" fmt --diff untidy.fed
cp untidy.fed patched.fed
patch -s --binary patched.fed out || fail "the diff is not one"
cmp patched.fed folder/tidy.fed || fail "the diff is not the change"

ln -s untidy.fed link.fed
returns 0 "$program" fmt --write link.fed
[ -L link.fed ] || fail "--write replaced a link"
cmp untidy.fed folder/tidy.fed || fail "--write writes something else"
[ "$(stat -c %a untidy.fed)" = 640 ] || fail "--write changed the mode"
inode=$(stat -c %i untidy.fed)
returns 0 "$program" fmt --write untidy.fed
[ "$(stat -c %i untidy.fed)" = "$inode" ] || fail "--write replaced a formatted file"
"$program" fmt - <"$examples/tolerances.fed" | cmp - untidy.fed || fail "standard input is formatted otherwise"

printf '(FED (Federation F) (FEDversion v)' >open.fed
cp open.fed copy.fed
returns 1 "$program" fmt --write open.fed
cmp open.fed copy.fed || fail "a refused file changed"
grep -q '^open.fed:1:1: error: .*FED' err || fail "the error is missing: $(cat err)"
"$program" save "$examples/minimal.fed" image
returns 1 "$program" fmt image
returns 2 "$program" fmt open.fed copy.fed
returns 2 "$program" fmt --write -
returns 2 "$program" fmt --write --check open.fed
returns 2 "$program" fmt --range 5:4 open.fed
returns 2 "$program" fmt --check --range 1:4 open.fed copy.fed
returns 2 "$program" fmt missing.fed
exit $((failures > 0))
