vektool gc: per-device priority adjustment through /proc/vek/gc. One case a
line (see cases.sh); "vek-sim" lines set the scene.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ M=aa:bb:cc:dd:ee:ff

The help (with its "Brief:" and the priorities), pinned byte for byte by its sum.

  $ vektool gc --help | cksum
  1558585888 770

Each command's verbs: priority names as numbers (l2l is 5), --duration 0,
--negative for set-relative only, unchecked minutes and amounts; get prints
the engine's state trimmed.

  $ table <<'EOF'
  > gc map $M low high: [0] -> write /proc/vek/gc map aa:bb:cc:dd:ee:ff 4 2 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc get: {"en":1,"devs":[{"mac":"aa:bb:cc:dd:ee:ff","en":1,"map":[[4,2]],"abs":-1,"rel":0,"dur":0,"raise":[]}]} [0]
  > gc get extra --json: {"return":0,"result":"{"en":1,"devs":[{"mac":"aa:bb:cc:dd:ee:ff","en":1,"map":[[4,2]],"abs":-1,"rel":0,"dur":0,"raise":[]}]}"} [0]
  > gc map AABBCCDDEEFF pass l2l extra --json: {"return":0} [0] -> write /proc/vek/gc map AABBCCDDEEFF 0 5 -> write /proc/vek/gc set-enable AABBCCDDEEFF 1
  > gc enable: [0] -> write /proc/vek/gc enable
  > gc disable --json: {"return":0} [0] -> write /proc/vek/gc disable
  > gc set-absolute aa-bb:cc-dd:ee-ff medium --duration 15: [0] -> write /proc/vek/gc set-absolute aa-bb:cc-dd:ee-ff 3 -> write /proc/vek/gc set-duration aa-bb:cc-dd:ee-ff 15 -> write /proc/vek/gc set-enable aa-bb:cc-dd:ee-ff 1
  > gc set-relative $M 2 --negative: [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff -2 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-relative $M 3x: [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 3 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-relative $M --negative --json -- -1: {"return":0} [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 1 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-upgrade $M 2 --duration 5: [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 2 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 5 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-upgrade $M 2 --negative: [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 2 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-downgrade $M 2 --duration 30: [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff -2 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 30 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-downgrade $M 2 --negative: [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff -2 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-downgrade $M -- -4: [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 4 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-duration $M 90: [0] -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 90 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-duration $M later: [0] -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc raise $M highest 3: [0] -> write /proc/vek/gc raise aa:bb:cc:dd:ee:ff 1 3 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc raise $M low many: [0] -> write /proc/vek/gc raise aa:bb:cc:dd:ee:ff 4 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc delete $M: [0] -> write /proc/vek/gc delete aa:bb:cc:dd:ee:ff
  > gc delete --json: {"return":0} [0] -> write /proc/vek/gc clear
  > vek-sim file /proc/vek/gc '  '
  > gc get --json: {"return":0,"result":""} [0]
  > vek-sim file /proc/vek/gc ''
  > gc get --json: {"return":0} [0]
  > vek-sim unreadable /proc/vek/gc
  > gc get: Failed to read. [1]
  > EOF

Failures, in check order (the frame, options, word count, MAC, names or
offset): nothing written.

  $ table <<'EOF'
  > gc: [1]
  > gc Map $M low high --json: [1]
  > gc set-absolute $M high --duration soon: error: option `--duration` expects an integer value [1]
  > gc map $M low: Wrong arg number: 3 [1]
  > gc set-absolute $M --json: {"return":1,"detail":"Wrong arg number: 2"} [1]
  > gc set-relative $M: Wrong arg number: 2 [1]
  > gc set-upgrade: Wrong arg number: 1 [1]
  > gc set-downgrade $M --duration 3: Wrong arg number: 2 [1]
  > gc set-duration $M: Wrong arg number: 2 [1]
  > gc raise $M high: Wrong arg number: 3 [1]
  > gc map aa:bbccddeeff low HIGH: invalid arg: aa:bbccddeeff [1]
  > gc map $M HIGH Low: invalid arg: HIGH [1]
  > gc map $M low Low --json: {"return":1,"detail":"invalid arg: Low"} [1]
  > gc set-absolute aa:bb:cc:dd:ee HIGH: invalid arg: aa:bb:cc:dd:ee [1]
  > gc set-absolute $M pas: invalid arg: pas [1]
  > gc set-relative :aa:bb:cc:dd:ee:ff x: invalid arg: :aa:bb:cc:dd:ee:ff [1]
  > gc set-relative $M x --json: {"return":1,"detail":"invalid arg: x"} [1]
  > gc set-upgrade $M '': invalid arg:  [1]
  > gc set-downgrade $M +-1: invalid arg: +-1 [1]
  > gc set-duration aa:bb:cc:dd:ee:fg 5: invalid arg: aa:bb:cc:dd:ee:fg [1]
  > gc raise $M lowest 1: invalid arg: lowest [1]
  > gc raise 'aa:bb:cc:dd:ee:ff:' low 1: invalid arg: aa:bb:cc:dd:ee:ff: [1]
  > gc delete aa:bb:cc:dd:ee --json: {"return":1,"detail":"invalid arg: aa:bb:cc:dd:ee"} [1]
  > EOF
