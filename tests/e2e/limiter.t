vektool limiter: per-target rate limits in /proc/vek/limiter_ctrl. One case a
line (see cases.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

set and del: the target checked by its --type (0 MAC, 1 IPv4 prefix, 2
number), options read in any base, unset ones as -1, other options ignored.
The help (`limiter -h | cksum`, with its "Brief:" lines) is pinned byte for
byte.

  $ table <<'EOF'
  > limiter list --json: [1]
  > limiter set 00:11:22:33:44:55: [0] -> write /proc/vek/limiter_ctrl set 0 00:11:22:33:44:55 -1 -1 -1
  > limiter set 192.168.1.0/24 --type 1 --up 2048 --down 4096 --en 1 --json: {"return":0} [0] -> write /proc/vek/limiter_ctrl set 1 192.168.1.0/24 1 2048 4096
  > limiter set 42 --type 2 --en 0: [0] -> write /proc/vek/limiter_ctrl set 2 42 0 -1 -1
  > limiter set --down=0x10 001122334455 --mac ignored: [0] -> write /proc/vek/limiter_ctrl set 0 001122334455 -1 -1 16
  > limiter set 00:11:2233:44:55 --json: {"return":1,"detail":"invalid arg: 00:11:2233:44:55"} [1]
  > limiter set 192.168.1.0/33 --type 1: invalid arg: 192.168.1.0/33 [1]
  > limiter set 192.168.1.0/32 --type 1: [0] -> write /proc/vek/limiter_ctrl set 1 192.168.1.0/32 -1 -1 -1
  > limiter set 192.168.1.0 --type 1: invalid arg: 192.168.1.0 [1]
  > limiter set 192.168.1.0/ --type 1: invalid arg: 192.168.1.0/ [1]
  > limiter set 192.168.1.0/2x --type 1: invalid arg: 192.168.1.0/2x [1]
  > limiter set 192.168.1/24 --type 1: invalid arg: 192.168.1/24 [1]
  > limiter set 10.0.0.0/288 --type 1: [0] -> write /proc/vek/limiter_ctrl set 1 10.0.0.0/288 -1 -1 -1
  > limiter set 10.0.0.0/0024 --type 1: [0] -> write /proc/vek/limiter_ctrl set 1 10.0.0.0/0024 -1 -1 -1
  > limiter set "$(printf '%070d' 0)/8" --type 1: invalid arg: 0000000000000000000000000000000000000000000000000000000000000000000000/8 [1]
  > limiter set 4a --type 2 --json: {"return":1,"detail":"invalid arg: 4a"} [1]
  > limiter set '' --type 2: [0] -> write /proc/vek/limiter_ctrl set 2  -1 -1 -1
  > limiter set 1 --type 3: invalid arg: 1 [1]
  > limiter set 1 --type=-1: invalid arg: 1 [1]
  > limiter set --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  > limiter set 00:11:22:33:44:55 --up x: error: option `--up` expects an integer value [1]
  > limiter del 42 --type 2: [0] -> write /proc/vek/limiter_ctrl del 2 42
  > limiter del 4a --type 2: invalid arg: 4a [1]
  > limiter del 192.168.1.0/24 --type 1 --json: {"return":0} [0] -> write /proc/vek/limiter_ctrl del 1 192.168.1.0/24
  > limiter del 00:11:22:33:44:55 --up 5: [0] -> write /proc/vek/limiter_ctrl del 0 00:11:22:33:44:55
  > limiter del 00-11-22-33-44-5 --json: {"return":1,"detail":"invalid arg: 00-11-22-33-44-5"} [1]
  > limiter del 1 --type 3 --json: {"return":1,"detail":"invalid arg: 1"} [1]
  > limiter del: Wrong arg number: 1 [1]
  > EOF
  $ vektool limiter -h | cksum
  3996981238 672

get rebuilds the engine's document from the members it knows, matched
without regard to case, with defaults for what is missing or odd; "vr" is
never filled, and what cannot be read or parsed gives the empty document.

  $ table <<'EOF'
  > limiter get: {"s":1,"mr":[],"ir":[{"s":1,"a":"192.168.1.0/32","r":[1024,1024]},{"s":1,"a":"10.0.0.0/0024","r":[1024,1024]}],"vr":[]} [0]
  > limiter get --json: {"return":0,"result":{"s":1,"mr":[],"ir":[{"s":1,"a":"192.168.1.0/32","r":[1024,1024]},{"s":1,"a":"10.0.0.0/0024","r":[1024,1024]}],"vr":[]}} [0]
  > limiter clear --json: {"return":0} [0] -> write /proc/vek/limiter_ctrl clear
  > limiter clear extra: [0] -> write /proc/vek/limiter_ctrl clear
  > vek-sim file /proc/vek/limiter_ctrl '{"s":7,"mr":[{"m":"aa","s":2,"r":[1,2],"x":9},{"r":"odd"},5],"ir":[{"a":"10.0.0.0/8","s":1e12}],"vr":[{"v":"1","s":1,"r":[3,4]}]}'
  > limiter get: {"s":7,"mr":[{"s":2,"m":"aa","r":[1,2]},{"s":0,"m":"","r":"odd"},{"s":0,"m":"","r":[0,0]}],"ir":[{"s":2147483647,"a":"10.0.0.0/8","r":[0,0]}],"vr":[]} [0]
  > vek-sim file /proc/vek/limiter_ctrl '{"S":"x","MR":[{"M":7,"S":-3.9}],"ir":{"a":"x"}}'
  > limiter get: {"s":0,"mr":[{"s":-3,"m":"","r":[0,0]}],"ir":[],"vr":[]} [0]
  > vek-sim file /proc/vek/limiter_ctrl '[1,2]'
  > limiter get: {"s":0,"mr":[],"ir":[],"vr":[]} [0]
  > vek-sim file /proc/vek/limiter_ctrl 'not json'
  > limiter get --json: {"return":0,"result":{"s":0,"mr":[],"ir":[],"vr":[]}} [0]
  > vek-sim unreadable /proc/vek/limiter_ctrl
  > limiter get --json: {"return":0,"result":{"s":0,"mr":[],"ir":[],"vr":[]}} [0]
  > vek-sim missing /proc/vek/limiter_ctrl
  > limiter clear --json: {"return":0} [0]
  > EOF
