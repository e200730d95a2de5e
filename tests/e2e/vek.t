vektool vek: the engine's lifecycle, state and settings, against the simulator.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

The help, without "Brief:" lines.

  $ vektool vek -h
  Usage: vektool vek [options] <command> [args]
     or: vektool vek enable
     or: vektool vek disable
     or: vektool vek start [--only-kernel] [--only-user] [--for-container]
     or: vektool vek start --wanif ppp0
     or: vektool vek stop [--only-kernel] [--only-user] [--for-container]
     or: vektool vek get-mode
     or: vektool vek set-mode <mode>
     or: vektool vek enable-c6y-acc
     or: vektool vek disable-c6y-acc
     or: vektool vek reset-to-default
     or: vektool vek get-cache-status
     or: vektool vek set-cache-delete-rule <id>,<threshold>,<timeout> [<id>,<threshold>,<timeout> ...]
     or: vektool vek enable-cache-ttl [0|1]
     or: vektool vek config -d <db entries> -f <flow entries>
  
      -h, --help                    show this help message and exit
      -w, --wanif=<str>             
      -b, --lanif=<str>             
      --hwwanif=<str>               
      --hwlanif=<str>               
      --qos=<str>                   
      --iam=<str>                   
      --cloud=<str>                 
      --log-level=<str>             
      -l, --log=<str>               
      -f, --flow-count=<str>        
      -d, --data-cache-count=<str>  
      --socket-file=<str>           
      --only-kernel                 Start VEK with kernel space only.
      --only-user                   Start VEK with user space only.
      --for-container               Start VEK with container (user space).
      --json                        

The frame's failures; start/stop through vekctl (interfaces of vek.ini unless
given, one word each), enable/disable with veklog: failures are 103 and 102.

  $ rows <<'EOF'
  > vek
  > vek bogus
  > vek bogus --json
  > vek Start
  > vek start
  > vek on --json
  > vek start --wanif ppp0 --json
  > vek start -b lan1 -w wan1
  > vek start --wanif '' --lanif ''
  > vek start --wanif 'eth0 && touch pwned #' --lanif '$(touch pwned)'
  > vek start --only-kernel --only-user --for-container
  > vek stop
  > vek off --json
  > vek-sim exit vekctl 4 'vekctl: no module'
  > vek start
  > vek start --json
  > vek stop
  > vek stop --json
  > vek-sim exit vekctl 0
  > vek enable --json
  > vek disable --json
  > vek enable
  > vek disable
  > vek-sim exit veklog 1
  > vek enable --json
  > vek disable --json
  > vek disable
  > vek-sim exit veklog 0
  > EOF
  vek: [1]
  vek bogus: [1]
  vek bogus --json: [1]
  vek Start: [1]
  vek start: [0]
    run vekctl vek on --wan eth0 --lan br0
  vek on --json: {"return":0} [0]
    run vekctl vek on --wan eth0 --lan br0
  vek start --wanif ppp0 --json: {"return":0} [0]
    run vekctl vek on --wan ppp0 --lan br0
  vek start -b lan1 -w wan1: [0]
    run vekctl vek on --wan wan1 --lan lan1
  vek start --wanif '' --lanif '': [0]
    run vekctl vek on
  vek start --wanif 'eth0 && touch pwned #' --lanif '$(touch pwned)': [0]
    run vekctl vek on --wan "eth0 && touch pwned #" --lan "$(touch pwned)"
  vek start --only-kernel --only-user --for-container: [0]
    run vekctl vek on --wan eth0 --lan br0
  vek stop: [0]
    run vekctl vek off
  vek off --json: {"return":0} [0]
    run vekctl vek off
  vek start: vekctl: no module [103]
    run vekctl vek on --wan eth0 --lan br0
  vek start --json: vekctl: no module [103]
    run vekctl vek on --wan eth0 --lan br0
  vek stop: vekctl: no module [103]
    run vekctl vek off
  vek stop --json: vekctl: no module
  {"return":4} [103]
    run vekctl vek off
  vek enable --json: {"return":0} [0]
    write /proc/vek/kctrl enable
    run veklog enable --conf $R/usr/vek/bin/vek.ini
  vek disable --json: {"return":0} [0]
    run veklog disable --conf $R/usr/vek/bin/vek.ini
    write /proc/vek/kctrl disable
  vek enable: [0]
    write /proc/vek/kctrl enable
    run veklog enable --conf $R/usr/vek/bin/vek.ini
  vek disable: [0]
    run veklog disable --conf $R/usr/vek/bin/vek.ini
    write /proc/vek/kctrl disable
  vek enable --json: {"return":102} [0]
    write /proc/vek/kctrl enable
    run veklog enable --conf $R/usr/vek/bin/vek.ini
  vek disable --json: {"return":102} [0]
    run veklog disable --conf $R/usr/vek/bin/vek.ini
  vek disable: [0]
    run veklog disable --conf $R/usr/vek/bin/vek.ini
  $ ls . "$R" | grep pwned
  [1]

