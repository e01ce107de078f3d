# Executables of their own, because they replace the allocator.
add_executable(rtifed-allocation-tests FailingAllocator.cc fed/allocation_test.cc)
target_link_libraries(rtifed-allocation-tests PRIVATE rtifed-test-parts GTest::gtest_main)
target_compile_options(rtifed-allocation-tests PRIVATE # for GoogleTest's macros
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
gtest_discover_tests(rtifed-allocation-tests DISCOVERY_TIMEOUT 60)
