# How the program presents itself on macOS and on Windows: its icon, its name and its version.
set(bundle_files ${PROJECT_BINARY_DIR}/packaging)
configure_file(packaging/macos/Info.plist.in ${bundle_files}/Info.plist @ONLY)
configure_file(packaging/windows/zorvan.rc.in ${bundle_files}/zorvan.rc @ONLY)

if(APPLE)
    set(icon ${PROJECT_SOURCE_DIR}/resources/icons/zorvan.icns)
    target_sources(zorvan PRIVATE ${icon})
    set_source_files_properties(${icon} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
    set_target_properties(zorvan PROPERTIES
        OUTPUT_NAME Zorvan
        MACOSX_BUNDLE ON
        MACOSX_BUNDLE_INFO_PLIST ${bundle_files}/Info.plist)
elseif(WIN32)
    enable_language(RC)
    target_sources(zorvan PRIVATE ${bundle_files}/zorvan.rc)
    # Where Qt looks for it in any program.
    qt_add_resources(zorvan qt_conf PREFIX /qt/etc BASE packaging/windows FILES packaging/windows/qt.conf)
endif()
