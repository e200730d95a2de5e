vektool's bash completion is generated from the group table: groups, then a
group's commands (until the command word is given), its options, and file
names after the options that take a file. Each case prints the line and the
candidates in the order offered.

  $ . "$TESTDIR/plain-env.sh"
  $ cd "$R"
  $ touch vek-a.ini vek-b.ini
  $ while read -r words; do
  >   echo "# $words"
  >   eval "set -- $words"
  >   bash "$TESTDIR/complete.sh" vektool "$@"
  > done <<'CASES'
  > m
  > mon ''
  > mon get
  > mon c
  > mon --json g
  > mon -i vek-a.ini g
  > mon get-conn-count ''
  > mon get-conn-count b
  > mon --
  > mon -
  > mon -i vek-a
  > mon get-conn-count --ini vek-b
  > nogroup ''
  > CASES
  # m
  mon
  # mon ''
  get-conn-count
  clear-conn-count
  # mon get
  get-conn-count
  # mon c
  clear-conn-count
  # mon --json g
  get-conn-count
  # mon -i vek-a.ini g
  get-conn-count
  # mon get-conn-count ''
  # mon get-conn-count b
  # mon --
  --help
  --json
  --ini
  --log
  # mon -
  -h
  --help
  --json
  -i
  --ini
  -l
  --log
  # mon -i vek-a
  vek-a.ini
  # mon get-conn-count --ini vek-b
  vek-b.ini
  # nogroup ''

File names come in the order the directory lists them.

  $ bash "$TESTDIR/complete.sh" vektool mon -l v | sort
  var
  vek-a.ini
  vek-b.ini

The group words are exactly the groups the tool answers to: every word
offered is a group, and every group of the engine's fixed list that the tool
answers to is offered.

  $ bash "$TESTDIR/complete.sh" vektool '' > groups
  $ grep -x mon groups
  mon
  $ for group in $(cat groups) vek qos iam dev mon gc ss dt xdn xapp sid diag limiter cloud; do
  >   vektool "$group" >/dev/null 2>&1
  >   answered=$?
  >   if grep -qx "$group" groups; then listed=yes; else listed=no; fi
  >   if [ $answered -eq 255 ] && [ $listed = yes ]; then echo "$group is offered but is no group"; fi
  >   if [ $answered -ne 255 ] && [ $listed = no ]; then echo "$group is a group but not offered"; fi
  > done
  $ vektool nogroup >/dev/null 2>&1; echo "nogroup $?"
  nogroup 255
