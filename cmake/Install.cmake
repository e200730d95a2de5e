# What goes into a gateway image, and the .deb packages that carry it:
#   /usr/vek/bin/vektool                          the tool
#   /usr/share/man/man1/vektool.1.gz              the manual page
#   /usr/share/bash-completion/completions/vektool
#   /usr/share/doc/vektool/examples/vek.ini       a commented vek.ini (every key)
#   /usr/share/doc/vektool/changelog.gz, copyright
#   /usr/share/lintian/overrides/vektool          where the engine's layout is meant
# /usr/vek is where the engine's scripts expect to call the tool. The tool
# finds vek.ini beside itself or in /usr/vek/etc: that file is the gateway's
# own, written by its installation, and no package of this tool owns it.

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

# The manual page (its header names the version of project()) and the
# changelog, compressed as Debian installs them: -n keeps the name and time
# stamp of the source out of the gzip header.
configure_file(doc/vektool.1 ${CMAKE_BINARY_DIR}/vektool.1 @ONLY)
configure_file(doc/changelog ${CMAKE_BINARY_DIR}/changelog COPYONLY)
find_program(GZIP_PROGRAM gzip REQUIRED)
foreach(doc vektool.1 changelog)
  add_custom_command(
    OUTPUT ${CMAKE_BINARY_DIR}/${doc}.gz
    COMMAND ${GZIP_PROGRAM} -9nc ${CMAKE_BINARY_DIR}/${doc} > ${CMAKE_BINARY_DIR}/${doc}.gz
    DEPENDS ${CMAKE_BINARY_DIR}/${doc})
endforeach()
add_custom_target(docs ALL DEPENDS ${CMAKE_BINARY_DIR}/vektool.1.gz ${CMAKE_BINARY_DIR}/changelog.gz)

# A native package's version is its changelog's: the latest entry must be
# this project's version.
file(STRINGS doc/changelog VEK_CHANGELOG_TOP LIMIT_COUNT 1)
if(NOT VEK_CHANGELOG_TOP MATCHES "^vektool \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "doc/changelog begins with \"${VEK_CHANGELOG_TOP}\": "
                      "its latest entry must be for version ${PROJECT_VERSION}")
endif()

if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
  set(CMAKE_INSTALL_PREFIX /usr CACHE PATH "Installation prefix: the gateway's /usr" FORCE)
endif()
install(TARGETS vektool RUNTIME DESTINATION vek/bin)
install(FILES ${CMAKE_BINARY_DIR}/vektool.1.gz DESTINATION share/man/man1)
install(FILES ${CMAKE_BINARY_DIR}/vektool.bash DESTINATION share/bash-completion/completions
        RENAME vektool)
install(FILES doc/vek.ini DESTINATION share/doc/vektool/examples)
install(FILES doc/copyright ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION share/doc/vektool)
install(FILES cmake/lintian-overrides DESTINATION share/lintian/overrides RENAME vektool)

# .deb packages: cpack -G DEB in a build directory makes the one for that
# build's architecture (amd64, or arm64/armhf from a cross build).
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vektool)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "vektool developers <vektool@vek-engine.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "command-line control tool of the vek traffic-management engine")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"The vek engine shapes and filters the traffic of a Linux home gateway in
its kernel modules and its service. vektool is how the gateway's scripts,
its web management page and its operators switch the engine's features,
change its settings, load its signature databases and read its state.
Each run does one thing, prints one result line, as plain text or JSON,
and exits with a status that the caller reads.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
# Whatever the binary links is declared by dpkg-shlibdeps (the C++ runtime and
# iniparser are linked in; the C library stays shared). cJSON is opened at its
# first use, so no tool can see it: its floor is that of the newest function
# src/sys/cjson_binding.cc resolves (cJSON_GetNumberValue, 1.7.13).
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libcjson1 (>= 1.7.13)")
# Debian ships binaries stripped, whatever the build type.
set(CPACK_STRIP_FILES ON)
if(CMAKE_CROSSCOMPILING)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
  elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL arm)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE armhf)
  endif()
endif()
# Read by cpack when it packages: the time stamps (cmake/CPackProject.cmake)
# and the modes of the staged directories (cmake/CPackStaging.cmake).
set(CPACK_VEKTOOL_SOURCE_DIR ${CMAKE_CURRENT_SOURCE_DIR})
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/cmake/CPackProject.cmake)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/cmake/CPackStaging.cmake)
include(CPack)
