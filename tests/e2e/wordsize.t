The same answer on every word size: numbers from the command line, vek.ini
and the engine are held to the 32-bit int they land in, as the gateway's
C library holds them (a 64-bit long-to-int store would wrap 4294967304 to 8).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ M=aa:bb:cc:dd:ee:ff

Option values past int are a range error, its ends are taken; positional
and scanned numbers, and the engine's records, are held at the ends.

  $ table <<'EOF'
  > gc set-absolute $M high --duration=3000000000: error: option `--duration` numerical result out of range [1]
  > gc set-absolute $M high --duration=-2147483649: error: option `--duration` numerical result out of range [1]
  > gc set-absolute $M high --duration 0x100000000: error: option `--duration` numerical result out of range [1]
  > gc set-absolute $M high --duration=2147483647 --json: {"return":0} [0] -> write /proc/vek/gc set-absolute aa:bb:cc:dd:ee:ff 2 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 2147483647 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > limiter set $M --up 4294967296: error: option `--up` numerical result out of range [1]
  > limiter set $M --up=-2147483648 --down 2147483647 --en 0x7fffffff --json: {"return":0} [0] -> write /proc/vek/limiter_ctrl set 0 aa:bb:cc:dd:ee:ff 2147483647 -2147483648 2147483647
  > qos set-qoe-profile-setting ai --sensitivity=4294967297: error: option `--sensitivity` numerical result out of range [1]
  > qos reset-hyqos-queue 4294967297 -- -4294967297: Wrong arg: -2147483648 [1]
  > gc set-relative $M 4294967298 --json: {"return":0} [0] -> write /proc/vek/gc set-relative aa:bb:cc:dd:ee:ff 2147483647 -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 0 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > gc set-duration $M 99999999999999999999: [0] -> write /proc/vek/gc set-duration aa:bb:cc:dd:ee:ff 2147483647 -> write /proc/vek/gc set-enable aa:bb:cc:dd:ee:ff 1
  > vek enable-cache-ttl 4294967296: [0] -> write /proc/vek/dst_ctrl enable-ttl-delete 1
  > vek set-cache-delete-rule 4294967297,1,-4294967297: [0] -> write /proc/vek/fc_ctrl set-delete-rule 2147483647 1 -2147483648 -> write /proc/vek/dst_ctrl set-delete-rule 2147483647 1 -2147483648 -> write /proc/vek/mac_ctrl set-delete-rule 2147483647 1 -2147483648 -> write /proc/vek/conn_ctx set-delete-rule 2147483647 1 -2147483648
  > vek-sim file /proc/vek/qos_ctrl "$(printf '%s\n' d:algorithm:4294967297 'j:qoe:[4294967297,4294967298]' 'j:hyqos:[-4294967296]' d:qnum:4294967304)"
  > qos get-algo: Failed to read file: algorithm(2147483647) is invalid. [1]
  > qos get-qoe-active --json: {"return":0,"result":2147483647}[0]
  > qos get-qoe-profile: Failed to operate proc: j:qoe:[4294967297,4294967298] [1]
  > qos get-hyqos-active: -2147483648 [0]
  > qos get-hw-queue-num --json: {"return":0,"result":2147483647}[0]
  > qos set-hyqos-queue 1 9 100 --json: {"return":0} [0] -> write /proc/vek/qoe_config 501 1 9 100
  > vek-sim file /proc/vek/conn_max 5000000000
  > vek status | grep -o '"flows_limitation":[-0-9]*': "flows_limitation":2147483647 [0]
  > vek-sim file /proc/kmod_xdn/grpxdb_info "$(printf '%s\n' 'writable: 4294967297' 'size: 4294967296' 'epoch: 18446744073709551615')"
  > xdn get: {"return":0,"info":{"writable":2147483647,"size":2147483647,"epoch":18446744073709551615}} [0]
  > EOF

Application 2^32+80 of app.id is not 80, category 2^32+1 is not 1; a log
level past int (vek.ini, option) is held: only a clean run shows it.

  $ printf '#1,0,web\n80:\n4294967376:\n#4294967297,0,x\n443:\n' | vek-sim file /usr/vek/var/app.id
  $ vektool vek reset-to-default && vek-sim journal | grep appid
  write /proc/vek/kctrl reset-appid-c6y
  write /proc/vek/kctrl set-appid-c6y 80 1
  write /proc/vek/kctrl set-appid-c6y 443 1
  $ sed 's/^log_level.*/log_level = 3000000000/' "$R/usr/vek/bin/vek.ini" > v.ini && vektool vek stats -i v.ini --log-level 4294967296 --json | cut -c1-11
  {"return":0
