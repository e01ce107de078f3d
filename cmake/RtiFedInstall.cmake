# The CMake package RtiFed and the pkg-config files, by which other projects find the installed libraries.

include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/RtiFed)
install(EXPORT RtiFedTargets NAMESPACE RtiFed:: DESTINATION ${package_dir} COMPONENT development)
configure_package_config_file(cmake/RtiFedConfig.cmake.in RtiFedConfig.cmake INSTALL_DESTINATION ${package_dir})
# Before 1.0 each minor version may change the interface.
write_basic_package_version_file(RtiFedConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/RtiFedConfig.cmake ${PROJECT_BINARY_DIR}/RtiFedConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT development)

# Absolute folders are used unchanged.
set(pc_includedir "\${prefix}")
cmake_path(APPEND pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
set(pc_libdir "\${prefix}")
cmake_path(APPEND pc_libdir ${CMAKE_INSTALL_LIBDIR})

function(rtifed_pkg_config pc_name pc_description pc_requires)
    configure_file(cmake/library.pc.in ${pc_name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${pc_name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)
endfunction()
rtifed_pkg_config(rtiinfrastructure "Host layer of the federation database of an HLA 1.3 RTI" "")
rtifed_pkg_config(rtifed "Federation database of an HLA 1.3 Run-Time Infrastructure"
    "rtiinfrastructure = ${PROJECT_VERSION}")

install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation
    FILES_MATCHING PATTERN "*.fed" PATTERN "*.cc")
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation FILES_MATCHING PATTERN "*.md"
    PATTERN "*.json" PATTERN "*.svg" PATTERN "*.png")
install(FILES README.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
