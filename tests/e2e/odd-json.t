Odd JSON from the engine and its service: numbers past 32 bits, nesting
past what cJSON parses, keys that differ only in case, repeated keys. cJSON
looks keys up without regard to case and takes the first match, and keeps
numbers as doubles; the tool holds a number to its 32-bit int (the gateway's
answer on every build) and never crashes. A number too large for a double
(1e400) is infinite, which cJSON prints as null.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

The limiter's document: state numbers past int are held at its ends, the
rate pair is copied as the engine wrote it, and of two keys that differ only
in case (or two equal keys) the first one counts.

  $ vek-sim file /proc/vek/limiter_ctrl '{"s":5e9,"mr":[{"s":-1e400,"m":"aa:bb:cc:dd:ee:ff","r":[5e9,1e400]}],"ir":[{"S":7,"s":1,"A":"x","a":"10.0.0.0/8","r":[1,2]}],"vr":[]}'
  $ vektool limiter get
  {"s":2147483647,"mr":[{"s":-2147483648,"m":"aa:bb:cc:dd:ee:ff","r":[5000000000,null]}],"ir":[{"s":7,"a":"x","r":[1,2]}],"vr":[]}
  $ vek-sim file /proc/vek/limiter_ctrl '{"mr":[{"m":"a"}],"MR":[{"m":"b"}],"mr":[{"m":"c"}],"s":1,"s":2}'
  $ vektool limiter get
  {"s":1,"mr":[{"s":0,"m":"a","r":[0,0]}],"ir":[],"vr":[]}

Rules that are no objects still get a template each; nesting past cJSON's
limit of 1000 is no JSON at all, and the empty document is printed.

  $ vek-sim file /proc/vek/limiter_ctrl '{"s":1,"mr":[1,null,"x",[],{"m":7,"s":"9"}],"ir":{"a":"y"}}'
  $ vektool limiter get --json
  {"return":0,"result":{"s":1,"mr":[{"s":0,"m":"","r":[0,0]},{"s":0,"m":"","r":[0,0]},{"s":0,"m":"","r":[0,0]},{"s":0,"m":"","r":[0,0]},{"s":0,"m":"","r":[0,0]}],"ir":[],"vr":[]}}
  $ vek-sim file /proc/vek/limiter_ctrl '{"s":1,"mr":[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]]}'
  $ vektool limiter get
  {"s":0,"mr":[],"ir":[],"vr":[]}

The engine's switches and rules: "ec" of 5e9 is on, 0.5 is off (toward
zero); "et" is held to int; rules past the eight slots are left out, and a
rule that is no pair gives zeros.

  $ vek-sim file /proc/vek/fc_ctrl '{"EC":0,"ec":5e9}'
  $ vektool vek status | grep -o '"cloud":[0-9]*'
  "cloud":0
  $ vek-sim file /proc/vek/fc_ctrl '{"ec":0.5}'
  $ vektool vek status | grep -o '"cloud":[0-9]*'
  "cloud":0
  $ vek-sim file /proc/vek/fc_ctrl '{"ec":-1e400}'
  $ vektool vek status | grep -o '"cloud":[0-9]*'
  "cloud":1
  $ vek-sim file /proc/vek/dst_ctrl '{"et":5e9,"dr":[[1,2],[3,4,5],7,[],[5e9,-5e9],[6,6],[7,7],[8,8],[9,9],[10,10]]}'
  $ vektool vek get-cache-status
  {"cache":{"enable_ttl":2147483647,"delete_rules":[[1,2],[3,4],[0,0],[0,0],[2147483647,-2147483648],[6,6],[7,7],[8,8]]}}

DSCP and the service's diagnostics: of "DSCP" and "dscp" the first is taken,
as cJSON finds it.

  $ vek-sim file /proc/vek/conn_ctx '{"DSCP":{"tagging":1},"dscp":{"tagging":0}}'
  $ vektool qos get-dscp
  {"tagging":1}
  $ vek-sim reply get-diag '{"Result":{"a":1},"result":2,"return":0}'
  $ vektool diag get; echo
  {"a":1}
