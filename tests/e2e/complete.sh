#!/bin/bash
# Asks the build's completion ($VEK_BUILD_DIR/vektool.bash) what Tab after the
# last word offers. A case a line on standard input: the words after "vektool"
# (shell-quoted), ":", each candidate in order after a space. Prints nothing
# when every case came out as written, else a diff.
set -u
. "${VEK_BUILD_DIR:?}/vektool.bash"
tmp=$(mktemp -d) && trap 'rm -rf "$tmp"' EXIT || exit 1
tee "$tmp/want" | while IFS= read -r line; do
  eval "COMP_WORDS=(vektool ${line%%:*})"
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) COMP_LINE="${COMP_WORDS[*]}" COMP_POINT=${#COMP_LINE}
  _vektool
  printf '%s:' "${line%%:*}"
  [ ${#COMPREPLY[@]} -eq 0 ] || printf ' %s' "${COMPREPLY[@]}"
  echo
done >"$tmp/got"
diff -u --label want --label got "$tmp/want" "$tmp/got"
