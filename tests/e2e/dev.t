vektool dev against the simulator: the engine's device table in
/proc/vek/dbdev. Each case is one line (the words after vektool), then what
it printed, its exit status (glued to the output when the output has no line
end) and the verbs the engine received.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

The help leaves the default-queue commands out.

  $ vektool dev --help
  Usage: vektool dev [options] <command> [args]
     or: vektool dev get
     or: vektool dev delete                     # delete all devices
     or: vektool dev delete <mac>               # delete <mac>
     or: vektool dev set-queue <mac> <upqid> <dwqid>
     or: vektool dev reset-queue                # reset queue id of all devices
     or: vektool dev reset-queue <mac>          # reset queue id of <mac>
  
      -h, --help    show this help message and exit
      --json        
  $ cases <<'EOF'
  > dev
  > dev list --json
  > dev GET
  > EOF
  vektool dev
  [exit 1]
  vektool dev list --json
  [exit 1]
  vektool dev GET
  [exit 1]

The two records are printed as the engine keeps them: JSON mode as a bare
member without a line end.

  $ cases <<'EOF'
  > dev get
  > dev get --json
  > dev get-default-queue
  > dev get-default-queue --json
  > vek-sim file /proc/vek/dbdev 'j:devs:  [1]  '
  > dev get --json
  > dev get-default-queue --json
  > vek-sim file /proc/vek/dbdev 'j:defq:'
  > dev get
  > dev get-default-queue --json
  > vek-sim unreadable /proc/vek/dbdev
  > dev get --json
  > dev get-default-queue
  > vek-sim reset
  > EOF
  vektool dev get
  [["00:11:22:33:44:55",0,0],["66:77:88:99:aa:bb",0,0]]
  [exit 0]
  vektool dev get --json
  {"return":0,"result":[["00:11:22:33:44:55",0,0],["66:77:88:99:aa:bb",0,0]]}[exit 0]
  vektool dev get-default-queue
  [0,0]
  [exit 0]
  vektool dev get-default-queue --json
  {"return":0,"result":[0,0]}[exit 0]
  vektool dev get --json
  {"return":0,"result":  [1]}[exit 0]
  vektool dev get-default-queue --json
  {"return":1,"detail":"Failed to read file: invalid."}
  [exit 1]
  vektool dev get
  Failed to read file: invalid.
  [exit 1]
  vektool dev get-default-queue --json
  {"return":0,"result":}[exit 0]
  vektool dev get --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]
  vektool dev get-default-queue
  Failed to read file.
  [exit 1]

