vektool cloud and diag: the cloud switch in /proc/vek/fc_ctrl and the
service's replies over its socket.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

The switch (unreported failures) and one request per get; diag plain prints "result".

  $ rows <<'EOF'
  > cloud on
  > cloud off --json x
  > cloud on --json
  > cloud get
  > cloud get --json x
  > diag get --json
  > diag get
  > vek-sim missing /proc/vek/fc_ctrl
  > cloud off --json x
  > EOF
  cloud on: [0]
    write /proc/vek/fc_ctrl enable-cloud
  cloud off --json x: {"return":0} [0]
    write /proc/vek/fc_ctrl disable-cloud
  cloud on --json: [0]
    write /proc/vek/fc_ctrl enable-cloud
  cloud get: {"return":0,"result":{"enabled":1,"state":"connected","server":"cloud.example.com","since":1700000000}} [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  cloud get --json x: {"return":0,"result":{"enabled":1,"state":"connected","server":"cloud.example.com","since":1700000000}} [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  diag get --json: {"return":0,"result":{"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}} [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  diag get: {"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}[0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  cloud off --json x: {"return":0} [0]

Replies pass through trimmed and unchecked.

  $ vek-sim reply get-cs ' 
  > {"state": "offline"}	
  > 
  > '
  $ vektool cloud get
  {"state": "offline"}
  $ while IFS= read -r r; do vek-sim reply get-diag "$r"; printf '%s: ' "$r"; vektool diag get; echo " [$?]"; done <<'EOF'
  > {"result": [1, 2.5, "x", null, {"k": true}]}
  > {"return":0,"result":"text"}
  > {"return":1,"detail":"busy"}
  > [{"result":1}]
  > "result"
  > {"result":1
  > not json
  > EOF
  {"result": [1, 2.5, "x", null, {"k": true}]}: [1,2.5,"x",null,{"k":true}] [0]
  {"return":0,"result":"text"}: "text" [0]
  {"return":1,"detail":"busy"}:  [0]
  [{"result":1}]:  [0]
  "result":  [0]
  {"result":1:  [0]
  not json:  [0]
  $ vektool diag get --json
  not json

Replies in pieces, cut short or missing (53, no retry).

  $ vek-sim reply get-diag '{"return":0,"result":{"ok":1}}'
  $ vek-sim reply get-cs '{"return":0,"result":{"enabled":1,"state":"connecting","server":"cloud.example.com","since":0}}'
  $ sed 's|^run = .*|run = /var/run/other|' "$R/usr/vek/bin/vek.ini" > "$R/tmp/other.ini"
  $ rows <<'EOF'
  > vek-sim service pieces
  > cloud get
  > vek-sim service pieces 200
  > cloud get
  > diag get --json
  > diag get
  > vek-sim service reset
  > cloud get
  > vek-sim service close
  > vek-sim reply get-cs ''
  > cloud get
  > cloud get --json x
  > diag get
  > diag get --json
  > vek-sim service reset
  > cloud get --json x
  > vek-sim service down
  > diag get --json
  > cloud get
  > vek-sim service normal
  > cloud get -i /tmp/other.ini
  > vek-sim service silent
  > cloud get
  > vek-sim service slow
  > diag get --json
  > EOF
  cloud get: {"return":0,"result":{"enabled":1,"state":"connecting","server":"cloud.example.com","since":0}} [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  cloud get: {"return":0,"res [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  diag get --json: {"return":0,"res [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  diag get: [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  cloud get: {"return":0,"res [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  cloud get: Failed to read socket. [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  cloud get --json x: {"return":53,"detail":"Failed to read socket."} [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  diag get: Failed to read socket. [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  diag get --json: {"return":53,"detail":"Failed to read socket."} [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  cloud get --json x: {"return":53,"detail":"Failed to read socket."} [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  diag get --json: {"return":53,"detail":"Failed to read socket."} [0]
  cloud get: Failed to read socket. [0]
  cloud get -i /tmp/other.ini: Failed to read socket. [0]
  cloud get: Failed to read socket. [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  diag get --json: {"return":53,"detail":"Failed to read socket."} [0]
    request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  $ mkdir -p "$R/var/run/other" && touch "$R/var/run/other/vek.sock"
  $ vektool diag get -i /tmp/other.ini --json
  {"return":53,"detail":"Failed to read socket."}

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
  $ rows <<'EOF'
  > cloud
  > cloud status --json x
  > diag
  > diag Get --json
  > EOF
  cloud: [1]
  cloud status --json x: [1]
  diag: [1]
  diag Get --json: [1]
