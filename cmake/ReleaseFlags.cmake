# Loaded while each language is enabled (CMAKE_USER_MAKE_RULES_OVERRIDE), where
# the compiler's defaults for the build types are chosen: a release binary goes
# into gateway images, so it is optimised for size (see README for the
# measurement against -O2). Only the initial value: a cache entry given on the
# command line still wins.
set(CMAKE_C_FLAGS_RELEASE_INIT "-Os -DNDEBUG")
set(CMAKE_CXX_FLAGS_RELEASE_INIT "-Os -DNDEBUG")
