# Cross build for arm-linux-gnueabihf gateways (see toolchain-cross-linux.cmake).
#
#   cmake -S . -B build-arm -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-arm-linux-gnueabihf.cmake
set(CMAKE_SYSTEM_PROCESSOR arm)
set(VEKTOOL_CROSS_TRIPLE arm-linux-gnueabihf)
set(VEKTOOL_CROSS_QEMU qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-cross-linux.cmake)
