vektool vek: the engine's lifecycle, state and settings, against the
simulator. One case a line (see cases.sh); "vek-sim" lines set the scene.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

The help (no "Brief:" lines), pinned byte for byte by its sum.

  $ vektool vek -h | cksum
  2232294540 1418

The frame's failures; start/stop through vekctl (interfaces of vek.ini unless
given, one shell word each), enable/disable with veklog: failures are 103 and
102, a failed start prints nothing of its own.

  $ table <<'EOF'
  > vek: [1]
  > vek Start: [1]
  > vek start: [0] -> run vekctl vek on --wan eth0 --lan br0
  > vek on --json: {"return":0} [0] -> run vekctl vek on --wan eth0 --lan br0
  > vek start --wanif ppp0 --json: {"return":0} [0] -> run vekctl vek on --wan ppp0 --lan br0
  > vek start -b lan1 -w wan1: [0] -> run vekctl vek on --wan wan1 --lan lan1
  > vek start --wanif '' --lanif '': [0] -> run vekctl vek on
  > vek start --wanif 'eth0 && touch pwned #' --lanif '$(touch pwned)': [0] -> run vekctl vek on --wan "eth0 && touch pwned #" --lan "$(touch pwned)"
  > vek start --only-kernel --only-user --for-container: [0] -> run vekctl vek on --wan eth0 --lan br0
  > vek stop: [0] -> run vekctl vek off
  > vek off --json: {"return":0} [0] -> run vekctl vek off
  > vek-sim exit vekctl 4 'vekctl: no module'
  > vek start --json: vekctl: no module [103] -> run vekctl vek on --wan eth0 --lan br0
  > vek stop --json: vekctl: no module⏎{"return":4} [103] -> run vekctl vek off
  > vek-sim exit vekctl 0
  > vek enable --json: {"return":0} [0] -> write /proc/vek/kctrl enable -> run veklog enable --conf $R/usr/vek/bin/vek.ini
  > vek disable --json: {"return":0} [0] -> run veklog disable --conf $R/usr/vek/bin/vek.ini -> write /proc/vek/kctrl disable
  > vek-sim exit veklog 1
  > vek enable --json: {"return":102} [0] -> write /proc/vek/kctrl enable -> run veklog enable --conf $R/usr/vek/bin/vek.ini
  > vek disable --json: {"return":102} [0] -> run veklog disable --conf $R/usr/vek/bin/vek.ini
  > EOF

status: one document from many control files; what is missing is left out;
a stopped service is checked before a missing engine.

  $ table <<'EOF'
  > vek-sim reset
  > vek status: {"return":0,"status":{"version":"3.2.1","tag":"r1754","service_pid":1021,"qos":1,"parental control":1,"cloud":1,"flows_limitation":65536,"cache0_max_size":"16","cache0_limitation":32768,"qos_mode":"1","upstream_port":"eth0","downstream_port":"br0","vek_xdb_date":1700000000,"app_xdb_date":1700000000,"vek_xr_date":1700000000}} [0]
  > vek-sim file /proc/vek/version 's:minor:r9'
  > vek-sim file /proc/vek/malnet_up "$(printf ' ppp0 \t')"
  > vek-sim file /proc/vek/fc_ctrl 'not json'
  > vek-sim missing /proc/kmod_xapp/xr_info
  > vek-sim file /proc/vek/qos_enabled '7'
  > vek-sim file /proc/vek/iam_enabled '0'
  > vek status --json: {"return":0,"status":{"tag":"r9","service_pid":1021,"qos":1,"parental control":0,"flows_limitation":65536,"cache0_max_size":"16","cache0_limitation":32768,"qos_mode":"1","upstream_port":"ppp0","downstream_port":"br0","vek_xdb_date":1700000000,"app_xdb_date":1700000000,"vek_xr_date":0}} [0]
  > vek-sim file /proc/vek/fc_ctrl '{"ecnt":1}'
  > vek status | grep -o '"cloud":[0-9]*': "cloud":0 [0]
  > vek-sim missing /proc/vek
  > vek status --json: {"return":103} [0]
  > vek-sim proc stop vek_service
  > vek status --json: {"return":102} [0]
  > vek-sim reset
  > EOF

