vektool iam: access management through /proc/vek. One case a line (see
cases.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

Switches and redirect verbs (their values unchecked, extra words ignored);
reads as the engine has them. A write the engine refuses, or without the
engine, is not reported. The help (`iam -h | cksum`) is pinned byte for byte.

  $ printf 'allow 00:11:22:33:44:55 08:00-20:00\n' > "$R/tmp/rules"
  $ table <<'EOF'
  > iam on: [0] -> write /proc/vek/iam_enabled 1
  > iam off --json: {"return":0} [0] -> write /proc/vek/iam_enabled 0
  > iam clear-rules --json: {"return":0} [0] -> write /proc/vek/pc_rule_import 0
  > iam enable-redirect: [0] -> write /proc/vek/iam_ctrl enable-redirect
  > iam disable-redirect --json: {"return":0} [0] -> write /proc/vek/iam_ctrl disable-redirect
  > iam set-redirect-ip 10.0.0.9 --json: {"return":0} [0] -> write /proc/vek/iam_ctrl set-redirect 10.0.0.9
  > iam set-redirect-ttl 600 extra: [0] -> write /proc/vek/iam_ctrl set-redirect-ttl 600
  > iam set-redirect-ttl x1 --json: {"return":0} [0] -> write /proc/vek/iam_ctrl set-redirect-ttl x1
  > iam get-content --json: [0]
  > iam set-redirect-ip: Wrong arg number: 1 [1]
  > iam set-redirect-ttl --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  > iam get: {"redirect":0,"ip":"10.0.0.9","ttl":600}⏎ [0]
  > iam get --json: {"return":0,"result":"{"redirect":0,"ip":"10.0.0.9","ttl":600}⏎"} [0]
  > iam get-rules --json: {"return":0} [0]
  > iam: [1]
  > iam ON --json: [1]
  > vek-sim unreadable /proc/vek/iam_ctrl
  > vek-sim missing /proc/vek/pc_rule_export
  > iam get: Failed to read. [1]
  > iam get-rules --json: {"return":1,"detail":"Failed to read."} [1]
  > iam set-redirect-ip not-an-address --json: {"return":0} [0] -> write /proc/vek/iam_ctrl set-redirect not-an-address
  > vek-sim missing /proc/vek
  > iam on --json: {"return":0} [0]
  > iam set-rules -f /tmp/rules --json: {"return":0} [0] -> run date +%z
  > vek-sim reset
  > EOF
  $ vektool iam -h | cksum
  1368686025 391

set-rules: clear, the offset `date +%z` prints (none when date fails), then
the file in blocks of 512 bytes; a missing file loads nothing.

  $ table <<'EOF'
  > vek-sim file /proc/vek/pc_rule_export ''
  > iam set-rules -f /tmp/rules --json: {"return":0} [0] -> write /proc/vek/pc_rule_import 0 -> run date +%z -> write /proc/vek/pc_tzoffset +0800\n -> write /proc/vek/pc_rule_import allow 00:11:22:33:44:55 08:00-20:00\n
  > iam get-rules: allow 00:11:22:33:44:55 08:00-20:00⏎ [0]
  > iam set-rules -f /tmp/none --json: {"return":0} [0] -> write /proc/vek/pc_rule_import 0 -> run date +%z -> write /proc/vek/pc_tzoffset +0800\n
  > iam set-rules --json: {"return":1,"detail":"Failed to read."} [1]
  > vek-sim exit date 1
  > iam set-rules -f /tmp/rules: [0] -> write /proc/vek/pc_rule_import 0 -> run date +%z -> write /proc/vek/pc_rule_import allow 00:11:22:33:44:55 08:00-20:00\n
  > vek-sim exit date 0
  > EOF

Thirty rules go in three blocks, cut inside a line (the journal abbreviated
here: bytes and the first eight of them), and arrive whole.

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
