#!/bin/sh
# Runs the program as a person would, and compares what it prints and returns. Usage: program_test.sh PROGRAM EXAMPLES
set -u
program=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# expect STATUS OUT ERR COMMAND...: the exact exit status, standard output and standard error.
expect() {
    status=$1 out=$2 err=$3
    shift 3
    "$@" >"$work/out" 2>"$work/err"
    got=$?
    printf '%s' "$out" >"$work/expected-out"
    printf '%s' "$err" >"$work/expected-err"
    if [ "$got" != "$status" ] || ! cmp -s "$work/out" "$work/expected-out" || ! cmp -s "$work/err" "$work/expected-err"; then
        echo "FAILED: $*: status $got, expected $status"
        diff "$work/expected-out" "$work/out"
        diff "$work/expected-err" "$work/err"
        failures=$((failures + 1))
    fi
}

cd "$work" || exit 1
printf '(FED (Federation F)\n (FEDversion v)\n (spaces (space S (dimension D))))\n' >small.fed
printf '(FED (Federation F))\n' >wrong.fed
wrong='1:2: error: expected a "FEDversion" clause in "FED", found none [missing-clause]
    1 | (FED (Federation F))
      |  ^~~
'
expect 0 '3 load
' '' "$program" check "$examples/minimal.fed" "$examples/harbour.fed" "$examples/tolerances.fed"
expect 0 'setFederate("F");
setFederateVersion("v");

addSpace("S");
addDimension("D");
' '' "$program" calls small.fed
expect 1 '' "wrong.fed:$wrong" "$program" calls wrong.fed
expect 2 '' 'rtifed: none.fed: No such file or directory
' "$program" calls none.fed
expect 2 '' 'rtifed: /: the file cannot be read: Is a directory
' "$program" list /

"$program" check wrong.fed none.fed "$examples/minimal.fed" >out 2>err
[ $? = 2 ] && [ "$(head -n 3 out)" = "wrong.fed:$(printf '%s' "$wrong")" ] &&
    [ "$(cat err)" = 'rtifed: none.fed: No such file or directory' ] || { echo 'FAILED: check of several'; failures=1; }
"$program" list "$examples/harbour.fed" >by-name && "$program" list - <"$examples/harbour.fed" >by-stdin &&
    cmp by-name by-stdin && grep -q '^    Position (HANDLE = ' by-name || { echo 'FAILED: list'; failures=1; }

# Options of check, and explain.
sed 's/privilegeToDelete/Name/; s/class RTIprivate/class Other/' "$examples/minimal.fed" >warned.fed
expect 0 'warned.fed: note: 2 more warnings are not shown
' '' sh -c '"$0" check --color never --max-findings 1 "$1" | tail -n 1' "$program" warned.fed
expect 1 '' '' "$program" check --quiet --fail-on warning warned.fed
expect 0 '' '' "$program" check --quiet warned.fed
expect 2 '' 'rtifed: --format: expected text, concise, json, sarif, github, gitlab or junit, found "jsn"; did you mean "json"?
Run rtifed check --help for more information.
' "$program" check --format jsn warned.fed
expect 2 '{"formatVersion":2,"files":[
],"failures":[{"file":"none.fed","text":"No such file or directory"}]}
' 'rtifed: none.fed: No such file or directory
' "$program" check --format json none.fed
"$program" explain >out && grep -q '^unused-space  *warning  ' out && "$program" explain unused-space | grep -q '^Wrong:' ||
    { echo 'FAILED: explain'; failures=1; }
expect 2 '' 'rtifed: unknown rule "unused-spaces"; did you mean "unused-space"?
' "$program" explain unused-spaces

# Images: saved, read by every command that reads a model, and refused if damaged.
"$program" save "$examples/minimal.fed" model.img && cp model.img before.img || { echo 'FAILED: save'; failures=1; }
expect 0 '96881752  model.img
96881752  -
' '' "$program" checksum model.img - <"$examples/minimal.fed"
"$program" list model.img >from-image && "$program" list "$examples/minimal.fed" | cmp - from-image ||
    { echo 'FAILED: list of an image'; failures=1; }
