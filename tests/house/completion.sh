#!/usr/bin/env bash
# The completions of the shells do what they say: completion.sh TOOL
# What a shell that is not installed would do is not looked at, and told.
set -euo pipefail
tool=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/folder"
touch "$work/Shop.vbp" "$work/Shop.txt" "$work/modMain.BAS" "$work/lib.tlb"
cd "$work"
for shell in bash zsh fish; do "$tool" completion $shell >"$work/$shell.script"; done
status=0

expect() { # SHELL, the words so far, what must and what must not be offered
  local shell=$1 line=$2 wanted=$3 unwanted=$4 offered
  offered=$(offers_of_"$shell" "$line" | sort)
  for word in $wanted; do
    grep -qxF -- "$word" <<<"$offered" || { echo "$shell: '$line' does not offer $word: $offered" >&2; status=1; }
  done
  for word in $unwanted; do
    ! grep -qxF -- "$word" <<<"$offered" || { echo "$shell: '$line' offers $word" >&2; status=1; }
  done
}

offers_of_bash() {
  bash -c '. ./bash.script
    compopt() { :; }
    read -ra COMP_WORDS <<<"$1"
    [[ $1 != *" " ]] || COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    _vendrelmodel
    printf "%s\n" "${COMPREPLY[@]}"' - "$1"
}

offers_of_fish() {
  HOME=$work fish -c 'source fish.script; complete -C "$argv[1]"' "$1" | cut -f1 | sed 's,/$,,'
}

every_shell() {
  local shell
  for shell in bash fish; do
    if command -v $shell >/dev/null; then expect $shell "$@"; else echo "$shell is not installed" >&2; fi
  done
}

every_shell "vendrelmodel na" "names" "tree find"
every_shell "vendrelmodel names --ki" "--kind" "--json"
every_shell "vendrelmodel names --kind local" "local-variable" "procedure"
every_shell "vendrelmodel names --reading c" "classic complete" ""
every_shell "vendrelmodel tree --set KeepD" "KeepDirectives=" "LoadBlocksOnly="
every_shell "vendrelmodel completion " "bash zsh fish" ""
every_shell "vendrelmodel write --to f" "folder" "folder.txt"
expect bash "vendrelmodel tree " "Shop.vbp lib.tlb folder" "Shop.txt"
if command -v zsh >/dev/null; then
  zsh -n zsh.script || status=1
else
  echo "zsh is not installed" >&2
fi
exit $status
