#!/bin/sh
# Checks that a .deb declares every shared library its programs need: the
# libraries they link (NEEDED) and those they open by name at run time (a
# soname among their strings, as the tool opens libcjson.so.1). Each library
# is mapped to the package of the package's architecture that ships it, and
# that package must be in Depends. For a library opened at run time no tool
# computes the version floor, so it is checked here: at least the version that
# the library's symbols file gives for the newest function the program names.
#
#   sh deb-depends.sh DEB
#
# Prints "SONAME DEPENDS-ENTRY" per library; exits 1 when one is missing.
set -u
deb=$1
arch=$(dpkg-deb -f "$deb" Architecture)
multiarch=$(dpkg-architecture -a "$arch" -qDEB_HOST_MULTIARCH 2>/dev/null)
depends=$(dpkg-deb -f "$deb" Depends | tr ',' '\n' | sed 's/^ *//')
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT
dpkg-deb -x "$deb" "$tmp/root" || exit 1
find "$tmp/root" -type f | sort >"$tmp/files"

status=0 programs=0
while read -r file; do
  [ "$(head -c 4 "$file" | od -An -c | tr -d ' ')" = '177ELF' ] || continue
  programs=$((programs + 1))
  strings -a "$file" >"$tmp/strings"
  objdump -p "$file" | awk '$1 == "NEEDED" {print $2}' >"$tmp/needed"
  grep -E '^[A-Za-z0-9_.+-]+\.so(\.[0-9]+)+$' "$tmp/strings" | sort -u - "$tmp/needed" >"$tmp/sonames"
  while read -r soname; do
    package=""
    for dir in "/lib/$multiarch" "/usr/lib/$multiarch" /lib /usr/lib; do
      [ -e "$dir/$soname" ] || continue
      package=$(dpkg -S "$dir/$soname" 2>/dev/null | sed -n "s/^\([^:, ]*\):$arch: .*/\1/p" | head -1)
      [ -n "$package" ] && break
    done
    if [ -z "$package" ]; then
      echo "$soname: no package of $arch ships it"; status=1; continue
    fi
    # A clause of its own: an alternative does not make sure of the library.
    entry=$(printf '%s\n' "$depends" |
            awk -v p="$package" '$1 == p && !/\|/ {print; exit}')
    if [ -z "$entry" ]; then
      echo "$soname: $package is not in Depends"; status=1; continue
    fi
    echo "$soname $entry"
    grep -qxF "$soname" "$tmp/needed" && continue
    # Opened at run time: the floor of the functions it is asked for.
    symbols=/var/lib/dpkg/info/$package:$arch.symbols
    [ -f "$symbols" ] || symbols=/var/lib/dpkg/info/$package.symbols
    floor=$(awk 'NR == FNR {named[$0] = 1; next}
                 /^ / {split($1, s, "@"); if (s[1] in named) print $2}' \
                "$tmp/strings" "$symbols" 2>/dev/null | sort -V | tail -1)
    have=$(printf '%s\n' "$entry" | sed -n 's/.*(>= *\([^)]*\)).*/\1/p')
    if [ -z "$floor" ]; then
      echo "$soname: none of its functions in $symbols is named"; status=1
    elif [ -z "$have" ] || ! dpkg --compare-versions "$have" ge "$floor"; then
      echo "$soname: $package needs (>= $floor) for the functions named"; status=1
    fi
  done <"$tmp/sonames"
done <"$tmp/files"
if [ "$programs" -eq 0 ]; then
  echo "$deb: no program in the package"; status=1
fi
exit $status
