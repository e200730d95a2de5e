vektool ss: the ss feature, its device and host lists through /proc/vek/ss.
One case a line (see cases.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

Each command's verb: modes in any case, MACs as typed, device names up to 31
characters, extra words ignored; "all" (any case) or nothing deletes every
host, no MAC every device.

  $ table <<'EOF'
  > ss enable: [0] -> write /proc/vek/ss enable
  > ss disable --json: {"return":0} [0] -> write /proc/vek/ss disable
  > ss set-mode BY_DEVICE: [0] -> write /proc/vek/ss set-mode BY_DEVICE
  > ss set-mode all_Device extra --json: {"return":0} [0] -> write /proc/vek/ss set-mode all_Device
  > ss add-dev aa:bb:cc:dd:ee:ff: [0] -> write /proc/vek/ss add-device aa:bb:cc:dd:ee:ff
  > ss add-dev AA-BB-CC-DD-EE-01 abcdefghijklmnopqrstuvwxyz01234 --json: {"return":0} [0] -> write /proc/vek/ss add-device AA-BB-CC-DD-EE-01 abcdefghijklmnopqrstuvwxyz01234
  > ss add-dev aabbccddee02 tv extra: [0] -> write /proc/vek/ss add-device aabbccddee02 tv
  > ss set-dev-enable aa:bb:cc:dd:ee:ff: [0] -> write /proc/vek/ss enable-device aa:bb:cc:dd:ee:ff
  > ss set-dev-disable AA-BB-CC-DD-EE-01 --json: {"return":0} [0] -> write /proc/vek/ss disable-device AA-BB-CC-DD-EE-01
  > ss del-dev aabbccddee02: [0] -> write /proc/vek/ss del-device aabbccddee02
  > ss del-dev --json: {"return":0} [0] -> write /proc/vek/ss clear-device
  > ss add host1.lan 10.0.0.1: [0] -> write /proc/vek/ss add host1.lan 10.0.0.1
  > ss add Media.Box2 fe80::1 --json: {"return":0} [0] -> write /proc/vek/ss add Media.Box2 fe80::1
  > ss delete host1.lan: [0] -> write /proc/vek/ss delete host1.lan
  > ss delete: [0] -> write /proc/vek/ss clear
  > ss delete ALL --json: {"return":0} [0] -> write /proc/vek/ss clear
  > EOF

Failures write nothing; they are checked in order: word count, first, then
second argument. Host names are letters and digits between single dots.

  $ table <<'EOF'
  > ss add host1.lan: Wrong arg number: 2 [1]
  > ss set-mode: Wrong arg number: 1 [1]
  > ss add-dev: Wrong arg number: 1 [1]
  > ss set-dev-enable --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  > ss set-dev-disable: Wrong arg number: 1 [1]
  > ss add host-1.lan 10.0.0.1: invalid arg: host-1.lan [1]
  > ss add a..b 10.0.0.1: invalid arg: a..b [1]
  > ss add lan. 10.0.0.1: invalid arg: lan. [1]
  > ss add .lan 10.0.0.1: invalid arg: .lan [1]
  > ss add '' 10.0.0.1 --json: {"return":1,"detail":"invalid arg: "} [1]
  > ss add bad-host not-an-address: invalid arg: bad-host [1]
  > ss add host1 10.0.0 --json: {"return":1,"detail":"invalid arg: 10.0.0"} [1]
  > ss add host1 fe80:::1: invalid arg: fe80:::1 [1]
  > ss set-mode by-device: invalid arg: by-device [1]
  > ss set-mode all_devices --json: {"return":1,"detail":"invalid arg: all_devices"} [1]
  > ss add-dev aa:bb:cc:dd:ee abcdefghijklmnopqrstuvwxyz012345: invalid arg: aa:bb:cc:dd:ee [1]
  > ss add-dev aa:bb:cc:dd:ee:ff abcdefghijklmnopqrstuvwxyz012345: invalid arg: abcdefghijklmnopqrstuvwxyz012345. Max length=31. [1]
  > ss del-dev aa:bbccddeeff: invalid arg: aa:bbccddeeff [1]
  > ss set-dev-enable aa:bb:cc:dd:ee:ff:: invalid arg: aa:bb:cc:dd:ee:ff: [1]
  > ss set-dev-disable :aa:bb:cc:dd:ee:ff --json: {"return":1,"detail":"invalid arg: :aa:bb:cc:dd:ee:ff"} [1]
  > ss delete all. --json: {"return":1,"detail":"invalid arg: all."} [1]
  > EOF

get prints the engine's text as it is, failing only when it cannot read; a
write the engine refuses is not reported; get-dev is in the help but is no
command. The help (`ss -h | cksum`) is pinned byte for byte.

  $ table <<'EOF'
  > ss add-dev aa:bb:cc:dd:ee:ff tv: [0] -> write /proc/vek/ss add-device aa:bb:cc:dd:ee:ff tv
  > ss add nas.lan 192.168.1.20: [0] -> write /proc/vek/ss add nas.lan 192.168.1.20
  > ss get: {"en":0,"mode":"all_device","devs":[{"mac":"aa:bb:cc:dd:ee:ff","name":"tv","en":1}],"hosts":[{"host":"nas.lan","addr":"192.168.1.20"}]}⏎ [0]
  > ss get --json: {"return":0,"result":"{"en":0,"mode":"all_device","devs":[{"mac":"aa:bb:cc:dd:ee:ff","name":"tv","en":1}],"hosts":[{"host":"nas.lan","addr":"192.168.1.20"}]}⏎"} [0]
  > vek-sim file /proc/vek/ss ''
  > ss get --json: {"return":0} [0]
  > vek-sim unreadable /proc/vek/ss
  > ss get --json: {"return":1,"detail":"Failed to read."} [1]
  > ss set-dev-enable 00:00:00:00:00:01 --json: {"return":0} [0] -> write /proc/vek/ss enable-device 00:00:00:00:00:01
  > ss get-dev: [1]
  > ss: [1]
  > EOF
  $ vektool ss -h | cksum
  4095139559 434
