vektool mon: connection counters of /proc/vek/monitor, against the simulator.

  $ . "$TESTDIR/sim-env.sh"
  $ vek-sim file /proc/vek/monitor <<'EOF'
  > u:block_conns:42
  > j:cat_conns:{"1":3,"7":12}
  > j:prio_conns:[5,0,2,1]  
  > EOF

Each type, plain and JSON; the type word is matched without regard to case.

  $ vektool mon get-conn-count block
  42
  $ vektool mon get-conn-count block --json
  {"return":0,"result":42}
  $ vektool mon get-conn-count BLOCK --json
  {"return":0,"result":42}
  $ vektool mon get-conn-count Category
  {"1":3,"7":12}
  $ vektool mon get-conn-count category --json
  {"return":0,"result":{"1":3,"7":12}}
  $ vektool mon get-conn-count priority --json
  {"return":0,"result":[5,0,2,1]}

Extra words are ignored.

  $ vektool mon get-conn-count priority block
  [5,0,2,1]

A missing type is the only failure that exits 1.

  $ vektool mon get-conn-count
  Wrong arg number: 1
  [1]
  $ vektool mon get-conn-count --json
  {"return":1,"detail":"Wrong arg number: 1"}
  [1]

An unknown type and an unreadable file are reported but exit 0; both details
carry a newline of their own.

  $ vektool mon get-conn-count flows
  Unsupport type: flows
  
  $ vektool mon get-conn-count flows --json
  {"return":1,"detail":"Unsupport type: flows
  "}
  $ vektool mon get-conn-count blocks
  Unsupport type: blocks
  
  $ vek-sim unreadable /proc/vek/monitor
  $ vektool mon get-conn-count block
  Failed to read file
  
  $ vek-sim missing /proc/vek/monitor
  $ vektool mon get-conn-count category --json
  {"return":1,"detail":"Failed to read file
  "}

A file without the record prints nothing; an empty value prints as it is.

  $ printf 'u:other:1\nu:block_conns\n' | vek-sim file /proc/vek/monitor
  $ vektool mon get-conn-count block --json
  $ vektool mon get-conn-count category
  $ vek-sim file /proc/vek/monitor 'u:block_conns:'
  $ vektool mon get-conn-count block --json
  {"return":0,"result":}

Nothing was written so far: reads never write.

  $ vek-sim journal

Clearing writes one verb per run, silent in plain mode; the engine's counters
read 0 afterwards.

  $ vek-sim file /proc/vek/monitor 'u:block_conns:42
  > j:cat_conns:{"1":3}
  > '
  $ vektool mon clear-conn-count
  $ vektool mon get-conn-count block
  0
  $ vektool mon clear-conn-count --json
  {"return":0}
  $ vektool mon clear-conn-count bogus --json
  {"return":0}
  $ vek-sim journal
  write /proc/vek/monitor clear
  write /proc/vek/monitor clear
  write /proc/vek/monitor clear

The verb goes out even when the engine is not loaded; nothing is reported.

  $ vek-sim journal --clear
  $ vek-sim missing /proc/vek
  $ vektool mon clear-conn-count --json
  {"return":0}
  $ vek-sim journal
