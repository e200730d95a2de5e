vektool dt (its usage says "bs"): the topology daemon dt_srv and its topology
file, against the simulator.

  $ . "$TESTDIR/sim-env.sh"
  $ run() { while IFS= read -r line; do echo "-- $line"; eval "vektool dt $line"; echo "= $?"; done; }

With the daemon installed but not running: an empty topology, code 0.

  $ run <<'EOF'
  > get
  > get --json
  > EOF
  -- get
  {"state":0,"topology":{"bands":[],"stas":[]}}
  = 0
  -- get --json
  {"return":0,"result":"{"state":0,"topology":{"bands":[],"stas":[]}}"}
  = 0

start runs the installed daemon through the shell unless one runs already,
and reports success whatever the daemon's exit status; get then wraps its
file, unchecked, into the answer; stop runs killall.

  $ vek-sim exit dt_srv 3
  $ run <<'EOF'
  > start
  > get --json
  > EOF
  -- start
  = 0
  -- get --json
  {"return":0,"result":"{"state":0,"topology":{"bands":[],"stas":[]}}"}
  = 0
  $ vek-sim exit dt_srv 0
  $ run <<'EOF'
  > start --json
  > start --json
  > get
  > EOF
  -- start --json
  {"return":0}
  = 0
  -- start --json
  {"return":0}
  = 0
  -- get
  {"state":1,"topology":{"bands":[{"band":"2.4G","channel":6},{"band":"5G","channel":36}],"stas":[{"mac":"00:11:22:33:44:55","band":"5G","rssi":-48},{"mac":"66:77:88:99:aa:bb","band":"2.4G","rssi":-61}]}}
  = 0
  $ vek-sim file /tmp/bs/bs.json '
  >   not json, "quoted"  
  > '
  $ vektool dt get --json
  {"return":0,"result":"{"state":1,"topology":not json, "quoted"}"}
  $ vek-sim file /tmp/bs/bs.json ' 
  > 	'
  $ vektool dt get --json
  {"return":0,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"}
  $ vek-sim missing /tmp/bs/bs.json
  $ vektool dt get --json
  {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"}
  $ vektool dt get
  {"state":1,"topology":{"bands":[],"stas":[]}}
  $ vek-sim file /tmp/bs/bs.json '{"bands":[],"stas":[{"mac":"00:11:22:33:44:55"}]}'
  $ run <<'EOF'
  > stop
  > stop --json
  > get
  > EOF
  -- stop
  = 0
  -- stop --json
  {"return":0}
  = 0
  -- get
  {"state":0,"topology":{"bands":[],"stas":[]}}
  = 0
  $ vek-sim journal
  run dt_srv
  run dt_srv
  run killall dt_srv
  run killall dt_srv

The daemon is found by its command name, whoever started it.

  $ vek-sim proc start dt_srv 3000
  3000
  $ vektool dt get
  {"state":1,"topology":{"bands":[],"stas":[{"mac":"00:11:22:33:44:55"}]}}
  $ vek-sim proc stop dt_srv

The daemon's path comes from the installation root, the parent of the
executable's directory, and goes to the shell as one word.

  $ mkdir -p "$R/opt/my vek/bin"
  $ cp "$R/usr/vek/bin/vek.ini" "$R/usr/vek/bin/dt_srv" "$R/opt/my vek/bin/"
  $ vek-sim exe "/opt/my vek/bin/vektool"
  $ vek-sim journal --clear
  $ vektool dt start --json
  {"return":0}
  $ vek-sim journal
  run dt_srv

Without the daemon installed every dt command, help included, answers "not
support" with code 1 and exit status 0, before its line is even parsed: so a
--json as the last word, which only the group's parser would see, is not
taken.

  $ rm "$R/opt/my vek/bin/dt_srv"
  $ run <<'EOF'
  > get
  > start --json
  > --help
  > bogus --json x
  > 
  > get --duration=x
  > EOF
  -- get
  not support
  = 0
  -- start --json
  not support
  = 0
  -- --help
  not support
  = 0
  -- bogus --json x
  {"return":1,"result":"not support"}
  = 0
  -- 
  not support
  = 0
  -- get --duration=x
  not support
  = 0
  $ vek-sim exe /usr/vek/bin/vektool
  $ vek-sim missing /usr/vek/bin/dt_srv
  $ vektool dt get
  not support

Installed again: help, and the frame's failures.

  $ vek-sim stop && vek-sim start --owner $$
  $ vektool dt -h
  Usage: vektool bs <command> [options] [args]
     or: vektool bs start
     or: vektool bs stop
     or: vektool bs get
  
  Brief:
  
      -h, --help    show this help message and exit
      --json        
  
  
  $ vektool dt
  [1]
  $ vektool dt restart --json
  [1]
