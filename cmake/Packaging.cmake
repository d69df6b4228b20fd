# How Vorn gets onto a computer: `cmake --install`, and a package for the desktop it is built on.
set(VORN_IDENTIFIER local.vorn.vorn) # "local" is nobody's: the name of no site
set(packaging ${PROJECT_SOURCE_DIR}/packaging)

# Installing needs the program alone and waits for no tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_PACKAGE_NAME vorn)
set(CPACK_PACKAGE_VENDOR Vorn)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "offline workbench for qualitative data analysis")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(APPLE)
    include(${CMAKE_CURRENT_LIST_DIR}/PackagingMacOS.cmake)
else()
    include(${CMAKE_CURRENT_LIST_DIR}/PackagingDebian.cmake)
endif()
include(CPack)
