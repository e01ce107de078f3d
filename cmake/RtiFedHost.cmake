# For an RTI that builds fed/ on its own infrastructure; see docs/replacing-the-infrastructure.md.

set(RTIFED_ON_HOST ON)
if(NOT TARGET ${RTIFED_INFRASTRUCTURE_TARGET})
    message(FATAL_ERROR "RTIFED_INFRASTRUCTURE_TARGET: there is no target ${RTIFED_INFRASTRUCTURE_TARGET} (yet)")
endif()
if(RTIFED_BUILD_TOOL OR RTIFED_BUILD_TESTS OR RTIFED_BUILD_BENCHMARKS OR RTIFED_BUILD_PORTABLE)
    message(FATAL_ERROR "The program, the tests and the benchmarks need rtifed's own infrastructure")
endif()

# The host's headers are in a folder infrastructure/, like ours, which must not be found instead. So fed/ is included from a
# folder that contains only a link to it.
set(RTIFED_INCLUDE_DIR ${PROJECT_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${RTIFED_INCLUDE_DIR})
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/fed ${RTIFED_INCLUDE_DIR}/fed SYMBOLIC)

# For the host's infrastructure, which includes headers of fed/.
add_library(rtifed_headers INTERFACE)
add_library(RtiFed::headers ALIAS rtifed_headers)
target_include_directories(rtifed_headers INTERFACE ${RTIFED_INCLUDE_DIR})
target_compile_features(rtifed_headers INTERFACE cxx_std_17)
