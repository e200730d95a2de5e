vektool dt (its usage says "bs"): the topology daemon dt_srv and its file
/tmp/bs/bs.json. One case a line (see cases.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

start runs the daemon unless it runs, and succeeds whatever its status; get
wraps the file, trimmed and unchecked, while the daemon runs (else, or when
the file is blank, the empty topology; a missing file gives -1); stop always
runs killall. The help (`dt -h | cksum`) is pinned byte for byte.

  $ table <<'EOF'
  > vek-sim exit dt_srv 3
  > dt start: [0] -> run dt_srv
  > dt get --json: {"return":0,"result":"{"state":0,"topology":{"bands":[],"stas":[]}}"} [0]
  > vek-sim exit dt_srv 0
  > dt start --json: {"return":0} [0] -> run dt_srv
  > dt start --json: {"return":0} [0]
  > dt get: {"state":1,"topology":{"bands":[{"band":"2.4G","channel":6},{"band":"5G","channel":36}],"stas":[{"mac":"00:11:22:33:44:55","band":"5G","rssi":-48},{"mac":"66:77:88:99:aa:bb","band":"2.4G","rssi":-61}]}} [0]
  > vek-sim file /tmp/bs/bs.json '  not json, "quoted"  '
  > dt get --json: {"return":0,"result":"{"state":1,"topology":not json, "quoted"}"} [0]
  > vek-sim file /tmp/bs/bs.json ' 	'
  > dt get --json: {"return":0,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  > vek-sim missing /tmp/bs/bs.json
  > dt get --json: {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  > dt get: {"state":1,"topology":{"bands":[],"stas":[]}} [0]
  > vek-sim file /tmp/bs/bs.json '{"bands":[],"stas":[{"mac":"00:11:22:33:44:55"}]}'
  > dt stop: [0] -> run killall dt_srv
  > dt stop --json: {"return":0} [0] -> run killall dt_srv
  > dt get: {"state":0,"topology":{"bands":[],"stas":[]}} [0]
  > vek-sim proc start dt_srv 3000 >/dev/null
  > dt get: {"state":1,"topology":{"bands":[],"stas":[{"mac":"00:11:22:33:44:55"}]}} [0]
  > vek-sim proc stop dt_srv
  > dt: [1]
  > dt restart --json: [1]
  > EOF
  $ vektool dt -h | cksum
  2324429853 194

The daemon is the install root's bin/dt_srv, run as one word. Without it the
group answers "not support" to anything, before it reads its options.

  $ mkdir -p "$R/opt/my vek/bin" && cp "$R/usr/vek/bin/vek.ini" "$R/usr/vek/bin/dt_srv" "$R/opt/my vek/bin/"
  $ table <<'EOF'
  > vek-sim exe "/opt/my vek/bin/vektool"
  > dt start --json: {"return":0} [0] -> run dt_srv
  > vek-sim missing "/opt/my vek/bin/dt_srv"
  > dt start --json: not support [0]
  > dt --help: not support [0]
  > dt bogus --json x: {"return":1,"result":"not support"} [0]
  > dt : not support [0]
  > dt get --duration=x: not support [0]
  > EOF
