#!/bin/bash
# Checks the manual pages, and the completions in each shell. Usage: docs_test.sh PROGRAM WRITER SHARE, where SHARE has what
# the program WRITER has written, in the layout of an installed share/.
set -u
program=$1
writer=$2
share=$3
failures=0
fail() { echo "FAILED: $*"; failures=1; }

# Written again, they are the same; and what cannot be written is said.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$writer" "$work/share" || fail "rtifed-docs: status $?"
for folder in man bash-completion zsh fish; do
    diff -r "$share/$folder" "$work/share/$folder" || fail "$folder is not the same when it is written again"
done
touch "$work/file"
said=$("$writer" "$work/file" 2>&1) && fail 'rtifed-docs: a file in place of the folder'
case $said in "rtifed-docs: "*"$work/file"*) ;; *) fail "rtifed-docs: $said" ;; esac
if [ -c /dev/full ]; then
    ln -sf /dev/full "$work/share/man/man1/rtifed.1"
    said=$("$writer" "$work/share" 2>&1) && fail 'rtifed-docs: a full disk'
    [ "$said" = "rtifed-docs: $work/share/man/man1/rtifed.1 cannot be written" ] || fail "rtifed-docs: $said"
fi
said=$("$writer" --help 2>&1)
[ "$?: $said" = '2: usage: rtifed-docs FOLDER' ] || fail "rtifed-docs: $said"

commands=$("$program" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
[ "$(echo "$commands" | wc -l)" -ge 5 ] || fail "the commands of --help: $commands"

for command in '' $commands; do
    page=$share/man/man1/rtifed${command:+-$command}.1
    [ -z "$(groff -man -ww -z -Tutf8 "$page" 2>&1)" ] || fail "$(groff -man -ww -z -Tutf8 "$page" 2>&1)"
    text=$(groff -man -Tascii -P-c -P-b -P-u -rLL=2000n "$page" | tr -s ' \n' ' ')
    # shellcheck disable=SC2086
    "$program" $command --help | grep -o -e '--[a-z0-9-]*' | sort -u | while read -r option; do
        case $text in *"$option"*) ;; *) echo "$page does not mention $option" ;; esac
    done | grep . && failures=1
    case $text in *'EXIT STATUS 0 '*) ;; *) fail "$page has no exit status" ;; esac
done

# The completions that bash offers for the last word.
. "$share/bash-completion/completions/rtifed"
offers() {
    COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMPREPLY=()
    _rtifed
    echo "${COMPREPLY[*]}"
}
[ "$(offers rtifed chec)" = 'check checksum' ] || fail "bash: commands: $(offers rtifed chec)"
[ "$(offers rtifed check --col)" = --color ] || fail "bash: options: $(offers rtifed check --col)"
[ "$(offers rtifed help chec)" = 'check checksum' ] || fail "bash: operands: $(offers rtifed help chec)"
[ "$(offers rtifed check --color = a)" = 'auto always' ] || fail "bash: values: $(offers rtifed check --color = a)"
[ "$(offers rtifed list "$share/man/m")" = "$share/man/man1" ] || fail "bash: files: $(offers rtifed list "$share/man/m")"

if command -v zsh >/dev/null; then
    script=$share/zsh/vendor-completions
    zsh -n "$script/_rtifed" || fail "zsh: syntax"
    [ "$(zsh -f -c "fpath=('$script' \$fpath); autoload -U compinit; compinit -u -D; print \$_comps[rtifed]")" = _rtifed ] ||
        fail "zsh: not registered"
    # Replace zsh's own functions, to read the arguments that the script passes to them.
    read=$(zsh -f -c "_arguments() { print -rl -- \"\$@\"; state=argument line=(check) }
        _describe() { :; }; . '$script/_rtifed'")
    case $read in *'--color='*'(auto always never)'*'*:FILE:_files'*) ;; *) fail "zsh: $read" ;; esac
fi
if command -v fish >/dev/null; then
    script=$share/fish/vendor_completions.d/rtifed.fish
    [ "$(fish -c "source '$script'; complete -C 'rtifed checks'" | cut -f 1)" = checksum ] || fail "fish: commands"
    [ "$(fish -c "source '$script'; complete -C 'rtifed check --color=al'" | cut -f 1)" = --color=always ] ||
        fail "fish: values"
fi
exit "$failures"
