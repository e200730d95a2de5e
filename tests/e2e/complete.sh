#!/bin/bash
# Asks the build's bash completion ($VEK_BUILD_DIR/vektool.bash) what it
# offers, as bash would when Tab is pressed after the last word. A case a line
# on standard input: the words after "vektool" (quoted as in a shell), ":",
# then each candidate in the order offered after a space. Prints nothing when
# every case came out as written, else a diff.
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
