vektool mon: connection counters of /proc/vek/monitor.

  $ . "$TESTDIR/plain-env.sh"
  $ cat > root/proc/vek/monitor <<'EOF'
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
  
  $ rm root/proc/vek/monitor
  $ vektool mon get-conn-count block
  Failed to read file
  
  $ vektool mon get-conn-count category --json
  {"return":1,"detail":"Failed to read file
  "}

A file without the record prints nothing.

  $ printf 'u:other:1\nu:block_conns\n' > root/proc/vek/monitor
  $ vektool mon get-conn-count block --json
  $ vektool mon get-conn-count category

A record with nothing after its tag prints an empty value.

  $ printf 'u:block_conns:\n' > root/proc/vek/monitor
  $ vektool mon get-conn-count block --json
  {"return":0,"result":}

Clearing is silent in plain mode.

  $ printf 'u:block_conns:42\n' > root/proc/vek/monitor
  $ vektool mon clear-conn-count
  $ vektool mon clear-conn-count --json
  {"return":0}
  $ head -c 5 root/proc/vek/monitor; echo
  clear
