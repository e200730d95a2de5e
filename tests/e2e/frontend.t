The entry: group lookup, the global option pre-scan and the configuration.

  $ . "$TESTDIR/plain-env.sh"
  $ printf 'u:block_conns:42\n' > root/proc/vek/monitor

Unknown or missing group word: code 3, exit status 255, output only in JSON mode.

  $ vektool
  [255]
  $ vektool nosuch get
  [255]
  $ vektool nosuch get --json
  [255]
  $ vektool nosuch --json get
  {"return":3}
  [255]
  $ vektool MON get-conn-count block --json x
  {"return":3}
  [255]

Global options must follow the group word: a leading --json is the group word.

  $ vektool --json mon get-conn-count block
  {"return":3}
  [255]

A last --json escapes the pre-scan but the group's own option takes it.

  $ vektool mon get-conn-count block --json
  {"return":0,"result":42}
  $ vektool mon --json get-conn-count block
  {"return":0,"result":42}
  $ vektool mon get-conn-count block --json --no-json
  {"return":0,"result":42}
  $ vektool mon get-conn-count block --no-json
  42

Without a vek.ini anywhere: code 60 before the group is even looked at.

  $ mv root/usr/vek/bin/vek.ini root/opt.ini
  $ vektool mon get-conn-count block --json
  [255]
  $ vektool mon get-conn-count block --json x
  {"return":60}
  [255]
  $ vektool nosuch --json x
  {"return":60}
  [255]

-i / --ini names the file; only exact words count, and a last -i is ignored.

  $ vektool mon get-conn-count block -i /opt.ini
  42
  $ vektool mon get-conn-count block --ini /opt.ini --json
  {"return":0,"result":42}
  $ vektool mon get-conn-count block -i=/opt.ini --json x
  {"return":60}
  [255]
  $ vektool mon get-conn-count block --json x -i
  {"return":60}
  [255]

A relative -i path is used as it is, not under the sysroot.

  $ cp root/opt.ini local.ini
  $ vektool mon get-conn-count block -i local.ini
  42

A missing -i file falls back to the search.

  $ mv root/opt.ini root/etc-vek.ini; mkdir -p root/etc/vek; mv root/etc-vek.ini root/etc/vek/vek.ini
  $ vektool mon get-conn-count block -i /nowhere.ini
  42

The value after -l / --log is looked at again as an option.

  $ vektool mon get-conn-count block -l --json x
  {"return":0,"result":42}

cJSON is opened when a command first needs it: a run that parses no JSON
works without the library, and one that does ends as the loader would end it.

  $ mkdir badlib; : > badlib/libcjson.so.1; : > root/proc/vek/qoe_config
  $ LD_LIBRARY_PATH=badlib vektool mon get-conn-count block
  42
  $ LD_LIBRARY_PATH=badlib vektool qos set-qoe-profile-settings '[[1,2]]'
  vektool: error while loading shared libraries: badlib/libcjson.so.1: file too short
  [127]
  $ cat root/proc/vek/qoe_config
  $ vektool qos set-qoe-profile-settings '[[1,2]]'
  $ cat root/proc/vek/qoe_config
  60 0 1 2 (no-eol)

The installation is found through the executable's link.

  $ rm root/proc/self/exe; ln -s /usr/other/bin/vektool root/proc/self/exe
  $ mkdir -p root/usr/other/bin; printf '[vek]\n' > root/usr/other/bin/vek.ini
  $ rm root/etc/vek/vek.ini
  $ vektool mon get-conn-count block --json x
  {"return":0,"result":42}
  $ rm root/usr/other/bin/vek.ini
  $ vektool mon get-conn-count block --json x
  {"return":60}
  [255]
