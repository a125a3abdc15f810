# The target `coverage` runs every test and prints which lines of our own code ran; it fails below
# 95 %.
find_program(GCOVR gcovr REQUIRED)
set(rooms ${ZORVAN_ROOMS})
list(TRANSFORM rooms PREPEND --filter=${PROJECT_SOURCE_DIR}/)
list(TRANSFORM rooms APPEND /)
add_custom_target(coverage
    COMMAND find ${PROJECT_BINARY_DIR} -name "*.gcda" -delete
    # A test that lets no file be written loses its counts as well; gcov need not report that.
    COMMAND ${CMAKE_COMMAND} -E env GCOV_ERROR_FILE=/dev/null ${CMAKE_CTEST_COMMAND} --preset coverage
    COMMAND ${GCOVR} --root ${PROJECT_SOURCE_DIR} ${rooms} --exclude-throw-branches
            --exclude-unreachable-branches --fail-under-line 95 --html-details
            ${PROJECT_BINARY_DIR}/coverage.html --txt - ${PROJECT_BINARY_DIR}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    USES_TERMINAL
    VERBATIM)
