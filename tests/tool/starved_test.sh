#!/bin/sh
# Runs the program with failing streams, files and memory: it reports the failure in one line and leaves nothing half-done.
# Usage: starved_test.sh PROGRAM EXAMPLES
set -u
rtifed=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
export rtifed
skip() { echo "skipped: $*"; }

# gives STATUS MESSAGE COMMAND: checks the exit status of a shell command and the line that it writes to standard error.
gives() {
    sh -c "$3" >out 2>err </dev/null
    got=$?
    [ "$got" = "$1" ] && [ "$(cat err)" = "${2:+rtifed: $2}" ] && return
    echo "FAILED: $3: status $got, expected $1 and: $2"
    cat err
    failures=1
}

cd "$work" || exit 1
cp "$examples/harbour.fed" "$examples/minimal.fed" .
printf '(FED)\n' >wrong.fed
"$rtifed" save minimal.fed minimal.img && "$rtifed" save harbour.fed harbour.img || failures=1
"$rtifed" save - by-stdin.img <harbour.fed || failures=1
"$rtifed" checksum minimal.fed >list
truncate -s 1073741825 long.fed && { printf '\0' >long.img; truncate -s 5G long.img; }
mkdir folder
mkfifo pipe

# Standard output is full, closed or no longer read; standard error is closed.
for arguments in 'check wrong.fed' 'check --format json wrong.fed' 'check --format sarif wrong.fed' explain \
    'diff minimal.fed harbour.fed' 'tree harbour.fed' 'find harbour.fed Position' 'json harbour.fed' 'html harbour.fed' 'list harbour.fed' \
    'calls harbour.fed' 'save harbour.fed -' 'checksum harbour.fed' 'checksum --check list' --help --version; do
    gives 2 'standard output cannot be written: Bad file descriptor' "\$rtifed $arguments >&-"
    if [ -c /dev/full ]; then
        gives 2 'standard output cannot be written: No space left on device' "\$rtifed $arguments >/dev/full"
    fi
    gives 141 '' ": <pipe & exec 3>pipe; wait; exec env --default-signal=PIPE \$rtifed $arguments >&3"
done
gives 1 '' '$rtifed list wrong.fed 2>&-'
gives 2 '' '$rtifed list none.fed 2>&-'
gives 0 '' '$rtifed save harbour.fed closed.img <&- >&- 2>&- && cmp closed.img harbour.img'

# Files that cannot be read, or end early.
gives 2 '-: the file cannot be read: Bad file descriptor' '$rtifed check - <&-'
gives 2 '-: the file cannot be read: Is a directory' '$rtifed json - <folder'
gives 2 'folder: Is a directory' '$rtifed check --baseline folder harbour.fed'
gives 2 'minimal.fed/x: Not a directory' '$rtifed tree minimal.fed/x'
gives 1 '' 'head -c 700 harbour.fed >pipe & $rtifed check --quiet pipe'
gives 0 '' 'cat harbour.fed >pipe & $rtifed check pipe'
printf '96881752  minimal.fed\n96881752  folder\n' >listed-folder
gives 2 'folder: the file cannot be read: Is a directory
rtifed: WARNING: 1 listed file could not be read' '$rtifed checksum --check listed-folder'
{ cat list; head -c 70000 /dev/zero; echo; echo '00000000  harbour.fed'; } >zeros
gives 2 'zeros: a list of checksums has no zero byte' '$rtifed checksum --check zeros'
gives 2 'long.fed: expected at most 1073741824 bytes, found 1073741825' '$rtifed check long.fed'
gives 2 '-: expected at most 1073741824 bytes, found 5368709120' '$rtifed list - <long.img'
printf '(FED\0)' >zero
gives 0 '' '$rtifed diff --quiet zero zero'
gives 2 '-: standard input was already read' 'cat zeros harbour.fed | $rtifed checksum --check - - 2>&1 | tail -1 >&2; exit 2'
{ cat zeros; echo; } >more-zeros
gives 1 '' '$rtifed diff --quiet zeros more-zeros'

# An image is written completely, to the target of a link, and replaces no other kind of file.
ln -s link-target link && cp minimal.img link-target
ln -s none dangling
ln -s loop loop
gives 0 '' '$rtifed save harbour.fed link && cmp link-target harbour.img && [ -L link ]'
gives 2 'dangling: No such file or directory' '$rtifed save harbour.fed dangling'
gives 2 'loop: Too many levels of symbolic links' '$rtifed save harbour.fed loop'
gives 2 'folder: Is a directory' '$rtifed save harbour.fed folder'
gives 2 'none/new.fed: No such file or directory' '$rtifed new -o none/new.fed New'
[ -c /dev/full ] && gives 2 '/dev/full: No space left on device' '$rtifed save harbour.fed /dev/full'
# Only what the program writes by itself is limited, not what a measurement of what is reached adds.
limited='export LLVM_PROFILE_FILE=/dev/null; ulimit -f 1'
gives 2 'minimal.img: File too large' "$limited"'; $rtifed save harbour.fed minimal.img'
"$rtifed" html harbour.fed -o page.html && cp page.html whole.html || failures=1
gives 2 'page.html: File too large' "$limited"'; $rtifed html minimal.fed -o page.html'
cmp page.html whole.html && rm page.html whole.html || failures=1
gives 2 'standard output cannot be written: File too large' "$limited"'; $rtifed calls harbour.fed >limited'
gives 0 '' '$rtifed save harbour.fed pipe & cmp pipe harbour.img'
gives 0 '' '$rtifed save - - <harbour.fed | cmp - by-stdin.img'
gives 0 '' 'cd folder; $rtifed save ../harbour.fed ./- && rm ./-'
gives 0 '' '$rtifed save harbour.fed /dev/stdout | cmp - harbour.img'
chmod a-r wrong.fed
if [ -r wrong.fed ]; then
    skip 'an unreadable file: this user may read all files'
