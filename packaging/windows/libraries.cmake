# Installs Qt's plugin for the desktop of Windows, and every library that it and the program need and that
# Windows itself does not have.

set(links ${made}/libraries)
# CMake looks them up by their names in small letters, which are not those of Qt's files.
file(REMOVE_RECURSE ${links})
file(MAKE_DIRECTORY ${links})
foreach(folder ${qt_libraries} ${compiler_libraries})
    file(GLOB found RELATIVE ${folder} ${folder}/*.dll)
    foreach(name ${found})
        string(TOLOWER ${name} link)
        file(CREATE_LINK ${folder}/${name} ${links}/${link} SYMBOLIC)
    endforeach()
endforeach()

set(CMAKE_GET_RUNTIME_DEPENDENCIES_PLATFORM windows+pe)
set(CMAKE_GET_RUNTIME_DEPENDENCIES_TOOL objdump)
set(CMAKE_GET_RUNTIME_DEPENDENCIES_COMMAND ${objdump})
# One that is missing is an error.
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${program} MODULES ${plugin}
    RESOLVED_DEPENDENCIES_VAR found
    PRE_INCLUDE_REGEXES ^qt6 ^lib
    PRE_EXCLUDE_REGEXES .
    DIRECTORIES ${links})

# install_library(FILE FOLDER): to that folder of what is installed.
function(install_library file folder)
    file(INSTALL ${file} DESTINATION ${CMAKE_INSTALL_PREFIX}/${folder} TYPE SHARED_LIBRARY)
    if(CMAKE_INSTALL_DO_STRIP)
        cmake_path(GET file FILENAME name)
        execute_process(
            COMMAND ${strip} --preserve-dates $ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${folder}/${name}
            COMMAND_ERROR_IS_FATAL ANY)
    endif()
endfunction()

install_library(${plugin} plugins/platforms)
foreach(link ${found})
    file(READ_SYMLINK ${link} library)
    install_library(${library} .)
endforeach()
