What a gateway image gets: `cmake --install` and the .deb lay out the tool,
its configuration, manual page and completion; the package, installed into a
scratch root, runs there against the simulator.

  $ DESTDIR="$PWD/dest" cmake --install "$VEK_BUILD_DIR" --prefix /usr >/dev/null
  $ cd dest && find . -type f | sort && cd ..
  ./usr/share/bash-completion/completions/vektool
  ./usr/share/man/man1/vektool.1.gz
  ./usr/vek/bin/vektool
  ./usr/vek/etc/vek.ini
  $ test -x dest/usr/vek/bin/vektool && cmp dest/usr/vek/etc/vek.ini "$TESTDIR/../../doc/vek.ini"
  $ MANWIDTH=80 man --warnings -l dest/usr/share/man/man1/vektool.1.gz 2>&1 >/dev/null
  $ bash -n dest/usr/share/bash-completion/completions/vektool

The package of this build's architecture, with the same files.

  $ out=$PWD/pkg; (cd "$VEK_BUILD_DIR" && cpack -G DEB -B "$out") >/dev/null
  $ deb=$(ls pkg/*.deb) && echo "${deb#pkg/}" | sed "s/_$(dpkg --print-architecture)\.deb$/_ARCH.deb/"
  vektool_1.0.0_ARCH.deb
  $ dpkg-deb -f "$deb" Package Section Depends
  Package: vektool
  Section: net
  Depends: libc6 (>= 2.34), libcjson1
  $ dpkg-deb --ctrl-tarfile "$deb" | tar xO ./conffiles
  /usr/vek/etc/vek.ini
  $ dpkg-deb -c "$deb" | awk '$1 !~ /^d/ {print $1, $6}'
  -rw-r--r-- ./usr/share/bash-completion/completions/vektool
  -rw-r--r-- ./usr/share/man/man1/vektool.1.gz
  -rwxr-xr-x ./usr/vek/bin/vektool
  -rw-r--r-- ./usr/vek/etc/vek.ini

Installed with dpkg into a scratch root (its own package database; the C
library and cJSON of the scratch root are the host's, so dependencies are not
looked at there), which the simulator then plays a gateway in (it keeps the
installed vektool), the installed tool answers.

  $ mkdir -p sysroot/var/lib/dpkg/info sysroot/var/lib/dpkg/updates && touch sysroot/var/lib/dpkg/status
  $ dpkg --root="$PWD/sysroot" --force-depends --log=/dev/null -i "$deb" >/dev/null 2>&1; echo $?
  0
  $ dpkg --root="$PWD/sysroot" -s vektool | sed -n 's/^Status: //p'
  install ok installed
  $ cat sysroot/var/lib/dpkg/info/vektool.conffiles
  /usr/vek/etc/vek.ini
  $ . "$TESTDIR/sim-env.sh"
  $ test -f "$R/usr/vek/bin/vektool" && test ! -L "$R/usr/vek/bin/vektool" && cmp "$R/usr/vek/bin/vektool" dest/usr/vek/bin/vektool
  $ vek-sim file /proc/vek/monitor 'u:block_conns:42'
  $ "$R/usr/vek/bin/vektool" mon get-conn-count block --json
  {"return":0,"result":42}
  $ "$R/usr/vek/bin/vektool" mon clear-conn-count
  $ vek-sim journal
  write /proc/vek/monitor clear

Without the simulator's own vek.ini beside the tool, the installed one in
/usr/vek/etc is found (the counter was cleared above); it holds every key
that the simulator's holds.

  $ sed -n 's/^\([a-z_]*\) *=.*/\1/p' "$R/usr/vek/bin/vek.ini" | sort > sim-keys
  $ sed -n 's/^\([a-z_]*\) *=.*/\1/p' "$R/usr/vek/etc/vek.ini" | sort > our-keys
  $ test -s sim-keys && diff sim-keys our-keys
  $ rm "$R/usr/vek/bin/vek.ini"
  $ "$R/usr/vek/bin/vektool" mon get-conn-count block
  0
  $ rm "$R/usr/vek/etc/vek.ini"
  $ "$R/usr/vek/bin/vektool" mon get-conn-count --json block
  {"return":60}
  [255]