Reads write nothing: statistics, the mode, the cache status (eight rules).

  $ table <<'EOF'
  > vek-sim file /proc/vek/qos_traffic "$(printf ' {"flows":3}\t')"
  > vek stats: {"return":0,"statistics":{"flows":3}}[0]
  > vek get-mode: gateway [0]
  > vek get-mode --json: {"return":0,"result":gateway}[0]
  > vek-sim missing /proc/vek/qos_traffic
  > vek-sim file /proc/vek/malnet_mode 'mode:bridge'
  > vek stats --json: {"return":71} [0]
  > vek get-mode --json: {"return":1,"detail":"Failed to read file: invalid."} [1]
  > vek-sim unreadable /proc/vek/malnet_mode
  > vek get-mode: Failed to read file. [1]
  > vek-sim file /proc/vek/dst_ctrl '{"et":1,"dr":[[100,60],[200,30]]}'
  > vek get-cache-status: {"cache":{"enable_ttl":1,"delete_rules":[[100,60],[200,30],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]}} [0]
  > vek get-cache-status --json: {"return":0,"result":{"cache":{"enable_ttl":1,"delete_rules":[[100,60],[200,30],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]}}} [0]
  > vek-sim unreadable /proc/vek/dst_ctrl
  > vek get-cache-status: {"cache":{"enable_ttl":0,"delete_rules":[[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]}} [0]
  > vek-sim reset
  > EOF

Settings, written even without the engine; bad cache rules are passed over.
reset-to-default writes vek.ini, the categories of app.id and the three
databases, in order; options override vek.ini; what is missing is left alone.

  $ table <<'EOF'
  > vek config -f 1000 -d 500 --json: {"return":0} [0] -> write /proc/vek/conn_max 1000 -> write /proc/vek/dbcf_max_count 500 -> write /proc/vek/fc_ctrl set-entry-count 500 -> write /proc/vek/dst_ctrl set-entry-count 500 -> write /proc/vek/neighbor_ctrl set-entry-count 500
  > vek config --flow-count 0: [0]
  > vek config -d 0: [0] -> write /proc/vek/dbcf_max_count 0
  > vek config -d 7x: [0] -> write /proc/vek/dbcf_max_count 7x -> write /proc/vek/fc_ctrl set-entry-count 7 -> write /proc/vek/dst_ctrl set-entry-count 7 -> write /proc/vek/neighbor_ctrl set-entry-count 7
  > vek config --json: {"return":0} [0]
  > vek set-mode: Wrong arg number: 1 [1]
  > vek set-mode gateways: invalid arg: gateways [1]
  > vek set-mode bridg --json: {"return":1,"detail":"invalid arg: bridg"} [1]
  > vek set-mode GATEWAY: [0] -> write /proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged 0 -> write /proc/vek/malnet_mode 0
  > vek set-mode Bridge --json: {"return":0} [0] -> write /proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged 1 -> write /proc/vek/malnet_mode 1
  > vek enable-c6y-acc --json: {"return":0} [0] -> write /proc/vek/kctrl enable-c6y-acc
  > vek disable-c6y-acc: [0] -> write /proc/vek/kctrl disable-c6y-acc
  > vek set-cache-delete-rule 1,100,60 x 2,200 --json: {"return":0} [0] -> write /proc/vek/fc_ctrl set-delete-rule 1 100 60 -> write /proc/vek/dst_ctrl set-delete-rule 1 100 60 -> write /proc/vek/mac_ctrl set-delete-rule 1 100 60 -> write /proc/vek/conn_ctx set-delete-rule 1 100 60
  > vek set-cache-delete-rule: [0]
  > vek enable-cache-ttl 5: [0] -> write /proc/vek/dst_ctrl enable-ttl-delete 1
  > vek enable-cache-ttl abc --json: {"return":0} [0] -> write /proc/vek/dst_ctrl enable-ttl-delete 1
  > vek enable-cache-ttl 0: [0] -> write /proc/vek/dst_ctrl enable-ttl-delete 0
  > vek enable-cache-ttl: [0] -> write /proc/vek/dst_ctrl enable-ttl-delete 1
  > vek reset-to-default --json: {"return":0} [0] -> write /proc/vek/qos_enabled 1 -> write /proc/vek/iam_enabled 1 -> write /proc/vek/fc_ctrl enable-cloud -> write /proc/vek/conn_max 65536 -> write /proc/vek/dbcf_max_size 16 -> write /proc/vek/dbcf_max_count 32768 -> write /proc/vek/qos_mode 1 -> write /proc/vek/fc_ctrl set-entry-mbytes 16 -> write /proc/vek/dst_ctrl set-entry-mbytes 16 -> write /proc/vek/neighbor_ctrl set-entry-mbytes 16 -> write /proc/vek/mac_ctrl set-entry-mbytes 16 -> write /proc/vek/fc_ctrl set-entry-count 32768 -> write /proc/vek/dst_ctrl set-entry-count 32768 -> write /proc/vek/neighbor_ctrl set-entry-count 32768 -> write /proc/vek/mac_ctrl set-entry-count 32768 -> write /proc/vek/rtk j:skb:0x100000 -> write /proc/vek/kctrl reset-appid-c6y -> write /proc/vek/kctrl set-appid-c6y 80 1 -> write /proc/vek/kctrl set-appid-c6y 443 1 -> write /proc/vek/kctrl set-appid-c6y 1001 4 -> write /proc/vek/kctrl set-appid-c6y 1002 4 -> write /proc/vek/kctrl set-appid-c6y 2001 9 -> write /proc/vek/kctrl set-appid-c6y 2002 9 -> write /proc/vek/kctrl set-appid-c6y 3001 12 -> write /proc/vek/kctrl set-appid-c6y 3002 12 -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \x00\x06\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/sidxdb_clean 1\n -> write /proc/kmod_xdn/sidxdb_size L\x04\x00\x00 -> write /proc/kmod_xdn/sidxdb_import <512 bytes> -> write /proc/kmod_xdn/sidxdb_import <512 bytes> -> write /proc/kmod_xdn/sidxdb_import <76 bytes> -> write /proc/kmod_xapp/xr_clean 1\n -> write /proc/kmod_xapp/xr_size ,\x01\x00\x00 -> write /proc/kmod_xapp/xr_import <300 bytes>
  > vek-sim file /usr/vek/bin/vek.ini "$(grep -v '^skbmark' "$R/usr/vek/bin/vek.ini")"
  > vek-sim missing /usr/vek/var/app.id
  > vek-sim missing /usr/vek/var/vek.xdb
  > vek-sim missing /usr/vek/var/app.xdb
  > vek reset-to-default --qos off --iam On --cloud off -f 99 -d 8 --json: {"return":0} [0] -> write /proc/vek/qos_enabled 0 -> write /proc/vek/iam_enabled 1 -> write /proc/vek/fc_ctrl disable-cloud -> write /proc/vek/conn_max 99 -> write /proc/vek/dbcf_max_size 8 -> write /proc/vek/dbcf_max_count 32768 -> write /proc/vek/qos_mode 1 -> write /proc/vek/fc_ctrl set-entry-mbytes 8 -> write /proc/vek/dst_ctrl set-entry-mbytes 8 -> write /proc/vek/neighbor_ctrl set-entry-mbytes 8 -> write /proc/vek/mac_ctrl set-entry-mbytes 8 -> write /proc/vek/fc_ctrl set-entry-count 32768 -> write /proc/vek/dst_ctrl set-entry-count 32768 -> write /proc/vek/neighbor_ctrl set-entry-count 32768 -> write /proc/vek/mac_ctrl set-entry-count 32768 -> write /proc/vek/kctrl reset-appid-c6y -> write /proc/kmod_xapp/xr_clean 1\n -> write /proc/kmod_xapp/xr_size ,\x01\x00\x00 -> write /proc/kmod_xapp/xr_import <300 bytes>
  > vek-sim missing /proc/vek
  > vek enable-cache-ttl --json: {"return":0} [0]
  > EOF
