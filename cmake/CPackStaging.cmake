# Run by cpack on the staged files before it archives them. The installation
# makes directories with mkdir, which the packager's umask narrows (0700 under
# umask 077, 0775 under 002): the package's directories are 0755 whatever it
# is. (Files get their modes from install() already.)
file(GLOB_RECURSE staged LIST_DIRECTORIES true "${CPACK_TEMPORARY_DIRECTORY}/*")
foreach(path IN LISTS staged)
  if(IS_DIRECTORY "${path}" AND NOT IS_SYMLINK "${path}")
    file(CHMOD "${path}" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
                                     GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  endif()
endforeach()
