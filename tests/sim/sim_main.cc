// The simulator tests run in a private mount namespace of their own where
// they may, so that no FUSE mount can outlive them; the simulator's
// auto_unmount and its owner watch cover the rest.
#include <gtest/gtest.h>

#include <cstdio>

#include "sim_fixture.h"

int main(int argc, char **argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (!enter_private_mount_namespace())
    fprintf(stderr, "note: no private mount namespace; relying on the simulator's auto_unmount\n");
  return RUN_ALL_TESTS();
}
