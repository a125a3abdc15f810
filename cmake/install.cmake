# What is installed, and where: the program, and the files by which a desktop knows it.
include(GNUInstallDirs)

if(WIN32)
    # Windows looks for a program's libraries in its own folder.
    set(CMAKE_INSTALL_BINDIR .)
endif()
install(TARGETS zorvan BUNDLE DESTINATION .)

if(UNIX AND NOT APPLE)
    set(desktop_files ${PROJECT_BINARY_DIR}/packaging)
    configure_file(packaging/linux/desktop.in ${desktop_files}/${ZORVAN_ID}.desktop @ONLY)
    configure_file(packaging/linux/metainfo.xml.in ${desktop_files}/${ZORVAN_ID}.metainfo.xml @ONLY)
    configure_file(packaging/linux/zorvan.1.in ${desktop_files}/zorvan.1 @ONLY)
    install(FILES ${desktop_files}/${ZORVAN_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications)
    install(FILES ${desktop_files}/${ZORVAN_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo)
    install(FILES ${desktop_files}/zorvan.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

    set(icons ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor)
    foreach(size 16 24 32 48 64 128 256 512)
        install(FILES resources/icons/zorvan-${size}.png
            DESTINATION ${icons}/${size}x${size}/apps RENAME ${ZORVAN_ID}.png)
    endforeach()
    # For sizes that no picture has, such as 96 pixels on screens of double density.
    install(FILES resources/artwork/zorvan.svg
        DESTINATION ${icons}/scalable/apps RENAME ${ZORVAN_ID}.svg)
    install(FILES resources/artwork/zorvan-symbolic.svg
        DESTINATION ${icons}/symbolic/apps RENAME ${ZORVAN_ID}-symbolic.svg)
elseif(MINGW AND CMAKE_CROSSCOMPILING)
    install(CODE "
        set(program $<TARGET_FILE:zorvan>)
        set(plugin $<TARGET_FILE:Qt6::QWindowsIntegrationPlugin>)
        set(qt_libraries $<TARGET_FILE_DIR:Qt6::Core>)
        set(qt_sources ${PROJECT_SOURCE_DIR}/build-windows-qt/source)
        set(compiler_libraries ${CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES})
        set(made ${PROJECT_BINARY_DIR}/packaging)
        set(objdump ${CMAKE_OBJDUMP})
        set(strip ${CMAKE_STRIP})")
    install(SCRIPT packaging/windows/libraries.cmake)
    install(SCRIPT packaging/windows/licences.cmake)
endif()
