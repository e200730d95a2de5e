As root beside other callers: a file replaced becomes a regular file of mode
0644, a file read is one regular file read once, loads run one at a time.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ var="$R/usr/vek/var" && printf '#3,0,mail\n25:smtp\n' > "$R/tmp/new.id" && head -c 1000 /dev/urandom > "$R/tmp/new.xdb"
  $ cp /bin/true "$R/tmp/suid" && chmod 4755 "$R/tmp/suid"
  $ fresh() {
  >   find "$var" -mindepth 1 -maxdepth 1 ! -name app.xdb ! -name vek.xr -exec rm -rf {} +
  >   cp "$R/tmp/new.id" "$var/app.id" && cp "$R/tmp/new.xdb" "$var/vek.xdb" && vek-sim journal --clear
  > }

Whatever stands where app.id or vek.xdb goes (nothing, a setuid file, a link
to it, a FIFO, a directory holding a link), a regular file of mode 0644
takes its place under any umask; nothing is followed or written through.

  $ dir() { mkdir -p "$1/sub" && ln -s "$R/tmp/suid" "$1/sub/link"; }
  $ for plant in true "cp -p $R/tmp/suid" "ln -s $R/tmp/suid" mkfifo dir; do
  >   for file in app.id vek.xdb; do rm -rf "$var/$file" && $plant "$var/$file"; done
  >   a=$(umask 000; timeout 5 vektool sid load -f /tmp/new.id); b=$(umask 000; timeout 5 vektool xdn load -f /tmp/new.xdb --json)
  >   echo "$a $b [$?] $(stat -c '%a %F' "$var/app.id" "$var/vek.xdb" | paste -sd' ')"
  > done | uniq -c
        5 {"return":0,"appid_path":"/usr/vek/var/app.id"} {"return":1000} [0] 644 regular file 644 regular file
  $ cmp "$R/tmp/new.id" "$var/app.id" && cmp "$R/tmp/new.xdb" "$var/vek.xdb" && cmp /bin/true "$R/tmp/suid" && stat -c '%a %F' "$R/tmp/suid"
  4755 regular file
  $ ls -A "$var" | paste -sd' '
  app.id app.xdb vek.xdb vek.xr

A FIFO is an unreadable file at once (xdn load puts the default back), also
as app.id for reset-to-default; so is a link in a world-writable directory
(elsewhere links are followed), and an image past the kernel's signed 32-bit
size (4 GiB + 1 KiB, sparse) before anything reaches the engine.

  $ fresh && mkfifo "$R/tmp/fifo" && chmod 1777 "$R/tmp" && ln -s "$R/tmp/new.xdb" "$R/tmp/link.xdb"
  $ mkdir "$R/data" && ln -s "$R/tmp/new.xdb" "$R/data/link.xdb" && truncate -s 4294968320 "$R/tmp/huge.xdb"
  $ table <<'EOF'
  > sid load -f /tmp/fifo --json x: {"return":21} [0]
  > xdn load -f /tmp/fifo --json: [20] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <488 bytes>
  > iam set-rules -f /tmp/fifo --json: {"return":0} [0] -> write /proc/vek/pc_rule_import 0 -> run date +%z -> write /proc/vek/pc_tzoffset +0800\n
  > xdn load -f /tmp/link.xdb --json: [20] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <488 bytes>
  > sid load -f /tmp/link.xdb --json x: {"return":21} [0]
  > xdn load -f /data/link.xdb --json: {"return":1000} [0] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <488 bytes>
  > xdn load -f /tmp/huge.xdb --json: [20] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <488 bytes>
  > EOF
  $ rm "$var/app.id" "$R/tmp/huge.xdb" && mkfifo "$var/app.id" && vek-sim journal --clear
  $ timeout 10 vektool vek reset-to-default --json && vek-sim journal | grep -e appid -e 'kmod_.*_size'
  {"return":0}
  write /proc/vek/kctrl reset-appid-c6y
  write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00
  write /proc/kmod_xdn/sidxdb_size L\x04\x00\x00
  write /proc/kmod_xapp/xr_size ,\x01\x00\x00