else
    gives 2 'wrong.fed: Permission denied' '$rtifed save harbour.fed wrong.fed'
fi
"$rtifed" checksum minimal.img >/dev/null || failures=1
[ "$(echo *.img* link* wrong.fed*)" = 'by-stdin.img closed.img harbour.img long.img minimal.img link link-target wrong.fed' ] ||
    { echo "FAILED: files are left behind: $(ls)"; failures=1; }

# If memory runs out for one file, the others are still processed.
if (ulimit -v 60000 && "$rtifed" --version) >out 2>&1; then
    { printf '(FED (Federation F) (FEDversion v) (objects (class ObjectRoot\n'
        awk 'BEGIN { for (i = 0; i < 300000; ++i) print "(class Class" i " (attribute a" i " reliable timestamp))" }'
        echo ')))'; } >large.fed
    gives 2 'large.fed: out of memory' 'ulimit -v 60000; $rtifed checksum large.fed minimal.fed'
    [ "$(cat out)" = '96881752  minimal.fed' ] || { echo 'FAILED: the other file'; failures=1; }
    gives 2 'out of memory' 'ulimit -v 60000; $rtifed list large.fed'
    mkdir models && cp large.fed minimal.fed models
    gives 2 'models/large.fed: out of memory' 'ulimit -v 60000; $rtifed html models -o site'
    [ "$(ls site)" = "$(printf '%s\n' index.html minimal.fed.html)" ] || { echo 'FAILED: pages of a folder'; failures=1; }
else
    skip 'little memory: the program does not start, as with sanitizers'
fi

# A small stack, no environment, and files that change while they are read.
awk 'BEGIN { printf "(FED (objects"; for (i = 0; i < 200000; ++i) printf " (class C" i }' >deep.fed
gives 1 '' 'ulimit -s 256; $rtifed check --quiet deep.fed'
gives 1 '' 'ulimit -s 256; $rtifed fmt deep.fed 2>&1 | head -1; exit 1'
gives 0 '' 'ulimit -s 256; $rtifed check harbour.fed && $rtifed json harbour.fed && $rtifed html harbour.fed && $rtifed fix --check harbour.fed 2>&1'
gives 0 '' 'env -i "$rtifed" check harbour.fed && env -i "$rtifed" json harbour.fed && env -i "$rtifed" html harbour.fed'
cat harbour.fed >changing.fed
for i in 1 2 3 4 5 6 7 8 9 10; do cat harbour.fed harbour.fed >changing.fed; head -c 9000 harbour.fed >changing.fed; done &
for i in 1 2 3 4 5 6 7 8 9 10; do
    "$rtifed" check changing.fed >out 2>err
    [ $? -le 2 ] || { echo 'FAILED: a file that changes'; failures=1; }
done
wait

# Very many files, and links that lead back: each file is checked once.
mkdir -p many/inner && ln -s .. many/inner/back && ln -s loop.fed many/loop.fed
awk 'BEGIN { for (i = 0; i < 10000; ++i) { file = "many/inner/" i ".fed"; print "(FED)" >file; close(file) } }'
"$rtifed" check --format concise many >out 2>err
[ $? = 2 ] && [ "$(grep -c 'incomplete' out)" = 10000 ] && [ "$(cat err)" = 'rtifed: many/loop.fed: Too many levels of symbolic links' ] ||
    { echo 'FAILED: a folder of 10,000 files'; head -3 out err; failures=1; }

# Escape codes reach files unchanged, and never a terminal.
escape=$(printf '\033[2J')
export file="$escape.fed"
sed "s/Minimal/Mini${escape}mal/" minimal.fed >"$file"
"$rtifed" list "$file" | grep -qF "Mini${escape}mal" || { echo 'FAILED: list to a file'; failures=1; }
if command -v script >/dev/null; then
    for command in list calls tree json html checksum 'checksum --check' none; do
        script -qec "\$rtifed --color never $command \"\$file\"" /dev/null </dev/null >out
        [ -s out ] && ! grep -qF "$escape" out || { echo "FAILED: $command on a terminal"; failures=1; }
    done
else
    skip 'terminals: the program script is missing'
fi
exit "$failures"
