What callers and files must not do to the tool: a vek.ini, an -i path or a
control file, whatever it is, never crashes it, holds it, fills its memory or
makes it print the file. Every run ends by itself within a second (timeout
would give 124) and never by a signal (a status above 128).

  $ . "$TESTDIR/plain-env.sh"
  $ printf 'u:block_conns:42\n' > root/proc/vek/monitor
  $ ini=root/usr/vek/bin/vek.ini; cp "$ini" good.ini
  $ run() { out=$(timeout 1 vektool "$@" 2>&1); printf '%s [%d]\n' "$out" $?; }

A section named like a key that is read as a boolean or a number, in any
case, or like a text key: the same output as without it.

  $ run mon get-conn-count block --json x
  {"return":0,"result":42} [0]
  $ while read -r section; do
  >   { cat good.ini; printf '%s\n' "$section"; } > "$ini"
  >   printf '%-16s ' "$section"; run mon get-conn-count block --json x
  > done <<'EOF'
  > [vek:qos]
  > [VEK:IAM]
  > [vek:cs]
  > [Vek:Log_Level]
  > [vek:run]
  > [logger:max_db_size]
  > EOF
  [vek:qos]        {"return":0,"result":42} [0]
  [VEK:IAM]        {"return":0,"result":42} [0]
  [vek:cs]         {"return":0,"result":42} [0]
  [Vek:Log_Level]  {"return":0,"result":42} [0]
  [vek:run]        {"return":0,"result":42} [0]
  [logger:max_db_size] {"return":0,"result":42} [0]

-i naming what is no configuration is passed over as a missing file is: with
no vek.ini anywhere else, code 60. A device that never ends, a FIFO nobody
writes, standard input on a FIFO that stays open, a directory, a root-only
file that is no INI, and a path longer than the 256-byte buffer whose first
255 bytes name a good file (the whole path names one too).

  $ rm "$ini"
  $ ln -s /dev/zero root/zero; mkfifo root/fifo root/held; mkdir root/dir
  $ mkdir root/dev; ln -s /proc/self/fd/0 root/dev/stdin
  $ printf 'root:$6$SECRET:19000:0:99999:7:::\nbin:*:19000:0:99999:7:::\n' > root/shadow
  $ chmod 600 root/shadow
  $ long=/$(printf '%0100d' 0)/$(printf '%0100d' 0)/$(printf '%052d' 0)
  $ printf '%s' "$long" | wc -c
  255
  $ mkdir -p "root${long%/*}"; cp good.ini "root$long"; cp good.ini "root$long.ini"
  $ exec 3<>root/held
  $ while read -r name path; do
  >   printf '%-10s ' "$name"; run mon get-conn-count block -i "$path" --json x <&3
  > done <<EOF
  > zero /zero
  > fifo /fifo
  > stdin /dev/stdin
  > directory /dir
  > shadow /shadow
  > cut-path $long.ini
  > EOF
  zero       {"return":60} [255]
  fifo       {"return":60} [255]
  stdin      {"return":60} [255]
  directory  {"return":60} [255]
  shadow     {"return":60} [255]
  cut-path   {"return":60} [255]

The same things named vek.ini in a place of the search hide nothing: the
file further down is loaded, and without one it is code 60 again.

  $ mkdir -p root/etc/vek
  $ while read -r name; do
  >   case $name in
  >     zero) ln -s /dev/zero "$ini" ;;
  >     fifo) mkfifo "$ini" ;;
  >     directory) mkdir "$ini" ;;
  >     shadow) cp root/shadow "$ini" ;;
  >   esac
  >   cp good.ini root/etc/vek/vek.ini
  >   printf '%-10s ' "$name"; run mon get-conn-count block --json x <&3
  >   rm root/etc/vek/vek.ini
  >   printf '%-10s ' "$name"; run mon get-conn-count block --json x <&3
  >   rm -r "$ini"
  > done <<'EOF'
  > zero
  > fifo
  > directory
  > shadow
  > EOF
  zero       {"return":0,"result":42} [0]
  zero       {"return":60} [255]
  fifo       {"return":0,"result":42} [0]
  fifo       {"return":60} [255]
  directory  {"return":0,"result":42} [0]
  directory  {"return":60} [255]
  shadow     {"return":0,"result":42} [0]
  shadow     {"return":60} [255]
  $ cp good.ini "$ini"

A control file that never ends a line is given up as unreadable; a FIFO in
its place reads as empty (no record: nothing printed), whether nobody or an
idle holder has it open, and a verb to it is dropped when nobody reads.

  $ m=root/proc/vek/monitor
  $ while read -r name; do
  >   rm -f "$m"
  >   case $name in
  >     zero) ln -s /dev/zero "$m" ;;
  >     fifo) mkfifo "$m" ;;
  >     held) mkfifo "$m"; exec 4<>"$m" ;;
  >   esac
  >   printf '%-5s ' "$name"; run mon get-conn-count block
  >   printf '%-5s ' "$name"; run mon get-conn-count category
  >   printf '%-5s ' "$name"; run mon clear-conn-count --json x
  >   exec 4>&-
  > done <<'EOF'
  > zero
  > fifo
  > held
  > EOF
  zero  Failed to read file [0]
  zero  Failed to read file [0]
  zero  {"return":0} [0]
  fifo   [0]
  fifo   [0]
  fifo  {"return":0} [0]
  held   [0]
  held   [0]
  held  {"return":0} [0]

The verb the held FIFO took is the one the engine would have read.

  $ mkfifo root/proc/vek/verbs; exec 4<>root/proc/vek/verbs
  $ rm "$m"; ln -s verbs "$m"
  $ run mon clear-conn-count
   [0]
  $ timeout 1 dd bs=64 count=1 iflag=nonblock <&4 2>/dev/null; echo
  clear
  $ exec 3>&- 4>&-
