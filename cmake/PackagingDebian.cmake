# The freedesktop layout below a prefix, and a Debian package with it below /usr.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATADIR}/doc/vorn)
set(made ${PROJECT_BINARY_DIR}/packaging)

set(VORN_MAINTAINER "Vorn maintainers <vorn@localhost>" CACHE STRING
    "Who answers for the package, as in \"Name <address>\"")

# Pages of the system's documentation are kept compressed, and with no time of day in them.
function(compress name)
    execute_process(COMMAND gzip -9nc INPUT_FILE ${made}/${name} OUTPUT_FILE ${made}/${name}.gz
        COMMAND_ERROR_IS_FATAL ANY)
endfunction()

string(TIMESTAMP today "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${packaging}/vorn.1.in ${made}/vorn.1 @ONLY)
configure_file(${packaging}/changelog.in ${made}/changelog @ONLY)
configure_file(${packaging}/vorn.metainfo.xml.in ${made}/${VORN_IDENTIFIER}.metainfo.xml @ONLY)
compress(vorn.1)
compress(changelog)

install(TARGETS vorn RUNTIME)
install(FILES ${packaging}/vorn.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${made}/${VORN_IDENTIFIER}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${made}/vorn.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${packaging}/copyright ${made}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
    install(FILES ${packaging}/icons/vorn-${size}.png DESTINATION ${icons}/${size}x${size}/apps RENAME vorn.png)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/src/kit/icons/vorn.svg DESTINATION ${icons}/scalable/apps)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_CONTACT "${VORN_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION "Bring interviews, field notes and articles into a project, read them, mark
passages with codes from a tree-shaped codebook, and ask questions across
what was coded: the excerpts of a code, compound queries over several codes,
and word frequencies that also work on Chinese text. There is no network, no
account and nothing to set up; everything lives in one file on the user's
computer.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Beside its libraries, among which those of Qt bring the plugins for X11 and SVG: the programs that Vorn starts.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "unzip, zip")
# The typefaces it was drawn for, the tables without which poppler can't read many Chinese and Japanese PDFs, and what
# opens a folder where no file manager listens.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-inter, fonts-noto-cjk, poppler-data, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland")
