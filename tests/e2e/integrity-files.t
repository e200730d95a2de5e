vektool runs as root beside other callers: a file it replaces becomes a
regular file of mode 0644, what it reads is one regular file read once, and
the engine's imports and rule loads run one caller at a time.

  $ . "$TESTDIR/sim-env.sh"
  $ var="$R/usr/vek/var"
  $ seen() { vek-sim journal; vek-sim journal --clear; }
  $ kind() { stat -c '%a %F' "$@"; }
  $ printf '#3,0,mail\n25:smtp\n' > "$R/tmp/new.id"
  $ head -c 1000 /dev/urandom > "$R/tmp/new.xdb"
  $ cp /bin/true "$R/tmp/suid" && chmod 4755 "$R/tmp/suid"
  $ fresh() {
  >   find "$var" -mindepth 1 -maxdepth 1 ! -name app.xdb ! -name vek.xr -exec rm -rf {} +
  >   cp "$R/tmp/new.id" "$var/app.id" && cp "$R/tmp/new.xdb" "$var/vek.xdb"
  >   vek-sim journal --clear
  > }

Whatever stands where app.id or vek.xdb goes (nothing, a setuid file, a link
to one, a FIFO, a directory holding a link), a regular file of mode 0644
takes its place under any umask; nothing is followed or written through.

  $ plant() {
  >   rm -rf "$1"
  >   case $2 in
  >     setuid) cp "$R/tmp/suid" "$1" && chmod 4755 "$1" ;;
  >     link) ln -s "$R/tmp/suid" "$1" ;;
  >     fifo) mkfifo "$1" ;;
  >     dir) mkdir -p "$1/sub" && ln -s "$R/tmp/suid" "$1/sub/link" ;;
  >   esac
  > }
  $ for what in absent setuid link fifo dir; do
  >   plant "$var/app.id" $what
  >   out=$(umask 000; timeout 5 vektool sid load -f /tmp/new.id)
  >   echo "app.id $what: $out [$?] $(kind "$var/app.id")"
  >   plant "$var/vek.xdb" $what
  >   out=$(umask 000; timeout 5 vektool xdn load -f /tmp/new.xdb --json)
  >   echo "vek.xdb $what: $out [$?] $(kind "$var/vek.xdb")"
  > done
  app.id absent: {"return":0,"appid_path":"/usr/vek/var/app.id"} [0] 644 regular file
  vek.xdb absent: {"return":1000} [0] 644 regular file
  app.id setuid: {"return":0,"appid_path":"/usr/vek/var/app.id"} [0] 644 regular file
  vek.xdb setuid: {"return":1000} [0] 644 regular file
  app.id link: {"return":0,"appid_path":"/usr/vek/var/app.id"} [0] 644 regular file
  vek.xdb link: {"return":1000} [0] 644 regular file
  app.id fifo: {"return":0,"appid_path":"/usr/vek/var/app.id"} [0] 644 regular file
  vek.xdb fifo: {"return":1000} [0] 644 regular file
  app.id dir: {"return":0,"appid_path":"/usr/vek/var/app.id"} [0] 644 regular file
  vek.xdb dir: {"return":1000} [0] 644 regular file
  $ cmp "$R/tmp/new.id" "$var/app.id" && cmp "$R/tmp/new.xdb" "$var/vek.xdb" && echo replaced
  replaced
  $ kind "$R/tmp/suid"; cmp /bin/true "$R/tmp/suid" && echo "link target untouched"
  4755 regular file
  link target untouched
  $ ls -A "$var"
  app.id
  app.xdb
  vek.xdb
  vek.xr

Only a regular file is read: a FIFO answers at once as a file that cannot be
read (sid load 21, xdn load 20 with the default put back, iam set-rules
clears the rules and loads none), and so does a FIFO planted as app.id for
reset-to-default, which goes on with the databases.

  $ fresh
  $ mkfifo "$R/tmp/fifo"
  $ timeout 5 vektool sid load -f /tmp/fifo --json x; echo "[$?]"
  {"return":21}
  [0]
  $ timeout 5 vektool xdn load -f /tmp/fifo --json; echo "[$?]"
  [20]
  $ timeout 5 vektool iam set-rules -f /tmp/fifo --json; echo "[$?]"
  {"return":0}
  [0]
  $ seen
  write /proc/kmod_xdn/grpxdb_clean 1\n
  write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00
  write /proc/kmod_xdn/grpxdb_import <512 bytes>
  write /proc/kmod_xdn/grpxdb_import <488 bytes>
  write /proc/vek/pc_rule_import 0
  run date +%z
  write /proc/vek/pc_tzoffset +0800\n
  $ rm "$var/app.id" && mkfifo "$var/app.id"
  $ timeout 10 vektool vek reset-to-default --json; echo "[$?]"
  {"return":0}
  [0]
  $ vek-sim journal | grep -e appid -e 'kmod_.*_size'
  write /proc/vek/kctrl reset-appid-c6y
  write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00
  write /proc/kmod_xdn/sidxdb_size L\x04\x00\x00
  write /proc/kmod_xapp/xr_size ,\x01\x00\x00

In a directory anyone may write to, a link as the file named is refused as
unreadable; elsewhere links are followed (data files may link to images).

  $ fresh
  $ chmod 1777 "$R/tmp" && ln -s "$R/tmp/new.xdb" "$R/tmp/link.xdb"
  $ vektool xdn load -f /tmp/link.xdb --json; echo "[$?]"
  [20]
  $ vektool sid load -f /tmp/link.xdb --json x
  {"return":21}
  $ mkdir "$R/data" && ln -s "$R/tmp/new.xdb" "$R/data/link.xdb"
  $ vektool xdn load -f /data/link.xdb --json; echo "[$?]"
  {"return":1000}
  [0]

