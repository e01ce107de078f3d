# For an RTI that builds fed/ on an infrastructure of its own; docs/replacing-the-infrastructure.md is the guide.

set(RTIFED_ON_HOST ON)
if(NOT TARGET ${RTIFED_INFRASTRUCTURE_TARGET})
    message(FATAL_ERROR "RTIFED_INFRASTRUCTURE_TARGET: there is no target ${RTIFED_INFRASTRUCTURE_TARGET} (yet)")
endif()
if(RTIFED_BUILD_TOOL OR RTIFED_BUILD_TESTS OR RTIFED_BUILD_BENCHMARKS OR RTIFED_BUILD_PORTABLE)
    message(FATAL_ERROR "The program, the tests and the benchmarks need the infrastructure that comes with rtifed")
endif()

# The host's headers stand under infrastructure/ as ours do, which must not be found in their place: so fed/ is looked for
# where it stands alone.
set(RTIFED_INCLUDE_DIR ${PROJECT_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${RTIFED_INCLUDE_DIR})
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/fed ${RTIFED_INCLUDE_DIR}/fed SYMBOLIC)

# What the host's infrastructure itself sees of the library.
add_library(rtifed_headers INTERFACE)
add_library(RtiFed::headers ALIAS rtifed_headers)
target_include_directories(rtifed_headers INTERFACE ${RTIFED_INCLUDE_DIR})
target_compile_features(rtifed_headers INTERFACE cxx_std_17)
