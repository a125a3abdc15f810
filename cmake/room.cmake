# zorvan_add_room(NAME SOURCES... LINKS LIBRARY...): adds the library zorvan_NAME, made from the sources
# in the folder NAME and linked to the rooms below it.
function(zorvan_add_room name)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SOURCES;LINKS")
    add_library(zorvan_${name} ${room_SOURCES})
    target_include_directories(zorvan_${name}
        PUBLIC ${PROJECT_SOURCE_DIR}
        PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
    target_link_libraries(zorvan_${name} PUBLIC ${room_LINKS} PRIVATE zorvan_strict)
endfunction()
