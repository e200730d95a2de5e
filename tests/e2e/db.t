vektool xdn, xapp and sid: the signature databases and the application-id
file. One case a line (see cases.sh).

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ var="$R/usr/vek/var"

get prints the module's record, 71 when it cannot be read or parsed; clear
writes one verb; load without -f imports the default file silently: its size,
then blocks of 512 bytes. The helps (`xdn -h`, `xapp --help`, `sid -h`, each
through cksum) are pinned byte for byte.

  $ table <<'EOF'
  > xdn: [1]
  > xapp get: [1]
  > sid clear: [1]
  > xdn get: {"return":0,"info":{"writable":0,"size":1536,"epoch":1700000000}} [0]
  > xapp getxdb --json: {"return":0,"info":{"writable":0,"size":1100,"epoch":1700000000}} [0]
  > xapp getxr: {"return":0,"info":{"writable":0,"size":300,"epoch":1700000000}} [0]
  > xdn clear: [0] -> write /proc/kmod_xdn/grpxdb_clean 1\n
  > xapp clearxdb --json: {"return":0} [0] -> write /proc/kmod_xdn/sidxdb_clean 1\n
  > xapp clearxr extra words: [0] -> write /proc/kmod_xapp/xr_clean 1\n
  > vek-sim reset
  > xdn load --json: [0] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \x00\x06\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <512 bytes>
  > xapp loadxr: [0] -> write /proc/kmod_xapp/xr_clean 1\n -> write /proc/kmod_xapp/xr_size ,\x01\x00\x00 -> write /proc/kmod_xapp/xr_import <300 bytes>
  > vek-sim missing /proc/kmod_xdn/grpxdb_info
  > vek-sim unreadable /proc/kmod_xdn/sidxdb_info
  > vek-sim file /proc/kmod_xapp/xr_info "$(printf '%s\n' 'writable: 1' 'size: x')"
  > xdn get: [71]
  > xdn get --json: {"return":71} [71]
  > xapp getxdb --json: {"return":71} [71]
  > xapp getxr --json: {"return":71} [71]
  > vek-sim reset
  > EOF
  $ vektool xdn -h | cksum; vektool xapp --help | cksum; vektool sid -h | cksum
  1799966578 219
  4041377527 325
  2380251581 187

load -f: a confirmed import replaces the default file (JSON tells its size);
a missing or empty file (20) or a refused import (71) loads the default again.

  $ head -c 1000 /dev/urandom > "$R/tmp/new.xdb"
  $ head -c 700 /dev/urandom > "$R/tmp/new.xr"
  $ : > "$R/tmp/empty.xr"
  $ cp "$var/app.xdb" "$R/tmp/before.xdb"
  $ table <<'EOF'
  > xdn load -f /tmp/new.xdb --json: {"return":1000} [0] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <488 bytes>
  > xapp loadxr -f /tmp/new.xr: [0] -> write /proc/kmod_xapp/xr_clean 1\n -> write /proc/kmod_xapp/xr_size \xbc\x02\x00\x00 -> write /proc/kmod_xapp/xr_import <512 bytes> -> write /proc/kmod_xapp/xr_import <188 bytes>
  > xapp loadxr -f /tmp/empty.xr --json: [20] -> write /proc/kmod_xapp/xr_clean 1\n -> write /proc/kmod_xapp/xr_size \xbc\x02\x00\x00 -> write /proc/kmod_xapp/xr_import <512 bytes> -> write /proc/kmod_xapp/xr_import <188 bytes>
  > xdn load -f /tmp/nothing.xdb: [20] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <488 bytes>
  > vek-sim kernel reject-once sidxdb
  > xapp loadxdb -f /tmp/new.xdb --json: [71] -> write /proc/kmod_xdn/sidxdb_clean 1\n -> write /proc/kmod_xdn/sidxdb_size \xe8\x03\x00\x00 -> write /proc/kmod_xdn/sidxdb_import <512 bytes> -> write /proc/kmod_xdn/sidxdb_import <488 bytes> -> write /proc/kmod_xdn/sidxdb_clean 1\n -> write /proc/kmod_xdn/sidxdb_size L\x04\x00\x00 -> write /proc/kmod_xdn/sidxdb_import <512 bytes> -> write /proc/kmod_xdn/sidxdb_import <512 bytes> -> write /proc/kmod_xdn/sidxdb_import <76 bytes>
  > EOF
  $ cmp "$R/tmp/new.xdb" "$var/vek.xdb" && cmp "$R/tmp/new.xr" "$var/vek.xr" && cmp "$R/tmp/before.xdb" "$var/app.xdb" && echo $(ls "$var")
  app.id app.xdb vek.xdb vek.xr