expect 0 '' '' "$program" check model.img
expect 1 '' 'model.img: error: expected FED text, found a saved image
' "$program" calls model.img
expect 1 '' 'rtifed: -: the library refuses this file: 1 error at 1:1: expected "(FED", found the end of the file; see rtifed check -
' "$program" save - model.img </dev/null
expect 2 '' 'rtifed: none/model.img: No such file or directory
' "$program" save "$examples/minimal.fed" none/model.img
echo x >>model.img
expect 1 "model.img: error: image byte $(($(wc -c <before.img))): 2 bytes follow the image [damaged-image]
" '' "$program" check model.img

# Options of the commands that show a model.
manager='ObjectRoot.Manager  (2 classes below)
'
expect 0 "$manager" '' "$program" tree --classes --depth 1 "$examples/minimal.fed" objectroot.manager
expect 0 "$manager      privilegeToDelete  reliable     timestamp  from ObjectRoot
" '' "$program" tree --inherited --depth 1 "$examples/minimal.fed" ObjectRoot.Manager

# find in several files: found, not found, and not found where something cannot be read or understood, as
# STATUS|FILES AND NAME|MESSAGE.
printf '(FED (Federation F) (FEDversion v) (objects (class R (attribute))))' >partly.fed
printf '(FED (Federation F) (FEDversion v) (objects (class Q)))' >understood.fed
partly='rtifed: partly.fed: the library refuses this file, so that only what can be understood is shown'
while IFS='|' read -r status words message; do
    # shellcheck disable=SC2086
    "$program" find $words >out 2>err
    got=$?
    sed 's/ shown: .*/ shown/' err >short
    # shellcheck disable=SC2086
    [ "$got" = "$status" ] && [ "$(cat short)" = "$(printf "$message")" ] && [ "$(wc -l <out)" = "$((status == 0))" ] ||
        { echo "FAILED: find $words: status $got, expected $status"; cat out err; failures=1; }
    "$program" find --quiet $words >out 2>err
    [ $? = "$status" ] && [ ! -s out ] || { echo "FAILED: find --quiet $words"; failures=1; }
done <<END
0|small.fed s.d|rtifed: small.fed: the library refuses this file, so that only what can be understood is shown
0|understood.fed partly.fed r|$partly
0|partly.fed $examples/minimal.fed lbts|
1|understood.fed r|understood.fed: nothing is called "r"
1|understood.fed small.fed q?|rtifed: nothing is called "q?" in 2 files; with --glob, * and ? stand for other characters
2|partly.fed q|$partly\\npartly.fed: nothing is called "q" in what can be understood
2|partly.fed small.fed r.a|$partly\\nrtifed: nothing is called "r.a" in what can be understood of 2 files
2|none.fed r|rtifed: none.fed: No such file or directory
END

# A folder stands for the FED files in it.
mkdir -p folder/sub/.hidden folder/sub/empty folder/z.fed
cp "$examples/minimal.fed" folder/sub/B.FED && cp folder/sub/B.FED folder/c.fed && cp folder/c.fed folder/sub/.hidden/
cp folder/c.fed folder/.c.fed && cp folder/c.fed folder/z.fed/text && ln -s .. folder/sub/up && ln -s ../c.fed folder/z.fed/d.fed
expect 0 '96881752  folder/c.fed
96881752  folder/sub/B.FED
96881752  folder/z.fed/d.fed
' '' "$program" checksum folder
expect 0 '6 load
' '' "$program" check folder/ folder/sub/up
expect 0 '96881752  B.FED
' '' sh -c 'cd folder/sub && "$0" checksum .' "$program"
ln -s nowhere folder/a.fed
expect 2 '3 load, 2 cannot be read
' 'rtifed: folder/a.fed: No such file or directory
rtifed: folder/sub/empty: the folder has no FED files, which end in .fed
' "$program" check folder folder/sub/empty
expect 2 '{"formatVersion":2,"files":[
],"failures":[{"file":"folder/sub/empty","text":"the folder has no FED files, which end in .fed"}]}
' 'rtifed: folder/sub/empty: the folder has no FED files, which end in .fed
' "$program" check --format json folder/sub/empty
[ "$("$program" find "$examples/minimal.fed" Manager.Federate.Federate | wc -l)" = 8 ] &&
    [ "$("$program" find --all "$examples/minimal.fed" Manager.Federate.Federate | wc -l)" = 66 ] ||
    { echo 'FAILED: find --all'; failures=1; }

