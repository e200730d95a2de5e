vektool qos against the simulator. One case a line (see cases.sh); "vek-sim"
lines set the scene.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

The help (30 usage lines and the options), pinned byte for byte by its sum.

  $ vektool qos -h | cksum
  1680648420 1684

The frame, the switch, the mode ("get" prints JSON in plain mode too), the
algorithm and QoE (names exact); qos_ctrl's readers with a bad or no record;
the queue count is read after the JSON argument parses.

  $ table <<'EOF'
  > qos: [1]
  > qos GET-ALGO --json: [1]
  > qos --json get-algo: {"return":0,"result":"qoe"} [0]
  > qos on: [0] -> write /proc/vek/qos_enabled 1
  > qos off --json extra: {"return":0} [0] -> write /proc/vek/qos_enabled 0
  > qos get: {"return":0,"qosmode":"1"}[0]
  > qos set -m gateway --json: {"return":0} [0] -> write /proc/vek/qos_mode gateway
  > qos set -mbridge: [0] -> write /proc/vek/qos_mode bridge
  > qos set -m '' --json: {"return":1} [0]
  > qos set --json: {"return":1} [0]
  > qos set -m: error: option `-m` requires a value [1]
  > vek-sim file /proc/vek/qos_mode '  spaced mode  '
  > qos get: {"return":0,"qosmode":"spaced mode"}[0]
  > vek-sim unreadable /proc/vek/qos_mode
  > qos get --json: {"return":0,"qosmode":""}[0]
  > qos set-algo hyqos: [0] -> write /proc/vek/qos_ctrl d:algorithm:2
  > qos get-algo: hyqos [0]
  > qos set-algo none --json: {"return":0} [0] -> write /proc/vek/qos_ctrl d:algorithm:0
  > qos get-algo --json: {"return":0,"result":"none"} [0]
  > qos set-algo qoe --json extra: {"return":0} [0] -> write /proc/vek/qos_ctrl d:algorithm:1
  > qos set-algo HyQoS --json: {"return":1,"detail":"Wrong algorithm: HyQoS. (none, qoe, hyqos)"} [1]
  > qos set-algo '': Wrong algorithm: . (none, qoe, hyqos) [1]
  > qos set-algo: Wrong arg number: 1 [1]
  > qos get-qoe-active: 1 [0]
  > qos get-qoe-active --json: {"return":0,"result":1}[0]
  > qos set-qoe-active 0 --json: {"return":0} [0] -> write /proc/vek/qoe_config 1 0
  > qos set-qoe-active 7x: [0] -> write /proc/vek/qoe_config 1 7
  > qos set-qoe-active 99999999999: [0] -> write /proc/vek/qoe_config 1 2147483647
  > qos set-qoe-active -- -1: [0] -> write /proc/vek/qoe_config 1 -1
  > qos set-qoe-active: Wrong arg number: 1 [1]
  > qos set-qoe-profile gaming --json: {"return":0} [0] -> write /proc/vek/qoe_config 3 2
  > qos get-qoe-profile --json: {"return":0,"result":"gaming"} [0]
  > qos set-qoe-profile none: [0] -> write /proc/vek/qoe_config 3 0
  > qos set-qoe-profile streaming: [0] -> write /proc/vek/qoe_config 3 4
  > qos set-qoe-profile office: [0] -> write /proc/vek/qoe_config 3 5
  > qos set-qoe-profile ai2: [0] -> write /proc/vek/qoe_config 3 6
  > qos set-qoe-profile custom: [0] -> write /proc/vek/qoe_config 3 7
  > qos get-qoe-profile: custom [0]
  > qos set-qoe-profile AI --json: {"return":1,"detail":"Wrong profile: AI. (none, ai, gaming, wfh, streaming, office)"} [1]
  > qos set-qoe-profile gamingx: Wrong profile: gamingx. (none, ai, gaming, wfh, streaming, office) [1]
  > qos set-qoe-profile --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:-1'
  > qos get-algo --json: {"return":1,"detail":"Failed to read file: algorithm(-1) is invalid."} [1]
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:3'
  > qos get-algo: Failed to read file: algorithm(3) is invalid. [1]
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:x'
  > qos get-algo --json: {"return":1,"detail":"Failed to read file: no algorithm field."} [1]
  > vek-sim file /proc/vek/qos_ctrl 'j:qoe:[1]'
  > qos get-qoe-active --json: {"return":1,"detail":"Failed to read file: no queue number field."} [1]
  > qos get-qoe-profile --json: {"return":1,"detail":"Failed to operate proc: j:qoe:[1]"} [1]
  > vek-sim file /proc/vek/qos_ctrl 'j:qoe:[0,8]'
  > qos get-qoe-active: 0 [0]
  > qos get-qoe-profile: Failed to operate proc: j:qoe:[0,8] [1]
  > vek-sim file /proc/vek/qos_ctrl 'j:qoe:[1,-1]'
  > qos get-qoe-profile --json: {"return":1,"detail":"Failed to operate proc: j:qoe:[1,-1]"} [1]
  > vek-sim file /proc/vek/qos_ctrl ''
  > qos get-algo --json: {"return":1,"detail":"Failed to read file: null."} [1]
  > qos get-qoe-active --json: {"return":1,"detail":"Failed to operate proc: data null."} [1]
  > qos get-qoe-profile --json: {"return":1,"detail":"Failed to read file: null."} [1]
  > qos get-hyqos-active --json: {"return":1,"detail":"Failed to operate proc: data null."} [1]
  > qos get-hw-queue-num: Failed to read file: null. [1]
  > qos set-hyqos-queues '[[' --json: {"return":1,"detail":"Wrong json format: [["} [1]
  > qos set-hyqos-queues '[]' --json: {"return":1,"detail":"Failed to read file."} [1]
  > qos set-hyqos-queues '[1,2,3]' --json: {"return":1,"detail":"Failed to read file."} [1]
  > qos add-hyqos-devs '[[' --json: {"return":1,"detail":"Wrong json format: [["} [1]
  > qos add-hyqos-devs '{"a":1}' --json: {"return":1,"detail":"Failed to read file."} [0]
  > vek-sim unreadable /proc/vek/qos_ctrl
  > qos get-algo --json: {"return":1,"detail":"Failed to read file."} [1]
  > qos get-qoe-active --json: {"return":1,"detail":"Failed to operate proc."} [1]
  > qos get-qoe-profile --json: {"return":1,"detail":"Failed to read file."} [1]
  > qos get-hyqos-active: Failed to operate proc. [1]
  > qos get-hw-queue-num --json: {"return":1,"detail":"Failed to read file."} [1]
  > vek-sim missing /proc/vek/qos_ctrl
  > qos set-algo qoe --json: {"return":0} [0]
  > EOF

