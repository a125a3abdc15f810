# How strictly our own code is compiled, in one place; the presets choose the options.
option(ZORVAN_WARNINGS_AS_ERRORS "Stop the build at the first warning, with a compiler that we know" OFF)
option(ZORVAN_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(ZORVAN_FUZZ "Build what tools/fuzz runs, which takes Clang and the sanitizers" OFF)
option(ZORVAN_COVERAGE "Count which lines run" OFF)

# A newer compiler may give warnings that nobody has seen yet.
set(newer_than_known_GNU 15)
set(newer_than_known_Clang 20)
if(ZORVAN_WARNINGS_AS_ERRORS)
    set(newer_than_known ${newer_than_known_${CMAKE_CXX_COMPILER_ID}})
    if(newer_than_known AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS newer_than_known)
        set(error_on_warning -Werror)
    else()
        message(STATUS "Warnings are no errors: "
            "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} is not among the compilers that we know")
    endif()
endif()

add_library(zorvan_strict INTERFACE)
target_compile_definitions(zorvan_strict INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_CONTEXTLESS_CONNECT
    QT_NO_FOREACH
    QT_NO_KEYWORDS
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_URL_CAST_FROM_STRING
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
)

if(MSVC)
    target_compile_options(zorvan_strict INTERFACE /W4 /permissive- /utf-8)
else()
    target_compile_options(zorvan_strict INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wnon-virtual-dtor
        ${error_on_warning})
    if(ZORVAN_SANITIZE)
        set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_compile_options(zorvan_strict INTERFACE ${sanitizers})
        target_link_options(zorvan_strict INTERFACE ${sanitizers})
    endif()
    if(ZORVAN_FUZZ)
        # Tells the fuzzer which branches an input takes.
        target_compile_options(zorvan_strict INTERFACE -fsanitize=fuzzer-no-link)
    endif()
    if(ZORVAN_COVERAGE)
        target_compile_options(zorvan_strict INTERFACE --coverage -fno-inline)
        target_link_options(zorvan_strict INTERFACE --coverage)
    endif()
endif()
