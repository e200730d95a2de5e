A vek.ini, an -i path or a control file, whatever it is, never crashes the
tool, holds it (timeout would give 124), or makes it print the file. Runs
that must answer alike are counted by `uniq -c`.

  $ export VEKTOOL_SYSROOT="$PWD/root" && mkdir -p root/proc/self root/proc/vek root/usr/vek/bin && ini=root/usr/vek/bin/vek.ini
  $ ln -s /usr/vek/bin/vektool root/proc/self/exe && printf 'u:block_conns:42\n' > root/proc/vek/monitor && printf '[vek]\nrun = /var/run/vek\n' > good.ini
  $ run() { out=$(timeout 1 vektool "$@" 2>&1); printf '%s [%d]\n' "$out" $?; }

A section named like a key, in any case, changes nothing.

  $ for section in vek:qos VEK:IAM vek:cs Vek:Log_Level vek:run logger:max_db_size; do
  >   { cat good.ini; echo "[$section]"; } > "$ini"; run mon get-conn-count block --json x
  > done | uniq -c
        6 {"return":0,"result":42} [0]

-i naming no configuration is passed over like a missing file (code 60): an
endless device, a FIFO nobody writes, standard input held open, a directory,
a root-only non-INI, a path past 256 bytes whose first 255 name a good file.
Named vek.ini in the search, they hide nothing further down.

  $ rm "$ini" && mkdir -p root/dev root/dir root/etc/vek && mkfifo root/fifo root/held
  $ ln -s /dev/zero root/zero && ln -s /proc/self/fd/0 root/dev/stdin
  $ printf 'root:$6$SECRET:19000:0:99999:7:::\nbin:*:19000:0:99999:7:::\n' > root/shadow && chmod 600 root/shadow
  $ long=/$(printf '%0100d' 0)/$(printf '%0100d' 0)/$(printf '%052d' 0) && mkdir -p "root${long%/*}"
  $ cp good.ini "root$long" && cp good.ini "root$long.ini" && printf '%s' "$long" | wc -c
  255
  $ exec 3<>root/held
  $ for path in /zero /fifo /dev/stdin /dir /shadow "$long.ini"; do run mon get-conn-count block -i "$path" --json x <&3; done | uniq -c
        6 {"return":60} [255]
  $ for plant in "ln -s /dev/zero" mkfifo mkdir "cp root/shadow"; do
  >   $plant "$ini" && cp good.ini root/etc/vek/vek.ini && found=$(run mon get-conn-count block --json x <&3)
  >   rm root/etc/vek/vek.ini && echo "$found, then $(run mon get-conn-count block --json x <&3)" && rm -r "$ini"
  > done | uniq -c
        4 {"return":0,"result":42} [0], then {"return":60} [255]
  $ cp good.ini "$ini"

A control file that never ends a line is unreadable; a FIFO reads as empty,
open or not, and a verb to it is dropped when nobody reads, else taken whole.

  $ m=root/proc/vek/monitor && held() { mkfifo "$1" && exec 4<>"$1"; }
  $ for plant in "ln -s /dev/zero" mkfifo held; do
  >   rm -f "$m" && $plant "$m" && echo "${plant##* }: $(run mon get-conn-count block) $(run mon get-conn-count category) $(run mon clear-conn-count --json x)"
  >   exec 4>&-
  > done
  /dev/zero: Failed to read file [0] Failed to read file [0] {"return":0} [0]
  mkfifo:  [0]  [0] {"return":0} [0]
  held:  [0]  [0] {"return":0} [0]
  $ mkfifo root/proc/vek/verbs && exec 4<>root/proc/vek/verbs && rm "$m" && ln -s verbs "$m"
  $ run mon clear-conn-count; timeout 1 dd bs=64 count=1 iflag=nonblock <&4 2>/dev/null; echo
   [0]
  clear
  $ exec 3>&- 4>&-