# Differences: the exit status depends on the level given by --fail-on.
sed 's/(FEDversion [^)]*)/(FEDversion w)/' "$examples/harbour.fed" >relabelled.fed
"$program" save "$examples/harbour.fed" harbour.img
expect 0 'harbour.img -> relabelled.fed: relabelled
Lookups by name give the same answers in both; images and checksums differ, so all federates must use the same file.
  ~ version v1.3 -> w
' '' "$program" diff harbour.img relabelled.fed --fail-on renumbered
expect 1 '' '' "$program" diff --quiet harbour.img relabelled.fed
expect 1 '' '' "$program" diff --quiet --fail-on same harbour.img "$examples/harbour.fed"
expect 2 '' 'rtifed: standard input can be one of the files, not both
' "$program" diff - -
expect 2 '' "rtifed: model.img: image byte $(($(wc -c <before.img))): 2 bytes follow the image
" "$program" diff model.img small.fed
printf '(FED (Federation "\377\033"))' >bytes.fed
"$program" diff --color always small.fed bytes.fed 2>err | grep -q 'm~.* federation F -> \\xff\\x1b$' &&
    "$program" diff --format json small.fed bytes.fed 2>err | iconv -f UTF-8 -t UTF-8 >out ||
    { echo 'FAILED: diff of strange bytes'; failures=1; }

# Files at revisions in git. A file whose name is like that of one is read as it is; nothing becomes an option of git.
(
    mkdir -p repository/models
    cd repository || exit 1
    export GIT_CONFIG_GLOBAL=/dev/null GIT_AUTHOR_NAME=A GIT_AUTHOR_EMAIL=a GIT_COMMITTER_NAME=C GIT_COMMITTER_EMAIL=c
    cp "$examples/harbour.fed" models/harbour.fed
    cp ../relabelled.fed models/a:b.fed
    git init -q && git add . && git commit -q -m 'A first version' && git tag v1 || exit 1
    sed 's/(class Ferry/(class CarFerry/' "$examples/harbour.fed" >models/harbour.fed
    cd models || exit 1
    renamed='v1:./harbour.fed -> harbour.fed: incompatible
Something in the old model was removed or changed: federates made for it may fail with the new one.
  - object class ObjectRoot.Craft.MerchantVessel.Ferry, with 3 attributes, probably renamed to CarFerry (v1:./harbour.fed:72)
  + object class ObjectRoot.Craft.MerchantVessel.CarFerry, with 3 attributes, probably renamed from Ferry (harbour.fed:72)
'
    expect 1 "$renamed" '' "$program" diff --against v1 harbour.fed
    for arguments in "--against HEAD $PWD/harbour.fed" '--against v1:models/harbour.fed harbour.fed' \
        'v1:models/harbour.fed ./harbour.fed' ':./harbour.fed harbour.fed' '--against HEAD@{0} ../models/harbour.fed'; do
        # shellcheck disable=SC2086
        expect 1 '' '' "$program" diff --quiet $arguments
    done
    expect 0 '' '' "$program" diff --quiet --fail-on renumbered a:b.fed v1:./harbour.fed
    while IFS='|' read -r arguments message; do
        # shellcheck disable=SC2086
        expect 2 '' "rtifed: $message
" "$program" diff $arguments
    done <<'END'
v1:models harbour.fed|v1:models: Is a directory
v9:./harbour.fed harbour.fed|v9:./harbour.fed: invalid object name 'v9'
v1:harbour.fed harbour.fed|v1:harbour.fed: path 'models/harbour.fed' exists, but not 'harbour.fed'; Did you mean 'v1:models/harbour.fed' aka 'v1:./harbour.fed'?
--against=--output=x:y harbour.fed|--output=x:y: expected a revision, or REV:PATH
--against :/first harbour.fed|:/first: expected a revision, or REV:PATH
--against v1 -|standard input is in no revision: write v1:PATH for the old file
-- --output=x:y harbour.fed|--output=x:y: No such file or directory
END
    expect 2 '' 'rtifed: --against: expected only the operand NEW, found OLD as well
Run rtifed diff --help for more information.
' "$program" diff --against v1 harbour.fed harbour.fed
    # Pages of a folder and what changed since a revision of it, of itself or named.
    mv a:b.fed new.fed
    for old in v1 v1:models v1:./; do
        expect 0 'site/index.html: 2 load
' '' "$program" html . --against "$old" -o site
        [ "$(grep -c '"verdict":"incompatible"' site/harbour.fed.html)" = 1 ] && [ ! -e site/a:b.fed.html ] &&
            grep -q '"old":{"file":"v1:[a-z./]*harbour.fed"' site/harbour.fed.html &&
            [ "$(grep -o '<td class="verdict [a-z]*' site/index.html | tr '\n' ' ')" = "$(echo '<td class="verdict incompatible' \
                '<td class="verdict new' '<td class="verdict removed' '')" ] ||
            { echo "FAILED: pages of a folder against $old: $(grep verdict site/index.html)"; failures=1; }
    done
    rm -r site new.fed
    expect 2 '' "rtifed: v9:./: there is no such folder; as a revision in git: Not a valid object name v9:./
" "$program" html . --against v9 -o site
    expect 0 '' '' "$program" html harbour.fed --against v1 -o harbour.html
    expect 0 '' '' "$program" html harbour.fed --against v1:models/harbour.fed -o harbour.html
    rm harbour.html
    expect 2 '' 'rtifed: v1:./harbour.fed: git, which reads revisions, cannot be started: No such file or directory
' env PATH=/nowhere "$program" diff --against v1 harbour.fed
    exit "$failures"
) || failures=1