Without a default file nothing is loaded. A kernel that never empties is
looked at ten times, 100 ms apart, then 71.

  $ start=$(date +%s%N)
  $ table <<'EOF'
  > vek-sim missing /usr/vek/var/app.xdb
  > xapp loadxdb --json: [0]
  > vek-sim kernel busy grpxdb
  > vek-sim missing /usr/vek/var/vek.xdb
  > xdn load -f /tmp/new.xdb: [71] -> write /proc/kmod_xdn/grpxdb_clean 1\n
  > vek-sim kernel normal
  > EOF
  $ [ $(( ($(date +%s%N) - start) / 1000000 )) -ge 1000 ] && echo "one second or more"
  one second or more

A data directory that cannot be written: 21, the old default kept whole.

  $ cp "$R/tmp/new.xdb" "$var/vek.xdb" && head -c 2000 /dev/urandom > "$R/tmp/other.xdb"
  $ mount --bind "$var" "$var" && mount -o remount,bind,ro "$var"
  $ table <<'EOF'
  > xdn load -f /tmp/other.xdb --json: [21] -> write /proc/kmod_xdn/grpxdb_clean 1\n -> write /proc/kmod_xdn/grpxdb_size \xd0\x07\x00\x00 -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <512 bytes> -> write /proc/kmod_xdn/grpxdb_import <464 bytes>
  > EOF
  $ umount "$var" && cmp "$R/tmp/new.xdb" "$var/vek.xdb" && echo $(ls "$var")
  app.id vek.xdb vek.xr

sid get names app.id (without a line end); load copies -f over it. Plain
output is only for success: 20 without app.id, 60 without -f or a data
directory, 21 when the copy fails, all with status 0.

  $ printf '#3,0,mail\n25:smtp\n' > "$R/tmp/new.id"
  $ sed '/^var/d' "$R/usr/vek/bin/vek.ini" > "$R/tmp/novar.ini"
  $ table <<'EOF'
  > sid get: {"return":0,"appid_path":"/usr/vek/var/app.id"}[0]
  > vek-sim missing /usr/vek/var/app.id
  > sid get: [0]
  > sid get --json x: {"return":20} [0]
  > sid load -f /tmp/new.id: {"return":0,"appid_path":"/usr/vek/var/app.id"}[0]
  > sid load: [0]
  > sid load --json x: {"return":60} [0]
  > sid load -f /tmp/none.id --json x: {"return":21} [0]
  > sid load -f /tmp/new.id -i /tmp/novar.ini --json x: {"return":60} [0]
  > EOF
  $ cat "$var/app.id"
  #3,0,mail
  25:smtp

A file-size limit that stops the copy halfway leaves app.id as it was.

  $ head -c 4096 /dev/zero | tr '\0' '\n' > "$R/tmp/big.id"
  $ (ulimit -f 2; vektool sid load -f /tmp/big.id --json x; echo " [$?]")
  {"return":21}
   [0]
  $ cat "$var/app.id" && echo $(ls "$var")
  #3,0,mail
  25:smtp
  app.id vek.xdb vek.xr