A load killed (KILL, TERM, HUP) while copying 1 GiB leaves no file behind.

  $ fresh && truncate -s 1G "$R/tmp/big.id"
  $ for i in $(seq 30); do vektool sid load -f /tmp/big.id & sleep 0.02; kill -KILL $!; wait $!; done 2>/dev/null; true
  $ for sig in TERM HUP; do vektool sid load -f /tmp/big.id & sleep 0.05; kill -$sig $!; wait $!; echo "$sig $?"; done 2>/dev/null
  TERM 143
  HUP 129
  $ ls -A "$var" | paste -sd' ' && cmp "$R/tmp/new.id" "$var/app.id" && rm "$R/tmp/big.id"
  app.id app.xdb vek.xdb vek.xr

A source swapped while it streams to a slow engine changes nothing: what the
engine took becomes the default. Overlapping loads, rule loads and resets
run one after another (vektool.lock in the run directory), each whole.

  $ streaming() { i=0; until vek-sim journal | grep -q "$1"; do i=$((i + 1)); [ $i -lt 1000 ] || return 1; sleep 0.01; done; }
  $ same() { vek-sim image $1 | cmp - "$2" && cmp "$2" "$var/$3" && echo "$1 = ${2##*/} = $3"; }
  $ fresh && head -c 3000 /dev/urandom > "$R/tmp/a.xdb" && cp "$R/tmp/a.xdb" a.orig
  $ head -c 2000 /dev/urandom > b.orig && cp b.orig "$R/tmp/b.xdb" && vek-sim slow 50
  $ vektool xdn load -f /tmp/a.xdb --json & streaming grpxdb_import && mv "$R/tmp/b.xdb" "$R/tmp/a.xdb"; wait
  {"return":3000}
  $ same grpxdb a.orig vek.xdb
  grpxdb = a.orig = vek.xdb
  $ cp a.orig b.orig "$R/tmp/" && fresh
  $ vektool xdn load -f /tmp/a.orig --json > a.out & streaming grpxdb_import && vektool xdn load -f /tmp/b.orig --json; wait; cat a.out
  {"return":2000}
  {"return":3000}
  $ same grpxdb b.orig vek.xdb && vek-sim journal | grep -c grpxdb_clean && stat -c '%a %F' "$R/var/run/vek/vektool.lock"
  grpxdb = b.orig = vek.xdb
  2
  644 regular empty file
  $ printf 'rule-a-%04d\n' $(seq 300) > "$R/tmp/a.rules" && printf 'rule-b-%04d\n' $(seq 300) > "$R/tmp/b.rules"
  $ vektool iam set-rules -f /tmp/a.rules & streaming 'pc_rule_import rule' && vektool iam set-rules -f /tmp/b.rules --json; wait
  {"return":0}
  $ vek-sim cat /proc/vek/pc_rule_export | cmp - "$R/tmp/b.rules" && echo "b rules whole"
  b rules whole
  $ fresh
  $ vektool vek reset-to-default & streaming grpxdb_import && { vektool vek reset-to-default & vektool vek reset-to-default & }; wait
  $ vek-sim journal | grep -o -e reset-appid-c6y -e '[a-z]*db_size' -e 'xr_size' | paste -sd' '
  reset-appid-c6y grpxdb_size sidxdb_size xr_size reset-appid-c6y grpxdb_size sidxdb_size xr_size reset-appid-c6y grpxdb_size sidxdb_size xr_size
  $ same grpxdb "$var/vek.xdb" vek.xdb && same sidxdb "$var/app.xdb" app.xdb && same xr "$var/vek.xr" vek.xr
  grpxdb = vek.xdb = vek.xdb
  sidxdb = app.xdb = app.xdb
  xr = vek.xr = vek.xr
  $ vek-sim slow 0 && fresh

A caller holding the lock makes the next wait; without a run directory
there is no lock.

  $ flock "$R/var/run/vek/vektool.lock" sleep 1 & sleep 0.2; start=$(date +%s%N)
  $ vektool xdn load -f /tmp/new.xdb --json; wait; [ $(( ($(date +%s%N) - start) / 1000000 )) -ge 700 ] && echo waited
  {"return":1000}
  waited
  $ sed 's|^run = .*|run = /nowhere|' "$R/usr/vek/bin/vek.ini" > "$R/tmp/norun.ini"
  $ vektool xdn load -f /tmp/a.orig -i /tmp/norun.ini --json
  {"return":3000}
