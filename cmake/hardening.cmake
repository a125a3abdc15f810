# Flags that stop the program at a memory error, before anyone can exploit it. Each is used only if
# the compiler or the linker knows it. The sanitizers find more and cannot be combined with them.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)
include(CheckPIESupported)
include(CMakePushCheckState)

if(ZORVAN_SANITIZE)
    message(STATUS "Not hardened: built with the sanitizers instead")
    return()
endif()

check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(CMAKE_CXX_LINK_PIE_SUPPORTED)
    list(APPEND hardened_by PIE)
endif()

if(MSVC)
    set(compiler_flags /guard:cf)
    set(linker_flags /guard:cf /DYNAMICBASE /NXCOMPAT)
else()
    set(compiler_flags -fstack-protector-strong)
    if(NOT WIN32)
        # Windows has other means for these. The last two, for control flow, are for different kinds
        # of processors.
        list(APPEND compiler_flags -fstack-clash-protection -fcf-protection -mbranch-protection=standard)
    endif()
    # Some compilers keep the stack's guards in a library that the linker adds for this flag.
    set(linker_flags -fstack-protector-strong)
    if(WIN32)
        list(APPEND linker_flags LINKER:--dynamicbase,--high-entropy-va LINKER:--nxcompat)
    else()
        list(APPEND linker_flags LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
    endif()
endif()
foreach(flag ${compiler_flags})
    string(MAKE_C_IDENTIFIER "COMPILES_WITH_${flag}" works)
    cmake_push_check_state()
    if(NOT MSVC)
        # Clang only warns about a flag for another kind of processor.
        set(CMAKE_REQUIRED_FLAGS -Werror)
    endif()
    check_cxx_compiler_flag(${flag} ${works})
    cmake_pop_check_state()
    if(${works})
        target_compile_options(zorvan_strict INTERFACE ${flag})
        list(APPEND hardened_by ${flag})
    endif()
endforeach()
foreach(flag ${linker_flags})
    string(MAKE_C_IDENTIFIER "LINKS_WITH_${flag}" works)
    check_linker_flag(CXX ${flag} ${works})
    if(${works})
        target_link_options(zorvan_strict INTERFACE ${flag})
        list(APPEND hardened_by ${flag})
    endif()
endforeach()

if(NOT MSVC)
    # The C library checks nothing in code that is not optimised, and warns about a level that it
    # does not know. Some compilers set a level of their own.
    cmake_push_check_state()
    set(CMAKE_REQUIRED_FLAGS "-O2 -Werror -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3")
    check_cxx_source_compiles("
        #include <cstdlib>
        #if __USE_FORTIFY_LEVEL != 3
        #error
        #endif
        int main() {}" FORTIFIES_AT_LEVEL_3)
    cmake_pop_check_state()
    set(level 2)
    if(FORTIFIES_AT_LEVEL_3)
        set(level 3)
    endif()
    set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
    target_compile_options(zorvan_strict INTERFACE
        $<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=${level}>)
    target_compile_definitions(zorvan_strict INTERFACE _GLIBCXX_ASSERTIONS)
    list(APPEND hardened_by "_FORTIFY_SOURCE=${level} where optimised" _GLIBCXX_ASSERTIONS)
endif()

list(JOIN hardened_by ", " hardened_by)
message(STATUS "Hardened by ${hardened_by}")
