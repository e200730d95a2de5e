vektool dt (its usage says "bs"): the topology daemon dt_srv and its file.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

start unless running, get while running (else an empty topology), stop.

  $ rows <<'EOF'
  > dt get
  > dt get --json
  > vek-sim exit dt_srv 3
  > dt start
  > dt get --json
  > vek-sim exit dt_srv 0
  > dt start --json
  > dt start --json
  > dt get
  > vek-sim file /tmp/bs/bs.json '  not json, "quoted"  '
  > dt get --json
  > vek-sim file /tmp/bs/bs.json ' 	'
  > dt get --json
  > vek-sim missing /tmp/bs/bs.json
  > dt get --json
  > dt get
  > vek-sim file /tmp/bs/bs.json '{"bands":[],"stas":[{"mac":"00:11:22:33:44:55"}]}'
  > dt stop
  > dt stop --json
  > dt get
  > vek-sim proc start dt_srv 3000 >/dev/null
  > dt get
  > vek-sim proc stop dt_srv
  > EOF
  dt get: {"state":0,"topology":{"bands":[],"stas":[]}} [0]
  dt get --json: {"return":0,"result":"{"state":0,"topology":{"bands":[],"stas":[]}}"} [0]
  dt start: [0]
    run dt_srv
  dt get --json: {"return":0,"result":"{"state":0,"topology":{"bands":[],"stas":[]}}"} [0]
  dt start --json: {"return":0} [0]
    run dt_srv
  dt start --json: {"return":0} [0]
  dt get: {"state":1,"topology":{"bands":[{"band":"2.4G","channel":6},{"band":"5G","channel":36}],"stas":[{"mac":"00:11:22:33:44:55","band":"5G","rssi":-48},{"mac":"66:77:88:99:aa:bb","band":"2.4G","rssi":-61}]}} [0]
  dt get --json: {"return":0,"result":"{"state":1,"topology":not json, "quoted"}"} [0]
  dt get --json: {"return":0,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  dt get --json: {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  dt get: {"state":1,"topology":{"bands":[],"stas":[]}} [0]
  dt stop: [0]
    run killall dt_srv
  dt stop --json: {"return":0} [0]
    run killall dt_srv
  dt get: {"state":0,"topology":{"bands":[],"stas":[]}} [0]
  dt get: {"state":1,"topology":{"bands":[],"stas":[{"mac":"00:11:22:33:44:55"}]}} [0]

The daemon's path from the install root, one word; without it "not support".

  $ mkdir -p "$R/opt/my vek/bin"
  $ cp "$R/usr/vek/bin/vek.ini" "$R/usr/vek/bin/dt_srv" "$R/opt/my vek/bin/"
  $ rows <<'EOF'
  > vek-sim exe "/opt/my vek/bin/vektool"
  > dt start --json
  > vek-sim missing "/opt/my vek/bin/dt_srv"
  > dt get
  > dt start --json
  > dt --help
  > dt bogus --json x
  > dt 
  > dt get --duration=x
  > vek-sim exe /usr/vek/bin/vektool
  > vek-sim missing /usr/vek/bin/dt_srv
  > dt get
  > vek-sim stop && vek-sim start --owner $$
  > dt
  > dt restart --json
  > EOF
  dt start --json: {"return":0} [0]
    run dt_srv
  dt get: not support [0]
  dt start --json: not support [0]
  dt --help: not support [0]
  dt bogus --json x: {"return":1,"result":"not support"} [0]
  dt : not support [0]
  dt get --duration=x: not support [0]
  dt get: not support [0]
  dt: [1]
  dt restart --json: [1]
  $ vektool dt -h
  Usage: vektool bs <command> [options] [args]
     or: vektool bs start
     or: vektool bs stop
     or: vektool bs get
  
  Brief:
  
      -h, --help    show this help message and exit
      --json        
  
  
