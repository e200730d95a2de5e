vektool ss: the ss feature, its device list and its host list through
/proc/vek/ss, against the simulator.

  $ . "$TESTDIR/sim-env.sh"
  $ run() { while IFS= read -r line; do echo "-- $line"; eval "vektool ss $line"; echo "= $?"; done; }
  $ N31=abcdefghijklmnopqrstuvwxyz01234
  $ N32=${N31}5

Each command's verb. Modes match in any case and go out as typed; MACs go out
as typed; a name of 31 characters is taken; del-dev alone empties the device
list, delete alone or with "all" (any case) the host list; the address may be
IPv4 or IPv6; extra words are ignored. Success is silent in plain mode.

  $ run <<'EOF'
  > enable
  > disable --json
  > set-mode BY_DEVICE
  > set-mode all_Device extra --json
  > add-dev aa:bb:cc:dd:ee:ff
  > add-dev AA-BB-CC-DD-EE-01 $N31 --json
  > add-dev aabbccddee02 tv extra
  > set-dev-enable aa:bb:cc:dd:ee:ff
  > set-dev-disable AA-BB-CC-DD-EE-01 --json
  > del-dev aabbccddee02
  > del-dev --json
  > add host1.lan 10.0.0.1
  > add Media.Box2 fe80::1 --json
  > add a 2001:db8::10.0.0.1
  > delete host1.lan
  > delete
  > delete ALL --json
  > delete all extra
  > EOF
  -- enable
  = 0
  -- disable --json
  {"return":0}
  = 0
  -- set-mode BY_DEVICE
  = 0
  -- set-mode all_Device extra --json
  {"return":0}
  = 0
  -- add-dev aa:bb:cc:dd:ee:ff
  = 0
  -- add-dev AA-BB-CC-DD-EE-01 $N31 --json
  {"return":0}
  = 0
  -- add-dev aabbccddee02 tv extra
  = 0
  -- set-dev-enable aa:bb:cc:dd:ee:ff
  = 0
  -- set-dev-disable AA-BB-CC-DD-EE-01 --json
  {"return":0}
  = 0
  -- del-dev aabbccddee02
  = 0
  -- del-dev --json
  {"return":0}
  = 0
  -- add host1.lan 10.0.0.1
  = 0
  -- add Media.Box2 fe80::1 --json
  {"return":0}
  = 0
  -- add a 2001:db8::10.0.0.1
  = 0
  -- delete host1.lan
  = 0
  -- delete
  = 0
  -- delete ALL --json
  {"return":0}
  = 0
  -- delete all extra
  = 0
  $ vek-sim journal && vek-sim journal --clear
  write /proc/vek/ss enable
  write /proc/vek/ss disable
  write /proc/vek/ss set-mode BY_DEVICE
  write /proc/vek/ss set-mode all_Device
  write /proc/vek/ss add-device aa:bb:cc:dd:ee:ff
  write /proc/vek/ss add-device AA-BB-CC-DD-EE-01 abcdefghijklmnopqrstuvwxyz01234
  write /proc/vek/ss add-device aabbccddee02 tv
  write /proc/vek/ss enable-device aa:bb:cc:dd:ee:ff
  write /proc/vek/ss disable-device AA-BB-CC-DD-EE-01
  write /proc/vek/ss del-device aabbccddee02
  write /proc/vek/ss clear-device
  write /proc/vek/ss add host1.lan 10.0.0.1
  write /proc/vek/ss add Media.Box2 fe80::1
  write /proc/vek/ss add a 2001:db8::10.0.0.1
  write /proc/vek/ss delete host1.lan
  write /proc/vek/ss clear
  write /proc/vek/ss clear
  write /proc/vek/ss clear

