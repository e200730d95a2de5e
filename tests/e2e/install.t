What a gateway image gets: `cmake --install` and the .deb lay out the tool,
its manual page, completion and documents (vek.ini among the examples); the
package installs, runs against the simulator, and leaves nothing when removed.

  $ version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$VEK_BUILD_DIR/CMakeCache.txt")
  $ DESTDIR="$PWD/dest" cmake --install "$VEK_BUILD_DIR" --prefix /usr --strip >/dev/null
  $ out=$PWD/pkg; (cd "$VEK_BUILD_DIR" && umask 022 && cpack -G DEB -B "$out") >cpack.log 2>&1 || cat cpack.log
  $ deb=$(ls pkg/*.deb) && echo "$deb" | sed "s/_${version}_$(dpkg --print-architecture)\.deb$/_VERSION_ARCH.deb/"
  pkg/vektool_VERSION_ARCH.deb

Both hold the same files, owned by root, no conffile; the version is the
project's in the package's name, control file and changelog.

  $ dpkg-deb -c "$deb" | awk '$1 !~ /^d/ {print $1, $2, $6}' | tee listing
  -rw-r--r-- root/root ./usr/share/bash-completion/completions/vektool
  -rw-r--r-- root/root ./usr/share/doc/vektool/changelog.gz
  -rw-r--r-- root/root ./usr/share/doc/vektool/copyright
  -rw-r--r-- root/root ./usr/share/doc/vektool/examples/vek.ini
  -rw-r--r-- root/root ./usr/share/lintian/overrides/vektool
  -rw-r--r-- root/root ./usr/share/man/man1/vektool.1.gz
  -rwxr-xr-x root/root ./usr/vek/bin/vektool
  $ awk '{print $3}' listing > debfiles && (cd dest && find . -type f | sort) | diff debfiles -
  $ cmp dest/usr/share/doc/vektool/examples/vek.ini "$TESTDIR/../../doc/vek.ini" && bash -n dest/usr/share/bash-completion/completions/vektool
  $ dpkg-deb -f "$deb" Package Section Maintainer; dpkg-deb --ctrl-tarfile "$deb" | tar t | sort
  Package: vektool
  Section: net
  Maintainer: vektool developers <vektool@vek-engine.org>
  ./control
  ./md5sums
  $ zcat dest/usr/share/doc/vektool/changelog.gz > changelog && test "$(dpkg-parsechangelog -l changelog -S Version)" = "$version"
  $ test "$(dpkg-deb -f "$deb" Version)" = "$version"

The manual page renders without a warning and names every group, command
and option that the completion lists.

  $ page=dest/usr/share/man/man1/vektool.1.gz && MANWIDTH=80 man --warnings -l $page 2>&1 >/dev/null
  $ MANWIDTH=80 man -l $page 2>/dev/null > page.txt
  $ grep '^[A-Z]' page.txt | sed 's/  */ /g' | paste -sd,
  VEKTOOL(1) User Commands VEKTOOL(1),NAME,SYNOPSIS,DESCRIPTION,OPTIONS,OUTPUT,GROUPS,EXIT STATUS,RESULT CODES,CONFIGURATION,ENVIRONMENT,FILES,EXAMPLES,SEE ALSO
  $ tail -1 page.txt | sed "s/  */ /g; s/ $version / VERSION /"
  vektool VERSION 2026-11-23 VEKTOOL(1)
  $ bash=dest/usr/share/bash-completion/completions/vektool
  $ for group in $(sed -n 's/^    \([a-z]*\))$/\1/p' $bash) missing; do
  >   grep -q "^   $group\b\|^   .*, $group \|^   $group, " page.txt || echo "no section for $group"
  >   for word in $(sed -n "/^    $group)$/,/;;/s/.*\(commands\|options\)='\(.*\)'.*/\2/p" $bash); do
  >     grep -q -- "\(^\|[ ,[]\)$word\([ ,.;]\|$\)" page.txt || echo "$group: $word is not in the page"
  >   done
  > done
  no section for missing

Depends names the package of every library the tool links or opens.

  $ sh "$TESTDIR/deb-depends.sh" "$deb" > libs || cat libs; grep '^libc\(json\)\?\.so' libs
  libc.so.6 libc6 (>= 2.34)
  libcjson.so.1 libcjson1 (>= 1.7.13)

dpkg installs those files into a scratch root (dependencies are the host's),
and removing the package leaves the root and dpkg's database as before.

  $ dpkgroot() { mkdir -p "$1/var/lib/dpkg/info" "$1/var/lib/dpkg/updates" && touch "$1/var/lib/dpkg/status"; }
  $ files() { (cd "$1" && find . -path ./var/lib/dpkg -prune -o -print | sort); }
  $ dpkgi() { dpkg --root="$PWD/$1" --force-depends --log=/dev/null -i "$deb" >/dev/null 2>&1; }
  $ dpkgroot scratch && files scratch > before && dpkgi scratch
  $ (cd scratch && find . -type f ! -path './var/lib/dpkg/*' | sort) | diff debfiles -
  $ dpkg --root="$PWD/scratch" --log=/dev/null -r vektool >/dev/null 2>&1; echo $?
  0
  $ files scratch | diff before - && ls scratch/var/lib/dpkg/info && grep -c vektool scratch/var/lib/dpkg/status
  format
  0
  [1]

Installed into the simulator's root, the tool answers; the example vek.ini
holds every key of the simulator's and is found in /usr/vek/etc when none
lies beside the tool.

  $ dpkgroot sysroot && dpkgi sysroot && dpkg --root="$PWD/sysroot" -s vektool | sed -n 's/^Status: //p'
  install ok installed
  $ . "$TESTDIR/sim-env.sh"
  $ . "$TESTDIR/cases.sh"
  $ keys() { sed -n 's/^\([a-z_]*\) *=.*/\1/p' "$1" | sort; }; vektool() { "$R/usr/vek/bin/vektool" "$@"; }
  $ keys "$R/usr/vek/bin/vek.ini" > sim-keys && test -s sim-keys && keys "$R/usr/share/doc/vektool/examples/vek.ini" | diff sim-keys -
  $ cmp "$R/usr/vek/bin/vektool" dest/usr/vek/bin/vektool && test ! -L "$R/usr/vek/bin/vektool" && cp "$R/usr/share/doc/vektool/examples/vek.ini" "$R/usr/vek/etc/"
  $ table <<'EOF'
  > vek-sim file /proc/vek/monitor u:block_conns:42
  > mon get-conn-count block --json: {"return":0,"result":42} [0]
  > mon clear-conn-count: [0] -> write /proc/vek/monitor clear
  > vek-sim exe /usr/vek/bin/nowhere/vektool
  > mon get-conn-count block: 0 [0]
  > EOF
