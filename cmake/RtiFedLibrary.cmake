# How both libraries are built, exported and installed.

include(GNUInstallDirs)

# The folder to which #include "fed/..." is relative.
set(RTIFED_INCLUDE_DIR ${PROJECT_SOURCE_DIR})

# rtifed_library(NAME HEADERS FILE...): completes the target NAME. HEADERS are its public headers, relative to the root of the
# source tree; they are installed as the same tree under include/rtifed/.
function(rtifed_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS")
    add_library(RtiFed::${name} ALIAS ${name})
    list(TRANSFORM arg_HEADERS PREPEND ${RTIFED_INCLUDE_DIR}/)
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${RTIFED_INCLUDE_DIR} FILES ${arg_HEADERS})
    target_compile_features(${name} PUBLIC cxx_std_17)
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:rtifed_options>)
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        POSITION_INDEPENDENT_CODE ON
        INSTALL_RPATH $ORIGIN
        CXX_EXTENSIONS OFF)
    if(NOT RTIFED_ON_HOST) # whose headers may not mark exported classes
        set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    endif()

    string(TOUPPER ${name}_${PROJECT_VERSION_MAJOR} node)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/symbols.map.in ${CMAKE_CURRENT_BINARY_DIR}/symbols.map @ONLY)
    get_target_property(type ${name} TYPE)
    if(type STREQUAL "SHARED_LIBRARY")
        target_link_options(${name} PRIVATE LINKER:--version-script,${CMAKE_CURRENT_BINARY_DIR}/symbols.map)
        set_target_properties(${name} PROPERTIES LINK_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/symbols.map)
    endif()

    if(RTIFED_INSTALL)
        install(TARGETS ${name} EXPORT RtiFedTargets
            RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
            FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/rtifed COMPONENT development)
    endif()
endfunction()
