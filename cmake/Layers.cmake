# A layer is one static library. USES names the layers and libraries that its headers may speak of, HIDDEN those that
# stay inside its sources. There is one include root, so linking alone doesn't stop a wrong include: every layer notes
# its USES in a property, and the test `layers` compares each #include with it.
function(add_layer name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES;HIDDEN")
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE project_options ${arg_HIDDEN})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_precompile_headers(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/Precompiled.h)
    list(JOIN arg_USES "," uses)
    set_property(GLOBAL APPEND PROPERTY VORN_LAYERS "${name}=${uses}")
endfunction()
