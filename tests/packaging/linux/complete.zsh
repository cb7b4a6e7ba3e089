#!/usr/bin/env zsh
# SPDX-License-Identifier: Apache-2.0
# complete.zsh FUNCTIONS CACHE LINE: prints what an interactive zsh offers at the end of LINE, one a line, with
# the completion functions of the folder FUNCTIONS before its own. The first run of several makes the file CACHE.
zmodload zsh/zpty
functions_folder=$1 cache=$2 line=$3
offered=$(mktemp)

# Whatever is offered goes through compadd; those calls that only compute a list are left alone.
cat >$offered.setup <<'SETUP'
PROMPT= LISTMAX=1000
autoload -Uz compinit && compinit -C -d $CACHE
compadd() {
    if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
        builtin compadd "$@"
        return
    fi
    local -a words
    builtin compadd -O words "$@"
    print -rl -- $words >>$OFFERED
    builtin compadd "$@"
}
complete-and-tell() {
    zle complete-word
    print "<completed>"
}
zle -N complete-and-tell
bindkey '^I' complete-and-tell
zle-line-init() { print "<waiting>" }
zle -N zle-line-init
SETUP

zpty shell "OFFERED=$offered CACHE=${(q)cache} zsh -f -i"
zpty -w shell "fpath=(${(q)functions_folder} \$fpath); source $offered.setup"
zpty -r -m shell ignored '*<waiting>*'
# The first time loads the functions, every other time uses them.
zpty -w -n shell $'pct \t'
zpty -r -m shell ignored '*<completed>*'
: >$offered
zpty -w -n shell $'\x15'"$line"$'\t'
zpty -r -m shell ignored '*<completed>*'
zpty -d shell
grep . $offered
rm -f $offered $offered.setup
