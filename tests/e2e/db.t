vektool xdn, xapp and sid: the signature databases and the application-id file.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ var="$R/usr/vek/var"

The frame's failures and the help.

  $ rows <<'EOF'
  > xdn
  > xdn getxdb --json
  > xapp get
  > sid
  > sid clear
  > EOF
  xdn: [1]
  xdn getxdb --json: [1]
  xapp get: [1]
  sid: [1]
  sid clear: [1]
  $ vektool xdn -h
  Usage: vektool xdn [options] <command> [args]
     or: vektool xdn get
     or: vektool xdn load [-f <file>]
     or: vektool xdn clear
  
      -h, --help    show this help message and exit
      -f=<str>      
      --json        
  $ vektool xapp --help
  Usage: vektool xapp [options] <command> [args]
     or: vektool xapp getxdb
     or: vektool xapp getxr
     or: vektool xapp loadxdb [-f <file>]
     or: vektool xapp loadxr [-f <file>]
     or: vektool xapp clearxdb
     or: vektool xapp clearxr
  
      -h, --help    show this help message and exit
      -f=<str>      
      --json        
  $ vektool sid -h
  Usage: vektool sid [options] <command> [args]
     or: vektool sid get
     or: vektool sid load -f <sid_file>
  
  Brief:
  
      -h, --help    show this help message and exit
      -f=<str>      
  
  

get (71 when unreadable), clear, and load of the default file.

  $ rows <<'EOF'
  > xdn get
  > xapp getxdb --json
  > xapp getxr
  > vek-sim missing /proc/kmod_xdn/grpxdb_info
  > vek-sim unreadable /proc/kmod_xdn/sidxdb_info
  > xdn get
  > xdn get --json
  > xapp getxdb --json
  > EOF
  xdn get: {"return":0,"info":{"writable":0,"size":1536,"epoch":1700000000}} [0]
  xapp getxdb --json: {"return":0,"info":{"writable":0,"size":1100,"epoch":1700000000}} [0]
  xapp getxr: {"return":0,"info":{"writable":0,"size":300,"epoch":1700000000}} [0]
  xdn get: [71]
  xdn get --json: {"return":71} [71]
  xapp getxdb --json: {"return":71} [71]
  $ vek-sim file /proc/kmod_xapp/xr_info 'writable: 1
  > size: x
  > '
  $ rows <<'EOF'
  > xapp getxr --json
  > vek-sim reset
  > xdn clear
  > xapp clearxdb --json
  > xapp clearxr extra words
  > xapp getxr
  > vek-sim reset
  > xdn load --json
  > xapp loadxr
  > xdn get
  > EOF
  xapp getxr --json: {"return":71} [71]
  xdn clear: [0]
    write /proc/kmod_xdn/grpxdb_clean 1\n
  xapp clearxdb --json: {"return":0} [0]
    write /proc/kmod_xdn/sidxdb_clean 1\n
  xapp clearxr extra words: [0]
    write /proc/kmod_xapp/xr_clean 1\n
  xapp getxr: {"return":0,"info":{"writable":1,"size":0,"epoch":0}} [0]
  xdn load --json: [0]
    write /proc/kmod_xdn/grpxdb_clean 1\n
    write /proc/kmod_xdn/grpxdb_size \x00\x06\x00\x00
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
  xapp loadxr: [0]
    write /proc/kmod_xapp/xr_clean 1\n
    write /proc/kmod_xapp/xr_size ,\x01\x00\x00
    write /proc/kmod_xapp/xr_import <300 bytes>
  xdn get: {"return":0,"info":{"writable":0,"size":1536,"epoch":1700000001}} [0]
  $ mv "$var/app.xdb" "$var/app.xdb.saved"
  $ rows <<'EOF'
  > xapp loadxdb --json
  > EOF
  xapp loadxdb --json: [0]
  $ mv "$var/app.xdb.saved" "$var/app.xdb"

