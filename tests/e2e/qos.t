vektool qos against the simulator: each case is one line (the words after
vektool), then what it printed, its exit status (glued to the output when the
output has no line end) and the verbs the engine received.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

The frame: no command or an unknown one exits 1 silently; options may stand
before the command word.

  $ cases <<'EOF'
  > qos
  > qos bogus --json
  > qos GET-ALGO --json
  > qos --json get-algo
  > EOF
  vektool qos
  [exit 1]
  vektool qos bogus --json
  [exit 1]
  vektool qos GET-ALGO --json
  [exit 1]
  vektool qos --json get-algo
  {"return":0,"result":"qoe"}
  [exit 0]

The help lists 30 usage lines and the group's options.

  $ vektool qos -h
  Usage: vektool qos [options] <command> [args]
     or: vektool qos get-qoe-active
     or: vektool qos set-qoe-active <active>
     or: vektool qos get-hyqos-active
     or: vektool qos set-hyqos-active <active>
     or: vektool qos get-algo
     or: vektool qos set-algo <algorithm>
     or: vektool qos get-qoe-profile
     or: vektool qos set-qoe-profile <profile>      # ai, gaming, streaming, wfh, office
     or: vektool qos get-qoe-profile-settings
     or: vektool qos set-qoe-profile-setting <profile>
     or: vektool qos set-qoe-profile-settings <json_settings>
     or: vektool qos get-qoe-optimization
     or: vektool qos enable-qoe-bwctl
     or: vektool qos disable-qoe-bwctl
     or: vektool qos get-qoe-bwctl
     or: vektool qos set-qoe-bwctl <bwctl_settings>
     or: vektool qos get-hyqos-queues
     or: vektool qos set-hyqos-queue <dir> <qid> <rate_mbps>
     or: vektool qos set-hyqos-queues <json_queues>     # [[<up_rate>, ...],[<dw_rate>, ...]]
     or: vektool qos reset-hyqos-queue                  # reset all queues
     or: vektool qos reset-hyqos-queue <dir> <qid>      # reset <dir> <qid>
     or: vektool qos get-hyqos-devs
     or: vektool qos add-hyqos-devs <json_devs>     # [[<mac>, <upqid>, <dwqid>], ...]
     or: vektool qos del-hyqos-devs <json_devs>     # [<mac>, ...]
     or: vektool qos get-hw-queue-num
     or: vektool qos get-dscp
     or: vektool qos enable-dscp
     or: vektool qos disable-dscp
     or: vektool qos set-dscp-mapping <dscp_class_mapping>
  
      -h, --help            show this help message and exit
      --sensitivity=<int>   The sensitivity of profile setting.
      --intensity=<int>     The intensity of profile setting.
      --json                
      -m=<str>              
  $ vektool qos --help >/dev/null; echo $?
  0

The shaper switch and the QoS mode. get prints its JSON line without a line
end in plain mode too; set without a mode text reports 1 and exits 0.

  $ cases <<'EOF'
  > qos on
  > qos on --json
  > qos off --json extra
  > qos get
  > qos get --json
  > qos set -m gateway --json
  > qos set -mbridge
  > qos get
  > qos set -m '' --json
  > qos set --json
  > qos set
  > qos set -m
  > vek-sim file /proc/vek/qos_mode '  spaced mode  '
  > qos get
  > vek-sim unreadable /proc/vek/qos_mode
  > qos get --json
  > vek-sim reset
  > EOF
  vektool qos on
  [exit 0]
    write /proc/vek/qos_enabled 1
  vektool qos on --json
  {"return":0}
  [exit 0]
    write /proc/vek/qos_enabled 1
  vektool qos off --json extra
  {"return":0}
  [exit 0]
    write /proc/vek/qos_enabled 0
  vektool qos get
  {"return":0,"qosmode":"1"}[exit 0]
  vektool qos get --json
  {"return":0,"qosmode":"1"}[exit 0]
  vektool qos set -m gateway --json
  {"return":0}
  [exit 0]
    write /proc/vek/qos_mode gateway
  vektool qos set -mbridge
  [exit 0]
    write /proc/vek/qos_mode bridge
  vektool qos get
  {"return":0,"qosmode":"bridge"}[exit 0]
  vektool qos set -m '' --json
  {"return":1}
  [exit 0]
  vektool qos set --json
  {"return":1}
  [exit 0]
  vektool qos set
  [exit 0]
  vektool qos set -m
  error: option `-m` requires a value
  [exit 1]
  vektool qos get
  {"return":0,"qosmode":"spaced mode"}[exit 0]
  vektool qos get --json
  {"return":0,"qosmode":""}[exit 0]

