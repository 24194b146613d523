# What a node developer gets: the library, the stand-in of the platform, headers, a CMake package and pkg-config files.
include(CMakePackageConfigHelpers)

install(TARGETS piovios piovios-platform
        EXPORT piovios-targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/piovios)
install(DIRECTORY data/swch/include/swct platform/include/platform
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/piovios FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/piovios)
install(EXPORT piovios-targets NAMESPACE piovios:: DESTINATION ${package_dir})
configure_package_config_file(cmake/piovios-config.cmake.in ${PROJECT_BINARY_DIR}/piovios-config.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/piovios-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/piovios-config.cmake ${PROJECT_BINARY_DIR}/piovios-config-version.cmake
        DESTINATION ${package_dir})

foreach(name piovios piovios-platform)
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
