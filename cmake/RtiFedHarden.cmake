# What stops a fault before it is made use of: bounds that are checked, a stack that tells when it was overwritten, tables
# of addresses that nobody writes to. scripts/hardened looks whether it is in the binaries.

include(CheckCXXCompilerFlag)
include(CheckPIESupported)

check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
target_compile_options(rtifed_options INTERFACE -D_GLIBCXX_ASSERTIONS -fstack-protector-strong
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3>) # which needs an optimizer
foreach(flag -fstack-clash-protection -fcf-protection) # not every compiler has these for every machine
    check_cxx_compiler_flag(${flag} RTIFED_HAS${flag})
    if(RTIFED_HAS${flag})
        target_compile_options(rtifed_options INTERFACE ${flag})
    endif()
endforeach()
target_link_options(rtifed_options INTERFACE LINKER:-z,relro,-z,now)
