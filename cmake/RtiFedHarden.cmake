# What stops a fault before it is made use of: bounds that are checked, a stack that tells when it was overwritten, tables
# of addresses that nobody writes to. scripts/hardened looks whether it is in the binaries.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)

check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
target_compile_options(rtifed_options INTERFACE -D_GLIBCXX_ASSERTIONS -fstack-protector-strong
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3>) # which needs an optimizer
check_cxx_compiler_flag(-fstack-clash-protection RTIFED_PROBES_STACK) # not every compiler has it for every machine
if(RTIFED_PROBES_STACK)
    target_compile_options(rtifed_options INTERFACE -fstack-clash-protection)
endif()
target_link_options(rtifed_options INTERFACE LINKER:-z,relro,-z,now)