The algorithm, by its exact name; the read-back refuses numbers outside 0-2,
negatives included.

  $ cases <<'EOF'
  > qos set-algo hyqos
  > qos get-algo
  > qos set-algo none --json
  > qos get-algo --json
  > qos set-algo qoe --json extra
  > qos set-algo HyQoS --json
  > qos set-algo ''
  > qos set-algo
  > qos set-algo --json
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:-1'
  > qos get-algo --json
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:3'
  > qos get-algo
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:x'
  > qos get-algo --json
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:8'
  > qos get-algo --json
  > vek-sim unreadable /proc/vek/qos_ctrl
  > qos get-algo --json
  > vek-sim missing /proc/vek/qos_ctrl
  > qos get-algo
  > qos set-algo qoe --json
  > vek-sim reset
  > EOF
  vektool qos set-algo hyqos
  [exit 0]
    write /proc/vek/qos_ctrl d:algorithm:2
  vektool qos get-algo
  hyqos
  [exit 0]
  vektool qos set-algo none --json
  {"return":0}
  [exit 0]
    write /proc/vek/qos_ctrl d:algorithm:0
  vektool qos get-algo --json
  {"return":0,"result":"none"}
  [exit 0]
  vektool qos set-algo qoe --json extra
  {"return":0}
  [exit 0]
    write /proc/vek/qos_ctrl d:algorithm:1
  vektool qos set-algo HyQoS --json
  {"return":1,"detail":"Wrong algorithm: HyQoS. (none, qoe, hyqos)"}
  [exit 1]
  vektool qos set-algo ''
  Wrong algorithm: . (none, qoe, hyqos)
  [exit 1]
  vektool qos set-algo
  Wrong arg number: 1
  [exit 1]
  vektool qos set-algo --json
  {"return":1,"detail":"Wrong arg number: 1"}
  [exit 1]
  vektool qos get-algo --json
  {"return":1,"detail":"Failed to read file: algorithm(-1) is invalid."}
  [exit 1]
  vektool qos get-algo
  Failed to read file: algorithm(3) is invalid.
  [exit 1]
  vektool qos get-algo --json
  {"return":1,"detail":"Failed to read file: no algorithm field."}
  [exit 1]
  vektool qos get-algo --json
  {"return":1,"detail":"Failed to read file: null."}
  [exit 1]
  vektool qos get-algo --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]
  vektool qos get-algo
  Failed to read file.
  [exit 1]
  vektool qos set-algo qoe --json
  {"return":0}
  [exit 0]

The QoE active flag is passed on unchecked (strtol, held to int); a negative
one needs "--", since the option parser drops "-1" as an unknown option.
All eight profile names are taken, by exact name.

  $ cases <<'EOF'
  > qos get-qoe-active
  > qos get-qoe-active --json
  > qos set-qoe-active 0 --json
  > qos get-qoe-active
  > qos set-qoe-active abc
  > qos set-qoe-active 7x
  > qos set-qoe-active 99999999999
  > qos set-qoe-active -- -1
  > qos set-qoe-active -1 --json
  > qos set-qoe-active
  > qos get-qoe-profile
  > qos set-qoe-profile gaming --json
  > qos get-qoe-profile --json
  > qos set-qoe-profile none
  > qos set-qoe-profile ai
  > qos set-qoe-profile wfh
  > qos set-qoe-profile streaming
  > qos set-qoe-profile office
  > qos set-qoe-profile ai2
  > qos set-qoe-profile custom
  > qos get-qoe-profile
  > qos set-qoe-profile AI --json
  > qos set-qoe-profile gamingx
  > qos set-qoe-profile --json
  > vek-sim file /proc/vek/qos_ctrl 'j:qoe:[1]'
  > qos get-qoe-active --json
  > qos get-qoe-profile --json
  > vek-sim file /proc/vek/qos_ctrl 'j:qoe:[0,8]'
  > qos get-qoe-active
  > qos get-qoe-profile
  > vek-sim file /proc/vek/qos_ctrl 'j:qoe:[1,-1]'
  > qos get-qoe-profile --json
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:8'
  > qos get-qoe-active --json
  > qos get-qoe-profile --json
  > vek-sim unreadable /proc/vek/qos_ctrl
  > qos get-qoe-active --json
  > qos get-qoe-profile --json
  > vek-sim reset
  > EOF
  vektool qos get-qoe-active
  1
  [exit 0]
  vektool qos get-qoe-active --json
  {"return":0,"result":1}[exit 0]
  vektool qos set-qoe-active 0 --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 1 0
  vektool qos get-qoe-active
  0
  [exit 0]
  vektool qos set-qoe-active abc
  [exit 0]
    write /proc/vek/qoe_config 1 0
  vektool qos set-qoe-active 7x
  [exit 0]
    write /proc/vek/qoe_config 1 7
  vektool qos set-qoe-active 99999999999
  [exit 0]
    write /proc/vek/qoe_config 1 2147483647
  vektool qos set-qoe-active -- -1
  [exit 0]
    write /proc/vek/qoe_config 1 -1
  vektool qos set-qoe-active -1 --json
  {"return":1,"detail":"Wrong arg number: 1"}
  [exit 1]
  vektool qos set-qoe-active
  Wrong arg number: 1
  [exit 1]
  vektool qos get-qoe-profile
  ai
  [exit 0]
  vektool qos set-qoe-profile gaming --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 3 2
  vektool qos get-qoe-profile --json
  {"return":0,"result":"gaming"}
  [exit 0]
  vektool qos set-qoe-profile none
  [exit 0]
    write /proc/vek/qoe_config 3 0
  vektool qos set-qoe-profile ai
  [exit 0]
    write /proc/vek/qoe_config 3 1
  vektool qos set-qoe-profile wfh
  [exit 0]
    write /proc/vek/qoe_config 3 3
  vektool qos set-qoe-profile streaming
  [exit 0]
    write /proc/vek/qoe_config 3 4
  vektool qos set-qoe-profile office
  [exit 0]
    write /proc/vek/qoe_config 3 5
  vektool qos set-qoe-profile ai2
  [exit 0]
    write /proc/vek/qoe_config 3 6
  vektool qos set-qoe-profile custom
  [exit 0]
    write /proc/vek/qoe_config 3 7
  vektool qos get-qoe-profile
  custom
  [exit 0]
  vektool qos set-qoe-profile AI --json
  {"return":1,"detail":"Wrong profile: AI. (none, ai, gaming, wfh, streaming, office)"}
  [exit 1]
  vektool qos set-qoe-profile gamingx
  Wrong profile: gamingx. (none, ai, gaming, wfh, streaming, office)
  [exit 1]
  vektool qos set-qoe-profile --json
  {"return":1,"detail":"Wrong arg number: 1"}
  [exit 1]
  vektool qos get-qoe-active --json
  {"return":1,"detail":"Failed to read file: no queue number field."}
  [exit 1]
  vektool qos get-qoe-profile --json
  {"return":1,"detail":"Failed to operate proc: j:qoe:[1]"}
  [exit 1]
  vektool qos get-qoe-active
  0
  [exit 0]
  vektool qos get-qoe-profile
  Failed to operate proc: j:qoe:[0,8]
  [exit 1]
  vektool qos get-qoe-profile --json
  {"return":1,"detail":"Failed to operate proc: j:qoe:[1,-1]"}
  [exit 1]
  vektool qos get-qoe-active --json
  {"return":1,"detail":"Failed to operate proc: data null."}
  [exit 1]
  vektool qos get-qoe-profile --json
  {"return":1,"detail":"Failed to read file: null."}
  [exit 1]
  vektool qos get-qoe-active --json
  {"return":1,"detail":"Failed to operate proc."}
  [exit 1]
  vektool qos get-qoe-profile --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]

