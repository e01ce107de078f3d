#!/bin/sh
# Types the commands of a document's recorded sessions, and compares what is printed with what it shows. Usage:
# session_test.sh DOCUMENT PROGRAM EXAMPLES
set -u
document=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" && ln -s "$2" "$work/bin/rtifed" && cp -r "$3" "$work/examples"
sed -n '/^```console$/,/^```$/p' "$document" | sed '/^```/d' >"$work/shown"
cd "$work/examples" || exit 1
PATH=$work/bin:$PATH
grep '^\$ ' "$work/shown" | cut -c 3- | while IFS= read -r command; do
    printf '$ %s\n' "$command"
    sh -c "$command" 2>&1
done >"$work/printed"
[ -s "$work/shown" ] && diff "$work/shown" "$work/printed"