status: one document from many control files; what is missing is left out.

  $ vek-sim reset
  $ vektool vek status
  {"return":0,"status":{"version":"3.2.1","tag":"r1754","service_pid":1021,"qos":1,"parental control":1,"cloud":1,"flows_limitation":65536,"cache0_max_size":"16","cache0_limitation":32768,"qos_mode":"1","upstream_port":"eth0","downstream_port":"br0","vek_xdb_date":1700000000,"app_xdb_date":1700000000,"vek_xr_date":1700000000}}
  $ vek-sim file /proc/vek/version 's:minor:r9
  > '
  $ vek-sim file /proc/vek/malnet_up '  ppp0  
  > '
  $ rows <<'EOF'
  > vek-sim file /proc/vek/fc_ctrl 'not json'
  > vek-sim missing /proc/kmod_xapp/xr_info
  > vek-sim file /proc/vek/qos_enabled '7'
  > vek-sim file /proc/vek/iam_enabled '0'
  > vek status --json
  > vek-sim file /proc/vek/fc_ctrl '{"ecnt":1}'
  > vek status | grep -o '"cloud":[0-9]*'
  > vek-sim missing /proc/vek
  > vek status
  > vek status --json
  > vek-sim proc stop vek_service
  > vek status --json
  > vek-sim reset
  > EOF
  vek status --json: {"return":0,"status":{"tag":"r9","service_pid":1021,"qos":1,"parental control":0,"flows_limitation":65536,"cache0_max_size":"16","cache0_limitation":32768,"qos_mode":"1","upstream_port":"ppp0","downstream_port":"br0","vek_xdb_date":1700000000,"app_xdb_date":1700000000,"vek_xr_date":0}} [0]
  vek status | grep -o '"cloud":[0-9]*': "cloud":0 [0]
  vek status: [0]
  vek status --json: {"return":103} [0]
  vek status --json: {"return":102} [0]

