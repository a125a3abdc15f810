# What differs between the installer and the archive, which has one folder with everything.
if(CPACK_GENERATOR STREQUAL NSIS)
    set(CPACK_PACKAGE_FILE_NAME zorvan-${CPACK_PACKAGE_VERSION}-setup)
elseif(CPACK_GENERATOR STREQUAL ZIP)
    set(CPACK_PACKAGE_FILE_NAME zorvan-${CPACK_PACKAGE_VERSION}-windows)
    set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
    set(CPACK_PACKAGING_INSTALL_PREFIX /zorvan-${CPACK_PACKAGE_VERSION})
endif()

# The same sources make the same program: what strips it notes this time.
execute_process(COMMAND date --utc --date=${CPACK_ZORVAN_RELEASE_DATE} +%s
    OUTPUT_VARIABLE released OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(ENV{SOURCE_DATE_EPOCH} ${released})
