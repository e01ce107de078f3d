# The library on the infrastructure of an RTI that has one of its own: a project apart, built by the test.
set(flags "${CMAKE_CXX_FLAGS} -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror")
if(RTIFED_SANITIZE)
    string(APPEND flags " -fsanitize=${RTIFED_SANITIZE} -fno-sanitize-recover=all")
endif()
add_test(NAME host COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/host_test.sh $<TARGET_FILE:rtifed-tool>
    ${PROJECT_SOURCE_DIR}/examples/harbour.fed ${PROJECT_BINARY_DIR}/host
    -G ${CMAKE_GENERATOR} -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER} -DCMAKE_CXX_FLAGS=${flags})
set_tests_properties(host PROPERTIES PROCESSORS 2)

# Each sample of the guide stands in a file of that project.
add_test(NAME guide COMMAND ${CMAKE_COMMAND} -D GUIDE=${PROJECT_SOURCE_DIR}/docs/replacing-the-infrastructure.md
    -D SAMPLES=${CMAKE_CURRENT_LIST_DIR}/host -P ${CMAKE_CURRENT_LIST_DIR}/guide_test.cmake)
