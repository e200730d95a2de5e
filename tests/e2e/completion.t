Bash completion, generated from the group tables: groups, a group's commands
in table order (until one is given), its options, and file names after the
options that take a file. One case a line (see complete.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ cd "$R" && touch vek-a.ini vek-b.ini
  $ bash "$TESTDIR/complete.sh" <<'EOF'
  > '': vek qos iam dev mon gc ss dt xdn xapp sid diag limiter cloud
  > m: mon
  > mon '': get-conn-count clear-conn-count
  > mon get: get-conn-count
  > mon c: clear-conn-count
  > mon --json g: get-conn-count
  > mon -i vek-a.ini g: get-conn-count
  > mon get-conn-count '':
  > mon get-conn-count b:
  > mon --: --help --json --ini --log
  > mon -: -h --help --json -i --ini -l --log
  > mon -i vek-a: vek-a.ini
  > mon get-conn-count --ini vek-b: vek-b.ini
  > mon -l va: var
  > nogroup '':
  > qos set-: set-algo set-qoe-active set-qoe-profile set-qoe-profile-setting set-qoe-profile-settings set-qoe-bwctl set-hyqos-active set-hyqos-queue set-hyqos-queues set-dscp-mapping
  > qos --json set-qoe-profile-: set-qoe-profile-setting set-qoe-profile-settings
  > qos --sensitivity 3 set-algo '':
  > qos --: --help --sensitivity --intensity --json --ini --log
  > EOF

Each group offered answers as one (a missing command: 1; no group: 255).

  $ for group in vek qos iam dev mon gc ss dt xdn xapp sid diag limiter cloud nogroup; do vektool $group >/dev/null 2>&1; printf ' %s' $?; done; echo
   1 1 1 1 1 1 1 1 1 1 1 1 1 1 255