An image larger than the kernel's signed 32-bit size can announce (a sparse
4 GiB + 1 KiB file) is refused before anything reaches the engine; the
default goes back in.

  $ fresh
  $ truncate -s 4294968320 "$R/tmp/huge.xdb"
  $ vektool xdn load -f /tmp/huge.xdb --json; echo "[$?]"
  [20]
  $ seen
  write /proc/kmod_xdn/grpxdb_clean 1\n
  write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00
  write /proc/kmod_xdn/grpxdb_import <512 bytes>
  write /proc/kmod_xdn/grpxdb_import <488 bytes>
  $ rm "$R/tmp/huge.xdb"

A killed load leaves no temporary file behind: KILL, TERM and HUP in the
middle of copying a 1 GiB app.id.

  $ fresh
  $ truncate -s 1G "$R/tmp/big.id"
  $ for i in $(seq 30); do vektool sid load -f /tmp/big.id & sleep 0.02; kill -KILL $!; wait $!; done 2>/dev/null; true
  $ for sig in TERM HUP; do vektool sid load -f /tmp/big.id & sleep 0.05; kill -$sig $!; wait $!; echo "$sig $?"; done 2>/dev/null
  TERM 143
  HUP 129
  $ ls -A "$var"
  app.id
  app.xdb
  vek.xdb
  vek.xr
  $ cmp "$R/tmp/new.id" "$var/app.id" && echo kept
  kept
  $ rm "$R/tmp/big.id"

The image is read once: a source swapped for another file while it streams
to a slow engine changes nothing; what the engine took is what becomes the
default, and its size is what is reported.

  $ streaming() {
  >   i=0
  >   until vek-sim journal | grep -q "$1"; do
  >     i=$((i + 1)); [ $i -lt 1000 ] || return 1; sleep 0.01
  >   done
  > }
  $ fresh
  $ head -c 3000 /dev/urandom > "$R/tmp/a.xdb" && cp "$R/tmp/a.xdb" "$R/tmp/a.orig"
  $ head -c 2000 /dev/urandom > "$R/tmp/b.xdb" && cp "$R/tmp/b.xdb" "$R/tmp/b.orig"
  $ vek-sim slow 50
  $ vektool xdn load -f /tmp/a.xdb --json > a.out & streaming grpxdb_import && mv "$R/tmp/b.xdb" "$R/tmp/a.xdb"; wait
  $ cat a.out
  {"return":3000}
  $ cmp "$R/tmp/a.orig" "$var/vek.xdb" && vek-sim image grpxdb | cmp - "$var/vek.xdb" && echo "a, in the engine and as the default"
  a, in the engine and as the default

Callers that overlap wait for each other (the lock "vektool.lock" of the run
directory): a second load started while the first streams runs after it, and
the engine and the default end with the second image whole; two rule loads
do not interleave; three resets reload each database three times whole.

  $ fresh
  $ vektool xdn load -f /tmp/a.orig --json > a.out & streaming grpxdb_import && vektool xdn load -f /tmp/b.orig --json; wait; cat a.out
  {"return":2000}
  {"return":3000}
  $ vek-sim image grpxdb | cmp - "$R/tmp/b.orig" && cmp "$var/vek.xdb" "$R/tmp/b.orig" && echo "b, in the engine and as the default"
  b, in the engine and as the default
  $ vek-sim journal | grep -c grpxdb_clean
  2
  $ kind "$R/var/run/vek/vektool.lock"
  644 regular empty file
  $ printf 'rule-a-%04d\n' $(seq 300) > "$R/tmp/a.rules" && printf 'rule-b-%04d\n' $(seq 300) > "$R/tmp/b.rules"
  $ vektool iam set-rules -f /tmp/a.rules & streaming 'pc_rule_import rule' && vektool iam set-rules -f /tmp/b.rules --json; wait
  {"return":0}
  $ vek-sim cat /proc/vek/pc_rule_export | cmp - "$R/tmp/b.rules" && echo "b rules whole"
  b rules whole
  $ fresh
  $ vektool vek reset-to-default & streaming grpxdb_import && { vektool vek reset-to-default & vektool vek reset-to-default & }; wait
  $ vek-sim journal | grep -o -e reset-appid-c6y -e '[a-z]*db_size' -e 'xr_size'
  reset-appid-c6y
  grpxdb_size
  sidxdb_size
  xr_size
  reset-appid-c6y
  grpxdb_size
  sidxdb_size
  xr_size
  reset-appid-c6y
  grpxdb_size
  sidxdb_size
  xr_size
  $ for db in grpxdb:vek.xdb sidxdb:app.xdb xr:vek.xr; do
  >   vek-sim image ${db%:*} | cmp -s - "$var/${db#*:}" && echo "${db%:*} whole"
  > done
  grpxdb whole
  sidxdb whole
  xr whole
  $ vek-sim slow 0

A caller holding the lock makes the next one wait (here one second); without
a run directory the commands run as they would alone.

  $ fresh
  $ flock "$R/var/run/vek/vektool.lock" sleep 1 & sleep 0.2
  $ start=$(date +%s%N); vektool xdn load -f /tmp/new.xdb --json; wait
  {"return":1000}
  $ [ $(( ($(date +%s%N) - start) / 1000000 )) -ge 700 ] && echo waited
  waited
  $ sed 's|^run = .*|run = /nowhere|' "$R/usr/vek/bin/vek.ini" > "$R/tmp/norun.ini"
  $ vektool xdn load -f /tmp/a.orig -i /tmp/norun.ini --json
  {"return":3000}
