#!/bin/sh
# sh deb-depends.sh DEB: prints "SONAME DEPENDS-ENTRY" for each library the
# programs link (NEEDED) or open by name (a soname among their strings, as the
# tool opens libcjson.so.1), and exits 1 unless Depends has a clause of its own
# for the library's package; for one opened at run time, whose floor no tool
# computes, at least the version its symbols file gives the newest function named.
set -u
deb=$1
arch=$(dpkg-deb -f "$deb" Architecture)
multiarch=$(dpkg-architecture -a "$arch" -qDEB_HOST_MULTIARCH 2>/dev/null)
depends=$(dpkg-deb -f "$deb" Depends | tr ',' '\n' | sed 's/^ *//')
tmp=$(mktemp -d) || exit 1
trap 'rm -rf "$tmp"' EXIT
dpkg-deb -x "$deb" "$tmp/root" || exit 1
status=0 programs=0
find "$tmp/root" -type f | sort >"$tmp/files"
while read -r file; do
  [ "$(head -c 4 "$file" | od -An -c | tr -d ' ')" = '177ELF' ] || continue
  programs=$((programs + 1))
  strings -a "$file" >"$tmp/strings"
  objdump -p "$file" | awk '$1 == "NEEDED" {print $2}' >"$tmp/needed"
  grep -E '^[A-Za-z0-9_.+-]+\.so(\.[0-9]+)+$' "$tmp/strings" | sort -u - "$tmp/needed" >"$tmp/sonames"
  while read -r soname; do
    package=""
    for dir in "/lib/$multiarch" "/usr/lib/$multiarch" /lib /usr/lib; do
      [ -e "$dir/$soname" ] && package=$(dpkg -S "$dir/$soname" 2>/dev/null | sed -n "s/^\([^:, ]*\):$arch: .*/\1/p" | head -1)
      [ -n "$package" ] && break
    done
    if [ -z "$package" ]; then echo "$soname: no package of $arch ships it"; status=1; continue; fi
    entry=$(printf '%s\n' "$depends" | awk -v p="$package" '$1 == p && !/\|/ {print; exit}')
    if [ -z "$entry" ]; then echo "$soname: $package is not in Depends"; status=1; continue; fi
    echo "$soname $entry"
    grep -qxF "$soname" "$tmp/needed" && continue
    symbols=/var/lib/dpkg/info/$package:$arch.symbols
    [ -f "$symbols" ] || symbols=/var/lib/dpkg/info/$package.symbols
    floor=$(awk 'NR == FNR {named[$0] = 1; next} /^ / {split($1, s, "@"); if (s[1] in named) print $2}' \
                "$tmp/strings" "$symbols" 2>/dev/null | sort -V | tail -1)
    have=$(printf '%s\n' "$entry" | sed -n 's/.*(>= *\([^)]*\)).*/\1/p')
    if [ -z "$floor" ] || [ -z "$have" ] || ! dpkg --compare-versions "$have" ge "$floor"; then
      echo "$soname: $package needs (>= ${floor:-a version its symbols file gives})"; status=1
    fi
  done <"$tmp/sonames"
done <"$tmp/files"
[ "$programs" -gt 0 ] || { echo "$deb: no program in the package"; status=1; }
exit $status
