# Read by cpack each time it packages. A package of one commit is the same
# byte for byte wherever and whenever it is made: its time stamps are those of
# the last commit unless SOURCE_DATE_EPOCH is given, and those of the latest
# changelog entry in a source tree without git.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND git -C ${CPACK_VEKTOOL_SOURCE_DIR} log -1 --format=%ct
                  OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE
                  RESULT_VARIABLE status ERROR_QUIET)
  if(NOT status EQUAL 0 OR NOT epoch MATCHES "^[0-9]+$")
    execute_process(COMMAND dpkg-parsechangelog -l ${CPACK_VEKTOOL_SOURCE_DIR}/doc/changelog
                            -S Timestamp
                    OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  endif()
  if(epoch MATCHES "^[0-9]+$")
    set(ENV{SOURCE_DATE_EPOCH} ${epoch})
  endif()
endif()