"$program" list small.fed >out 2>err
[ $? = 1 ] && [ ! -s out ] && [ "$(wc -l <err)" = 1 ] &&
    grep -q '^rtifed: small.fed: the library refuses this file: 1 error at .*Manage.*see rtifed check small.fed$' err ||
    { echo 'FAILED: list of a file without the MOM'; failures=1; }
# Mistakes on the command line, as ARGUMENTS|MESSAGE|COMMAND, where --help of the command is named.
while IFS='|' read -r arguments message command; do
    # shellcheck disable=SC2086
    expect 2 '' "rtifed: $message
Run rtifed $command--help for more information.
" "$program" $arguments
done <<'END'
|expected a command|
chek small.fed|unknown command "chek"; did you mean "check"?|
--verison|unknown option "--verison"; did you mean "--version"?|
--colr always list|unknown option "--colr"; did you mean "--color"?|list 
check --formt=json x|unknown option "--formt"; did you mean "--format"?|check 
check --max small.fed|unknown option "--max"; did you mean "--max-findings"?|check 
save --forc a|unknown option "--forc"|save 
check --format|--format: expected one of text, concise, json, sarif, github, gitlab, junit, found nothing|check 
find small.fed --stdin-name|--stdin-name: expected NAME, found nothing|find 
list|FILE is required|list 
list a b|unexpected operand "b"|list 
END
expect 2 '' 'rtifed: unknown command "lst"; did you mean "list"?
' "$program" help lst

# Help fits the width; commands in it are not broken. At no width is a word lost.
"$program" --help >help && grep -q '^  check  ' help && "$program" help | cmp - help || { echo 'FAILED: help'; failures=1; }
for command in $(sed -n '/^Commands:/,/^$/s/^  \([a-z]*\)  .*/\1/p' help) ''; do
    # shellcheck disable=SC2086
    "$program" help $command | tr -s ' \n' '\n' >words
    for width in 40 60 100; do
        COLUMNS=$width "$program" help $command >out
        tr -s ' \n' '\n' <out | cmp - words && ! grep -v '^  rtifed ' out | grep ".\{$((width + 1))\}" ||
            { echo "FAILED: help $command in $width columns"; failures=1; }
    done
done

# Colours to a file: --color, then NO_COLOR, then CLICOLOR_FORCE.
while IFS='|' read -r variables options colors; do
    # shellcheck disable=SC2086
    got=$(env -u NO_COLOR -u CLICOLOR_FORCE $variables "$program" check $options wrong.fed | grep -c "$(printf '\033')")
    [ "$((got > 0))" = "$colors" ] || { echo "FAILED: colours with $variables $options"; failures=1; }
done <<'END'
CLICOLOR_FORCE=1||1
CLICOLOR_FORCE=0||0
CLICOLOR_FORCE=1 NO_COLOR=1||0
CLICOLOR_FORCE=1|--color never|0
NO_COLOR=1|--color always|1
END
exit "$failures"
