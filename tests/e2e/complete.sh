#!/bin/bash
# Asks the generated bash completion what it offers for a command line, as
# bash would when Tab is pressed after the last word:
#
#   complete.sh vektool mon get-    prints the candidates, one a line
#   complete.sh vektool mon ''      an empty last word: everything that fits
#
# The completion script is the build's ($VEK_BUILD_DIR/vektool.bash).
set -u
. "${VEK_BUILD_DIR:?}/vektool.bash"
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
COMP_LINE="$*"
COMP_POINT=${#COMP_LINE}
_vektool
[ ${#COMPREPLY[@]} -eq 0 ] || printf '%s\n' "${COMPREPLY[@]}"
