Completing "vektool qos set-" offers exactly the qos setters, in the order
of the group's command table. Skipped while the tool has no qos group.

  $ . "$TESTDIR/plain-env.sh"
  $ vektool qos >/dev/null 2>&1; [ $? -ne 255 ] || exit 80

  $ bash "$TESTDIR/complete.sh" vektool qos set-
  set-algo
  set-qoe-active
  set-qoe-profile
  set-qoe-profile-setting
  set-qoe-profile-settings
  set-qoe-bwctl
  set-hyqos-active
  set-hyqos-queue
  set-hyqos-queues
  set-dscp-mapping
  $ bash "$TESTDIR/complete.sh" vektool qos --json set-qoe-profile-
  set-qoe-profile-setting
  set-qoe-profile-settings
  $ bash "$TESTDIR/complete.sh" vektool qos --sensitivity 3 set-algo ''
  $ bash "$TESTDIR/complete.sh" vektool qos --
  --help
  --sensitivity
  --intensity
  --json
  --ini
  --log