Reads write nothing: statistics, the mode, the cache status (eight rules).

  $ vek-sim file /proc/vek/qos_traffic ' {"flows":3}
  > '
  $ rows <<'EOF'
  > vek stats
  > vek stats --json
  > vek get-mode
  > vek get-mode --json
  > vek-sim missing /proc/vek/qos_traffic
  > vek-sim file /proc/vek/malnet_mode 'mode:bridge'
  > vek stats
  > vek stats --json
  > vek get-mode
  > vek get-mode --json
  > vek-sim unreadable /proc/vek/malnet_mode
  > vek get-mode
  > vek-sim file /proc/vek/dst_ctrl '{"et":1,"dr":[[100,60],[200,30]]}'
  > vek get-cache-status
  > vek get-cache-status --json
  > vek-sim unreadable /proc/vek/dst_ctrl
  > vek get-cache-status
  > vek-sim reset
  > EOF
  vek stats: {"return":0,"statistics":{"flows":3}}[0]
  vek stats --json: {"return":0,"statistics":{"flows":3}}[0]
  vek get-mode: gateway [0]
  vek get-mode --json: {"return":0,"result":gateway}[0]
  vek stats: [0]
  vek stats --json: {"return":71} [0]
  vek get-mode: Failed to read file: invalid. [1]
  vek get-mode --json: {"return":1,"detail":"Failed to read file: invalid."} [1]
  vek get-mode: Failed to read file. [1]
  vek get-cache-status: {"cache":{"enable_ttl":1,"delete_rules":[[100,60],[200,30],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]}} [0]
  vek get-cache-status --json: {"return":0,"result":{"cache":{"enable_ttl":1,"delete_rules":[[100,60],[200,30],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]}}} [0]
  vek get-cache-status: {"cache":{"enable_ttl":0,"delete_rules":[[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]}} [0]

Settings, written even without the engine; bad cache rules are passed over.

  $ rows <<'EOF'
  > vek config -f 1000 -d 500 --json
  > vek config --flow-count 0
  > vek config -d 0
  > vek config -d 7x
  > vek config --json
  > vek set-mode
  > vek set-mode --json
  > vek set-mode gateways
  > vek set-mode bridg --json
  > vek set-mode GATEWAY
  > vek set-mode Bridge --json
  > vek get-mode
  > vek enable-c6y-acc --json
  > vek disable-c6y-acc
  > vek set-cache-delete-rule 1,100,60 x 2,200 --json
  > vek set-cache-delete-rule
  > vek enable-cache-ttl 5
  > vek enable-cache-ttl abc --json
  > vek enable-cache-ttl 0
  > vek enable-cache-ttl
  > vek-sim missing /proc/vek
  > vek enable-cache-ttl --json
  > vek-sim reset
  > EOF
  vek config -f 1000 -d 500 --json: {"return":0} [0]
    write /proc/vek/conn_max 1000
    write /proc/vek/dbcf_max_count 500
    write /proc/vek/fc_ctrl set-entry-count 500
    write /proc/vek/dst_ctrl set-entry-count 500
    write /proc/vek/neighbor_ctrl set-entry-count 500
  vek config --flow-count 0: [0]
  vek config -d 0: [0]
    write /proc/vek/dbcf_max_count 0
  vek config -d 7x: [0]
    write /proc/vek/dbcf_max_count 7x
    write /proc/vek/fc_ctrl set-entry-count 7
    write /proc/vek/dst_ctrl set-entry-count 7
    write /proc/vek/neighbor_ctrl set-entry-count 7
  vek config --json: {"return":0} [0]
  vek set-mode: Wrong arg number: 1 [1]
  vek set-mode --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  vek set-mode gateways: invalid arg: gateways [1]
  vek set-mode bridg --json: {"return":1,"detail":"invalid arg: bridg"} [1]
  vek set-mode GATEWAY: [0]
    write /proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged 0
    write /proc/vek/malnet_mode 0
  vek set-mode Bridge --json: {"return":0} [0]
    write /proc/sys/net/bridge/bridge-nf-filter-pppoe-tagged 1
    write /proc/vek/malnet_mode 1
  vek get-mode: bridge [0]
  vek enable-c6y-acc --json: {"return":0} [0]
    write /proc/vek/kctrl enable-c6y-acc
  vek disable-c6y-acc: [0]
    write /proc/vek/kctrl disable-c6y-acc
  vek set-cache-delete-rule 1,100,60 x 2,200 --json: {"return":0} [0]
    write /proc/vek/fc_ctrl set-delete-rule 1 100 60
    write /proc/vek/dst_ctrl set-delete-rule 1 100 60
    write /proc/vek/mac_ctrl set-delete-rule 1 100 60
    write /proc/vek/conn_ctx set-delete-rule 1 100 60
  vek set-cache-delete-rule: [0]
  vek enable-cache-ttl 5: [0]
    write /proc/vek/dst_ctrl enable-ttl-delete 1
  vek enable-cache-ttl abc --json: {"return":0} [0]
    write /proc/vek/dst_ctrl enable-ttl-delete 1
  vek enable-cache-ttl 0: [0]
    write /proc/vek/dst_ctrl enable-ttl-delete 0
  vek enable-cache-ttl: [0]
    write /proc/vek/dst_ctrl enable-ttl-delete 1
  vek enable-cache-ttl --json: {"return":0} [0]

reset-to-default: vek.ini, the categories of app.id and the three databases,
in order; options override vek.ini; what is missing is left alone.

  $ rows <<'EOF'
  > vek reset-to-default --json
  > xdn get
  > EOF
  vek reset-to-default --json: {"return":0} [0]
    write /proc/vek/qos_enabled 1
    write /proc/vek/iam_enabled 1
    write /proc/vek/fc_ctrl enable-cloud
    write /proc/vek/conn_max 65536
    write /proc/vek/dbcf_max_size 16
    write /proc/vek/dbcf_max_count 32768
    write /proc/vek/qos_mode 1
    write /proc/vek/fc_ctrl set-entry-mbytes 16
    write /proc/vek/dst_ctrl set-entry-mbytes 16
    write /proc/vek/neighbor_ctrl set-entry-mbytes 16
    write /proc/vek/mac_ctrl set-entry-mbytes 16
    write /proc/vek/fc_ctrl set-entry-count 32768
    write /proc/vek/dst_ctrl set-entry-count 32768
    write /proc/vek/neighbor_ctrl set-entry-count 32768
    write /proc/vek/mac_ctrl set-entry-count 32768
    write /proc/vek/rtk j:skb:0x100000
    write /proc/vek/kctrl reset-appid-c6y
    write /proc/vek/kctrl set-appid-c6y 80 1
    write /proc/vek/kctrl set-appid-c6y 443 1
    write /proc/vek/kctrl set-appid-c6y 1001 4
    write /proc/vek/kctrl set-appid-c6y 1002 4
    write /proc/vek/kctrl set-appid-c6y 2001 9
    write /proc/vek/kctrl set-appid-c6y 2002 9
    write /proc/vek/kctrl set-appid-c6y 3001 12
    write /proc/vek/kctrl set-appid-c6y 3002 12
    write /proc/kmod_xdn/grpxdb_clean 1\n
    write /proc/kmod_xdn/grpxdb_size \x00\x06\x00\x00
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/sidxdb_clean 1\n
    write /proc/kmod_xdn/sidxdb_size L\x04\x00\x00
    write /proc/kmod_xdn/sidxdb_import <512 bytes>
    write /proc/kmod_xdn/sidxdb_import <512 bytes>
    write /proc/kmod_xdn/sidxdb_import <76 bytes>
    write /proc/kmod_xapp/xr_clean 1\n
    write /proc/kmod_xapp/xr_size ,\x01\x00\x00
    write /proc/kmod_xapp/xr_import <300 bytes>
  xdn get: {"return":0,"info":{"writable":0,"size":1536,"epoch":1700000001}} [0]
  $ vek-sim cat /proc/vek/kctrl
  d:enabled:1
  d:c6y_acc:1
  d:appid_c6y:8
  $ sed -i '/^skbmark/d' "$R/usr/vek/bin/vek.ini"
  $ rm "$R/usr/vek/var/app.id" "$R/usr/vek/var/vek.xdb" "$R/usr/vek/var/app.xdb"
  $ rows <<'EOF'
  > vek reset-to-default --qos off --iam On --cloud off -f 99 -d 8 --json
  > EOF
  vek reset-to-default --qos off --iam On --cloud off -f 99 -d 8 --json: {"return":0} [0]
    write /proc/vek/qos_enabled 0
    write /proc/vek/iam_enabled 1
    write /proc/vek/fc_ctrl disable-cloud
    write /proc/vek/conn_max 99
    write /proc/vek/dbcf_max_size 8
    write /proc/vek/dbcf_max_count 32768
    write /proc/vek/qos_mode 1
    write /proc/vek/fc_ctrl set-entry-mbytes 8
    write /proc/vek/dst_ctrl set-entry-mbytes 8
    write /proc/vek/neighbor_ctrl set-entry-mbytes 8
    write /proc/vek/mac_ctrl set-entry-mbytes 8
    write /proc/vek/fc_ctrl set-entry-count 32768
    write /proc/vek/dst_ctrl set-entry-count 32768
    write /proc/vek/neighbor_ctrl set-entry-count 32768
    write /proc/vek/mac_ctrl set-entry-count 32768
    write /proc/vek/kctrl reset-appid-c6y
    write /proc/kmod_xapp/xr_clean 1\n
    write /proc/kmod_xapp/xr_size ,\x01\x00\x00
    write /proc/kmod_xapp/xr_import <300 bytes>
