vektool gc: per-device priority adjustment through /proc/vek/gc, against the
simulator.

  $ . "$TESTDIR/sim-env.sh"
  $ run() { while IFS= read -r line; do echo "-- $line"; eval "vektool gc $line"; echo "= $?"; done; }
  $ M=aa:bb:cc:dd:ee:ff

Each command's verbs, in order. Priority names give the engine's numbers
("l2l" is 5); the MAC goes out as typed; --duration defaults to 0
(permanent); --negative is read by set-relative alone; set-downgrade negates
whatever offset it is given; minutes and amounts are not checked (text is 0);
offsets need only leading digits, and a negative one must follow "--", or the
parser takes it for an option. Success is silent in plain mode.

  $ run <<'EOF'
  > map $M low high
  > map AABBCCDDEEFF pass l2l extra --json
  > enable
  > disable --json
  > set-absolute aa-bb:cc-dd:ee-ff medium --duration 15
  > set-absolute $M l2l
  > set-relative $M 2 --negative
  > set-relative $M 3x
  > set-relative $M --negative --json -- -1
  > set-upgrade $M 2 --duration 5
  > set-upgrade $M 2 --negative
  > set-downgrade $M 2 --duration 30
  > set-downgrade $M 2 --negative
  > set-downgrade $M -- -4
  > set-duration $M 90
  > set-duration $M later
  > raise $M highest 3
  > raise $M low many
  > delete $M
  > delete --json
  > EOF
  -- map $M low high
  = 0
  -- map AABBCCDDEEFF pass l2l extra --json
  {"return":0}
  = 0
  -- enable
  = 0
  -- disable --json
  {"return":0}
  = 0
  -- set-absolute aa-bb:cc-dd:ee-ff medium --duration 15
  = 0
  -- set-absolute $M l2l
  = 0
  -- set-relative $M 2 --negative
  = 0
  -- set-relative $M 3x
  = 0
  -- set-relative $M --negative --json -- -1
  {"return":0}
  = 0
  -- set-upgrade $M 2 --duration 5
  = 0
  -- set-upgrade $M 2 --negative
  = 0
  -- set-downgrade $M 2 --duration 30
  = 0
  -- set-downgrade $M 2 --negative
  = 0
  -- set-downgrade $M -- -4
  = 0
  -- set-duration $M 90
  = 0
  -- set-duration $M later
  = 0
  -- raise $M highest 3
  = 0
  -- raise $M low many
  = 0
  -- delete $M
  = 0
  -- delete --json
  {"return":0}
  = 0
  $ vek-sim journal && vek-sim journal --clear
  write /proc/vek/gc map aa:bb:cc:dd:ee:ff 4 2
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc map AABBCCDDEEFF 0 5
  write /proc/vek/gc set-enable AABBCCDDEEFF 1
  write /proc/vek/gc enable
  write /proc/vek/gc disable
  write /proc/vek/gc set-absolute aa-bb:cc-dd:ee-ff 3
  write /proc/vek/gc set-duration aa-bb:cc-dd:ee-ff 15
  write /proc/vek/gc set-enable aa-bb:cc-dd:ee-ff 1
  write /proc/vek/gc set-absolute aa:bb:cc:dd:ee:ff 5
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff -2
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 3
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 2
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 5
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 2
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff -2
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 30
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff -2
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 4
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 90
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc raise aa:bb:cc:dd:ee:ff 1 3
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc raise aa:bb:cc:dd:ee:ff 4 0
  write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  write /proc/vek/gc delete aa:bb:cc:dd:ee:ff
  write /proc/vek/gc clear

