# The part of a cross build that is the same for every gateway architecture:
# Debian's cross compiler for ${VEKTOOL_CROSS_TRIPLE}, the multiarch packages of
# cJSON and iniparser (libcjson-dev:ARCH, libiniparser-dev:ARCH) under
# /usr/lib/${VEKTOOL_CROSS_TRIPLE}, and programs the build runs (the completion
# generator) under ${VEKTOOL_CROSS_QEMU}. The toolchain file of an architecture
# sets those two and CMAKE_SYSTEM_PROCESSOR, then includes this one.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${VEKTOOL_CROSS_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${VEKTOOL_CROSS_TRIPLE}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${VEKTOOL_CROSS_TRIPLE})
set(CMAKE_CROSSCOMPILING_EMULATOR ${VEKTOOL_CROSS_QEMU} -L /usr/${VEKTOOL_CROSS_TRIPLE})

# Headers are shared between architectures in /usr/include; libraries and
# CMake packages are looked up in the multiarch directory named above.
set(CMAKE_FIND_ROOT_PATH /usr/${VEKTOOL_CROSS_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY BOTH)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE BOTH)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
