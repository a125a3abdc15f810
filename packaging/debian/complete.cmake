# Adds to the files of a Debian package what Debian asks for and other systems do not.
if(NOT CPACK_GENERATOR STREQUAL DEB)
    return()
endif()

set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(doc ${share}/doc/${CPACK_PACKAGE_NAME})
execute_process(COMMAND date --utc --rfc-email --date=${CPACK_ZORVAN_RELEASE_DATE}
    OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${doc})
configure_file(${CMAKE_CURRENT_LIST_DIR}/lintian-overrides
    ${share}/lintian/overrides/${CPACK_PACKAGE_NAME} COPYONLY)
configure_file(${CMAKE_CURRENT_LIST_DIR}/changelog.in ${doc}/changelog.Debian @ONLY)
configure_file(${CMAKE_CURRENT_LIST_DIR}/../../CHANGELOG.md ${doc}/changelog COPYONLY)

# The manual page and the changelogs are to be compressed, without the time of day.
execute_process(
    COMMAND gzip -9 --no-name ${doc}/changelog ${doc}/changelog.Debian ${share}/man/man1/zorvan.1
    COMMAND_ERROR_IS_FATAL ANY)

# Whatever the rights that the builder gives to new files and folders.
file(CHMOD_RECURSE ${doc} ${share}/lintian
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY}
    DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
        GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
