vektool cloud and diag: the cloud switch in /proc/vek/fc_ctrl and the
service's replies over its socket. One case a line (see cases.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

The switch, whose failures go unreported (cloud has no --json of its own:
only the global scan sees one, not as the last word). One request per get;
replies pass through trimmed and unchecked, and diag plain prints the reply's
"result" alone, without a line end. The helps (`cloud -h | cksum`, `diag
--help | cksum`) are pinned byte for byte.

  $ table <<'EOF'
  > cloud on: [0] -> write /proc/vek/fc_ctrl enable-cloud
  > cloud off --json x: {"return":0} [0] -> write /proc/vek/fc_ctrl disable-cloud
  > cloud on --json: [0] -> write /proc/vek/fc_ctrl enable-cloud
  > cloud get: {"return":0,"result":{"enabled":1,"state":"connected","server":"cloud.example.com","since":1700000000}} [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  > cloud get --json x: {"return":0,"result":{"enabled":1,"state":"connected","server":"cloud.example.com","since":1700000000}} [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  > diag get --json: {"return":0,"result":{"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}} [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > diag get: {"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}[0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > cloud: [1]
  > cloud status --json x: [1]
  > diag Get --json: [1]
  > vek-sim missing /proc/vek/fc_ctrl
  > cloud off --json x: {"return":0} [0]
  > vek-sim reply get-cs "$(printf ' \n{"state": "offline"}\t\n\n ')"
  > cloud get: {"state": "offline"} [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  > vek-sim reply get-diag '{"result": [1, 2.5, "x", null, {"k": true}]}'
  > diag get: [1,2.5,"x",null,{"k":true}][0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > vek-sim reply get-diag '{"return":0,"result":"text"}'
  > diag get: "text"[0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > vek-sim reply get-diag '{"return":1,"detail":"busy"}'
  > diag get: [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > vek-sim reply get-diag '[{"result":1}]'
  > diag get: [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > vek-sim reply get-diag 'not json'
  > diag get: [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > diag get --json: not json [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > EOF
  $ vektool cloud -h | cksum
  1129804474 183
  $ vektool diag --help | cksum
  1640107126 141

Replies in pieces are read whole; one cut short is printed as far as it came;
none, a closed or missing socket, or no answer in time is 53, with no retry.

  $ sed 's|^run = .*|run = /var/run/other|' "$R/usr/vek/bin/vek.ini" > "$R/tmp/other.ini"
  $ table <<'EOF'
  > vek-sim reply get-diag '{"return":0,"result":{"ok":1}}'
  > vek-sim reply get-cs '{"return":0,"result":{"enabled":1,"state":"connecting","server":"cloud.example.com","since":0}}'
  > vek-sim service pieces
  > cloud get: {"return":0,"result":{"enabled":1,"state":"connecting","server":"cloud.example.com","since":0}} [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  > vek-sim service pieces 200
  > cloud get: {"return":0,"res [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  > diag get --json: {"return":0,"res [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > diag get: [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > vek-sim service reset
  > cloud get: {"return":0,"res [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  > vek-sim service close
  > vek-sim reply get-cs ''
  > cloud get --json x: {"return":53,"detail":"Failed to read socket."} [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  > diag get: Failed to read socket. [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > vek-sim service down
  > diag get --json: {"return":53,"detail":"Failed to read socket."} [0]
  > cloud get: Failed to read socket. [0]
  > vek-sim service normal
  > cloud get -i /tmp/other.ini: Failed to read socket. [0]
  > vek-sim service silent
  > cloud get: Failed to read socket. [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-cs"}
  > vek-sim service slow
  > diag get --json: {"return":53,"detail":"Failed to read socket."} [0] -> request /var/run/vek/vek.sock {"v":1,"method":"get-diag"}
  > vek-sim service normal
  > vek-sim file /var/run/other/vek.sock ''
  > diag get -i /tmp/other.ini --json: {"return":53,"detail":"Failed to read socket."} [0]
  > EOF
