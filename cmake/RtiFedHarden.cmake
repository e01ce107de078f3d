# Flags that keep faults from being exploited: bounds checks, a protected stack, read-only relocation tables.
# scripts/hardened checks for them in the binaries.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)

check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
target_compile_options(rtifed_options INTERFACE -D_GLIBCXX_ASSERTIONS -fstack-protector-strong
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3>) # needs optimization
check_cxx_compiler_flag(-fstack-clash-protection RTIFED_PROBES_STACK) # not available on all architectures
if(RTIFED_PROBES_STACK)
    target_compile_options(rtifed_options INTERFACE -fstack-clash-protection)
endif()
target_link_options(rtifed_options INTERFACE LINKER:-z,relro,-z,now)
