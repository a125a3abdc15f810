# What is installed, and where: the program, and the files by which a desktop knows it.
include(GNUInstallDirs)

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
endif()