Failures, in the order the checks run: the word count (from the command word
itself), the MAC, then the names in order or the offset. The first failure is
reported and nothing is written.

  $ run <<'EOF'
  > map $M low
  > set-absolute $M --json
  > set-relative $M
  > set-upgrade
  > set-downgrade $M --duration 3
  > set-duration $M
  > raise $M high
  > set-relative $M -1
  > map aa:bbccddeeff low HIGH
  > map $M HIGH Low
  > map $M low Low --json
  > set-absolute aa:bb:cc:dd:ee HIGH
  > set-absolute $M HIGH
  > set-absolute $M pas
  > set-relative :aa:bb:cc:dd:ee:ff x
  > set-relative $M x --json
  > set-upgrade $M ''
  > set-downgrade $M +-1
  > set-duration aa:bb:cc:dd:ee:fg 5
  > raise $M lowest 1
  > raise aa:bb:cc:dd:ee:ff: low 1
  > delete aa:bb:cc:dd:ee --json
  > EOF
  -- map $M low
  Wrong arg number: 3
  = 1
  -- set-absolute $M --json
  {"return":1,"detail":"Wrong arg number: 2"}
  = 1
  -- set-relative $M
  Wrong arg number: 2
  = 1
  -- set-upgrade
  Wrong arg number: 1
  = 1
  -- set-downgrade $M --duration 3
  Wrong arg number: 2
  = 1
  -- set-duration $M
  Wrong arg number: 2
  = 1
  -- raise $M high
  Wrong arg number: 3
  = 1
  -- set-relative $M -1
  Wrong arg number: 2
  = 1
  -- map aa:bbccddeeff low HIGH
  invalid arg: aa:bbccddeeff
  = 1
  -- map $M HIGH Low
  invalid arg: HIGH
  = 1
  -- map $M low Low --json
  {"return":1,"detail":"invalid arg: Low"}
  = 1
  -- set-absolute aa:bb:cc:dd:ee HIGH
  invalid arg: aa:bb:cc:dd:ee
  = 1
  -- set-absolute $M HIGH
  invalid arg: HIGH
  = 1
  -- set-absolute $M pas
  invalid arg: pas
  = 1
  -- set-relative :aa:bb:cc:dd:ee:ff x
  invalid arg: :aa:bb:cc:dd:ee:ff
  = 1
  -- set-relative $M x --json
  {"return":1,"detail":"invalid arg: x"}
  = 1
  -- set-upgrade $M ''
  invalid arg: 
  = 1
  -- set-downgrade $M +-1
  invalid arg: +-1
  = 1
  -- set-duration aa:bb:cc:dd:ee:fg 5
  invalid arg: aa:bb:cc:dd:ee:fg
  = 1
  -- raise $M lowest 1
  invalid arg: lowest
  = 1
  -- raise aa:bb:cc:dd:ee:ff: low 1
  invalid arg: aa:bb:cc:dd:ee:ff:
  = 1
  -- delete aa:bb:cc:dd:ee --json
  {"return":1,"detail":"invalid arg: aa:bb:cc:dd:ee"}
  = 1
  $ vek-sim journal

--duration takes an integer; anything else is an option error on standard
error.

  $ vektool gc set-absolute $M high --duration soon
  error: option `--duration` expects an integer value
  [1]
  $ vek-sim journal

get: the engine's state, trimmed, as the result; an empty file is a result
without text; an unreadable one fails.

  $ vektool gc map $M low high
  $ vektool gc get
  {"en":0,"devs":[{"mac":"aa:bb:cc:dd:ee:ff","en":1,"map":[[4,2]],"abs":-1,"rel":0,"dur":0,"raise":[]}]}
  $ vektool gc get extra --json
  {"return":0,"result":"{"en":0,"devs":[{"mac":"aa:bb:cc:dd:ee:ff","en":1,"map":[[4,2]],"abs":-1,"rel":0,"dur":0,"raise":[]}]}"}
  $ vek-sim file /proc/vek/gc '  
  > '
  $ vektool gc get --json
  {"return":0,"result":""}
  $ vek-sim file /proc/vek/gc ''
  $ vektool gc get --json
  {"return":0}
  $ vektool gc get
  $ vek-sim unreadable /proc/vek/gc
  $ vektool gc get
  Failed to read.
  [1]
  $ vektool gc get --json
  {"return":1,"detail":"Failed to read."}
  [1]

Help shows the brief and the priorities (without l2l); the frame's failures
print nothing.

  $ vektool gc --help
  Usage: vektool gc [options] <command> [args]
     or: vektool gc get
     or: vektool gc map <mac> <from_priority> <to_priority>
     or: vektool gc set-absolute <mac> <to_priority>
     or: vektool gc set-relative <mac> <offset> [--duration 0]
     or: vektool gc set-upgrade <mac> <offset> [--duration 0]
     or: vektool gc set-downgrade <mac> <offset> [--duration 0]
     or: vektool gc set-duration <mac> <duration>
     or: vektool gc delete [<mac>]
  
  Brief:
  
      -h, --help        show this help message and exit
      --duration=<int>  The duration in minutes.
      --negative        The offset value is negative.
      --json            
  
  <priority>: pass,highest,high,medium,low.
  <duration>: in minutes. Expired time = now + duration * 60,
              which 0 means that permanent.
  $ vektool gc
  [1]
  $ vektool gc Map $M low high --json
  [1]
