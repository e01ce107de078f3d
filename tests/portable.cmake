# Checks that this machine's images and checksums are those of data/portable.txt. A cross-compiled program runs under
# CMAKE_CROSSCOMPILING_EMULATOR.
add_executable(rtifed-portable-test ${CMAKE_CURRENT_LIST_DIR}/fed/portable_test.cc)
target_link_libraries(rtifed-portable-test PRIVATE rtifed rtifed_options)
add_test(NAME portable COMMAND
    sh -c "out=$(\"$@\") && printf '%s\\n' \"$out\" | diff -u \"$0\" -" ${CMAKE_CURRENT_LIST_DIR}/data/portable.txt
    ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:rtifed-portable-test> ${PROJECT_SOURCE_DIR}/examples)
