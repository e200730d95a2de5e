Completing "vektool qos set-" offers exactly the qos setters, in the order
of the group's command table. Skipped while the tool has no qos group.

  $ . "$TESTDIR/plain-env.sh"
  $ vektool qos >/dev/null 2>&1; [ $? -ne 255 ] || exit 80
  $ offers() { bash "$TESTDIR/complete.sh" vektool qos "$@" | paste -sd' '; }

  $ offers set-
  set-algo set-qoe-active set-qoe-profile set-qoe-profile-setting set-qoe-profile-settings set-qoe-bwctl set-hyqos-active set-hyqos-queue set-hyqos-queues set-dscp-mapping
  $ offers --json set-qoe-profile-
  set-qoe-profile-setting set-qoe-profile-settings
  $ offers --sensitivity 3 set-algo ''
  
  $ offers --
  --help --sensitivity --intensity --json --ini --log