Editing. The MAC text goes to the engine as typed, after it is cut to 31
characters and checked in that form (the 32-character MAC below passes
only without its last character, and goes out without it); queue ids are only checked to be 0 or
more (the engine judges them against its queue count). The word count alone
decides between one device and all; a negative id needs "--".

  $ cases <<'EOF'
  > dev set-queue 00-11-22-33-44-55 3 4 --json
  > dev set-queue AABBCCDDEEFF 0 x
  > dev get
  > dev set-queue 00:11:22:33:44:55 -- -1 4
  > dev set-queue 00:11:22:33:44:55 1 -- -4
  > dev set-queue bad -- -1 -4 --json
  > dev set-queue 00:11:22:33:44:55 -1 4
  > dev set-queue 00:11:22:33:44:55 1 --json
  > dev set-queue
  > dev set-queue 00:11:22:33:44:55:66:77:88:99:aa:bb:cc 1 1
  > dev set-queue 00:11:22:33:44:55xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx 1 1
  > dev set-queue 00:11:22:33:44:55 1 99999999999
  > dev set-queue axxxxxxxxxxxxxxxxxx:abbccddeeffx 1 1
  > dev delete axxxxxxxxxxxxxxxxxx:abbccddeeff
  > dev set-default-queue 1 2 --json
  > dev get-default-queue
  > dev set-default-queue 1 --json
  > dev set-default-queue -- -1 -2
  > dev set-default-queue 0 -- -2
  > dev reset-default-queue --json
  > dev reset-queue 00:11:22:33:44:55
  > dev reset-queue
  > dev reset-queue foo --json
  > dev reset-queue 00:11:22:33:44:55 extra
  > dev delete 00:11:22:33:44:55 --json
  > dev delete foo
  > dev delete aa:bb:cc:dd:ee:ff:
  > dev delete ''
  > dev delete --json
  > dev get --json
  > EOF
  vektool dev set-queue 00-11-22-33-44-55 3 4 --json
  {"return":0}
  [exit 0]
    write /proc/vek/dbdev 10 00-11-22-33-44-55 3 4
  vektool dev set-queue AABBCCDDEEFF 0 x
  [exit 0]
    write /proc/vek/dbdev 10 AABBCCDDEEFF 0 0
  vektool dev get
  [["00:11:22:33:44:55",3,4],["66:77:88:99:aa:bb",0,0],["aa:bb:cc:dd:ee:ff",0,0]]
  [exit 0]
  vektool dev set-queue 00:11:22:33:44:55 -- -1 4
  Wrong arg: -1
  [exit 1]
  vektool dev set-queue 00:11:22:33:44:55 1 -- -4
  Wrong arg: -4
  [exit 1]
  vektool dev set-queue bad -- -1 -4 --json
  Wrong arg: bad
  [exit 1]
  vektool dev set-queue 00:11:22:33:44:55 -1 4
  Wrong arg number: 3
  [exit 1]
  vektool dev set-queue 00:11:22:33:44:55 1 --json
  {"return":1,"detail":"Wrong arg number: 3"}
  [exit 1]
  vektool dev set-queue
  Wrong arg number: 1
  [exit 1]
  vektool dev set-queue 00:11:22:33:44:55:66:77:88:99:aa:bb:cc 1 1
  Wrong arg: 00:11:22:33:44:55:66:77:88:99:a
  [exit 1]
  vektool dev set-queue 00:11:22:33:44:55xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx 1 1
  Wrong arg: 00:11:22:33:44:55xxxxxxxxxxxxxx
  [exit 1]
  vektool dev set-queue 00:11:22:33:44:55 1 99999999999
  [exit 0]
    write /proc/vek/dbdev 10 00:11:22:33:44:55 1 2147483647
  vektool dev set-queue axxxxxxxxxxxxxxxxxx:abbccddeeffx 1 1
  [exit 0]
    write /proc/vek/dbdev 10 axxxxxxxxxxxxxxxxxx:abbccddeeff 1 1
  vektool dev delete axxxxxxxxxxxxxxxxxx:abbccddeeff
  [exit 0]
    write /proc/vek/dbdev 7 axxxxxxxxxxxxxxxxxx:abbccddeeff
  vektool dev set-default-queue 1 2 --json
  {"return":0}
  [exit 0]
    write /proc/vek/dbdev 11 1 2
  vektool dev get-default-queue
  [1,2]
  [exit 0]
  vektool dev set-default-queue 1 --json
  {"return":1,"detail":"Wrong arg number: 2"}
  [exit 1]
  vektool dev set-default-queue -- -1 -2
  Wrong arg: -1
  [exit 1]
  vektool dev set-default-queue 0 -- -2
  Wrong arg: -2
  [exit 1]
  vektool dev reset-default-queue --json
  {"return":0}
  [exit 0]
    write /proc/vek/dbdev 17
  vektool dev reset-queue 00:11:22:33:44:55
  [exit 0]
    write /proc/vek/dbdev 19 00:11:22:33:44:55
  vektool dev reset-queue
  [exit 0]
    write /proc/vek/dbdev 18
  vektool dev reset-queue foo --json
  {"return":1,"detail":"Wrong arg: foo"}
  [exit 1]
  vektool dev reset-queue 00:11:22:33:44:55 extra
  [exit 0]
    write /proc/vek/dbdev 19 00:11:22:33:44:55
  vektool dev delete 00:11:22:33:44:55 --json
  {"return":0}
  [exit 0]
    write /proc/vek/dbdev 7 00:11:22:33:44:55
  vektool dev delete foo
  Wrong arg: foo
  [exit 1]
  vektool dev delete aa:bb:cc:dd:ee:ff:
  Wrong arg: aa:bb:cc:dd:ee:ff:
  [exit 1]
  vektool dev delete ''
  Wrong arg: 
  [exit 1]
  vektool dev delete --json
  {"return":0}
  [exit 0]
    write /proc/vek/dbdev 6
  vektool dev get --json
  {"return":0,"result":[]}[exit 0]
