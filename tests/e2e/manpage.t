The manual page renders without a warning, and names every group, command
and option that the tool has (as the generated completion lists them).

  $ page="$TESTDIR/../../doc/vektool.1"
  $ MANWIDTH=80 man --warnings -l "$page" 2>&1 >/dev/null
  $ MANWIDTH=80 man -l "$page" 2>/dev/null > page.txt
  $ grep '^[A-Z]' page.txt | sed 's/  */ /g'
  VEKTOOL(1) User Commands VEKTOOL(1)
  NAME
  SYNOPSIS
  DESCRIPTION
  OPTIONS
  OUTPUT
  GROUPS
  EXIT STATUS
  RESULT CODES
  CONFIGURATION
  ENVIRONMENT
  FILES
  EXAMPLES
  SEE ALSO
  $ sed -n 's/^    \([a-z]*\))$/\1/p' "$VEK_BUILD_DIR/vektool.bash" > groups
  $ test -s groups
  $ while read -r group; do
  >   grep -q "^   $group\b\|^   .*, $group \|^   $group, " page.txt || echo "no section for $group"
  >   words=$(sed -n "/^    $group)$/,/;;/s/.*\(commands\|options\)='\(.*\)'.*/\2/p" "$VEK_BUILD_DIR/vektool.bash")
  >   for word in $words; do
  >     grep -q -- "\(^\|[ ,[]\)$word\([ ,.;]\|$\)" page.txt || echo "$group: $word is not in the page"
  >   done
  > done < groups
