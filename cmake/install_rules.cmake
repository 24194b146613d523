# What an installation has, in components: the library (runtime), the stand-in of the platform, and what a developer
# needs (dev).  The command (tool) and the Python package (python) have their rules in their folders.
include(CMakePackageConfigHelpers)

# Below the prefix, so that pkg-config may move it, unless they were given as absolute paths.
cmake_path(APPEND pc_libdir "\${prefix}" "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND pc_includedir "\${prefix}" "${CMAKE_INSTALL_INCLUDEDIR}")
foreach(name piovios piovios-platform)
    string(REPLACE "piovios-platform" "platform" component ${name})
    string(REPLACE "piovios" "runtime" component ${component})
    install(TARGETS ${name} EXPORT piovios-targets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component} NAMELINK_COMPONENT dev
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
            INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/piovios)
    configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endforeach()
install(DIRECTORY data/swch/include/swct platform/include/platform
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/piovios COMPONENT dev FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/piovios)
install(EXPORT piovios-targets NAMESPACE piovios:: DESTINATION ${package_dir} COMPONENT dev)
configure_package_config_file(cmake/piovios-config.cmake.in ${PROJECT_BINARY_DIR}/piovios-config.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/piovios-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/piovios-config.cmake ${PROJECT_BINARY_DIR}/piovios-config-version.cmake
        DESTINATION ${package_dir} COMPONENT dev)

configure_file(man/piovios.7 ${PROJECT_BINARY_DIR}/man/piovios.7 @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/man/piovios.7 DESTINATION ${CMAKE_INSTALL_MANDIR}/man7 COMPONENT dev)
