vektool as root under faults and hostile files: a program that does not stop
printing, links planted under the world-writable /tmp, a result that cannot be
written, and a socket path too long for a socket address.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ peak_kb() { /usr/bin/python3 -c 'import resource, subprocess, sys; subprocess.run(sys.argv[1:]); print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)' "$@"; }

The output of `date +%z` is read up to its first line, then the pipe is
closed: 3 MiB of line ends after the offset cost no memory, and a date that
never stops (as `yes` would) is stopped.

  $ vek-sim tz +0800 3
  $ kb=$(peak_kb vektool iam set-rules -f /tmp/none) && [ "$kb" -lt 131072 ] && echo "under 128 MiB"
  under 128 MiB
  $ vek-sim journal && vek-sim journal --clear
  write /proc/vek/pc_rule_import 0
  run date +%z
  write /proc/vek/pc_tzoffset +0800\n
  $ vek-sim tz -0530 forever
  $ timeout 20 vektool iam set-rules -f /tmp/none --json; echo "[exit $?]"
  {"return":0}
  [exit 0]
  $ vek-sim journal && vek-sim journal --clear
  write /proc/vek/pc_rule_import 0
  run date +%z
  write /proc/vek/pc_tzoffset -0530\n
  $ vek-sim tz +0800

The topology file under /tmp is read only when /tmp/bs and bs.json are what
they seem: a regular file of one name in a real directory. Anything else
answers as a missing file does while the daemon runs (code -1, the empty
topology). The secret is a root file of mode 0600.

  $ vek-sim proc start dt_srv
  1187
  $ printf '{"secret":1}\n' > "$R/secret" && chmod 600 "$R/secret"
  $ while IFS= read -r scene; do
  >   rm -rf "$R/tmp/bs" "$R/tmp/other" && mkdir -p "$R/tmp/bs" "$R/tmp/other"
  >   (cd "$R/tmp" && eval "$scene") && echo "-- $scene" && vektool dt get --json
  > done <<'EOF'
  > echo '{"bands":[]}' > bs/bs.json
  > ln -s "$R/secret" bs/bs.json
  > echo '{"bands":[]}' > other/t.json && ln -s ../other/t.json bs/bs.json
  > ln "$R/secret" bs/bs.json
  > cp "$R/secret" other/bs.json && rmdir bs && ln -s other bs
  > mkfifo bs/bs.json
  > mkdir bs/bs.json
  > EOF
  -- echo '{"bands":[]}' > bs/bs.json
  {"return":0,"result":"{"state":1,"topology":{"bands":[]}}"}
  -- ln -s "$R/secret" bs/bs.json
  {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"}
  -- echo '{"bands":[]}' > other/t.json && ln -s ../other/t.json bs/bs.json
  {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"}
  -- ln "$R/secret" bs/bs.json
  {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"}
  -- cp "$R/secret" other/bs.json && rmdir bs && ln -s other bs
  {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"}
  -- mkfifo bs/bs.json
  {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"}
  -- mkdir bs/bs.json
  {"return":-1,"result":"{"state":1,"topology":{"bands":[],"stas":[]}}"}
  $ vek-sim proc stop dt_srv

A result line that cannot be written (a full device, a closed standard
output) is an error: exit status 1 and the reason on standard error. The
command still did its work. A command that prints nothing succeeds, and help
keeps ignoring write errors. A closed standard output (and input) reaches the
programs the tool runs as /dev/null, read-only: vek start's control program,
whose errors go to our standard output, still runs.

  $ cases <<'EOF'
  > xdn get --json >/dev/full
  > xdn get >&-
  > mon get-conn-count block >&-
  > mon clear-conn-count --json >/dev/full
  > mon clear-conn-count >/dev/full
  > mon clear-conn-count >&-
  > vek start >&- <&-
  > nosuch get --json x >/dev/full
  > mon --help >/dev/full
  > mon -h >&-
  > EOF
  vektool xdn get --json >/dev/full
  vektool: write error: No space left on device
  [exit 1]
  vektool xdn get >&-
  vektool: write error: Bad file descriptor
  [exit 1]
  vektool mon get-conn-count block >&-
  vektool: write error: Bad file descriptor
  [exit 1]
  vektool mon clear-conn-count --json >/dev/full
  vektool: write error: No space left on device
  [exit 1]
    write /proc/vek/monitor clear
  vektool mon clear-conn-count >/dev/full
  [exit 0]
    write /proc/vek/monitor clear
  vektool mon clear-conn-count >&-
  [exit 0]
    write /proc/vek/monitor clear
  vektool vek start >&- <&-
  [exit 0]
    run vekctl vek on --wan eth0 --lan br0
  vektool nosuch get --json x >/dev/full
  vektool: write error: No space left on device
  [exit 1]
  vektool mon --help >/dev/full
  [exit 0]
  vektool mon -h >&-
  [exit 0]

A load's byte count is its only sign of success: the image is in the engine,
but a caller that cannot be told so is told of the failure.

  $ head -c 1000 /dev/urandom > "$R/tmp/new.xdb"
  $ vektool xdn load -f /tmp/new.xdb --json >/dev/full; echo "[exit $?]"
  vektool: write error: No space left on device
  [exit 1]
  $ vektool xdn get
  {"return":0,"info":{"writable":0,"size":1000,"epoch":1700000001}}

A service socket path that does not fit a socket address whole is never cut
to one that might name another socket: it is an unreachable service (code
53). Here the path with the sysroot is 108 bytes, and both it and its first
107 bytes name the service; at 107 bytes it fits and is asked.

  $ long_run() { printf '/var/run/%0*d' $(( $1 - ${#R} - 18 )) 0; }
  $ for size in 108 107; do
  >   run=$(long_run $size) && mkdir -p "$R$run" && echo "-- $size: $(printf %s "$R$run/vek.sock" | wc -c)"
  >   sed "s|^run = .*|run = $run|" "$R/usr/vek/bin/vek.ini" > "$R/tmp/long.ini"
  >   ln -s "$R/var/run/vek/vek.sock" "$R$run/vek.sock" && ln -s "$R/var/run/vek/vek.sock" "$R$run/vek.soc"
  >   vektool cloud get -i /tmp/long.ini
  >   vektool diag get --json -i /tmp/long.ini
  > done
  -- 108: 108
  Failed to read socket.
  {"return":53,"detail":"Failed to read socket."}
  -- 107: 107
  {"return":0,"result":{"enabled":1,"state":"connected","server":"cloud.example.com","since":1700000000}}
  {"return":0,"result":{"uptime":86400,"cpu":7,"mem_free_kb":51234,"flows":128,"engine":"3.2.1"}}
