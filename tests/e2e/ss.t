vektool ss: the ss feature, its device and host lists through /proc/vek/ss.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ N31=abcdefghijklmnopqrstuvwxyz01234
  $ N32=${N31}5

Each command's verb: modes in any case, MACs as typed, names of 31 characters.

  $ rows <<'EOF'
  > ss enable
  > ss disable --json
  > ss set-mode BY_DEVICE
  > ss set-mode all_Device extra --json
  > ss add-dev aa:bb:cc:dd:ee:ff
  > ss add-dev AA-BB-CC-DD-EE-01 $N31 --json
  > ss add-dev aabbccddee02 tv extra
  > ss set-dev-enable aa:bb:cc:dd:ee:ff
  > ss set-dev-disable AA-BB-CC-DD-EE-01 --json
  > ss del-dev aabbccddee02
  > ss del-dev --json
  > ss add host1.lan 10.0.0.1
  > ss add Media.Box2 fe80::1 --json
  > ss add a 2001:db8::10.0.0.1
  > ss delete host1.lan
  > ss delete
  > ss delete ALL --json
  > ss delete all extra
  > EOF
  ss enable: [0]
    write /proc/vek/ss enable
  ss disable --json: {"return":0} [0]
    write /proc/vek/ss disable
  ss set-mode BY_DEVICE: [0]
    write /proc/vek/ss set-mode BY_DEVICE
  ss set-mode all_Device extra --json: {"return":0} [0]
    write /proc/vek/ss set-mode all_Device
  ss add-dev aa:bb:cc:dd:ee:ff: [0]
    write /proc/vek/ss add-device aa:bb:cc:dd:ee:ff
  ss add-dev AA-BB-CC-DD-EE-01 $N31 --json: {"return":0} [0]
    write /proc/vek/ss add-device AA-BB-CC-DD-EE-01 abcdefghijklmnopqrstuvwxyz01234
  ss add-dev aabbccddee02 tv extra: [0]
    write /proc/vek/ss add-device aabbccddee02 tv
  ss set-dev-enable aa:bb:cc:dd:ee:ff: [0]
    write /proc/vek/ss enable-device aa:bb:cc:dd:ee:ff
  ss set-dev-disable AA-BB-CC-DD-EE-01 --json: {"return":0} [0]
    write /proc/vek/ss disable-device AA-BB-CC-DD-EE-01
  ss del-dev aabbccddee02: [0]
    write /proc/vek/ss del-device aabbccddee02
  ss del-dev --json: {"return":0} [0]
    write /proc/vek/ss clear-device
  ss add host1.lan 10.0.0.1: [0]
    write /proc/vek/ss add host1.lan 10.0.0.1
  ss add Media.Box2 fe80::1 --json: {"return":0} [0]
    write /proc/vek/ss add Media.Box2 fe80::1
  ss add a 2001:db8::10.0.0.1: [0]
    write /proc/vek/ss add a 2001:db8::10.0.0.1
  ss delete host1.lan: [0]
    write /proc/vek/ss delete host1.lan
  ss delete: [0]
    write /proc/vek/ss clear
  ss delete ALL --json: {"return":0} [0]
    write /proc/vek/ss clear
  ss delete all extra: [0]
    write /proc/vek/ss clear

