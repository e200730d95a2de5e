vektool mon: connection counters of /proc/vek/monitor, against the simulator.
One case a line: the words after vektool, what they printed, [status], and
each verb the engine received (see cases.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

Each type, plain and JSON, matched without regard to case; extra words are
ignored. Only a missing type exits 1; an unknown type and an unreadable file
are reported with a newline of their own and exit 0. A file without the
record prints nothing; an empty value prints as it is. Reads never write.

  $ table <<'EOF'
  > vek-sim file /proc/vek/monitor "$(printf '%s\n' u:block_conns:42 'j:cat_conns:{"1":3,"7":12}' 'j:prio_conns:[5,0,2,1]  ')"
  > mon get-conn-count block: 42 [0]
  > mon get-conn-count block --json: {"return":0,"result":42} [0]
  > mon get-conn-count BLOCK --json: {"return":0,"result":42} [0]
  > mon get-conn-count Category: {"1":3,"7":12} [0]
  > mon get-conn-count category --json: {"return":0,"result":{"1":3,"7":12}} [0]
  > mon get-conn-count priority --json: {"return":0,"result":[5,0,2,1]} [0]
  > mon get-conn-count priority block: [5,0,2,1] [0]
  > mon get-conn-count: Wrong arg number: 1 [1]
  > mon get-conn-count --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  > mon get-conn-count flows: Unsupport type: flows⏎ [0]
  > mon get-conn-count flows --json: {"return":1,"detail":"Unsupport type: flows⏎"} [0]
  > mon get-conn-count blocks: Unsupport type: blocks⏎ [0]
  > vek-sim file /proc/vek/monitor "$(printf '%s\n' u:other:1 u:block_conns)"
  > mon get-conn-count block --json: [0]
  > mon get-conn-count category: [0]
  > vek-sim file /proc/vek/monitor 'u:block_conns:'
  > mon get-conn-count block --json: {"return":0,"result":} [0]
  > vek-sim unreadable /proc/vek/monitor
  > mon get-conn-count block: Failed to read file⏎ [0]
  > vek-sim missing /proc/vek/monitor
  > mon get-conn-count category --json: {"return":1,"detail":"Failed to read file⏎"} [0]
  > EOF

Clearing writes one verb per run, silent in plain mode; the engine's counters
read 0 afterwards. Without the engine nothing is reported.

  $ table <<'EOF'
  > vek-sim file /proc/vek/monitor "$(printf '%s\n' u:block_conns:42 'j:cat_conns:{"1":3}')"
  > mon clear-conn-count: [0] -> write /proc/vek/monitor clear
  > mon get-conn-count block: 0 [0]
  > mon clear-conn-count --json: {"return":0} [0] -> write /proc/vek/monitor clear
  > mon clear-conn-count bogus --json: {"return":0} [0] -> write /proc/vek/monitor clear
  > vek-sim missing /proc/vek
  > mon clear-conn-count --json: {"return":0} [0]
  > EOF
