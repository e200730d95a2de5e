vektool cloud and diag: the cloud switch in /proc/vek/fc_ctrl, and the
service's cloud state and diagnostics over its socket, against the simulator.

  $ . "$TESTDIR/sim-env.sh"
  $ run() { while IFS= read -r line; do echo "-- $line"; eval "vektool $line"; echo "= $?"; done; }
  $ about_3s() { t=$(( ($(date +%s%N) - $1) / 100000000 )); [ $t -ge 30 ] && [ $t -lt 35 ] && echo "(about 3 s)" || echo "(took $t tenths of a second)"; }

The switch: one verb each. cloud has no --json of its own, so only a --json
that the global pre-scan sees (not the last word) gives JSON output.

  $ run <<'EOF'
  > cloud on
  > cloud off --json x
  > cloud on --json
  > EOF
  -- cloud on
  = 0
  -- cloud off --json x
  {"return":0}
  = 0
  -- cloud on --json
  = 0
  $ vek-sim journal && vek-sim journal --clear
  write /proc/vek/fc_ctrl enable-cloud
  write /proc/vek/fc_ctrl disable-cloud
  write /proc/vek/fc_ctrl enable-cloud
  $ vek-sim cat /proc/vek/fc_ctrl
  {"ec":1,"ecnt":32768,"emb":16,"dr":[]}

A write the engine cannot take is not reported.

  $ vek-sim missing /proc/vek/fc_ctrl
  $ vektool cloud off --json x
  {"return":0}

Asking the service: one request per run. cloud get prints the reply trimmed,
with a line end, in either mode; diag get prints the whole reply with --json
and only its "result" member, without a line end, in plain mode.

  $ run <<'EOF'
  > cloud get
  > cloud get --json x
  > diag get --json
  > diag get
  > EOF
  -- cloud get
  {"return":0,"result":{"enabled":1,"state":"connected","server":"cloud.example.com","since":1700000000}}
  = 0
  -- cloud get --json x
  {"return":0,"result":{"enabled":1,"state":"connected","server":"cloud.example.com","since":1700000000}}
  = 0
  -- diag get --json
  {"return":0,"result":{"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}}
  = 0
  -- diag get
  {"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}= 0
  $ vek-sim journal && vek-sim journal --clear
  request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}

Replies are passed through: white space around them goes, the rest is not
checked. In plain mode diag prints the member as cJSON prints it, and nothing
for a reply that does not parse, is not an object, or has no "result".

  $ vek-sim reply get-cs ' 
  > {"state": "offline"}	
  > 
  > '
  $ vektool cloud get
  {"state": "offline"}
  $ run <<'EOF'
  > diag get
  > diag get --json
  > EOF
  -- diag get
  {"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}= 0
  -- diag get --json
  {"return":0,"result":{"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}}
  = 0
  $ while IFS= read -r reply; do vek-sim reply get-diag "$reply"; echo "-- $reply"; vektool diag get; echo "= $?"; done <<'EOF'
  > {"result": [1, 2.5, "x", null, {"k": true}]}
  > {"return":0,"result":"text"}
  > {"return":1,"detail":"busy"}
  > [{"result":1}]
  > "result"
  > {"result":1
  > not json
  > EOF
  -- {"result": [1, 2.5, "x", null, {"k": true}]}
  [1,2.5,"x",null,{"k":true}]= 0
  -- {"return":0,"result":"text"}
  "text"= 0
  -- {"return":1,"detail":"busy"}
  = 0
  -- [{"result":1}]
  = 0
  -- "result"
  = 0
  -- {"result":1
  = 0
  -- not json
  = 0
  $ vektool diag get --json
  not json

A reply that comes in pieces is read whole while the pieces follow each other
within 10 ms; a longer pause cuts it there.

  $ vek-sim journal --clear
  $ vek-sim reply get-diag '{"return":0,"result":{"ok":1}}'
  $ vek-sim reply get-cs '{"return":0,"result":{"enabled":1,"state":"connecting","server":"cloud.example.com","since":0}}'
  $ vek-sim service pieces
  $ vektool cloud get
  {"return":0,"result":{"enabled":1,"state":"connecting","server":"cloud.example.com","since":0}}
  $ vek-sim service pieces 200
  $ vektool cloud get
  {"return":0,"res
  $ vektool diag get --json
  {"return":0,"res
  $ vektool diag get

A service that resets the connection after a few bytes: what came is the reply.

  $ vek-sim service reset
  $ vektool cloud get
  {"return":0,"res

No reply at all is code 53 "Failed to read socket.", still exit status 0: a
service that hangs up without a byte, a socket nobody listens on, no socket
file, a run directory without the service.

  $ vek-sim service close
  $ vek-sim reply get-cs ''
  $ run <<'EOF'
  > cloud get
  > cloud get --json x
  > diag get
  > diag get --json
  > EOF
  -- cloud get
  Failed to read socket.
  = 0
  -- cloud get --json x
  {"return":53,"detail":"Failed to read socket."}
  = 0
  -- diag get
  Failed to read socket.
  = 0
  -- diag get --json
  {"return":53,"detail":"Failed to read socket."}
  = 0
  $ vek-sim service reset
  $ vektool cloud get --json x
  {"return":53,"detail":"Failed to read socket."}
  $ vek-sim service down
  $ vektool diag get --json
  {"return":53,"detail":"Failed to read socket."}
  $ vektool cloud get
  Failed to read socket.
  $ vek-sim service normal
  $ sed 's|^run = .*|run = /var/run/other|' "$R/usr/vek/bin/vek.ini" > "$R/tmp/other.ini"
  $ vektool cloud get -i /tmp/other.ini
  Failed to read socket.
  $ mkdir -p "$R/var/run/other" && touch "$R/var/run/other/vek.sock"
  $ vektool diag get -i /tmp/other.ini --json
  {"return":53,"detail":"Failed to read socket."}
  $ vek-sim journal | uniq -c
        2 request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
        2 request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
        3 request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
        2 request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
        1 request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  $ vek-sim journal --clear

A service that stays silent, or answers only after the 3 s the tool waits, is
no reply either: code 53 after about 3 s, with no retry.

  $ vek-sim service silent
  $ start=$(date +%s%N); vektool cloud get; about_3s $start
  Failed to read socket.
  (about 3 s)
  $ vek-sim service slow
  $ start=$(date +%s%N); vektool diag get --json; about_3s $start
  {"return":53,"detail":"Failed to read socket."}
  (about 3 s)
  $ vek-sim journal
  request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}

Help, and the frame's failures.

  $ vektool cloud -h
  Usage: vektool cloud [options] <command> [args]
     or: vektool cloud get
     or: vektool cloud on
     or: vektool cloud off
  
  Brief:
  
      -h, --help    show this help message and exit
  
  
  $ vektool diag --help
  Usage: vektool diag [options] <command> [args]
     or: vektool diag get
  
      -h, --help    show this help message and exit
      --json        
  $ run <<'EOF'
  > cloud
  > cloud status --json x
  > diag
  > diag Get --json
  > EOF
  -- cloud
  = 1
  -- cloud status --json x
  = 1
  -- diag
  = 1
  -- diag Get --json
  = 1
