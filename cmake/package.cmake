# What ./package makes: a Debian package of the installed files, and a tarball of the sources; for Windows an
# installer and an archive.
set(CPACK_PACKAGE_VENDOR "Zorvan")
set(CPACK_PACKAGE_CONTACT "Zorvan developers <developers@zorvan.org>")
set(CPACK_STRIP_FILES ON)
set(CPACK_ZORVAN_RELEASE_DATE ${ZORVAN_RELEASE_DATE})

if(CMAKE_SYSTEM_NAME STREQUAL Linux)
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGE_DESCRIPTION_FILE ${PROJECT_SOURCE_DIR}/packaging/debian/description)
    set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/debian/complete.cmake)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
    set(CPACK_DEBIAN_PACKAGE_SECTION education)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    # For Wayland sessions; without it the program runs through X11.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)
    set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
elseif(MINGW AND CMAKE_CROSSCOMPILING)
    set(CPACK_GENERATOR NSIS ZIP)
    set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/packaging/windows/package.cmake)
    # Where CPack finds the installer's script before its own, whose uninstaller deletes the registry key
    # that has the learner's progress.
    set(CPACK_MODULE_PATH ${PROJECT_SOURCE_DIR}/packaging/windows)
    set(CPACK_NSIS_MUI_ICON ${PROJECT_SOURCE_DIR}/resources/icons/zorvan.ico)
    set(CPACK_ZORVAN_FINISH_PICTURE ${PROJECT_SOURCE_DIR}/packaging/windows/finish.bmp)
endif()

set(CPACK_SOURCE_GENERATOR TXZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME zorvan-${PROJECT_VERSION})
set(CPACK_SOURCE_IGNORE_FILES
    "/\\\\.git/" "/build[^/]*/" "/__pycache__/" "/e2e-evidence/" "/CMakeUserPresets.json"
    "/compile_commands.json" "\\\\.user$")

include(CPack)
