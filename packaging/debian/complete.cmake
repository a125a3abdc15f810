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

# Without the time of day, so that the same sources make the same package.
execute_process(
    COMMAND gzip -9 --no-name ${doc}/changelog ${doc}/changelog.Debian ${share}/man/man1/zorvan.1
    COMMAND_ERROR_IS_FATAL ANY)
