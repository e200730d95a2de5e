# What goes into a gateway image, and the .deb packages that carry it:
#   /usr/vek/bin/vektool                      the tool
#   /usr/vek/etc/vek.ini                      a commented configuration (every key)
#   /usr/share/man/man1/vektool.1.gz          the manual page
#   /usr/share/bash-completion/completions/vektool
# The tool finds vek.ini beside itself or in /usr/vek/etc; /usr/vek is where
# the engine's scripts expect to call it.

# Bash completion, generated from the same group table the tool dispatches
# from. A cross build runs the generator under its emulator.
add_executable(vektool-completion tools/completion.cc)
target_compile_options(vektool-completion PRIVATE ${VEK_CODEGEN})
target_link_libraries(vektool-completion PRIVATE vekcore vek_warnings)
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/vektool.bash
  COMMAND vektool-completion ${CMAKE_BINARY_DIR}/vektool.bash
  DEPENDS vektool-completion
  COMMENT "Generating the bash completion from the command tables")
add_custom_target(completion ALL DEPENDS ${CMAKE_BINARY_DIR}/vektool.bash)

# The manual page, compressed as Debian installs pages.
find_program(GZIP_PROGRAM gzip REQUIRED)
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/vektool.1.gz
  COMMAND ${GZIP_PROGRAM} -9nc ${CMAKE_CURRENT_SOURCE_DIR}/doc/vektool.1 > ${CMAKE_BINARY_DIR}/vektool.1.gz
  DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/doc/vektool.1)
add_custom_target(manpage ALL DEPENDS ${CMAKE_BINARY_DIR}/vektool.1.gz)

if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
  set(CMAKE_INSTALL_PREFIX /usr CACHE PATH "Installation prefix: the gateway's /usr" FORCE)
endif()
install(TARGETS vektool RUNTIME DESTINATION vek/bin)
install(FILES doc/vek.ini DESTINATION vek/etc)
install(FILES ${CMAKE_BINARY_DIR}/vektool.1.gz DESTINATION share/man/man1)
install(FILES ${CMAKE_BINARY_DIR}/vektool.bash DESTINATION share/bash-completion/completions
        RENAME vektool)

# .deb packages: cpack -G DEB in a build directory makes the one for that
# build's architecture (amd64, or arm64/armhf from a cross build).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vektool)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "vektool developers <vektool@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "command-line control tool of the vek traffic-management engine")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
# The C++ runtime and iniparser are linked in; what stays shared is the C
# library and cJSON.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= 2.34), libcjson1")
if(CMAKE_CROSSCOMPILING)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
  elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL arm)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
  endif()
endif()
# The configuration is the gateway's: an upgrade keeps local changes.
file(WRITE ${CMAKE_BINARY_DIR}/conffiles "/usr/vek/etc/vek.ini\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/conffiles)
include(CPack)
