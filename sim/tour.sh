#!/bin/sh
# A short tour of vektool against a simulated gateway: starts vek-sim in a
# temporary sysroot, runs a few commands of every group the tool has so far,
# printing each command and what it printed, then the simulator's journal of
# what the engine saw. Groups the tool does not have yet are left out, so the
# tour grows as they land.
#
#   sim/tour.sh [BUILD_DIR]     (default: build; needs vektool and vek-sim there)
set -u
build=$(cd "${1:-build}" 2>/dev/null && pwd) || { echo "tour: no build directory ${1:-build}" >&2; exit 1; }
for prog in vektool vek-sim; do
  [ -x "$build/$prog" ] || { echo "tour: $build/$prog is not built" >&2; exit 1; }
done
PATH="$build:$PATH"
R=$(mktemp -d "${TMPDIR:-/tmp}/vek-tour.XXXXXX") || exit 1
export VEKTOOL_SYSROOT="$R"
vek-sim --root "$R" start --owner $$
case $? in
  0) ;;
  77) echo "tour: FUSE cannot mount here, so there is no simulated gateway to tour" >&2; rm -rf "$R"; exit 77 ;;
  *) rm -rf "$R"; exit 1 ;;
esac
trap 'vek-sim --root "$R" stop; rm -rf --one-file-system "$R"' EXIT
trap 'exit 130' INT TERM

has_group() {
  vektool "$1" >/dev/null 2>&1
  [ $? -ne 255 ]
}

nl='
'
# Prints the command, runs it, prints its output (a missing last newline is
# added here for reading) and any exit status other than 0.
show() {
  printf '$ %s\n' "$*"
  out=$("$@" 2>&1; echo "~$?")
  status=${out##*~}
  out=${out%~*}
  case $out in
    '') ;;
    *"$nl") printf '%s' "$out" ;;
    *) printf '%s\n' "$out" ;;
  esac
  [ "$status" = 0 ] || printf '[exit %s]\n' "$status"
}

echo "A simulated gateway runs in $R (VEKTOOL_SYSROOT)."
echo

if has_group vek; then
  show vektool vek status
  show vektool vek stop
  show vektool vek status --json
  show vektool vek start --wanif ppp0
  show vektool vek get-mode
  show vektool vek set-mode bridge --json
  show vektool vek set-cache-delete-rule 1,100,60 --json
  show vektool vek get-cache-status
  show vektool vek reset-to-default --json
fi
if has_group qos; then
  show vektool qos get-algo
  show vektool qos set-algo hyqos
  show vektool qos get-algo --json
  show vektool qos set-hyqos-queue 0 1 200 --json
  show vektool qos get-hw-queue-num --json
  show vektool qos get-hw-queue-num
  show vektool qos set-qoe-profile gaming
  show vektool qos get-qoe-profile
fi
if has_group dev; then
  show vektool dev set-queue 00:11:22:33:44:55 1 2
  show vektool dev get
  show vektool dev delete foo
fi
if has_group limiter; then
  show vektool limiter set 00:11:22:33:44:55 --up 2048 --down 4096 --en 1
  show vektool limiter set 192.168.1.0/24 --type 1 --up 512 --json
  show vektool limiter get
fi
if has_group mon; then
  show vektool mon get-conn-count block
  show vektool mon get-conn-count category --json
  show vektool mon clear-conn-count
  show vektool mon get-conn-count block
fi
if has_group iam; then
  printf 'allow 00:11:22:33:44:55 08:00-20:00\n' > "$R/tmp/rules"
  show vektool iam set-rules -f /tmp/rules --json
  show vektool iam get-rules
  show vektool iam set-redirect-ip 192.168.1.254
  show vektool iam get
fi
if has_group gc; then
  show vektool gc map 00:11:22:33:44:55 low high
  show vektool gc set-downgrade 00:11:22:33:44:55 1 --duration 30 --json
  show vektool gc set-absolute 00:11:22:33:44:55 HIGH
  show vektool gc get
fi
if has_group ss; then
  show vektool ss set-mode by_device
  show vektool ss add-dev 00:11:22:33:44:55 tv --json
  show vektool ss add nas.lan 192.168.1.20
  show vektool ss add nas-1.lan 192.168.1.21
  show vektool ss get
fi
if has_group xdn; then
  cp "$R/usr/vek/var/vek.xdb" "$R/tmp/new.xdb"
  show vektool xdn get
  show vektool xdn load -f /tmp/new.xdb --json
  show vektool xdn get
fi
if has_group xapp; then
  show vektool xapp getxr
  echo "# the kernel rejects the next rule image: the load exits 71 and vek.xr goes back in"
  vek-sim --root "$R" kernel reject-once xr
  show vektool xapp loadxr -f /tmp/new.xdb
  show vektool xapp getxr --json
fi
if has_group sid; then
  printf '#3,0,mail\n25:smtp\n' > "$R/tmp/new.id"
  show vektool sid get
  show vektool sid load -f /tmp/new.id
  show vektool sid load --json x
fi
if has_group cloud; then
  show vektool cloud off
  show vektool cloud get
  vek-sim --root "$R" service down
  echo "(the service's socket is gone)"
  show vektool cloud get --json x
  vek-sim --root "$R" service normal
fi
if has_group diag; then
  show vektool diag get
  show vektool diag get --json
fi
if has_group dt; then
  show vektool dt start --json
  show vektool dt get
  show vektool dt stop --json
fi

echo
echo "What the engine saw (vek-sim journal):"
vek-sim --root "$R" journal
