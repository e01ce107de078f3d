#!/bin/sh
# Writes and verifies manifests with the program, and compares with sha256sum. Usage: checksum_test.sh PROGRAM EXAMPLES
set -u
program=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# expect STATUS OUT ERR ARGUMENT...: what `rtifed checksum` returns and prints.
expect() {
    status=$1 out=$2 err=$3
    shift 3
    "$program" checksum "$@" >out 2>err
    got=$?
    if [ "$got" != "$status" ] || [ "$(cat out)" != "$out" ] || [ "$(cat err)" != "$err" ]; then
        echo "FAILED: checksum $*: status $got, expected $status"
        printf '%s\n' "$out" | diff - out
        printf '%s\n' "$err" | diff - err
        failures=1
    fi
}

cd "$work" || exit 1
cp "$examples/minimal.fed" a.fed
cp "$examples/harbour.fed" b.fed
sha256=75ca302f8005d0a43ef40b0c404b4d03c426013130d0ee2abdd73ceeab811f78

# A text, its image and a copy with another layout have the same fingerprint, which sha256sum computes from the image.
"$program" save a.fed a.img
sed 's/;.*//; s/^ *//' a.fed >same.fed
expect 0 "$sha256  a.fed
$sha256  a.img
$sha256  same.fed" '' --sha256 a.fed a.img same.fed
[ "$(head -c -9 a.img | sha256sum)" = "$sha256  -" ] || { echo 'FAILED: sha256sum of an image'; failures=1; }

# Both kinds of lines, comments, upper case, binary markers and CR LF.
{ "$program" checksum b.fed && "$program" checksum --sha256 b.fed && echo '# comment' &&
    printf '96881752 *a.fed\r\n' && echo "$sha256  a.img" | tr a-f A-F | sed 's/IMG/img/; s/A.img/a.img/'; } >good
expect 0 'b.fed: OK
b.fed: OK
a.fed: OK
a.img: OK' '' --check good
expect 0 '' '' --check --quiet good

# Errors in a manifest or a file, alone and combined, in the words of sha256sum.
printf '96881752  b.fed\n' >mismatch
printf '96881752  a.fed\n96881752  none.fed\n' >missing
printf '96881752  a.fed\n96881752 a.fed\n968817521  a.fed\n\\96881752  a\\x\n' >malformed
printf 'nothing\n' >nothing
printf '96881752  wrong.fed\n' >refused
printf '(FED)\n' >wrong.fed
expect 1 'b.fed: FAILED' 'rtifed: WARNING: 1 computed checksum did NOT match' --check mismatch
expect 2 'a.fed: OK
none.fed: FAILED open or read' 'rtifed: none.fed: No such file or directory
rtifed: WARNING: 1 listed file could not be read' --check missing
expect 0 'a.fed: OK' '' --check --ignore-missing missing
expect 0 'a.fed: OK' 'rtifed: WARNING: 3 lines are improperly formatted' --check malformed
expect 1 'a.fed: OK' 'rtifed: WARNING: 3 lines are improperly formatted' --check --strict malformed
expect 1 '' 'rtifed: WARNING: 1 line is improperly formatted
rtifed: nothing: no properly formatted checksum lines found' --check nothing
expect 2 '' '' --check --status good mismatch refused missing nothing
expect 2 "$(cat good | "$program" checksum -c -)
b.fed: FAILED" 'rtifed: none: No such file or directory
rtifed: WARNING: 1 computed checksum did NOT match' --check good none mismatch
tail -n 1 missing >only-missing
expect 1 '' 'rtifed: only-missing: no file was verified' --check --ignore-missing only-missing
"$program" checksum --check refused >out 2>err
[ $? = 1 ] && [ "$(cat out)" = 'wrong.fed: FAILED' ] && grep -q '^rtifed: wrong.fed: .* errors, the first at ' err ||
    { echo 'FAILED: a listed file that is refused'; failures=1; }

# Names with line ends and backslashes are escaped as by sha256sum, and read back.
odd=$(printf 'a\nb\\c\rd')
cp a.fed "$odd"
expect 0 '\96881752  a\nb\\c\rd' '' "$odd"
[ "$(sha256sum "$odd" | cut -c 66-)" = "$(cut -c 10- out)" ] || { echo 'FAILED: escaped as by sha256sum'; failures=1; }
cp out odd
expect 0 '\a\nb\\c\rd: OK' '' --check odd

expect 2 '' 'rtifed: --check excludes --sha256
Run rtifed checksum --help for more information.' --check --sha256 good
exit "$failures"