Profile settings: a bad pair stops the bulk writes where they stand; numbers
are truncated toward zero and held to int, non-numbers are 0.

  $ table <<'EOF'
  > qos get-qoe-profile-settings: [[50,50],[50,50],[50,50],[50,50],[50,50],[50,50],[50,50],[50,50]] [0]
  > qos set-qoe-profile-setting gaming: [0] -> write /proc/vek/qoe_config 60 2 0 0
  > qos set-qoe-profile-setting wfh --sensitivity 30 --intensity=0x10 --json: {"return":0} [0] -> write /proc/vek/qoe_config 60 3 30 16
  > qos set-qoe-profile-setting --intensity 5 custom: [0] -> write /proc/vek/qoe_config 60 7 0 5
  > qos set-qoe-profile-setting ai --sensitivity=-3: [0] -> write /proc/vek/qoe_config 60 1 -3 0
  > qos set-qoe-profile-setting Gaming --json: {"return":1,"detail":"Wrong profile: Gaming. (none, ai, gaming, wfh, streaming, office)"} [1]
  > qos set-qoe-profile-setting --sensitivity 1: Wrong arg number: 1 [1]
  > qos set-qoe-profile-setting gaming --sensitivity x: error: option `--sensitivity` expects an integer value [1]
  > qos get-qoe-profile-settings --json: {"return":0,"result":"[[50,50],[-3,0],[0,0],[30,16],[50,50],[50,50],[50,50],[0,5]]"} [0]
  > qos set-qoe-profile-settings '[[1,2],[3,4]]' --json: {"return":0} [0] -> write /proc/vek/qoe_config 60 0 1 2 -> write /proc/vek/qoe_config 60 1 3 4
  > qos set-qoe-profile-settings '[[1,2],[3,4],5]' --json: [1] -> write /proc/vek/qoe_config 60 0 1 2 -> write /proc/vek/qoe_config 60 1 3 4
  > qos set-qoe-profile-settings '[[1,2],[3]]': [1] -> write /proc/vek/qoe_config 60 0 1 2
  > qos set-qoe-profile-settings '[{"a":1,"b":2}]': [1]
  > qos set-qoe-profile-settings '[]' --json: {"return":0} [0]
  > qos set-qoe-profile-settings '[[1.9,-2.7],["x",null]]': [0] -> write /proc/vek/qoe_config 60 0 1 -2 -> write /proc/vek/qoe_config 60 1 0 0
  > qos set-qoe-profile-settings '[[1e300,-1e300],[2147483648.5,-2147483649]]': [0] -> write /proc/vek/qoe_config 60 0 2147483647 -2147483648 -> write /proc/vek/qoe_config 60 1 2147483647 -2147483648
  > qos set-qoe-profile-settings '[[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]' --json: {"return":1,"detail":"Invalid input: 9, [[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]"} [1]
  > qos set-qoe-profile-settings '{"a":[1,2]}' --json: {"return":1,"detail":"Wrong json format: {"a":[1,2]}"} [1]
  > qos set-qoe-profile-settings '[[1,2]' --json: {"return":1,"detail":"Wrong json format: [[1,2]"} [1]
  > qos set-qoe-profile-settings: Wrong arg number: 1 [1]
  > vek-sim file /proc/vek/qoe_config 'j:pfs:[[1, 2]]'
  > qos get-qoe-profile-settings: [[1, [0]
  > vek-sim file /proc/vek/qoe_config "j:pfs:$(printf '%0300d' 0)"
  > qos get-qoe-profile-settings: 000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000 [0]
  > vek-sim file /proc/vek/qoe_config 'j:pfs:'
  > qos get-qoe-profile-settings --json: {"return":1,"detail":"Failed to read file: no algorithm field."} [1]
  > vek-sim file /proc/vek/qoe_config 'j:hyqos_rate:[]'
  > qos get-qoe-profile-settings --json: {"return":1,"detail":"Failed to read file: null."} [1]
  > vek-sim missing /proc/vek/qoe_config
  > qos get-qoe-profile-settings --json: {"return":1,"detail":"Failed to read file."} [1]
  > EOF

Engine JSON printed as it comes; bwctl takes an object, a DSCP mapping any
JSON, both cut to the 512-byte verb.

  $ table <<'EOF'
  > qos get-qoe-optimization: {"state":1,"score":87,"flows":12} [0]
  > qos get-qoe-optimization --json: {"return":0,"result":{"state":1,"score":87,"flows":12}}[0]
  > qos enable-qoe-bwctl: [0] -> write /proc/vek/qoe_config2 set-para {"enabled":1}
  > qos disable-qoe-bwctl --json: {"return":0} [0] -> write /proc/vek/qoe_config2 set-para {"enabled":0}
  > qos set-qoe-bwctl '{"up":100, "down":200}' --json: {"return":0} [0] -> write /proc/vek/qoe_config2 set-para {"up":100, "down":200}
  > qos get-qoe-bwctl: {"enabled":0,"up":100,"down":200} [0]
  > qos set-qoe-bwctl "{\"k\":\"$(printf '%0520d' 0)\"}": [0] -> write /proc/vek/qoe_config2 set-para {"k":"0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000
  > qos set-qoe-bwctl '[1]' --json: {"return":1,"detail":"Wrong json format: [1]"} [1]
  > qos set-qoe-bwctl 'up=1': Wrong json format: up=1 [1]
  > qos set-qoe-bwctl --json: {"return":1,"detail":"Wrong arg number: 1"} [1]
  > vek-sim file /proc/vek/qoe_optimization ''
  > qos get-qoe-optimization --json: {"return":1,"detail":"Failed to read file: invalid."} [1]
  > vek-sim file /proc/vek/qoe_optimization '   '
  > qos get-qoe-optimization --json: {"return":0,"result":}[0]
  > vek-sim missing /proc/vek/qoe_config2
  > qos get-qoe-bwctl --json: {"return":1,"detail":"Failed to read file."} [1]
  > vek-sim unreadable /proc/vek/qoe_optimization
  > qos get-qoe-optimization: Failed to read file. [1]
  > qos get-dscp: {"tagging":0,"mapping":{}} [0]
  > qos enable-dscp --json: {"return":0} [0] -> write /proc/vek/conn_ctx set-dscp-tagging 1
  > qos disable-dscp: [0] -> write /proc/vek/conn_ctx set-dscp-tagging 0
  > qos set-dscp-mapping '{"ef":5}' --json: {"return":0} [0] -> write /proc/vek/conn_ctx set-dscp-mapping {"ef":5}
  > qos set-dscp-mapping 7: [0] -> write /proc/vek/conn_ctx set-dscp-mapping 7
  > qos set-dscp-mapping '{bad' --json: {"return":1,"detail":"Wrong json format: {bad"} [1]
  > qos set-dscp-mapping: Wrong arg number: 1 [1]
  > qos set-dscp-mapping "[\"$(printf '%0600d' 0)\"]": [0] -> write /proc/vek/conn_ctx set-dscp-mapping ["000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000
  > qos get-dscp --json: {"return":0,"result":{"tagging":0,"mapping":7}} [0]
  > vek-sim file /proc/vek/conn_ctx '{"DSCP":[1]}'
  > qos get-dscp --json: {"return":0,"result":[1]} [0]
  > vek-sim file /proc/vek/conn_ctx '{"dr":[]}'
  > qos get-dscp --json: {"return":1,"detail":"Unsupported"} [0]
  > vek-sim file /proc/vek/conn_ctx 'x'
  > qos get-dscp --json: {"return":1,"detail":"Wrong json format: (null)"} [0]
  > qos get-dscp extra: Wrong json format: extra [0]
  > vek-sim file /proc/vek/conn_ctx ''
  > qos get-dscp --json: [1]
  > vek-sim unreadable /proc/vek/conn_ctx
  > qos get-dscp: [1]
  > vek-sim reset
  > EOF

HyQoS queues: checks run in order (words, direction, id, rate, the count read
afresh); plain get-hw-queue-num exits 1; set-hyqos-queues stops at a bad entry.

  $ table <<'EOF'
  > qos get-hyqos-active: 0 [0]
  > qos set-hyqos-active 1 --json: {"return":0} [0] -> write /proc/vek/qoe_config 2 1
  > qos get-hyqos-active --json: {"return":0,"result":1}[0]
  > qos set-hyqos-active x: [0] -> write /proc/vek/qoe_config 2 0
  > qos set-hyqos-active: Wrong arg number: 1 [1]
  > qos get-hw-queue-num: 8 [1]
  > qos get-hw-queue-num --json: {"return":0,"result":8}[0]
  > qos set-hyqos-queue 1 7 100 --json: {"return":0} [0] -> write /proc/vek/qoe_config 501 1 7 100
  > qos get-hyqos-queues --json: {"return":0,"result":[[["",1000],["",1000],["",1000],["",1000],["",1000],["",1000],["",1000],["",1000]],[["",1000],["",1000],["",1000],["",1000],["",1000],["",1000],["",1000],["",100]]]}[0]
  > qos set-hyqos-queue 0 0 0: [0] -> write /proc/vek/qoe_config 501 0 0 0
  > qos set-hyqos-queue 1 x 100: [0] -> write /proc/vek/qoe_config 501 1 0 100
  > qos set-hyqos-queue 1 8 100 --json: {"return":1,"detail":"Wrong arg: 8"} [1]
  > qos set-hyqos-queue 2 0 100: Wrong arg: 2 [1]
  > qos set-hyqos-queue -- -1 0 100: Wrong arg: -1 [1]
  > qos set-hyqos-queue -1 0 100: Wrong arg number: 3 [1]
  > qos set-hyqos-queue 4294967297 0 1: Wrong arg: 2147483647 [1]
  > qos set-hyqos-queue -- 5 -1 -1: Wrong arg: 5 [1]
  > qos set-hyqos-queue -- 0 -2 -1: Wrong arg: -2 [1]
  > qos set-hyqos-queue -- 0 1 -5x: Wrong arg: -5x [1]
  > qos set-hyqos-queue 0 1 --json: {"return":1,"detail":"Wrong arg number: 3"} [1]
  > qos reset-hyqos-queue --json: {"return":0} [0] -> write /proc/vek/qoe_config 510
  > qos reset-hyqos-queue 5 99: [0] -> write /proc/vek/qoe_config 511 5 99
  > qos reset-hyqos-queue 1 --json: {"return":1,"detail":"Wrong arg number: 2"} [1]
  > qos reset-hyqos-queue -- -1 0: Wrong arg: -1 [1]
  > qos reset-hyqos-queue -- 0 -3: Wrong arg: -3 [1]
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:3'
  > qos set-hyqos-queue 0 3 10: Wrong arg: 3 [1]
  > qos set-hyqos-queue 0 2 10: [0] -> write /proc/vek/qoe_config 501 0 2 10
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:x'
  > qos set-hyqos-queue 0 0 10 --json: {"return":1,"detail":"Failed to read file."} [1]
  > qos set-hyqos-queue -- 0 -1 10 --json: Wrong arg: -1 [1]
  > qos get-hw-queue-num --json: {"return":1,"detail":"Failed to read file: no queue number field."} [1]
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:0'
  > qos get-hw-queue-num --json: {"return":0,"result":0}[0]
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:-1'
  > qos get-hw-queue-num --json: {"return":1,"detail":"Failed to read file: queue number(-1) is invalid."} [1]
  > vek-sim file /proc/vek/qos_ctrl 'j:hyqos:1'
  > qos get-hyqos-active --json: {"return":1,"detail":"Failed to read information from: j:hyqos:1"} [1]
  > vek-sim file /proc/vek/qoe_config 'j:pfs:[]'
  > qos get-hyqos-queues --json: {"return":1,"detail":"Failed to read file."} [1]
  > vek-sim file /proc/vek/qoe_config 'j:hyqos_rate:  [1]  '
  > qos get-hyqos-queues: [1] [0]
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:1'
  > qos set-hyqos-queues '[[["a",10]],[["b",20]]]' --json: {"return":0} [0] -> write /proc/vek/qoe_config 501 0 0 10 a -> write /proc/vek/qoe_config 501 1 0 20 b
  > qos set-hyqos-queues '[[["up link",1.9]]]': [0] -> write /proc/vek/qoe_config 501 0 0 1 up link
  > qos set-hyqos-queues '[[["a","x"]]]': [0] -> write /proc/vek/qoe_config 501 0 0 0 a
  > qos set-hyqos-queues '[[["a",1e12]]]': [0] -> write /proc/vek/qoe_config 501 0 0 2147483647 a
  > qos set-hyqos-queues '[]' --json: {"return":0} [0]
  > qos set-hyqos-queues '[[["a",1]],[["b",2]],[["c",3]]]' --json: {"return":1,"detail":"Invalid input: [[["a",1]],[["b",2]],[["c",3]]]"} [1]
  > qos set-hyqos-queues '[[["a",1]],[]]' --json: [1]
  > qos set-hyqos-queues '[[["a",1]],[["b",2],["c",3]]]': [1]
  > qos set-hyqos-queues '[{"q":["a",1]}]': [1]
  > qos set-hyqos-queues '[[["a",1]],[[5,2]]]': [1] -> write /proc/vek/qoe_config 501 0 0 1 a
  > qos set-hyqos-queues '[[["a",1]],[["b"]]]' --json: [1] -> write /proc/vek/qoe_config 501 0 0 1 a
  > qos set-hyqos-queues '[[["a",1]],[{"t":"b","r":2}]]': [1] -> write /proc/vek/qoe_config 501 0 0 1 a
  > qos set-hyqos-queues '{"a":1}' --json: {"return":1,"detail":"Wrong json format: {"a":1}"} [1]
  > qos set-hyqos-queues: Wrong arg number: 1 [1]
  > vek-sim reset
  > EOF

Devices: a failed get reports code 0 and exits 1; add checks every entry
before it writes; del deletes one at a time up to a bad entry.

  $ table <<'EOF'
  > qos get-hyqos-devs: [["00:11:22:33:44:55",0,0],["66:77:88:99:aa:bb",0,0]] [0]
  > qos add-hyqos-devs '[["00:11:22:33:44:55",1,2],["AA-BB-CC-DD-EE-FF",7,0]]' --json: {"return":0} [0] -> write /proc/vek/dbdev 10 00:11:22:33:44:55 1 2 -> write /proc/vek/dbdev 10 AA-BB-CC-DD-EE-FF 7 0
  > qos add-hyqos-devs '[]' --json: {"return":0} [0]
  > qos add-hyqos-devs '[["00:11:22:33:44:55",1,2],["bad",1,1]]' --json: {"return":1,"detail":"Invalid mac: bad"} [0]
  > qos add-hyqos-devs '[[5,1,1]]': Invalid mac: null [0]
  > qos add-hyqos-devs '[["bad",9,9]]': Invalid mac: bad [0]
  > qos add-hyqos-devs '[["00:11:22:33:44:55",9,-1]]': Invalid queue id: 9 [0]
  > qos add-hyqos-devs '[["00:11:22:33:44:55",8,0]]' --json: {"return":1,"detail":"Invalid queue id: 8"} [0]
  > qos add-hyqos-devs '[["00:11:22:33:44:55",0,-1]]': Invalid queue id: -1 [0]
  > qos add-hyqos-devs '[["00:11:22:33:44:55",0,1e300]]': Invalid queue id: 2147483647 [0]
  > qos add-hyqos-devs '[["00:11:22:33:44:55",1]]' --json: [0]
  > qos add-hyqos-devs '[["00:11:22:33:44:55",1,2,3]]' --json: [0]
  > qos add-hyqos-devs '[{"m":"00:11:22:33:44:55","u":1,"d":2}]' --json: [0]
  > qos add-hyqos-devs '[["001122334455",1.9,"x"]]': [0] -> write /proc/vek/dbdev 10 001122334455 1 0
  > qos add-hyqos-devs "[$(for i in $(seq 65); do printf '["00:11:22:33:44:55",0,0],'; done | sed 's/,$//')]" --json: {"return":1,"detail":"Can not support devices number: 65"} [0]
  > qos add-hyqos-devs "[$(for i in $(seq 63); do printf '["00:11:22:33:44:55",0,0],'; done)[\"bad\",0,0]]" --json: {"return":1,"detail":"Invalid mac: bad"} [0]
  > qos add-hyqos-devs "[[\"$(printf '%0600d' 0)\",0,0]]" --json: {"return":1,"detail":"Invalid mac: 000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"} [0]
  > qos add-hyqos-devs '{"a":1}' --json: {"return":1,"detail":"Wrong json format: {"a":1}"} [0]
  > qos add-hyqos-devs: Wrong arg number: 1 [1]
  > qos del-hyqos-devs --json: {"return":0} [0] -> write /proc/vek/dbdev 6
  > qos del-hyqos-devs '["00:11:22:33:44:55","bad"]' --json: {"return":1,"detail":"Invalid mac: bad"} [0] -> write /proc/vek/dbdev 7 00:11:22:33:44:55
  > qos del-hyqos-devs '["66:77:88:99:aa:bb",1]': Invalid mac: null [0] -> write /proc/vek/dbdev 7 66:77:88:99:aa:bb
  > qos del-hyqos-devs '[]': [0]
  > qos del-hyqos-devs '"00:11:22:33:44:55"' --json: {"return":1,"detail":"Wrong json format: "00:11:22:33:44:55""} [0]
  > qos del-hyqos-devs 'x': Wrong json format: x [1]
  > vek-sim file /proc/vek/dbdev 'j:defq:[0,0]'
  > qos get-hyqos-devs --json: {"return":0,"detail":"Failed to read file."} [1]
  > vek-sim unreadable /proc/vek/dbdev
  > qos get-hyqos-devs: Failed to read file. [1]
  > EOF
