# Table-driven cases for a transcript that runs against the simulator. Source
# it after sim-env.sh, then feed `cases` one case per line:
#
#   $ cases <<'EOF'
#   > qos set-algo hyqos --json
#   > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:-1'
#   > EOF
#
# A case is the words after "vektool", quoted as in a shell. For each case it
# prints the command line, what vektool printed on both streams, the exit
# status as "[exit N]" (glued to the output when that lacks its line end)
# and the verbs the engine received during the case, indented. A line that
# begins with "vek-sim" sets the scene and prints nothing; blank lines and
# lines that begin with "#" are skipped.
cases() { each_case case_block; }
case_block() {
  printf 'vektool %s\n' "$1"
  eval "vektool $1" </dev/null 2>&1
  printf '[exit %d]\n' $?
}

# Runs the cases on standard input through a printer of one case ($1: the
# words), clearing the journal before each and showing it, indented, after.
each_case() {
  while IFS= read -r line; do
    case $line in
      '' | '#'*) continue ;;
      vek-sim*) eval "$line" </dev/null; continue ;;
    esac
    vek-sim journal --clear
    "$1" "$line"
    vek-sim journal | sed 's/^/  /'
  done
}

# The same cases, one line each: the words, a colon, what vektool printed on
# both streams and the exit status as "[N]" (after a space when the output
# ended its last line, glued to it when it did not; an output of several
# lines keeps its inner line ends), then the engine's verbs, indented.
#
#   $ rows <<'EOF'
#   > qos on --json
#   > EOF
#   qos on --json: {"return":0} [0]
#     write /proc/vek/qos_enabled 1
rows() { each_case row_line; }
row_line() {
  out=$(eval "vektool $1" </dev/null 2>&1; printf '~%d' $?)
  status=${out##*~}
  out=${out%~*}
  case $out in
    *'
') printf '%s: %s [%s]\n' "$1" "${out%?}" "$status" ;;
    *) printf '%s: %s[%s]\n' "$1" "$out" "$status" ;;
  esac
}
