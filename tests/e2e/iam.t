vektool iam: access management through /proc/vek.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

Switches, redirect verbs (unchecked) and reads as the engine has them.

  $ rows <<'EOF'
  > iam on
  > iam off --json
  > iam clear-rules --json
  > iam enable-redirect
  > iam disable-redirect --json
  > iam set-redirect-ip 10.0.0.9 --json
  > iam set-redirect-ip abc
  > iam set-redirect-ttl 600 extra
  > iam set-redirect-ttl x1 --json
  > iam get-content
  > iam get-content --json
  > iam set-redirect-ip
  > iam set-redirect-ttl --json
  > iam get
  > iam get --json
  > iam get-rules
  > iam get-rules --json
  > vek-sim unreadable /proc/vek/iam_ctrl
  > vek-sim missing /proc/vek/pc_rule_export
  > iam get
  > iam get-rules --json
  > EOF
  iam on: [0]
    write /proc/vek/iam_enabled 1
  iam off --json: {"return":0} [0]
    write /proc/vek/iam_enabled 0
  iam clear-rules --json: {"return":0} [0]
    write /proc/vek/pc_rule_import 0
  iam enable-redirect: [0]
    write /proc/vek/iam_ctrl enable-redirect
  iam disable-redirect --json: {"return":0} [0]
    write /proc/vek/iam_ctrl disable-redirect
  iam set-redirect-ip 10.0.0.9 --json: {"return":0} [0]
    write /proc/vek/iam_ctrl set-redirect 10.0.0.9
  iam set-redirect-ip abc: [0]
    write /proc/vek/iam_ctrl set-redirect abc
  iam set-redirect-ttl 600 extra: [0]
    write /proc/vek/iam_ctrl set-redirect-ttl 600
  iam set-redirect-ttl x1 --json: {"return":0} [0]
    write /proc/vek/iam_ctrl set-redirect-ttl x1
  iam get-content: [0]
  iam get-content --json: [0]
  iam set-redirect-ip: Wrong arg number: 1 [1]
  iam set-redirect-ttl --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  iam get: {"redirect":0,"ip":"10.0.0.9","ttl":600}
   [0]
  iam get --json: {"return":0,"result":"{"redirect":0,"ip":"10.0.0.9","ttl":600}
  "} [0]
  iam get-rules: [0]
  iam get-rules --json: {"return":0} [0]
  iam get: Failed to read. [1]
  iam get-rules --json: {"return":1,"detail":"Failed to read."} [1]

set-rules: clear, the date +%z offset, then the file in blocks of 512 bytes.

  $ vek-sim file /proc/vek/pc_rule_export ''
  $ printf 'allow 00:11:22:33:44:55 08:00-20:00\n' > "$R/tmp/rules"
  $ rows <<'EOF'
  > iam set-rules -f /tmp/rules --json
  > iam get-rules
  > iam set-rules -f /tmp/none --json
  > iam get-rules --json
  > iam set-rules --json
  > iam set-rules
  > vek-sim exit date 1
  > iam set-rules -f /tmp/rules --json
  > vek-sim exit date 0
  > EOF
  iam set-rules -f /tmp/rules --json: {"return":0} [0]
    write /proc/vek/pc_rule_import 0
    run date +%z
    write /proc/vek/pc_tzoffset +0800\n
    write /proc/vek/pc_rule_import allow 00:11:22:33:44:55 08:00-20:00\n
  iam get-rules: allow 00:11:22:33:44:55 08:00-20:00
   [0]
  iam set-rules -f /tmp/none --json: {"return":0} [0]
    write /proc/vek/pc_rule_import 0
    run date +%z
    write /proc/vek/pc_tzoffset +0800\n
  iam get-rules --json: {"return":0} [0]
  iam set-rules --json: {"return":1,"detail":"Failed to read."} [1]
  iam set-rules: Failed to read. [1]
  iam set-rules -f /tmp/rules --json: {"return":0} [0]
    write /proc/vek/pc_rule_import 0
    run date +%z
    write /proc/vek/pc_rule_import allow 00:11:22:33:44:55 08:00-20:00\n
  $ awk 'BEGIN { for (i = 0; i < 30; i++) printf "deny %02d:11:22:33:44:55 00:00-23:59\n", i }' > "$R/tmp/rules"
  $ vek-sim tz -0530
  $ vek-sim journal --clear
  $ vektool iam set-rules -f /tmp/rules
  $ vek-sim journal | awk '/pc_rule_import/ && length($0) > 33 { d = substr($0, 32); gsub(/\\n/, "N", d); $0 = $1 " " $2 " <" length(d) " bytes: " substr(d, 1, 8) "...>" } 1'
  write /proc/vek/pc_rule_import 0
  run date +%z
  write /proc/vek/pc_tzoffset -0530\n
  write /proc/vek/pc_rule_import <512 bytes: deny 00:...>
  write /proc/vek/pc_rule_import <512 bytes:  00:00-2...>
  write /proc/vek/pc_rule_import <26 bytes: 1:22:33:...>
  $ vek-sim cat /proc/vek/pc_rule_export | cmp - "$R/tmp/rules" && echo same
  same

Writes the engine refuses, or without the engine, are not reported.

  $ rows <<'EOF'
  > iam set-redirect-ip not-an-address --json
  > vek-sim missing /proc/vek
  > iam on --json
  > iam set-rules -f /tmp/rules --json
  > EOF
  iam set-redirect-ip not-an-address --json: {"return":0} [0]
    write /proc/vek/iam_ctrl set-redirect not-an-address
  iam on --json: {"return":0} [0]
  iam set-rules -f /tmp/rules --json: {"return":0} [0]
    run date +%z
  $ vektool iam -h
  Usage: vektool iam [options] <command> [args]
     or: vektool iam on
     or: vektool iam off
     or: vektool iam get-rules
     or: vektool iam set-rules
     or: vektool iam enable-redirect
     or: vektool iam disable-redirect
     or: vektool iam set-redirect-ip <ip>
     or: vektool iam set-redirect-ttl <ttl>
  
      -h, --help    show this help message and exit
      --json        
      -f=<str>      
  $ rows <<'EOF'
  > iam
  > iam ON --json
  > EOF
  iam: [1]
  iam ON --json: [1]
