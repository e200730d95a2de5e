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

