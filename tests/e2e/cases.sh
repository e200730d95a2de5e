# Table-driven cases for a transcript that runs against the simulator. Source
# it after sim-env.sh, then give `table` the cases as they must come out, one
# line each:
#
#   $ table <<'EOF'
#   > qos on --json: {"return":0} [0] -> write /proc/vek/qos_enabled 1
#   > mon get-conn-count: Wrong arg number: 1 [1]
#   > vek-sim missing /proc/vek/monitor
#   > mon get-conn-count flows: Unsupport type: flows⏎ [0]
#   > EOF
#
# A case is the words after "vektool" (quoted as in a shell, up to the first
# ": "), then what vektool printed on both streams, then its exit status in
# brackets: after a space when the output ended its line, glued to the output
# when it did not; a line end inside the output shows as "⏎". Each verb the
# engine received during the case follows as " -> verb", in order. A line that
# begins with "vek-sim" sets the scene; blank lines and "#" lines are skipped.
# `table` runs every case and prints nothing when each came out as written,
# else a diff of what was written against what came out.
table() {
  grep -v -e '^#' -e '^$' >table.want
  while IFS= read -r line; do
    case $line in
      vek-sim*) eval "$line" </dev/null; printf '%s\n' "$line"; continue ;;
    esac
    words=${line%%: *}
    vek-sim journal --clear
    eval "vektool $words" </dev/null >table.out 2>&1
    printf '%s: %s' "$words" "$(one_line "$?")"
    vek-sim journal | while IFS= read -r verb; do printf ' -> %s' "$verb"; done
    printf '\n'
  done <table.want >table.got
  diff -u --label want --label got table.want table.got
}

# Prints table.out and the status $1 on one line, as `table` shows them.
one_line() {
  text=$(cat table.out; printf .)
  text=${text%.}
  shown=
  while :; do
    case $text in
      *'
'*) shown="$shown${text%%'
'*}⏎"; text=${text#*'
'} ;;
      *) break ;;
    esac
  done
  if [ -z "$text" ] && [ -n "$shown" ]; then
    printf '%s [%s]' "${shown%⏎}" "$1"
  else
    printf '%s%s[%s]' "$shown" "$text" "$1"
  fi
}

# The older block and row forms, while transcripts move to `table`.
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
