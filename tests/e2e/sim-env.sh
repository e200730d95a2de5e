# A simulated gateway for one cram transcript. Source it as the first step:
#
#   $ . "$TESTDIR/sim-env.sh"
#
# It starts vek-sim in a fresh sysroot under the transcript's own directory,
# points vektool at it (VEKTOOL_SYSROOT, and R for short), and stops it when
# the transcript's shell exits. Where FUSE cannot mount, the transcript is
# skipped (cram's code 80), never passed. vek-sim and vektool must be on PATH.
# A build without the simulator skips the transcripts that need it.
command -v vek-sim >/dev/null || exit 80
VEKTOOL_SYSROOT="$PWD/sysroot"
R="$VEKTOOL_SYSROOT"
export VEKTOOL_SYSROOT R
vek-sim --root "$R" start --owner $$
case $? in
  0) trap 'vek-sim --root "$R" stop' EXIT ;;
  77) exit 80 ;;
  *) echo "sim-env.sh: vek-sim could not start" ;;
esac
