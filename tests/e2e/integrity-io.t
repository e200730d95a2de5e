Faults and hostile files: a program that does not stop printing, links under
the world-writable /tmp, an unwritable result, an overlong socket path.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

`date +%z` is read to its first line: 3 MiB more cost no memory (peak under
128 MiB), and an endless one is stopped. /tmp/bs/bs.json is read only as a
regular file of one name in a real directory: a link (to a 0600 secret or a
good file), a second name, a linked /tmp/bs, a FIFO or a directory is a
missing file (-1, the empty topology).

  $ printf '{"secret":1}\n' > "$R/secret" && chmod 600 "$R/secret" && mkdir -p "$R/tmp/other"
  $ echo '{"bands":[]}' > "$R/tmp/other/t.json" && cp "$R/secret" "$R/tmp/other/bs.json"
  $ bs() { mkdir "$R/tmp/bs" && (cd "$R/tmp" && eval "$1"); }
  $ vek-sim tz +0800 3 && /usr/bin/python3 -c 'import resource, subprocess, sys; subprocess.run(sys.argv[1:]); print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss < 131072)' vektool iam set-rules -f /tmp/none
  True
  $ table <<'EOF'
  > vek-sim tz -0530 forever
  > iam set-rules -f /tmp/none --json: {"return":0} [0] -> write /proc/vek/pc_rule_import 0 -> run date +%z -> write /proc/vek/pc_tzoffset -0530\n
  > vek-sim tz +0800
  > vek-sim proc start dt_srv >/dev/null
  > vek-sim missing /tmp/bs && bs 'ln -s "$R/secret" bs/bs.json'
  > dt get --json: {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  > vek-sim missing /tmp/bs && bs 'ln -s ../other/t.json bs/bs.json'
  > dt get --json: {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  > vek-sim missing /tmp/bs && bs 'ln "$R/secret" bs/bs.json'
  > dt get --json: {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  > vek-sim missing /tmp/bs && bs 'rmdir bs && ln -s other bs'
  > dt get --json: {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  > vek-sim missing /tmp/bs && bs 'mkfifo bs/bs.json'
  > dt get --json: {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  > vek-sim missing /tmp/bs && bs 'mkdir bs/bs.json'
  > dt get --json: {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"} [0]
  > vek-sim proc stop dt_srv
  > EOF

An unwritten result (full device, closed output) exits 1 with the reason,
after the work is done: a load's byte count is its only sign of success.
Silent commands and help ignore write errors; programs run get /dev/null
for closed standard streams.

  $ head -c 1000 /dev/urandom > "$R/tmp/new.xdb"
  $ table <<'EOF'
  > xdn get --json >/dev/full: vektool: write error: No space left on device [1]
  > xdn get >&-: vektool: write error: Bad file descriptor [1]
  > mon get-conn-count block >&-: vektool: write error: Bad file descriptor [1]
  > mon clear-conn-count --json >/dev/full: vektool: write error: No space left on device [1] -> write /proc/vek/monitor clear
  > mon clear-conn-count >/dev/full: [0] -> write /proc/vek/monitor clear
  > mon clear-conn-count >&-: [0] -> write /proc/vek/monitor clear
  > vek start >&- <&-: [0] -> run vekctl vek on --wan eth0 --lan br0
  > nosuch get --json x >/dev/full: vektool: write error: No space left on device [1]
  > mon --help >/dev/full: [0]
  > mon -h >&-: [0]
  > xdn load -f /tmp/new.xdb --json >/dev/full: vektool: write error: No space left on device [1] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <488 bytes>
  > xdn get: {"return":0,"info":{"writable":0,"size":1000,"epoch":1700000001}} [0]
  > EOF

A socket path that does not fit a socket address (108 bytes) is not cut to
one naming another socket (its first 107 bytes do here): code 53.

  $ for size in 108 107; do
  >   run=/var/run/$(printf '%0*d' $((size - ${#R} - 18)) 0) && mkdir -p "$R$run" && echo "$size: $(printf %s "$R$run/vek.sock" | wc -c)"
  >   sed "s|^run = .*|run = $run|" "$R/usr/vek/bin/vek.ini" > "$R/tmp/long.ini"
  >   ln -s "$R/var/run/vek/vek.sock" "$R$run/vek.sock" && ln -s "$R/var/run/vek/vek.sock" "$R$run/vek.soc"
  >   vektool diag get --json -i /tmp/long.ini | cut -c1-48
  > done
  108: 108
  {"return":53,"detail":"Failed to read socket."}
  107: 107
  {"return":0,"result":{"uptime":86400,"cpu":7,"me
