# What an installation has, in four components, each a Debian package (packages.cmake): the library, the stand-in of the
# platform, what a developer needs, and the command (its own rules are in tools/).
include(CMakePackageConfigHelpers)

foreach(name piovios piovios-platform)
    string(REPLACE "piovios-platform" "platform" component ${name})
    string(REPLACE "piovios" "runtime" component ${component})
    install(TARGETS ${name} EXPORT piovios-targets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${component} NAMELINK_COMPONENT dev
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

# Man pages carry the version of the project.  Compressed without name and time, they are the same in every build.
function(install_man_page page component)
    string(REGEX REPLACE ".*[.]" "man" section ${page})
    set(file ${PROJECT_BINARY_DIR}/man/${page})
    configure_file(man/${page} ${file} @ONLY)
    execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
    install(FILES ${file}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/${section} COMPONENT ${component})
endfunction()
install_man_page(piovios.7 dev)
if(PIOVIOS_BUILD_TOOL)
    install_man_page(piovios.1 tool)
endif()

include(cmake/packages.cmake)