Profile settings, one at a time (options default to 0) and in bulk: a bad
pair stops the bulk write where it stands, with no report and status 1;
numbers are truncated toward zero and held to int, non-numbers are 0.

  $ cases <<'EOF'
  > qos get-qoe-profile-settings
  > qos set-qoe-profile-setting gaming
  > qos set-qoe-profile-setting wfh --sensitivity 30 --intensity=0x10 --json
  > qos set-qoe-profile-setting --intensity 5 custom
  > qos set-qoe-profile-setting ai --sensitivity=-3
  > qos set-qoe-profile-setting ai --sensitivity -- -3
  > qos set-qoe-profile-setting Gaming --json
  > qos set-qoe-profile-setting --sensitivity 1
  > qos set-qoe-profile-setting gaming --sensitivity x
  > qos get-qoe-profile-settings --json
  > qos set-qoe-profile-settings '[[1,2],[3,4]]' --json
  > qos set-qoe-profile-settings '[[1,2],[3,4],5]' --json
  > qos set-qoe-profile-settings '[[1,2],[3]]'
  > qos set-qoe-profile-settings '[{"a":1,"b":2}]'
  > qos set-qoe-profile-settings '[]' --json
  > qos set-qoe-profile-settings '[[1.9,-2.7],["x",null]]'
  > qos set-qoe-profile-settings '[[1e300,-1e300],[2147483648.5,-2147483649]]'
  > qos set-qoe-profile-settings '[[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]'
  > qos set-qoe-profile-settings '[[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]' --json
  > qos set-qoe-profile-settings '{"a":[1,2]}' --json
  > qos set-qoe-profile-settings '[[1,2]' --json
  > qos set-qoe-profile-settings
  > vek-sim file /proc/vek/qoe_config 'j:pfs:[[1, 2]]'
  > qos get-qoe-profile-settings
  > vek-sim file /proc/vek/qoe_config "j:pfs:$(printf '%0300d' 0)"
  > qos get-qoe-profile-settings
  > vek-sim file /proc/vek/qoe_config 'j:pfs:'
  > qos get-qoe-profile-settings --json
  > vek-sim file /proc/vek/qoe_config 'j:hyqos_rate:[]'
  > qos get-qoe-profile-settings --json
  > vek-sim missing /proc/vek/qoe_config
  > qos get-qoe-profile-settings --json
  > vek-sim reset
  > EOF
  vektool qos get-qoe-profile-settings
  [[50,50],[50,50],[50,50],[50,50],[50,50],[50,50],[50,50],[50,50]]
  [exit 0]
  vektool qos set-qoe-profile-setting gaming
  [exit 0]
    write /proc/vek/qoe_config 60 2 0 0
  vektool qos set-qoe-profile-setting wfh --sensitivity 30 --intensity=0x10 --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 60 3 30 16
  vektool qos set-qoe-profile-setting --intensity 5 custom
  [exit 0]
    write /proc/vek/qoe_config 60 7 0 5
  vektool qos set-qoe-profile-setting ai --sensitivity=-3
  [exit 0]
    write /proc/vek/qoe_config 60 1 -3 0
  vektool qos set-qoe-profile-setting ai --sensitivity -- -3
  error: option `--sensitivity` expects an integer value
  [exit 1]
  vektool qos set-qoe-profile-setting Gaming --json
  {"return":1,"detail":"Wrong profile: Gaming. (none, ai, gaming, wfh, streaming, office)"}
  [exit 1]
  vektool qos set-qoe-profile-setting --sensitivity 1
  Wrong arg number: 1
  [exit 1]
  vektool qos set-qoe-profile-setting gaming --sensitivity x
  error: option `--sensitivity` expects an integer value
  [exit 1]
  vektool qos get-qoe-profile-settings --json
  {"return":0,"result":"[[50,50],[-3,0],[0,0],[30,16],[50,50],[50,50],[50,50],[0,5]]"}
  [exit 0]
  vektool qos set-qoe-profile-settings '[[1,2],[3,4]]' --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 60 0 1 2
    write /proc/vek/qoe_config 60 1 3 4
  vektool qos set-qoe-profile-settings '[[1,2],[3,4],5]' --json
  [exit 1]
    write /proc/vek/qoe_config 60 0 1 2
    write /proc/vek/qoe_config 60 1 3 4
  vektool qos set-qoe-profile-settings '[[1,2],[3]]'
  [exit 1]
    write /proc/vek/qoe_config 60 0 1 2
  vektool qos set-qoe-profile-settings '[{"a":1,"b":2}]'
  [exit 1]
  vektool qos set-qoe-profile-settings '[]' --json
  {"return":0}
  [exit 0]
  vektool qos set-qoe-profile-settings '[[1.9,-2.7],["x",null]]'
  [exit 0]
    write /proc/vek/qoe_config 60 0 1 -2
    write /proc/vek/qoe_config 60 1 0 0
  vektool qos set-qoe-profile-settings '[[1e300,-1e300],[2147483648.5,-2147483649]]'
  [exit 0]
    write /proc/vek/qoe_config 60 0 2147483647 -2147483648
    write /proc/vek/qoe_config 60 1 2147483647 -2147483648
  vektool qos set-qoe-profile-settings '[[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]'
  [exit 0]
    write /proc/vek/qoe_config 60 0 0 0
    write /proc/vek/qoe_config 60 1 0 0
    write /proc/vek/qoe_config 60 2 0 0
    write /proc/vek/qoe_config 60 3 0 0
    write /proc/vek/qoe_config 60 4 0 0
    write /proc/vek/qoe_config 60 5 0 0
    write /proc/vek/qoe_config 60 6 0 0
    write /proc/vek/qoe_config 60 7 0 0
  vektool qos set-qoe-profile-settings '[[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]' --json
  {"return":1,"detail":"Invalid input: 9, [[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0],[0,0]]"}
  [exit 1]
  vektool qos set-qoe-profile-settings '{"a":[1,2]}' --json
  {"return":1,"detail":"Wrong json format: {"a":[1,2]}"}
  [exit 1]
  vektool qos set-qoe-profile-settings '[[1,2]' --json
  {"return":1,"detail":"Wrong json format: [[1,2]"}
  [exit 1]
  vektool qos set-qoe-profile-settings
  Wrong arg number: 1
  [exit 1]
  vektool qos get-qoe-profile-settings
  [[1,
  [exit 0]
  vektool qos get-qoe-profile-settings
  000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000
  [exit 0]
  vektool qos get-qoe-profile-settings --json
  {"return":1,"detail":"Failed to read file: no algorithm field."}
  [exit 1]
  vektool qos get-qoe-profile-settings --json
  {"return":1,"detail":"Failed to read file: null."}
  [exit 1]
  vektool qos get-qoe-profile-settings --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]

Optimisation and bandwidth control: engine JSON printed as it comes (JSON
mode without a line end); set-qoe-bwctl takes a JSON object only and passes
its text on, cut to the 512-byte verb.

  $ cases <<'EOF'
  > qos get-qoe-optimization
  > qos get-qoe-optimization --json
  > qos enable-qoe-bwctl
  > qos get-qoe-bwctl --json
  > qos disable-qoe-bwctl --json
  > qos set-qoe-bwctl '{"up":100, "down":200}' --json
  > qos get-qoe-bwctl
  > qos set-qoe-bwctl "{\"k\":\"$(printf '%0520d' 0)\"}"
  > qos set-qoe-bwctl '[1]' --json
  > qos set-qoe-bwctl 'up=1'
  > qos set-qoe-bwctl '"x"'
  > qos set-qoe-bwctl --json
  > vek-sim file /proc/vek/qoe_optimization ''
  > qos get-qoe-optimization --json
  > vek-sim file /proc/vek/qoe_optimization '   '
  > qos get-qoe-optimization --json
  > vek-sim missing /proc/vek/qoe_config2
  > qos get-qoe-bwctl --json
  > qos enable-qoe-bwctl --json
  > vek-sim unreadable /proc/vek/qoe_optimization
  > qos get-qoe-optimization
  > vek-sim reset
  > EOF
  vektool qos get-qoe-optimization
  {"state":1,"score":87,"flows":12}
  [exit 0]
  vektool qos get-qoe-optimization --json
  {"return":0,"result":{"state":1,"score":87,"flows":12}}[exit 0]
  vektool qos enable-qoe-bwctl
  [exit 0]
    write /proc/vek/qoe_config2 set-para {"enabled":1}
  vektool qos get-qoe-bwctl --json
  {"return":0,"result":{"enabled":1,"up":0,"down":0}}[exit 0]
  vektool qos disable-qoe-bwctl --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config2 set-para {"enabled":0}
  vektool qos set-qoe-bwctl '{"up":100, "down":200}' --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config2 set-para {"up":100, "down":200}
  vektool qos get-qoe-bwctl
  {"enabled":0,"up":100,"down":200}
  [exit 0]
  vektool qos set-qoe-bwctl "{\"k\":\"$(printf '%0520d' 0)\"}"
  [exit 0]
    write /proc/vek/qoe_config2 set-para {"k":"0000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000
  vektool qos set-qoe-bwctl '[1]' --json
  {"return":1,"detail":"Wrong json format: [1]"}
  [exit 1]
  vektool qos set-qoe-bwctl 'up=1'
  Wrong json format: up=1
  [exit 1]
  vektool qos set-qoe-bwctl '"x"'
  Wrong json format: "x"
  [exit 1]
  vektool qos set-qoe-bwctl --json
  {"return":1,"detail":"Wrong arg number: 1"}
  [exit 1]
  vektool qos get-qoe-optimization --json
  {"return":1,"detail":"Failed to read file: invalid."}
  [exit 1]
  vektool qos get-qoe-optimization --json
  {"return":0,"result":}[exit 0]
  vektool qos get-qoe-bwctl --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]
  vektool qos enable-qoe-bwctl --json
  {"return":0}
  [exit 0]
  vektool qos get-qoe-optimization
  Failed to read file.
  [exit 1]

DSCP: the "dscp" member of conn_ctx. A mapping is any JSON text, passed on
cut to the 512-byte verb. Content that is not JSON is reported with the
command's first argument, and exits 0 as a missing member does; an
unreadable or empty file exits 1 silently.

  $ cases <<'EOF'
  > qos get-dscp
  > qos get-dscp --json
  > qos enable-dscp --json
  > qos get-dscp
  > qos disable-dscp
  > qos set-dscp-mapping '{"ef":5}' --json
  > qos set-dscp-mapping '[1]'
  > qos set-dscp-mapping 7
  > qos set-dscp-mapping '{bad' --json
  > qos set-dscp-mapping
  > qos set-dscp-mapping "[\"$(printf '%0600d' 0)\"]"
  > qos get-dscp --json
  > vek-sim file /proc/vek/conn_ctx '{"DSCP":[1]}'
  > qos get-dscp --json
  > vek-sim file /proc/vek/conn_ctx '{"dr":[]}'
  > qos get-dscp --json
  > vek-sim file /proc/vek/conn_ctx 'not json'
  > qos get-dscp --json
  > qos get-dscp extra
  > vek-sim file /proc/vek/conn_ctx ''
  > qos get-dscp --json
  > vek-sim unreadable /proc/vek/conn_ctx
  > qos get-dscp
  > vek-sim reset
  > EOF
  vektool qos get-dscp
  {"tagging":0,"mapping":{}}
  [exit 0]
  vektool qos get-dscp --json
  {"return":0,"result":{"tagging":0,"mapping":{}}}
  [exit 0]
  vektool qos enable-dscp --json
  {"return":0}
  [exit 0]
    write /proc/vek/conn_ctx set-dscp-tagging 1
  vektool qos get-dscp
  {"tagging":1,"mapping":{}}
  [exit 0]
  vektool qos disable-dscp
  [exit 0]
    write /proc/vek/conn_ctx set-dscp-tagging 0
  vektool qos set-dscp-mapping '{"ef":5}' --json
  {"return":0}
  [exit 0]
    write /proc/vek/conn_ctx set-dscp-mapping {"ef":5}
  vektool qos set-dscp-mapping '[1]'
  [exit 0]
    write /proc/vek/conn_ctx set-dscp-mapping [1]
  vektool qos set-dscp-mapping 7
  [exit 0]
    write /proc/vek/conn_ctx set-dscp-mapping 7
  vektool qos set-dscp-mapping '{bad' --json
  {"return":1,"detail":"Wrong json format: {bad"}
  [exit 1]
  vektool qos set-dscp-mapping
  Wrong arg number: 1
  [exit 1]
  vektool qos set-dscp-mapping "[\"$(printf '%0600d' 0)\"]"
  [exit 0]
    write /proc/vek/conn_ctx set-dscp-mapping ["000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000
  vektool qos get-dscp --json
  {"return":0,"result":{"tagging":0,"mapping":7}}
  [exit 0]
  vektool qos get-dscp --json
  {"return":0,"result":[1]}
  [exit 0]
  vektool qos get-dscp --json
  {"return":1,"detail":"Unsupported"}
  [exit 0]
  vektool qos get-dscp --json
  {"return":1,"detail":"Wrong json format: (null)"}
  [exit 0]
  vektool qos get-dscp extra
  Wrong json format: extra
  [exit 0]
  vektool qos get-dscp --json
  [exit 1]
  vektool qos get-dscp
  [exit 1]

HyQoS active flag and queue rates. Checks of set-hyqos-queue run in order:
the word count, the direction (0 or 1, compared unsigned), the queue id, the
rate text, then the queue count read afresh and the id against it.

  $ cases <<'EOF'
  > qos get-hyqos-active
  > qos set-hyqos-active 1 --json
  > qos get-hyqos-active --json
  > qos set-hyqos-active x
  > qos set-hyqos-active
  > qos set-hyqos-queue 1 7 100 --json
  > qos set-hyqos-queue 0 0 0
  > qos set-hyqos-queue 1 x 100
  > qos set-hyqos-queue 1 8 100 --json
  > qos set-hyqos-queue 2 0 100
  > qos set-hyqos-queue -- -1 0 100
  > qos set-hyqos-queue -1 0 100
  > qos set-hyqos-queue 4294967297 0 1
  > qos set-hyqos-queue -- 5 -1 -1
  > qos set-hyqos-queue -- 0 -2 -1
  > qos set-hyqos-queue -- 0 1 -5x
  > qos set-hyqos-queue 0 1 --json
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:3'
  > qos set-hyqos-queue 0 3 10
  > qos set-hyqos-queue 0 2 10
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:x'
  > qos set-hyqos-queue 0 0 10 --json
  > qos set-hyqos-queue -- 0 -1 10 --json
  > vek-sim reset
  > qos reset-hyqos-queue --json
  > qos reset-hyqos-queue 5 99
  > qos reset-hyqos-queue 1 --json
  > qos reset-hyqos-queue -- -1 0
  > qos reset-hyqos-queue -- 0 -3
  > vek-sim file /proc/vek/qos_ctrl 'j:hyqos:1'
  > qos get-hyqos-active --json
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:8'
  > qos get-hyqos-active --json
  > vek-sim unreadable /proc/vek/qos_ctrl
  > qos get-hyqos-active
  > vek-sim reset
  > EOF
  vektool qos get-hyqos-active
  0
  [exit 0]
  vektool qos set-hyqos-active 1 --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 2 1
  vektool qos get-hyqos-active --json
  {"return":0,"result":1}[exit 0]
  vektool qos set-hyqos-active x
  [exit 0]
    write /proc/vek/qoe_config 2 0
  vektool qos set-hyqos-active
  Wrong arg number: 1
  [exit 1]
  vektool qos set-hyqos-queue 1 7 100 --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 501 1 7 100
  vektool qos set-hyqos-queue 0 0 0
  [exit 0]
    write /proc/vek/qoe_config 501 0 0 0
  vektool qos set-hyqos-queue 1 x 100
  [exit 0]
    write /proc/vek/qoe_config 501 1 0 100
  vektool qos set-hyqos-queue 1 8 100 --json
  {"return":1,"detail":"Wrong arg: 8"}
  [exit 1]
  vektool qos set-hyqos-queue 2 0 100
  Wrong arg: 2
  [exit 1]
  vektool qos set-hyqos-queue -- -1 0 100
  Wrong arg: -1
  [exit 1]
  vektool qos set-hyqos-queue -1 0 100
  Wrong arg number: 3
  [exit 1]
  vektool qos set-hyqos-queue 4294967297 0 1
  Wrong arg: 2147483647
  [exit 1]
  vektool qos set-hyqos-queue -- 5 -1 -1
  Wrong arg: 5
  [exit 1]
  vektool qos set-hyqos-queue -- 0 -2 -1
  Wrong arg: -2
  [exit 1]
  vektool qos set-hyqos-queue -- 0 1 -5x
  Wrong arg: -5x
  [exit 1]
  vektool qos set-hyqos-queue 0 1 --json
  {"return":1,"detail":"Wrong arg number: 3"}
  [exit 1]
  vektool qos set-hyqos-queue 0 3 10
  Wrong arg: 3
  [exit 1]
  vektool qos set-hyqos-queue 0 2 10
  [exit 0]
    write /proc/vek/qoe_config 501 0 2 10
  vektool qos set-hyqos-queue 0 0 10 --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]
  vektool qos set-hyqos-queue -- 0 -1 10 --json
  Wrong arg: -1
  [exit 1]
  vektool qos reset-hyqos-queue --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 510
  vektool qos reset-hyqos-queue 5 99
  [exit 0]
    write /proc/vek/qoe_config 511 5 99
  vektool qos reset-hyqos-queue 1 --json
  {"return":1,"detail":"Wrong arg number: 2"}
  [exit 1]
  vektool qos reset-hyqos-queue -- -1 0
  Wrong arg: -1
  [exit 1]
  vektool qos reset-hyqos-queue -- 0 -3
  Wrong arg: -3
  [exit 1]
  vektool qos get-hyqos-active --json
  {"return":1,"detail":"Failed to read information from: j:hyqos:1"}
  [exit 1]
  vektool qos get-hyqos-active --json
  {"return":1,"detail":"Failed to operate proc: data null."}
  [exit 1]
  vektool qos get-hyqos-active
  Failed to operate proc.
  [exit 1]

The queue table comes as the engine keeps it; JSON mode has no line end.

  $ vektool qos set-hyqos-queue 1 7 100; vek-sim journal --clear
  $ vektool qos get-hyqos-queues --json | cut -c1-60; echo
  {"return":0,"result":[[["",1000],["",1000],["",1000],["",100
  
  $ vektool qos get-hyqos-queues | tail -c 28
  ,1000],["",1000],["",100]]]

  $ cases <<'EOF'
  > vek-sim file /proc/vek/qoe_config 'j:pfs:[]'
  > qos get-hyqos-queues --json
  > vek-sim file /proc/vek/qoe_config 'j:hyqos_rate:  [1]  '
  > qos get-hyqos-queues --json
  > vek-sim unreadable /proc/vek/qoe_config
  > qos get-hyqos-queues
  > vek-sim reset
  > EOF
  vektool qos get-hyqos-queues --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]
  vektool qos get-hyqos-queues --json
  {"return":0,"result":[1]}[exit 0]
  vektool qos get-hyqos-queues
  Failed to read file.
  [exit 1]

set-hyqos-queues: one [text, rate] entry per hardware queue and direction.
The JSON is parsed before the queue count is read; the entry counts are all
checked before anything is written; a bad entry stops the writes where they
stand, with no report and status 1.

  $ cases <<'EOF'
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:1'
  > qos set-hyqos-queues '[[["a",10]],[["b",20]]]' --json
  > qos set-hyqos-queues '[[["up link",1.9]]]'
  > qos set-hyqos-queues '[[["a","x"]]]'
  > qos set-hyqos-queues '[[["a",1e12]]]'
  > qos set-hyqos-queues '[]' --json
  > qos set-hyqos-queues '[[["a",1]],[["b",2]],[["c",3]]]' --json
  > qos set-hyqos-queues '[[["a",1]],[]]' --json
  > qos set-hyqos-queues '[[["a",1]],[["b",2],["c",3]]]'
  > qos set-hyqos-queues '[[["a",1]],"x"]'
  > qos set-hyqos-queues '[{"q":["a",1]}]'
  > qos set-hyqos-queues '[[["a",1]],[[5,2]]]'
  > qos set-hyqos-queues '[[["a",1]],[["b"]]]' --json
  > qos set-hyqos-queues '[[["a",1]],[{"t":"b","r":2}]]'
  > qos set-hyqos-queues '{"a":1}' --json
  > qos set-hyqos-queues '[[' --json
  > qos set-hyqos-queues
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:2'
  > qos set-hyqos-queues '[[' --json
  > qos set-hyqos-queues '[]' --json
  > qos set-hyqos-queues '[1,2,3]' --json
  > vek-sim reset
  > EOF
  vektool qos set-hyqos-queues '[[["a",10]],[["b",20]]]' --json
  {"return":0}
  [exit 0]
    write /proc/vek/qoe_config 501 0 0 10 a
    write /proc/vek/qoe_config 501 1 0 20 b
  vektool qos set-hyqos-queues '[[["up link",1.9]]]'
  [exit 0]
    write /proc/vek/qoe_config 501 0 0 1 up link
  vektool qos set-hyqos-queues '[[["a","x"]]]'
  [exit 0]
    write /proc/vek/qoe_config 501 0 0 0 a
  vektool qos set-hyqos-queues '[[["a",1e12]]]'
  [exit 0]
    write /proc/vek/qoe_config 501 0 0 2147483647 a
  vektool qos set-hyqos-queues '[]' --json
  {"return":0}
  [exit 0]
  vektool qos set-hyqos-queues '[[["a",1]],[["b",2]],[["c",3]]]' --json
  {"return":1,"detail":"Invalid input: [[["a",1]],[["b",2]],[["c",3]]]"}
  [exit 1]
  vektool qos set-hyqos-queues '[[["a",1]],[]]' --json
  [exit 1]
  vektool qos set-hyqos-queues '[[["a",1]],[["b",2],["c",3]]]'
  [exit 1]
  vektool qos set-hyqos-queues '[[["a",1]],"x"]'
  [exit 1]
  vektool qos set-hyqos-queues '[{"q":["a",1]}]'
  [exit 1]
  vektool qos set-hyqos-queues '[[["a",1]],[[5,2]]]'
  [exit 1]
    write /proc/vek/qoe_config 501 0 0 1 a
  vektool qos set-hyqos-queues '[[["a",1]],[["b"]]]' --json
  [exit 1]
    write /proc/vek/qoe_config 501 0 0 1 a
  vektool qos set-hyqos-queues '[[["a",1]],[{"t":"b","r":2}]]'
  [exit 1]
    write /proc/vek/qoe_config 501 0 0 1 a
  vektool qos set-hyqos-queues '{"a":1}' --json
  {"return":1,"detail":"Wrong json format: {"a":1}"}
  [exit 1]
  vektool qos set-hyqos-queues '[[' --json
  {"return":1,"detail":"Wrong json format: [["}
  [exit 1]
  vektool qos set-hyqos-queues
  Wrong arg number: 1
  [exit 1]
  vektool qos set-hyqos-queues '[[' --json
  {"return":1,"detail":"Wrong json format: [["}
  [exit 1]
  vektool qos set-hyqos-queues '[]' --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]
  vektool qos set-hyqos-queues '[1,2,3]' --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]

