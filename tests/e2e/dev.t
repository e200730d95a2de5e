vektool dev: the engine's device table in /proc/vek/dbdev. One case a line
(see cases.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

Records as the engine has them (JSON answers end without a newline); an
empty record is printed as it is, a missing one is "invalid". Commands are
matched exactly. The help (`dev --help | cksum`), without the default-queue
commands, is pinned byte for byte.

  $ table <<'EOF'
  > dev: [1]
  > dev GET: [1]
  > dev get: [["00:11:22:33:44:55",0,0],["66:77:88:99:aa:bb",0,0]] [0]
  > dev get --json: {"return":0,"result":[["00:11:22:33:44:55",0,0],["66:77:88:99:aa:bb",0,0]]}[0]
  > dev get-default-queue: [0,0] [0]
  > dev get-default-queue --json: {"return":0,"result":[0,0]}[0]
  > vek-sim file /proc/vek/dbdev 'j:devs:  [1]  '
  > dev get --json: {"return":0,"result":  [1]}[0]
  > dev get-default-queue --json: {"return":1,"detail":"Failed to read file: invalid."} [1]
  > vek-sim file /proc/vek/dbdev 'j:defq:'
  > dev get: Failed to read file: invalid. [1]
  > dev get-default-queue --json: {"return":0,"result":}[0]
  > vek-sim unreadable /proc/vek/dbdev
  > dev get --json: {"return":1,"detail":"Failed to read file."} [1]
  > dev get-default-queue: Failed to read file. [1]
  > vek-sim reset
  > EOF
  $ vektool dev --help | cksum
  113916784 468

Editing: a MAC is cut to 31 characters, then checked, before the queue ids
(0 or more, held to int); every word after "--" is an argument, else "-1"
is an option.

  $ table <<'EOF'
  > dev set-queue 00-11-22-33-44-55 3 4 --json: {"return":0} [0] -> write /proc/vek/dbdev 10 00-11-22-33-44-55 3 4
  > dev set-queue AABBCCDDEEFF 0 x: [0] -> write /proc/vek/dbdev 10 AABBCCDDEEFF 0 0
  > dev set-queue 00:11:22:33:44:55 -- -1 4: Wrong arg: -1 [1]
  > dev set-queue 00:11:22:33:44:55 1 -- -4: Wrong arg: -4 [1]
  > dev set-queue bad -- -1 -4 --json: Wrong arg: bad [1]
  > dev set-queue 00:11:22:33:44:55 -1 4: Wrong arg number: 3 [1]
  > dev set-queue 00:11:22:33:44:55 1 --json: {"return":1,"detail":"Wrong arg number: 3"} [1]
  > dev set-queue 00:11:22:33:44:55:66:77:88:99:aa:bb:cc 1 1: Wrong arg: 00:11:22:33:44:55:66:77:88:99:a [1]
  > dev set-queue 00:11:22:33:44:55 1 99999999999: [0] -> write /proc/vek/dbdev 10 00:11:22:33:44:55 1 2147483647
  > dev set-queue axxxxxxxxxxxxxxxxxx:abbccddeeffx 1 1: [0] -> write /proc/vek/dbdev 10 axxxxxxxxxxxxxxxxxx:abbccddeeff 1 1
  > dev delete axxxxxxxxxxxxxxxxxx:abbccddeeff: [0] -> write /proc/vek/dbdev 7 axxxxxxxxxxxxxxxxxx:abbccddeeff
  > dev set-default-queue 1 2 --json: {"return":0} [0] -> write /proc/vek/dbdev 11 1 2
  > dev set-default-queue 1 --json: {"return":1,"detail":"Wrong arg number: 2"} [1]
  > dev set-default-queue -- -1 -2: Wrong arg: -1 [1]
  > dev set-default-queue 0 -- -2: Wrong arg: -2 [1]
  > dev reset-default-queue --json: {"return":0} [0] -> write /proc/vek/dbdev 17
  > dev reset-queue 00:11:22:33:44:55: [0] -> write /proc/vek/dbdev 19 00:11:22:33:44:55
  > dev reset-queue 00:11:22:33:44:55 extra: [0] -> write /proc/vek/dbdev 19 00:11:22:33:44:55
  > dev reset-queue: [0] -> write /proc/vek/dbdev 18
  > dev reset-queue foo --json: {"return":1,"detail":"Wrong arg: foo"} [1]
  > dev delete 00:11:22:33:44:55 --json: {"return":0} [0] -> write /proc/vek/dbdev 7 00:11:22:33:44:55
  > dev delete aa:bb:cc:dd:ee:ff:: Wrong arg: aa:bb:cc:dd:ee:ff: [1]
  > dev delete '': Wrong arg:  [1]
  > dev delete --json: {"return":0} [0] -> write /proc/vek/dbdev 6
  > EOF
