# What every target of the project is compiled with.
add_library(project_options INTERFACE)

target_compile_options(project_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    # Range loops over fresh temporaries of Qt containers detach silently; let the compiler name them.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-unknown-warning-option>)
target_compile_definitions(project_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH QT_NO_KEYWORDS
    QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(VORN_SANITIZE)
    target_compile_options(project_options INTERFACE
        -fsanitize=${VORN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
        # The instrumented code makes g++ see uses of empty optionals that aren't there.
        -Wno-maybe-uninitialized)
    target_link_options(project_options INTERFACE -fsanitize=${VORN_SANITIZE})
endif()
if(VORN_FUZZ) # all code tells the fuzzer where it has been
    target_compile_options(project_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
