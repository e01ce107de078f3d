# The library on an RTI's own infrastructure: a separate project, which the test builds.
set(flags "${CMAKE_CXX_FLAGS} -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror")
if(RTIFED_SANITIZE)
    string(APPEND flags " -fsanitize=${RTIFED_SANITIZE} -fno-sanitize-recover=all")
endif()
add_test(NAME host COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/host_test.sh $<TARGET_FILE:rtifed-tool>
    ${PROJECT_SOURCE_DIR}/examples/harbour.fed ${PROJECT_BINARY_DIR}/host
    -G ${CMAKE_GENERATOR} -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER} -DCMAKE_CXX_FLAGS=${flags})
set_tests_properties(host PROPERTIES PROCESSORS 2)
