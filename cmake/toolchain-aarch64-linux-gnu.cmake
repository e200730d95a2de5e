# Cross build for aarch64-linux-gnu gateways (see toolchain-cross-linux.cmake).
#
#   cmake -S . -B build-aarch64 -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-aarch64-linux-gnu.cmake
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(VEKTOOL_CROSS_TRIPLE aarch64-linux-gnu)
set(VEKTOOL_CROSS_QEMU qemu-aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-cross-linux.cmake)