The hardware queue count: plain mode prints it and exits 1, JSON mode exits 0.

  $ cases <<'EOF'
  > qos get-hw-queue-num
  > qos get-hw-queue-num --json
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:0'
  > qos get-hw-queue-num --json
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:-1'
  > qos get-hw-queue-num --json
  > vek-sim file /proc/vek/qos_ctrl 'd:qnum:x'
  > qos get-hw-queue-num --json
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:1'
  > qos get-hw-queue-num
  > vek-sim unreadable /proc/vek/qos_ctrl
  > qos get-hw-queue-num --json
  > vek-sim reset
  > EOF
  vektool qos get-hw-queue-num
  8
  [exit 1]
  vektool qos get-hw-queue-num --json
  {"return":0,"result":8}[exit 0]
  vektool qos get-hw-queue-num --json
  {"return":0,"result":0}[exit 0]
  vektool qos get-hw-queue-num --json
  {"return":1,"detail":"Failed to read file: queue number(-1) is invalid."}
  [exit 1]
  vektool qos get-hw-queue-num --json
  {"return":1,"detail":"Failed to read file: no queue number field."}
  [exit 1]
  vektool qos get-hw-queue-num
  Failed to read file: null.
  [exit 1]
  vektool qos get-hw-queue-num --json
  {"return":1,"detail":"Failed to read file."}
  [exit 1]

