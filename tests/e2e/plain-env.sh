# Sourced by a transcript: a sysroot of regular files in the test's own
# directory, for runs that need no engine behind them. The executable's link
# names the gateway's installation, whose vek.ini lies beside it.
R="$PWD/root"
mkdir -p "$R/proc/self" "$R/proc/vek" "$R/usr/vek/bin" "$R/usr/vek/var" "$R/var/run/vek"
ln -s /usr/vek/bin/vektool "$R/proc/self/exe"
cat > "$R/usr/vek/bin/vek.ini" <<'INI'
[vek]
bin = /usr/vek/bin
var = /usr/vek/var
run = /var/run/vek
INI
export VEKTOOL_SYSROOT="$R"