load -f: confirmed imports replace the default; failed ones (20, 71) restore it.

  $ head -c 1000 /dev/urandom > "$R/tmp/new.xdb"
  $ head -c 700 /dev/urandom > "$R/tmp/new.xr"
  $ : > "$R/tmp/empty.xr"
  $ cp "$var/app.xdb" "$R/tmp/before.xdb"
  $ rows <<'EOF'
  > xdn load -f /tmp/new.xdb --json
  > xdn get
  > xapp loadxr -f /tmp/new.xr
  > xapp loadxr -f /tmp/empty.xr --json
  > xdn load -f /tmp/nothing.xdb
  > vek-sim kernel reject-once sidxdb
  > xapp loadxdb -f /tmp/new.xdb --json
  > xapp getxdb
  > EOF
  xdn load -f /tmp/new.xdb --json: {"return":1000} [0]
    write /proc/kmod_xdn/grpxdb_clean 1\n
    write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <488 bytes>
  xdn get: {"return":0,"info":{"writable":0,"size":1000,"epoch":1700000002}} [0]
  xapp loadxr -f /tmp/new.xr: [0]
    write /proc/kmod_xapp/xr_clean 1\n
    write /proc/kmod_xapp/xr_size \xbc\x02\x00\x00
    write /proc/kmod_xapp/xr_import <512 bytes>
    write /proc/kmod_xapp/xr_import <188 bytes>
  xapp loadxr -f /tmp/empty.xr --json: [20]
    write /proc/kmod_xapp/xr_clean 1\n
    write /proc/kmod_xapp/xr_size \xbc\x02\x00\x00
    write /proc/kmod_xapp/xr_import <512 bytes>
    write /proc/kmod_xapp/xr_import <188 bytes>
  xdn load -f /tmp/nothing.xdb: [20]
    write /proc/kmod_xdn/grpxdb_clean 1\n
    write /proc/kmod_xdn/grpxdb_size \xe8\x03\x00\x00
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <488 bytes>
  xapp loadxdb -f /tmp/new.xdb --json: [71]
    write /proc/kmod_xdn/sidxdb_clean 1\n
    write /proc/kmod_xdn/sidxdb_size \xe8\x03\x00\x00
    write /proc/kmod_xdn/sidxdb_import <512 bytes>
    write /proc/kmod_xdn/sidxdb_import <488 bytes>
    write /proc/kmod_xdn/sidxdb_clean 1\n
    write /proc/kmod_xdn/sidxdb_size L\x04\x00\x00
    write /proc/kmod_xdn/sidxdb_import <512 bytes>
    write /proc/kmod_xdn/sidxdb_import <512 bytes>
    write /proc/kmod_xdn/sidxdb_import <76 bytes>
  xapp getxdb: {"return":0,"info":{"writable":0,"size":1100,"epoch":1700000001}} [0]
  $ cmp "$R/tmp/new.xdb" "$var/vek.xdb" && cmp "$R/tmp/new.xr" "$var/vek.xr" && cmp "$R/tmp/before.xdb" "$var/app.xdb" && echo $(ls "$var")
  app.id app.xdb vek.xdb vek.xr

A kernel that never empties: ten looks 100 ms apart, then 71.

  $ vek-sim kernel busy grpxdb
  $ rm "$var/vek.xdb"
  $ start=$(date +%s%N)
  $ rows <<'EOF'
  > xdn load -f /tmp/new.xdb
  > vek-sim kernel normal
  > EOF
  xdn load -f /tmp/new.xdb: [71]
    write /proc/kmod_xdn/grpxdb_clean 1\n
  $ [ $(( ($(date +%s%N) - start) / 1000000 )) -ge 1000 ] && echo "one second or more"
  one second or more

A data directory that cannot be written: 21, the old default kept whole.

  $ cp "$R/tmp/new.xdb" "$var/vek.xdb"
  $ head -c 2000 /dev/urandom > "$R/tmp/other.xdb"
  $ mount --bind "$var" "$var" && mount -o remount,bind,ro "$var"
  $ rows <<'EOF'
  > xdn load -f /tmp/other.xdb --json
  > xdn get
  > EOF
  xdn load -f /tmp/other.xdb --json: [21]
    write /proc/kmod_xdn/grpxdb_clean 1\n
    write /proc/kmod_xdn/grpxdb_size \xd0\x07\x00\x00
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <512 bytes>
    write /proc/kmod_xdn/grpxdb_import <464 bytes>
  xdn get: {"return":0,"info":{"writable":0,"size":2000,"epoch":1700000004}} [0]
  $ umount "$var"
  $ cmp "$R/tmp/new.xdb" "$var/vek.xdb" && echo $(ls "$var")
  app.id app.xdb vek.xdb vek.xr

sid get and load (60 without -f or data directory, 21 when the copy fails).

  $ printf '#3,0,mail\n25:smtp\n' > "$R/tmp/new.id"
  $ sed '/^var/d' "$R/usr/vek/bin/vek.ini" > "$R/tmp/novar.ini"
  $ rows <<'EOF'
  > sid get
  > sid get --json x
  > vek-sim missing /usr/vek/var/app.id
  > sid get
  > sid get --json x
  > sid load -f /tmp/new.id
  > sid load
  > sid load --json x
  > sid load -f /tmp/none.id --json x
  > sid load -f /tmp/new.id -i /tmp/novar.ini --json x
  > EOF
  sid get: {"return":0,"appid_path":"/usr/vek/var/app.id"}[0]
  sid get --json x: {"return":0,"appid_path":"/usr/vek/var/app.id"}[0]
  sid get: [0]
  sid get --json x: {"return":20} [0]
  sid load -f /tmp/new.id: {"return":0,"appid_path":"/usr/vek/var/app.id"}[0]
  sid load: [0]
  sid load --json x: {"return":60} [0]
  sid load -f /tmp/none.id --json x: {"return":21} [0]
  sid load -f /tmp/new.id -i /tmp/novar.ini --json x: {"return":60} [0]
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
  app.id app.xdb vek.xdb vek.xr
