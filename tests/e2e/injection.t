No injection: every text that reaches a shell command line stays one word
there, whichever way it arrives (an option, -i, a vek.ini value, the
installation's own path, a file argument), and no text is ever used as a
printf format. Each shell-laden text below would create a file named pwned
(in the test's directory or the sysroot) if the shell ran any part of it;
the journal shows the exact programs that ran and the verbs written.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ cp "$R/usr/vek/bin/vek.ini" vek.ini.orig
  $ pwned() { ls -a . "$R" "$R/tmp" "$R/usr/vek/bin" 2>/dev/null | grep -x pwned; }

Interface names from the options and from vek.ini reach the engine's control
program as one word each; a name that begins with "-" stays the value of
--wan or --lan.

  $ cases <<'EOF'
  > vek start --wanif 'ppp0;touch pwned' --lanif '`touch pwned`'
  > vek on -w '$(touch pwned)' -b "a'b\"c" --json
  > vek start --wanif '-x' --lanif '--help'
  > EOF
  vektool vek start --wanif 'ppp0;touch pwned' --lanif '`touch pwned`'
  [exit 0]
    run vekctl vek on --wan "ppp0;touch pwned" --lan "`touch pwned`"
  vektool vek on -w '$(touch pwned)' -b "a'b\"c" --json
  {"return":0}
  [exit 0]
    run vekctl vek on --wan "$(touch pwned)" --lan "a'b\"c"
  vektool vek start --wanif '-x' --lanif '--help'
  [exit 0]
    run vekctl vek on --wan -x --lan --help
  $ sed -e 's/^upstream_port.*/upstream_port = eth0 \&\& touch pwned/' \
  >     -e 's/^downstream_port.*/downstream_port = br0|touch pwned/' vek.ini.orig |
  >   vek-sim file /usr/vek/bin/vek.ini
  $ cases <<'EOF'
  > vek start --json
  > EOF
  vektool vek start --json
  {"return":0}
  [exit 0]
    run vekctl vek on --wan "eth0 && touch pwned" --lan "br0|touch pwned"
  $ pwned
  [1]

The path of vek.ini, chosen with -i, goes to the log program as one word; so
does the log program's directory from vek.ini (bin), where a shell-laden one
names a program that is not there (102). (iniparser ends a bare value at ";"
or "#": those reach the tool only inside quotes.)

  $ vek-sim file /usr/vek/bin/vek.ini < vek.ini.orig
  $ mkdir -p "$R/tmp/\$(touch pwned)" && cp vek.ini.orig "$R/tmp/\$(touch pwned)/vek.ini"
  $ cp vek.ini.orig ./-x.ini
  $ cases <<'EOF'
  > vek enable -i '/tmp/$(touch pwned)/vek.ini' --json
  > vek disable --json -i -x.ini
  > EOF
  vektool vek enable -i '/tmp/$(touch pwned)/vek.ini' --json
  {"return":0}
  [exit 0]
    write /proc/vek/kctrl enable
    run veklog enable --conf "$R/tmp/$(touch pwned)/vek.ini"
  vektool vek disable --json -i -x.ini
  {"return":0}
  [exit 0]
    run veklog disable --conf -x.ini
    write /proc/vek/kctrl disable
  $ sed 's|^bin.*|bin = "/usr/vek/bin;touch pwned;$(touch pwned)"|' vek.ini.orig | vek-sim file /usr/vek/bin/vek.ini
  $ cases <<'EOF'
  > vek enable --json
  > vek disable --json
  > EOF
  vektool vek enable --json
  {"return":102}
  [exit 0]
    write /proc/vek/kctrl enable
  vektool vek disable --json
  {"return":102}
  [exit 0]
  $ pwned
  [1]

The data directory from vek.ini (var) and file arguments (-f) are opened and
copied by the tool itself, never handed to a shell: only the database
module's fixed clean command runs.

  $ sed 's|^var =.*|var = "/usr/vek/var;touch pwned"|' vek.ini.orig | vek-sim file /usr/vek/bin/vek.ini
  $ mkdir -p "$R/usr/vek/var;touch pwned"
  $ cp "$R/usr/vek/var/"* "$R/usr/vek/var;touch pwned/"
  $ cp "$R/usr/vek/var/vek.xr" "$R/tmp/\$(touch pwned)/x.xr"
  $ cases <<'EOF'
  > sid get
  > xapp loadxr -f '/tmp/$(touch pwned)/x.xr' --json
  > xdn load -f '/tmp/;touch pwned'
  > iam set-rules -f '`touch pwned`' --json
  > sid load --json -f '|touch pwned'
  > EOF
  vektool sid get
  {"return":0,"appid_path":"/usr/vek/var;touch pwned/app.id"}[exit 0]
  vektool xapp loadxr -f '/tmp/$(touch pwned)/x.xr' --json
  {"return":300}
  [exit 0]
    write /proc/kmod_xapp/xr_clean 1\n
    write /proc/kmod_xapp/xr_size ,\x01\x00\x00
    write /proc/kmod_xapp/xr_import <300 bytes>
  vektool xdn load -f '/tmp/;touch pwned'
  [exit 20]
    write /proc/kmod_xdn/grpxdb_clean 1\n
    write /proc/kmod_xdn/grpxdb_size \x00\x06\x00\x00
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
  vektool iam set-rules -f '`touch pwned`' --json
  {"return":0}
  [exit 0]
    write /proc/vek/pc_rule_import 0
    run date +%z
    write /proc/vek/pc_tzoffset +0800\n
  vektool sid load --json -f '|touch pwned'
  {"return":21}
  [exit 0]
  $ pwned
  [1]

The installation's own path, found from the executable's link, reaches the
shell as one word when dt starts its daemon.

  $ vek-sim file /usr/vek/bin/vek.ini < vek.ini.orig
  $ mkdir -p "$R/opt/\$(touch pwned);x/bin"
  $ cp "$R/usr/vek/bin/dt_srv" vek.ini.orig "$R/opt/\$(touch pwned);x/bin/"
  $ mv "$R/opt/\$(touch pwned);x/bin/vek.ini.orig" "$R/opt/\$(touch pwned);x/bin/vek.ini"
  $ vek-sim exe '/opt/$(touch pwned);x/bin/vektool'
  $ vek-sim proc stop dt_srv
  $ cases <<'EOF'
  > dt start --json
  > EOF
  vektool dt start --json
  {"return":0}
  [exit 0]
    run dt_srv
  $ vek-sim exe /usr/vek/bin/vektool
  $ pwned
  [1]

No argument, option value or vek.ini value is ever a printf format: each is
written and reported as it stands.

  $ sed 's|^max_conn_count.*|max_conn_count = 1%n%s%x|' vek.ini.orig | vek-sim file /usr/vek/bin/vek.ini
  $ cases <<'EOF'
  > dev delete '%n%s%s%s%s' --json
  > qos set -m '%n%x%s' --json
  > vek config -f '5%n%s' --json
  > limiter set '%s%n' --type 2
  > ss set-mode '%p%n'
  > gc map 'aa:bb:cc:dd:ee:ff' '%n' high
  > EOF
  vektool dev delete '%n%s%s%s%s' --json
  {"return":1,"detail":"Wrong arg: %n%s%s%s%s"}
  [exit 1]
  vektool qos set -m '%n%x%s' --json
  {"return":0}
  [exit 0]
    write /proc/vek/qos_mode %n%x%s
  vektool vek config -f '5%n%s' --json
  {"return":0}
  [exit 0]
    write /proc/vek/conn_max 5%n%s
  vektool limiter set '%s%n' --type 2
  invalid arg: %s%n
  [exit 1]
  vektool ss set-mode '%p%n'
  invalid arg: %p%n
  [exit 1]
  vektool gc map 'aa:bb:cc:dd:ee:ff' '%n' high
  invalid arg: %n
  [exit 1]
  $ vektool vek reset-to-default --json
  {"return":0}
  $ vek-sim journal | grep conn_max
  write /proc/vek/conn_max 1%n%s%x
