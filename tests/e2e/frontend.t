The command line of every group: the group word, the global options after
it, the configuration, and the frame's help and errors.

  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"

A missing (first row) or unknown group word is code 3, exit status 255,
printed only when the pre-scan saw --json (a last one it misses). Help goes
to standard output; the frame's errors exit 1 silently. Unknown options are
dropped, their values stay words; "--" ends the options. Without a vek.ini
(beside the executable's link or in the search) it is code 60 before the
group is looked at. -i/--ini, exact words, name the file as given (not under
the sysroot); a last -i is ignored, a missing file falls back to the search.

  $ cp "$R/usr/vek/bin/vek.ini" local.ini
  $ table <<'EOF'
  > vek-sim file /proc/vek/monitor u:block_conns:42
  > : [255]
  > nosuch get --json: [255]
  > nosuch --json get: {"return":3} [255]
  > MON get-conn-count block --json x: {"return":3} [255]
  > --json mon get-conn-count block: {"return":3} [255]
  > mon get-conn-count block --json: {"return":0,"result":42} [0]
  > mon --json get-conn-count block: {"return":0,"result":42} [0]
  > mon get-conn-count block --json --no-json: {"return":0,"result":42} [0]
  > mon get-conn-count block --no-json: 42 [0]
  > mon get-conn-count block -l --json x: {"return":0,"result":42} [0]
  > mon -h: Usage: vektool mon [options] <command> [args]⏎   or: vektool mon get-conn-count <type>      # block/category/priority⏎   or: vektool mon clear-conn-count⏎⏎    -h, --help    show this help message and exit⏎    --json         [0]
  > mon get-conn-count block --help: Usage: vektool mon [options] <command> [args]⏎   or: vektool mon get-conn-count <type>      # block/category/priority⏎   or: vektool mon clear-conn-count⏎⏎    -h, --help    show this help message and exit⏎    --json         [0]
  > mon --no-help: [1]
  > mon: [1]
  > mon bogus --json: [1]
  > mon Get-Conn-Count block: [1]
  > mon -x get-conn-count --foo block -q: 42 [0]
  > mon get-conn-count -- flows --json: Unsupport type: flows⏎ [0]
  > mon get-conn-count -- --json: Unsupport type: --json⏎ [0]
  > vek-sim exe /nowhere/vektool
  > mon get-conn-count block --json: [255]
  > mon get-conn-count block --json x: {"return":60} [255]
  > nosuch --json x: {"return":60} [255]
  > mon get-conn-count block -i /usr/vek/bin/vek.ini: 42 [0]
  > mon get-conn-count block --ini /usr/vek/bin/vek.ini --json: {"return":0,"result":42} [0]
  > mon get-conn-count block -i=/usr/vek/bin/vek.ini --json x: {"return":60} [255]
  > mon get-conn-count block --json x -i: {"return":60} [255]
  > mon get-conn-count block -i local.ini: 42 [0]
  > vek-sim file /etc/vek/vek.ini <local.ini
  > mon get-conn-count block -i /nowhere.ini: 42 [0]
  > vek-sim missing /etc/vek/vek.ini
  > vek-sim exe /usr/other/bin/vektool
  > vek-sim file /usr/other/bin/vek.ini '[vek]'
  > mon get-conn-count block --json x: {"return":0,"result":42} [0]
  > EOF

cJSON is opened when first needed: the loader's end comes before any verb.

  $ mkdir badlib && : > badlib/libcjson.so.1 && vek-sim journal --clear && export LD_LIBRARY_PATH=badlib
  $ vektool mon get-conn-count block && vektool qos set-qoe-profile-settings '[[1,2]]'; echo "[$?]"; unset LD_LIBRARY_PATH; vek-sim journal
  42
  vektool: error while loading shared libraries: badlib/libcjson.so.1: file too short
  [127]