Failures, in the order the checks run: the word count (from the command word),
the first argument, the second. Host names are letters and digits in runs
joined by single dots. The first failure is reported and nothing is written.

  $ run <<'EOF'
  > add host1.lan
  > add --json
  > set-mode
  > add-dev
  > set-dev-enable --json
  > set-dev-disable
  > add host-1.lan 10.0.0.1
  > add host_1 10.0.0.1
  > add a..b 10.0.0.1
  > add lan. 10.0.0.1
  > add .lan 10.0.0.1
  > add '' 10.0.0.1 --json
  > add bad-host not-an-address
  > add host1 10.0.0.256
  > add host1 10.0.0 --json
  > add host1 fe80:::1
  > set-mode by-device
  > set-mode all_devices --json
  > add-dev aa:bb:cc:dd:ee $N32
  > add-dev aa:bb:cc:dd:ee:ff $N32
  > add-dev aa:bb:cc:dd:ee:ff $N32 --json
  > del-dev aa:bbccddeeff
  > set-dev-enable aa:bb:cc:dd:ee:ff:
  > set-dev-disable :aa:bb:cc:dd:ee:ff --json
  > delete a_b
  > delete all. --json
  > EOF
  -- add host1.lan
  Wrong arg number: 2
  = 1
  -- add --json
  {"return":1,"detail":"Wrong arg number: 1"}
  = 1
  -- set-mode
  Wrong arg number: 1
  = 1
  -- add-dev
  Wrong arg number: 1
  = 1
  -- set-dev-enable --json
  {"return":1,"detail":"Wrong arg number: 1"}
  = 1
  -- set-dev-disable
  Wrong arg number: 1
  = 1
  -- add host-1.lan 10.0.0.1
  invalid arg: host-1.lan
  = 1
  -- add host_1 10.0.0.1
  invalid arg: host_1
  = 1
  -- add a..b 10.0.0.1
  invalid arg: a..b
  = 1
  -- add lan. 10.0.0.1
  invalid arg: lan.
  = 1
  -- add .lan 10.0.0.1
  invalid arg: .lan
  = 1
  -- add '' 10.0.0.1 --json
  {"return":1,"detail":"invalid arg: "}
  = 1
  -- add bad-host not-an-address
  invalid arg: bad-host
  = 1
  -- add host1 10.0.0.256
  invalid arg: 10.0.0.256
  = 1
  -- add host1 10.0.0 --json
  {"return":1,"detail":"invalid arg: 10.0.0"}
  = 1
  -- add host1 fe80:::1
  invalid arg: fe80:::1
  = 1
  -- set-mode by-device
  invalid arg: by-device
  = 1
  -- set-mode all_devices --json
  {"return":1,"detail":"invalid arg: all_devices"}
  = 1
  -- add-dev aa:bb:cc:dd:ee $N32
  invalid arg: aa:bb:cc:dd:ee
  = 1
  -- add-dev aa:bb:cc:dd:ee:ff $N32
  invalid arg: abcdefghijklmnopqrstuvwxyz012345. Max length=31.
  = 1
  -- add-dev aa:bb:cc:dd:ee:ff $N32 --json
  {"return":1,"detail":"invalid arg: abcdefghijklmnopqrstuvwxyz012345. Max length=31."}
  = 1
  -- del-dev aa:bbccddeeff
  invalid arg: aa:bbccddeeff
  = 1
  -- set-dev-enable aa:bb:cc:dd:ee:ff:
  invalid arg: aa:bb:cc:dd:ee:ff:
  = 1
  -- set-dev-disable :aa:bb:cc:dd:ee:ff --json
  {"return":1,"detail":"invalid arg: :aa:bb:cc:dd:ee:ff"}
  = 1
  -- delete a_b
  invalid arg: a_b
  = 1
  -- delete all. --json
  {"return":1,"detail":"invalid arg: all."}
  = 1
  $ vek-sim journal

get: the engine's state text as it is, line end included, unescaped.

  $ vektool ss add-dev aa:bb:cc:dd:ee:ff tv
  $ vektool ss add nas.lan 192.168.1.20
  $ vektool ss get
  {"en":0,"mode":"all_device","devs":[{"mac":"aa:bb:cc:dd:ee:ff","name":"tv","en":1}],"hosts":[{"host":"nas.lan","addr":"192.168.1.20"}]}
  
  $ vektool ss get --json
  {"return":0,"result":"{"en":0,"mode":"all_device","devs":[{"mac":"aa:bb:cc:dd:ee:ff","name":"tv","en":1}],"hosts":[{"host":"nas.lan","addr":"192.168.1.20"}]}
  "}
  $ vek-sim file /proc/vek/ss ''
  $ vektool ss get --json
  {"return":0}
  $ vek-sim unreadable /proc/vek/ss
  $ vektool ss get
  Failed to read.
  [1]
  $ vektool ss get --json
  {"return":1,"detail":"Failed to read."}
  [1]

Writes the engine refuses are not reported: a device it does not know.

  $ vek-sim journal --clear
  $ vektool ss set-dev-enable 00:00:00:00:00:01 --json
  {"return":0}
  $ vek-sim journal
  write /proc/vek/ss enable-device 00:00:00:00:00:01

The usage names get-dev, which is not a command: it fails like any unknown
word, with no output.

  $ vektool ss -h
  Usage: vektool ss [options] <command> [args]
     or: vektool ss enable
     or: vektool ss disable
     or: vektool ss set-mode <mode>
     or: vektool ss get-dev
     or: vektool ss add-dev <mac> [<name>]
     or: vektool ss del-dev [<mac>]
     or: vektool ss set-dev-enable <mac>
     or: vektool ss set-dev-disable <mac>
  
  Brief:
  
      -h, --help    show this help message and exit
      --json        
  
  <mode>: mode name. ex. all_device, by_device
  $ vektool ss get-dev
  [1]
  $ vektool ss get-dev --json
  [1]
  $ vektool ss
  [1]