HyQoS devices. get-hyqos-devs reports a failure with code 0 and exits 1.
add-hyqos-devs checks every entry before it writes the first; its checks
after the parse report 1 and exit 0, and a wrong item count says nothing.
del-hyqos-devs deletes one entry at a time, so a bad entry leaves the earlier
deletions made.

  $ cases <<'EOF'
  > qos get-hyqos-devs
  > qos get-hyqos-devs --json
  > qos add-hyqos-devs '[["00:11:22:33:44:55",1,2],["AA-BB-CC-DD-EE-FF",7,0]]' --json
  > qos get-hyqos-devs
  > qos add-hyqos-devs '[]' --json
  > qos add-hyqos-devs '[["00:11:22:33:44:55",1,2],["bad",1,1]]' --json
  > qos add-hyqos-devs '[[5,1,1]]'
  > qos add-hyqos-devs '[["bad",9,9]]'
  > qos add-hyqos-devs '[["00:11:22:33:44:55",9,-1]]'
  > qos add-hyqos-devs '[["00:11:22:33:44:55",8,0]]' --json
  > qos add-hyqos-devs '[["00:11:22:33:44:55",0,-1]]'
  > qos add-hyqos-devs '[["00:11:22:33:44:55",0,1e300]]'
  > qos add-hyqos-devs '[["00:11:22:33:44:55",1]]' --json
  > qos add-hyqos-devs '[["00:11:22:33:44:55",1,2,3]]' --json
  > qos add-hyqos-devs '[{"m":"00:11:22:33:44:55","u":1,"d":2}]' --json
  > qos add-hyqos-devs '[["001122334455",1.9,"x"]]'
  > qos add-hyqos-devs "[$(for i in $(seq 65); do printf '["00:11:22:33:44:55",0,0],'; done | sed 's/,$//')]" --json
  > qos add-hyqos-devs "[$(for i in $(seq 63); do printf '["00:11:22:33:44:55",0,0],'; done)[\"bad\",0,0]]" --json
  > qos add-hyqos-devs "[[\"$(printf '%0600d' 0)\",0,0]]" --json
  > qos add-hyqos-devs '{"a":1}' --json
  > qos add-hyqos-devs '[[' --json
  > qos add-hyqos-devs
  > vek-sim file /proc/vek/qos_ctrl 'd:algorithm:2'
  > qos add-hyqos-devs '[[' --json
  > qos add-hyqos-devs '{"a":1}' --json
  > vek-sim reset
  > qos del-hyqos-devs --json
  > qos del-hyqos-devs '["00:11:22:33:44:55","bad"]' --json
  > qos del-hyqos-devs '["66:77:88:99:aa:bb",1]'
  > qos del-hyqos-devs '[]'
  > qos del-hyqos-devs '"00:11:22:33:44:55"' --json
  > qos del-hyqos-devs 'x'
  > vek-sim file /proc/vek/dbdev 'j:defq:[0,0]'
  > qos get-hyqos-devs --json
  > qos get-hyqos-devs
  > vek-sim unreadable /proc/vek/dbdev
  > qos get-hyqos-devs --json
  > vek-sim reset
  > EOF
  vektool qos get-hyqos-devs
  [["00:11:22:33:44:55",0,0],["66:77:88:99:aa:bb",0,0]]
  [exit 0]
  vektool qos get-hyqos-devs --json
  {"return":0,"result":[["00:11:22:33:44:55",0,0],["66:77:88:99:aa:bb",0,0]]}[exit 0]
  vektool qos add-hyqos-devs '[["00:11:22:33:44:55",1,2],["AA-BB-CC-DD-EE-FF",7,0]]' --json
  {"return":0}
  [exit 0]
    write /proc/vek/dbdev 10 00:11:22:33:44:55 1 2
    write /proc/vek/dbdev 10 AA-BB-CC-DD-EE-FF 7 0
  vektool qos get-hyqos-devs
  [["00:11:22:33:44:55",1,2],["66:77:88:99:aa:bb",0,0],["aa:bb:cc:dd:ee:ff",7,0]]
  [exit 0]
  vektool qos add-hyqos-devs '[]' --json
  {"return":0}
  [exit 0]
  vektool qos add-hyqos-devs '[["00:11:22:33:44:55",1,2],["bad",1,1]]' --json
  {"return":1,"detail":"Invalid mac: bad"}
  [exit 0]
  vektool qos add-hyqos-devs '[[5,1,1]]'
  Invalid mac: null
  [exit 0]
  vektool qos add-hyqos-devs '[["bad",9,9]]'
  Invalid mac: bad
  [exit 0]
  vektool qos add-hyqos-devs '[["00:11:22:33:44:55",9,-1]]'
  Invalid queue id: 9
  [exit 0]
  vektool qos add-hyqos-devs '[["00:11:22:33:44:55",8,0]]' --json
  {"return":1,"detail":"Invalid queue id: 8"}
  [exit 0]
  vektool qos add-hyqos-devs '[["00:11:22:33:44:55",0,-1]]'
  Invalid queue id: -1
  [exit 0]
  vektool qos add-hyqos-devs '[["00:11:22:33:44:55",0,1e300]]'
  Invalid queue id: 2147483647
  [exit 0]
  vektool qos add-hyqos-devs '[["00:11:22:33:44:55",1]]' --json
  [exit 0]
  vektool qos add-hyqos-devs '[["00:11:22:33:44:55",1,2,3]]' --json
  [exit 0]
  vektool qos add-hyqos-devs '[{"m":"00:11:22:33:44:55","u":1,"d":2}]' --json
  [exit 0]
  vektool qos add-hyqos-devs '[["001122334455",1.9,"x"]]'
  [exit 0]
    write /proc/vek/dbdev 10 001122334455 1 0
  vektool qos add-hyqos-devs "[$(for i in $(seq 65); do printf '["00:11:22:33:44:55",0,0],'; done | sed 's/,$//')]" --json
  {"return":1,"detail":"Can not support devices number: 65"}
  [exit 0]
  vektool qos add-hyqos-devs "[$(for i in $(seq 63); do printf '["00:11:22:33:44:55",0,0],'; done)[\"bad\",0,0]]" --json
  {"return":1,"detail":"Invalid mac: bad"}
  [exit 0]
  vektool qos add-hyqos-devs "[[\"$(printf '%0600d' 0)\",0,0]]" --json
  {"return":1,"detail":"Invalid mac: 000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000000"}
  [exit 0]
  vektool qos add-hyqos-devs '{"a":1}' --json
  {"return":1,"detail":"Wrong json format: {"a":1}"}
  [exit 0]
  vektool qos add-hyqos-devs '[[' --json
  {"return":1,"detail":"Wrong json format: [["}
  [exit 1]
  vektool qos add-hyqos-devs
  Wrong arg number: 1
  [exit 1]
  vektool qos add-hyqos-devs '[[' --json
  {"return":1,"detail":"Wrong json format: [["}
  [exit 1]
  vektool qos add-hyqos-devs '{"a":1}' --json
  {"return":1,"detail":"Failed to read file."}
  [exit 0]
  vektool qos del-hyqos-devs --json
  {"return":0}
  [exit 0]
    write /proc/vek/dbdev 6
  vektool qos del-hyqos-devs '["00:11:22:33:44:55","bad"]' --json
  {"return":1,"detail":"Invalid mac: bad"}
  [exit 0]
    write /proc/vek/dbdev 7 00:11:22:33:44:55
  vektool qos del-hyqos-devs '["66:77:88:99:aa:bb",1]'
  Invalid mac: null
  [exit 0]
    write /proc/vek/dbdev 7 66:77:88:99:aa:bb
  vektool qos del-hyqos-devs '[]'
  [exit 0]
  vektool qos del-hyqos-devs '"00:11:22:33:44:55"' --json
  {"return":1,"detail":"Wrong json format: "00:11:22:33:44:55""}
  [exit 0]
  vektool qos del-hyqos-devs 'x'
  Wrong json format: x
  [exit 1]
  vektool qos get-hyqos-devs --json
  {"return":0,"detail":"Failed to read file."}
  [exit 1]
  vektool qos get-hyqos-devs
  Failed to read file.
  [exit 1]
  vektool qos get-hyqos-devs --json
  {"return":0,"detail":"Failed to read file."}
  [exit 1]
