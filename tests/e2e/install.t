What a gateway image gets: `cmake --install` and the .deb lay out the tool,
its manual page, completion and documents (a commented vek.ini among the
examples); the package installs into a scratch root, runs there against the
simulator, and leaves nothing behind when it is removed.

  $ version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$VEK_BUILD_DIR/CMakeCache.txt")
  $ DESTDIR="$PWD/dest" cmake --install "$VEK_BUILD_DIR" --prefix /usr --strip >/dev/null
  $ cd dest && find . -type f | sort && cd ..
  ./usr/share/bash-completion/completions/vektool
  ./usr/share/doc/vektool/changelog.gz
  ./usr/share/doc/vektool/copyright
  ./usr/share/doc/vektool/examples/vek.ini
  ./usr/share/lintian/overrides/vektool
  ./usr/share/man/man1/vektool.1.gz
  ./usr/vek/bin/vektool
  $ test -x dest/usr/vek/bin/vektool && cmp dest/usr/share/doc/vektool/examples/vek.ini "$TESTDIR/../../doc/vek.ini"
  $ MANWIDTH=80 man --warnings -l dest/usr/share/man/man1/vektool.1.gz 2>&1 >/dev/null
  $ MANWIDTH=80 man -l dest/usr/share/man/man1/vektool.1.gz 2>/dev/null | tail -1 | sed "s/  */ /g; s/ $version / VERSION /"
  vektool VERSION 2026-11-23 VEKTOOL(1)
  $ bash -n dest/usr/share/bash-completion/completions/vektool

The package of this build's architecture carries the project's version in
its name, its control file and its changelog; nothing in it is a conffile.

  $ out=$PWD/pkg; (cd "$VEK_BUILD_DIR" && umask 022 && cpack -G DEB -B "$out") >cpack.log 2>&1 || cat cpack.log
  $ deb=$(ls pkg/*.deb) && echo "$deb" | sed "s/_${version}_$(dpkg --print-architecture)\.deb$/_VERSION_ARCH.deb/"
  pkg/vektool_VERSION_ARCH.deb
  $ dpkg-deb -f "$deb" Package Section Maintainer
  Package: vektool
  Section: net
  Maintainer: vektool developers <vektool@vek-engine.org>
  $ test "$(dpkg-deb -f "$deb" Version)" = "$version"
  $ zcat dest/usr/share/doc/vektool/changelog.gz > changelog
  $ test "$(dpkg-parsechangelog -l changelog -S Version)" = "$version"
  $ dpkg-deb --ctrl-tarfile "$deb" | tar t | sort
  ./control
  ./md5sums
  $ dpkg-deb -c "$deb" | awk '$1 !~ /^d/ {print $1, $2, $6}'
  -rw-r--r-- root/root ./usr/share/bash-completion/completions/vektool
  -rw-r--r-- root/root ./usr/share/doc/vektool/changelog.gz
  -rw-r--r-- root/root ./usr/share/doc/vektool/copyright
  -rw-r--r-- root/root ./usr/share/doc/vektool/examples/vek.ini
  -rw-r--r-- root/root ./usr/share/lintian/overrides/vektool
  -rw-r--r-- root/root ./usr/share/man/man1/vektool.1.gz
  -rwxr-xr-x root/root ./usr/vek/bin/vektool

Depends names the package of every library the tool links or opens (a
sanitizer build links the sanitizers' and the C++ runtimes besides).

  $ sh "$TESTDIR/deb-depends.sh" "$deb" > libs; echo $?
  0
  $ grep '^libc\(json\)\?\.so' libs
  libc.so.6 libc6 (>= 2.34)
  libcjson.so.1 libcjson1 (>= 1.7.13)

Installed with dpkg into a scratch root (its own package database; the C
library and cJSON of the scratch root are the host's, so dependencies are not
looked at there) and removed again, it leaves nothing of itself: the root
holds what it held before, and dpkg's database no longer knows the package.

  $ dpkgroot() { mkdir -p "$1/var/lib/dpkg/info" "$1/var/lib/dpkg/updates" && touch "$1/var/lib/dpkg/status"; }
  $ files() { (cd "$1" && find . -path ./var/lib/dpkg -prune -o -print | sort); }
  $ dpkgroot scratch && files scratch > before
  $ dpkg --root="$PWD/scratch" --force-depends --log=/dev/null -i "$deb" >/dev/null 2>&1; echo $?
  0
  $ files scratch | diff before - | sed -n 's/^> //p'
  ./usr
  ./usr/share
  ./usr/share/bash-completion
  ./usr/share/bash-completion/completions
  ./usr/share/bash-completion/completions/vektool
  ./usr/share/doc
  ./usr/share/doc/vektool
  ./usr/share/doc/vektool/changelog.gz
  ./usr/share/doc/vektool/copyright
  ./usr/share/doc/vektool/examples
  ./usr/share/doc/vektool/examples/vek.ini
  ./usr/share/lintian
  ./usr/share/lintian/overrides
  ./usr/share/lintian/overrides/vektool
  ./usr/share/man
  ./usr/share/man/man1
  ./usr/share/man/man1/vektool.1.gz
  ./usr/vek
  ./usr/vek/bin
  ./usr/vek/bin/vektool
  $ ls scratch/var/lib/dpkg/info
  format
  vektool.list
  vektool.md5sums
  $ dpkg --root="$PWD/scratch" --log=/dev/null -r vektool >/dev/null 2>&1; echo $?
  0
  $ files scratch | diff before -
  $ ls scratch/var/lib/dpkg/info
  format
  $ grep -c vektool scratch/var/lib/dpkg/status
  0
  [1]

Installed into the root that the simulator then plays a gateway in (it keeps
the installed vektool), the installed tool answers.

  $ dpkgroot sysroot
  $ dpkg --root="$PWD/sysroot" --force-depends --log=/dev/null -i "$deb" >/dev/null 2>&1; echo $?
  0
  $ dpkg --root="$PWD/sysroot" -s vektool | sed -n 's/^Status: //p'
  install ok installed
  $ . "$TESTDIR/sim-env.sh"
  $ test -f "$R/usr/vek/bin/vektool" && test ! -L "$R/usr/vek/bin/vektool" && cmp "$R/usr/vek/bin/vektool" dest/usr/vek/bin/vektool
  $ vek-sim file /proc/vek/monitor 'u:block_conns:42'
  $ "$R/usr/vek/bin/vektool" mon get-conn-count block --json
  {"return":0,"result":42}
  $ "$R/usr/vek/bin/vektool" mon clear-conn-count
  $ vek-sim journal
  write /proc/vek/monitor clear

The example vek.ini holds every key that the simulator's holds. Put into
/usr/vek/etc by the gateway's installation, it is found there when none lies
beside the tool (the counter was cleared above); without either, there is no
configuration.

  $ sed -n 's/^\([a-z_]*\) *=.*/\1/p' "$R/usr/vek/bin/vek.ini" | sort > sim-keys
  $ sed -n 's/^\([a-z_]*\) *=.*/\1/p' "$R/usr/share/doc/vektool/examples/vek.ini" | sort > our-keys
  $ test -s sim-keys && diff sim-keys our-keys
  $ mkdir -p "$R/usr/vek/etc" && cp "$R/usr/share/doc/vektool/examples/vek.ini" "$R/usr/vek/etc/vek.ini"
  $ rm "$R/usr/vek/bin/vek.ini"
  $ "$R/usr/vek/bin/vektool" mon get-conn-count block
  0
  $ rm "$R/usr/vek/etc/vek.ini"
  $ "$R/usr/vek/bin/vektool" mon get-conn-count --json block
  {"return":60}
  [255]
