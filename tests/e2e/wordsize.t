The same answer on every word size: numbers from the command line, from
vek.ini and from the engine are held to the range of the 32-bit int they
land in, as the gateway's 32-bit C library holds them. On a 64-bit build a
plain long-to-int store would wrap 3000000000 to -1294967296 and 4294967304
to 8; this transcript runs unchanged on x86-64, arm64 and armhf.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ M=aa:bb:cc:dd:ee:ff

Option values past int are a range error; at its ends they are taken.

  $ cases <<'EOF'
  > gc set-absolute $M high --duration=3000000000
  > gc set-absolute $M high --duration=-2147483649
  > gc set-absolute $M high --duration 0x100000000
  > gc set-absolute $M high --duration=2147483647 --json
  > limiter set $M --up 4294967296
  > limiter set $M --up=-2147483648 --down 2147483647 --en 0x7fffffff --json
  > qos set-qoe-profile-setting ai --sensitivity=4294967297
  > EOF
  vektool gc set-absolute $M high --duration=3000000000
  error: option `--duration` numerical result out of range
  [exit 1]
  vektool gc set-absolute $M high --duration=-2147483649
  error: option `--duration` numerical result out of range
  [exit 1]
  vektool gc set-absolute $M high --duration 0x100000000
  error: option `--duration` numerical result out of range
  [exit 1]
  vektool gc set-absolute $M high --duration=2147483647 --json
  {"return":0}
  [exit 0]
    write /proc/vek/gc set-absolute aa:bb:cc:dd:ee:ff 2
    write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 2147483647
    write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  vektool limiter set $M --up 4294967296
  error: option `--up` numerical result out of range
  [exit 1]
  vektool limiter set $M --up=-2147483648 --down 2147483647 --en 0x7fffffff --json
  {"return":0}
  [exit 0]
    write /proc/vek/limiter_ctrl set 0 aa:bb:cc:dd:ee:ff 2147483647 -2147483648 2147483647
  vektool qos set-qoe-profile-setting ai --sensitivity=4294967297
  error: option `--sensitivity` numerical result out of range
  [exit 1]

Positional numbers and numbers scanned from arguments are held at the ends.

  $ cases <<'EOF'
  > qos set-qoe-active 3000000000 --json
  > qos reset-hyqos-queue 4294967297 -- -4294967297
  > gc set-relative $M 4294967298 --json
  > gc set-duration $M 99999999999999999999
  > vek enable-cache-ttl 4294967296
  > vek set-cache-delete-rule 4294967297,1,-4294967297
  > EOF
  vektool qos set-qoe-active 3000000000 --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 1 2147483647
  vektool qos reset-hyqos-queue 4294967297 -- -4294967297
  Wrong arg: -2147483648
  [exit 1]
  vektool gc set-relative $M 4294967298 --json
  {"return":0}
  [exit 0]
    write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 2147483647
    write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0
    write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  vektool gc set-duration $M 99999999999999999999
  [exit 0]
    write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 2147483647
    write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  vektool vek enable-cache-ttl 4294967296
  [exit 0]
    write /proc/vek/dst_ctrl enable-ttl-delete 1
  vektool vek set-cache-delete-rule 4294967297,1,-4294967297
  [exit 0]
    write /proc/vek/fc_ctrl set-delete-rule 2147483647 1 -2147483648
    write /proc/vek/dst_ctrl set-delete-rule 2147483647 1 -2147483648
    write /proc/vek/mac_ctrl set-delete-rule 2147483647 1 -2147483648
    write /proc/vek/conn_ctx set-delete-rule 2147483647 1 -2147483648

Numbers in the engine's records: a queue count of 2^32+8 is not 8, an
algorithm of 2^32+1 is not 1, a status number past int is held.

  $ vek-sim file /proc/vek/qos_ctrl 'd:algorithm:4294967297
  > j:qoe:[4294967297,4294967298]
  > j:hyqos:[-4294967296]
  > d:qnum:4294967304
  > '
  $ cases <<'EOF'
  > qos get-algo
  > qos get-qoe-active --json
  > qos get-qoe-profile
  > qos get-hyqos-active
  > qos get-hw-queue-num --json
  > qos set-hyqos-queue 1 9 100 --json
  > EOF
  vektool qos get-algo
  Failed to read file: algorithm(2147483647) is invalid.
  [exit 1]
  vektool qos get-qoe-active --json
  {"return":0,"result":2147483647}[exit 0]
  vektool qos get-qoe-profile
  Failed to operate proc: j:qoe:[4294967297,4294967298]
  [exit 1]
  vektool qos get-hyqos-active
  -2147483648
  [exit 0]
  vektool qos get-hw-queue-num --json
  {"return":0,"result":2147483647}[exit 0]
  vektool qos set-hyqos-queue 1 9 100 --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 501 1 9 100
  $ vek-sim file /proc/vek/conn_max 5000000000
  $ vektool vek status | grep -o '"flows_limitation":[-0-9]*'
  "flows_limitation":2147483647
  $ vek-sim file /proc/kmod_xdn/grpxdb_info 'writable: 4294967297
  > size: 4294967296
  > epoch: 18446744073709551615
  > '
  $ vektool xdn get
  {"return":0,"info":{"writable":2147483647,"size":2147483647,"epoch":18446744073709551615}}

An app.id line for application 2^32+80 is no application 80; a category of
2^32+1 is no category 1.

  $ printf '#1,0,web\n80:\n4294967376:\n#4294967297,0,x\n443:\n' | vek-sim file /usr/vek/var/app.id
  $ vektool vek reset-to-default
  $ vek-sim journal | grep appid
  write /proc/vek/kctrl reset-appid-c6y
  write /proc/vek/kctrl set-appid-c6y 80 1
  write /proc/vek/kctrl set-appid-c6y 443 1

A log level past int in vek.ini or on the command line is held as well (it is
only kept, so only a clean run shows it).

  $ sed 's/^log_level.*/log_level = 3000000000/' "$R/usr/vek/bin/vek.ini" > v.ini
  $ vektool vek stats -i v.ini --log-level 4294967296 --json | cut -c1-11
  {"return":0