Failures, in check order (word count, first, second argument): nothing written.

  $ rows <<'EOF'
  > ss add host1.lan
  > ss add --json
  > ss set-mode
  > ss add-dev
  > ss set-dev-enable --json
  > ss set-dev-disable
  > ss add host-1.lan 10.0.0.1
  > ss add host_1 10.0.0.1
  > ss add a..b 10.0.0.1
  > ss add lan. 10.0.0.1
  > ss add .lan 10.0.0.1
  > ss add '' 10.0.0.1 --json
  > ss add bad-host not-an-address
  > ss add host1 10.0.0.256
  > ss add host1 10.0.0 --json
  > ss add host1 fe80:::1
  > ss set-mode by-device
  > ss set-mode all_devices --json
  > ss add-dev aa:bb:cc:dd:ee $N32
  > ss add-dev aa:bb:cc:dd:ee:ff $N32
  > ss add-dev aa:bb:cc:dd:ee:ff $N32 --json
  > ss del-dev aa:bbccddeeff
  > ss set-dev-enable aa:bb:cc:dd:ee:ff:
  > ss set-dev-disable :aa:bb:cc:dd:ee:ff --json
  > ss delete a_b
  > ss delete all. --json
  > EOF
  ss add host1.lan: Wrong arg number: 2 [1]
  ss add --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  ss set-mode: Wrong arg number: 1 [1]
  ss add-dev: Wrong arg number: 1 [1]
  ss set-dev-enable --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  ss set-dev-disable: Wrong arg number: 1 [1]
  ss add host-1.lan 10.0.0.1: invalid arg: host-1.lan [1]
  ss add host_1 10.0.0.1: invalid arg: host_1 [1]
  ss add a..b 10.0.0.1: invalid arg: a..b [1]
  ss add lan. 10.0.0.1: invalid arg: lan. [1]
  ss add .lan 10.0.0.1: invalid arg: .lan [1]
  ss add '' 10.0.0.1 --json: {"return":1,"detail":"invalid arg: "} [1]
  ss add bad-host not-an-address: invalid arg: bad-host [1]
  ss add host1 10.0.0.256: invalid arg: 10.0.0.256 [1]
  ss add host1 10.0.0 --json: {"return":1,"detail":"invalid arg: 10.0.0"} [1]
  ss add host1 fe80:::1: invalid arg: fe80:::1 [1]
  ss set-mode by-device: invalid arg: by-device [1]
  ss set-mode all_devices --json: {"return":1,"detail":"invalid arg: all_devices"} [1]
  ss add-dev aa:bb:cc:dd:ee $N32: invalid arg: aa:bb:cc:dd:ee [1]
  ss add-dev aa:bb:cc:dd:ee:ff $N32: invalid arg: abcdefghijklmnopqrstuvwxyz012345. Max length=31. [1]
  ss add-dev aa:bb:cc:dd:ee:ff $N32 --json: {"return":1,"detail":"invalid arg: abcdefghijklmnopqrstuvwxyz012345. Max length=31."} [1]
  ss del-dev aa:bbccddeeff: invalid arg: aa:bbccddeeff [1]
  ss set-dev-enable aa:bb:cc:dd:ee:ff:: invalid arg: aa:bb:cc:dd:ee:ff: [1]
  ss set-dev-disable :aa:bb:cc:dd:ee:ff --json: {"return":1,"detail":"invalid arg: :aa:bb:cc:dd:ee:ff"} [1]
  ss delete a_b: invalid arg: a_b [1]
  ss delete all. --json: {"return":1,"detail":"invalid arg: all."} [1]

get as it is; a refused write is not reported; get-dev is not a command.

  $ rows <<'EOF'
  > ss add-dev aa:bb:cc:dd:ee:ff tv
  > ss add nas.lan 192.168.1.20
  > ss get
  > ss get --json
  > vek-sim file /proc/vek/ss ''
  > ss get --json
  > vek-sim unreadable /proc/vek/ss
  > ss get
  > ss get --json
  > ss set-dev-enable 00:00:00:00:00:01 --json
  > ss get-dev
  > ss get-dev --json
  > ss
  > EOF
  ss add-dev aa:bb:cc:dd:ee:ff tv: [0]
    write /proc/vek/ss add-device aa:bb:cc:dd:ee:ff tv
  ss add nas.lan 192.168.1.20: [0]
    write /proc/vek/ss add nas.lan 192.168.1.20
  ss get: {"en":0,"mode":"all_device","devs":[{"mac":"aa:bb:cc:dd:ee:ff","name":"tv","en":1}],"hosts":[{"host":"nas.lan","addr":"192.168.1.20"}]}
   [0]
  ss get --json: {"return":0,"result":"{"en":0,"mode":"all_device","devs":[{"mac":"aa:bb:cc:dd:ee:ff","name":"tv","en":1}],"hosts":[{"host":"nas.lan","addr":"192.168.1.20"}]}
  "} [0]
  ss get --json: {"return":0} [0]
  ss get: Failed to read. [1]
  ss get --json: {"return":1,"detail":"Failed to read."} [1]
  ss set-dev-enable 00:00:00:00:00:01 --json: {"return":0} [0]
    write /proc/vek/ss enable-device 00:00:00:00:00:01
  ss get-dev: [1]
  ss get-dev --json: [1]
  ss: [1]
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
