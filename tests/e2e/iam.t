vektool iam: access management through /proc/vek, against the simulator.

  $ . "$TESTDIR/sim-env.sh"
  $ run() { while IFS= read -r line; do echo "-- $line"; eval "vektool iam $line"; echo "= $?"; done; }

Switches and redirect verbs: done is silent in plain mode; the address verb is
"set-redirect"; address and TTL go out unchecked, extra words are ignored.

  $ run <<'EOF'
  > on
  > off --json
  > clear-rules --json
  > enable-redirect
  > disable-redirect --json
  > set-redirect-ip 10.0.0.9 --json
  > set-redirect-ip abc
  > set-redirect-ttl 600 extra
  > set-redirect-ttl x1 --json
  > get-content
  > get-content --json
  > EOF
  -- on
  = 0
  -- off --json
  {"return":0}
  = 0
  -- clear-rules --json
  {"return":0}
  = 0
  -- enable-redirect
  = 0
  -- disable-redirect --json
  {"return":0}
  = 0
  -- set-redirect-ip 10.0.0.9 --json
  {"return":0}
  = 0
  -- set-redirect-ip abc
  = 0
  -- set-redirect-ttl 600 extra
  = 0
  -- set-redirect-ttl x1 --json
  {"return":0}
  = 0
  -- get-content
  = 0
  -- get-content --json
  = 0
  $ vek-sim journal && vek-sim journal --clear
  write /proc/vek/iam_enabled 1
  write /proc/vek/iam_enabled 0
  write /proc/vek/pc_rule_import 0
  write /proc/vek/iam_ctrl enable-redirect
  write /proc/vek/iam_ctrl disable-redirect
  write /proc/vek/iam_ctrl set-redirect 10.0.0.9
  write /proc/vek/iam_ctrl set-redirect abc
  write /proc/vek/iam_ctrl set-redirect-ttl 600
  write /proc/vek/iam_ctrl set-redirect-ttl x1

Argument counts start from the command word; nothing is written.

  $ run <<'EOF'
  > set-redirect-ip
  > set-redirect-ttl --json
  > EOF
  -- set-redirect-ip
  Wrong arg number: 1
  = 1
  -- set-redirect-ttl --json
  {"return":1,"detail":"Wrong arg number: 1"}
  = 1
  $ vek-sim journal

Reading: the state text and the rules as the engine has them, unescaped; an
empty rule export is a result without text.

  $ run <<'EOF'
  > get
  > get --json
  > get-rules
  > get-rules --json
  > EOF
  -- get
  {"redirect":0,"ip":"10.0.0.9","ttl":600}
  
  = 0
  -- get --json
  {"return":0,"result":"{"redirect":0,"ip":"10.0.0.9","ttl":600}
  "}
  = 0
  -- get-rules
  = 0
  -- get-rules --json
  {"return":0}
  = 0
  $ vek-sim unreadable /proc/vek/iam_ctrl
  $ vek-sim missing /proc/vek/pc_rule_export
  $ run <<'EOF'
  > get
  > get-rules --json
  > EOF
  -- get
  Failed to read.
  = 1
  -- get-rules --json
  {"return":1,"detail":"Failed to read."}
  = 1
  $ vek-sim journal

Loading rules: clear, then the offset as date +%z printed it (line end and
all), then the file in blocks of 512 bytes. Paths on the command line are
gateway paths.

  $ vek-sim file /proc/vek/pc_rule_export ''
  $ printf 'allow 00:11:22:33:44:55 08:00-20:00\n' > "$R/tmp/rules"
  $ vektool iam set-rules -f /tmp/rules --json
  {"return":0}
  $ vektool iam get-rules
  allow 00:11:22:33:44:55 08:00-20:00
  
  $ vek-sim cat /proc/vek/pc_tzoffset
  +0800
  $ vek-sim journal && vek-sim journal --clear
  write /proc/vek/pc_rule_import 0
  run date +%z
  write /proc/vek/pc_tzoffset +0800\n
  write /proc/vek/pc_rule_import allow 00:11:22:33:44:55 08:00-20:00\n
  $ awk 'BEGIN { for (i = 0; i < 30; i++) printf "deny %02d:11:22:33:44:55 00:00-23:59\n", i }' > "$R/tmp/rules"
  $ wc -c < "$R/tmp/rules"
  1050
  $ vek-sim tz -0530
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

A rule file that cannot be read still clears the rules and sets the offset,
and reports done; without -f nothing is written at all.

  $ vek-sim journal --clear
  $ vektool iam set-rules -f /tmp/none --json
  {"return":0}
  $ vektool iam get-rules --json
  {"return":0}
  $ vektool iam set-rules --json
  {"return":1,"detail":"Failed to read."}
  [1]
  $ vektool iam set-rules
  Failed to read.
  [1]
  $ vek-sim journal && vek-sim journal --clear
  write /proc/vek/pc_rule_import 0
  run date +%z
  write /proc/vek/pc_tzoffset -0530\n

When date prints nothing, no offset verb reaches the engine.

  $ vek-sim exit date 1
  $ vektool iam set-rules -f /tmp/rules --json
  {"return":0}
  $ vek-sim journal | cut -c1-40
  write /proc/vek/pc_rule_import 0
  run date +%z
  write /proc/vek/pc_rule_import deny 00:1
  write /proc/vek/pc_rule_import  00:00-23
  write /proc/vek/pc_rule_import 1:22:33:4

Writes the engine refuses, or to an engine that is not loaded, are not
reported.

  $ vek-sim journal --clear
  $ vektool iam set-redirect-ip not-an-address --json
  {"return":0}
  $ vek-sim cat /proc/vek/iam_ctrl
  {"redirect":0,"ip":"10.0.0.9","ttl":600}
  $ vek-sim missing /proc/vek
  $ run <<'EOF'
  > on --json
  > set-rules -f /tmp/rules --json
  > EOF
  -- on --json
  {"return":0}
  = 0
  -- set-rules -f /tmp/rules --json
  {"return":0}
  = 0
  $ vek-sim journal
  write /proc/vek/iam_ctrl set-redirect not-an-address
  run date +%z

Help, and the frame's failures.

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
  $ vektool iam
  [1]
  $ vektool iam ON --json
  [1]
