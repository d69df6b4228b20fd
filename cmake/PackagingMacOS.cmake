# A bundle, and a disk image with it. Qt's libraries stay where they are: `macdeployqt` takes them along.
set(iconset ${PROJECT_BINARY_DIR}/packaging/Vorn.iconset)
foreach(size IN ITEMS 16 32 128 256 512)
    configure_file(${packaging}/icons/vorn-${size}.png ${iconset}/icon_${size}x${size}.png COPYONLY)
endforeach()
set(icon ${PROJECT_BINARY_DIR}/packaging/Vorn.icns)
execute_process(COMMAND iconutil --convert icns --output ${icon} ${iconset} COMMAND_ERROR_IS_FATAL ANY)

target_sources(vorn PRIVATE ${icon})
set_source_files_properties(${icon} TARGET_DIRECTORY vorn PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
set_target_properties(vorn PROPERTIES
    OUTPUT_NAME Vorn
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST ${packaging}/Info.plist.in
    MACOSX_BUNDLE_BUNDLE_NAME Vorn
    MACOSX_BUNDLE_GUI_IDENTIFIER ${VORN_IDENTIFIER}
    MACOSX_BUNDLE_ICON_FILE Vorn.icns
    MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION}
    MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION})
install(TARGETS vorn BUNDLE DESTINATION .)
set(CPACK_GENERATOR DragNDrop)
