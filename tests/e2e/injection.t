No injection: a text that reaches a shell command line stays one word, and
no text is a printf format. Each shell-laden text below would create a file
named pwned if a shell ran any of it.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ ini=/usr/vek/bin/vek.ini && cp "$R$ini" vek.ini.orig && cp vek.ini.orig ./-x.ini
  $ mkdir -p "$R/tmp/\$(touch pwned)" && cp "$R$ini" "$R/usr/vek/var/vek.xr" "$R/tmp/\$(touch pwned)/"
  $ mkdir -p "$R/usr/vek/var;touch pwned" && cp "$R/usr/vek/var/"* "$R/usr/vek/var;touch pwned/" && bin="$R/opt/\$(touch pwned);x/bin" && mkdir -p "$bin" && cp "$R/usr/vek/bin/dt_srv" "$bin/" && cp vek.ini.orig "$bin/vek.ini"

Interfaces (options, vek.ini; one beginning with "-" too), the -i path and
vek.ini's bin (a missing program there: 102) each stay one word; var and -f
files are opened by the tool itself; the installation's path (the
executable's link) is one word when dt starts its daemon. (iniparser ends a
bare value at ";" or "#": those come only quoted.)

  $ table <<'EOF'
  > vek on -w '$(touch pwned)' -b "a'b\"c" --json: {"return":0} [0] -> run vekctl vek on --wan "$(touch pwned)" --lan "a'b\"c"
  > vek start --wanif '-x' --lanif '--help': [0] -> run vekctl vek on --wan -x --lan --help
  > vek enable -i '/tmp/$(touch pwned)/vek.ini' --json: {"return":0} [0] -> write /proc/vek/kctrl enable -> run veklog enable --conf "$R/tmp/$(touch pwned)/vek.ini"
  > vek disable --json -i -x.ini: {"return":0} [0] -> run veklog disable --conf -x.ini -> write /proc/vek/kctrl disable
  > vek-sim file $ini "$(sed -e 's/^upstream_port.*/upstream_port = eth0 \&\& touch pwned/' -e 's/^downstream_port.*/downstream_port = br0|touch pwned/' vek.ini.orig)"
  > vek start --json: {"return":0} [0] -> run vekctl vek on --wan "eth0 && touch pwned" --lan "br0|touch pwned"
  > vek-sim file $ini "$(sed 's|^bin.*|bin = "/usr/vek/bin;touch pwned;$(touch pwned)"|' vek.ini.orig)"
  > vek enable --json: {"return":102} [0] -> write /proc/vek/kctrl enable
  > vek disable --json: {"return":102} [0]
  > vek-sim file $ini "$(sed 's|^var =.*|var = "/usr/vek/var;touch pwned"|' vek.ini.orig)"
  > sid get: {"return":0,"appid_path":"/usr/vek/var;touch pwned/app.id"}[0]
  > xapp loadxr -f '/tmp/$(touch pwned)/vek.xr' --json: {"return":300} [0] -> write /proc/kmod_xapp/xr_clean 1\n -> write /proc/kmod_xapp/xr_size ,\x01\x00\x00 -> write /proc/kmod_xapp/xr_import <300 bytes>
  > xdn load -f '/tmp/;touch pwned': [20] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \x00\x06\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <512 bytes>
  > iam set-rules -f '`touch pwned`' --json: {"return":0} [0] -> write /proc/vek/pc_rule_import 0 -> run date +%z -> write /proc/vek/pc_tzoffset +0800\n
  > sid load --json -f '|touch pwned': {"return":21} [0]
  > vek-sim file $ini <vek.ini.orig
  > vek-sim exe '/opt/$(touch pwned);x/bin/vektool'
  > vek-sim proc stop dt_srv
  > dt start --json: {"return":0} [0] -> run dt_srv
  > vek-sim exe /usr/vek/bin/vektool
  > EOF
  $ ls -a . "$R" "$R/tmp" "$R/usr/vek/bin" | grep -x pwned
  [1]

Arguments, options and vek.ini values are written and reported as they stand.

  $ table <<'EOF'
  > dev delete '%n%s%s%s%s' --json: {"return":1,"detail":"Wrong arg: %n%s%s%s%s"} [1]
  > qos set -m '%n%x%s' --json: {"return":0} [0] -> write /proc/vek/qos_mode %n%x%s
  > vek config -f '5%n%s' --json: {"return":0} [0] -> write /proc/vek/conn_max 5%n%s
  > limiter set '%s%n' --type 2: invalid arg: %s%n [1]
  > ss set-mode '%p%n': invalid arg: %p%n [1]
  > gc map 'aa:bb:cc:dd:ee:ff' '%n' high: invalid arg: %n [1]
  > vek-sim file $ini "$(sed 's|^max_conn_count.*|max_conn_count = 1%n%s%x|' vek.ini.orig)"
  > EOF
  $ vektool vek reset-to-default --json && vek-sim journal | grep conn_max
  {"return":0}
  write /proc/vek/conn_max 1%n%s%x
