# Executables of their own, because they replace the allocator.
add_executable(rtifed-allocation-tests Support.cc FailingAllocator.cc fed/allocation_test.cc)
target_compile_definitions(rtifed-allocation-tests PRIVATE
    RTIFED_EXAMPLES="${PROJECT_SOURCE_DIR}/examples"
    RTIFED_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}/data")
target_link_libraries(rtifed-allocation-tests PRIVATE rtifed rtifed_options GTest::gtest_main)
target_compile_options(rtifed-allocation-tests PRIVATE # for GoogleTest's macros
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
gtest_discover_tests(rtifed-allocation-tests DISCOVERY_TIMEOUT 60)
