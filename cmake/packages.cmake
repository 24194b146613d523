# Debian packages, one for each component of install_rules.cmake.  scripts/package builds and checks them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME piovios)
set(CPACK_PACKAGE_CONTACT "The piovios developers <developers@piovios.example.org>")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${CPACK_PACKAGE_CONTACT})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_COMPONENTS_ALL runtime platform dev)
set(CPACK_STRIP_FILES ON)
# What the packages call and no package of the system has is another component's.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR}/data/swch ${PROJECT_BINARY_DIR}/platform)

set(abi ${PROJECT_VERSION_MAJOR})
set(same "(= ${PROJECT_VERSION})")

# name: package, section, dependencies on the others, one line, and the rest of the description.
function(describe_package component name section depends summary description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)

    set(doc ${PROJECT_BINARY_DIR}/debian/${component})
    configure_file(cmake/debian/changelog.in ${doc}/changelog @ONLY)
    # Without name and time in it, the file is the same in every build.
    execute_process(COMMAND gzip -9nf ${doc}/changelog COMMAND_ERROR_IS_FATAL ANY)
    install(FILES ${doc}/changelog.gz cmake/debian/copyright DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${name}
            COMPONENT ${component})
endfunction()

describe_package(runtime libpiovios${abi} libs ""
    "shared store of a switching node's layer-2 configuration"
    "A packed record in shared memory that the processes of an Ethernet
switching node write and ask: switch attributes, VLANs, ports, QinQ and
provider-bridge tables, queue history.  The library calls the platform
libraries of the node; libpiovios-platform${abi} stands in for them.")
describe_package(platform libpiovios-platform${abi} libs ""
    "shared store of a switching node - stand-in of the platform"
    "What libpiovios${abi} needs of a node, for systems that are none: POSIX
shared memory, clock, traces on the standard error output, slots.")
describe_package(dev libpiovios-dev libdevel
    "libpiovios${abi} ${same}, libpiovios-platform${abi} ${same}"
    "shared store of a switching node - development files"
    "Headers, CMake package and pkg-config files for programs that use
libpiovios${abi}, and the manual page piovios(7).")
if(PIOVIOS_BUILD_TOOL)
    list(APPEND CPACK_COMPONENTS_ALL tool)
    describe_package(tool piovios net
        "libpiovios${abi} ${same}, libpiovios-platform${abi} ${same}"
        "shared store of a switching node - operator's command"
    "Loads, saves, shows, checks and watches the layer-2 configuration that
the processes of a switching node share.")
endif()

# The loader's cache, and what packages that link a library depend on.
function(describe_library component library package)
    string(TOUPPER ${component} upper)
    set(shlibs ${PROJECT_BINARY_DIR}/debian/${component}/shlibs)
    file(WRITE ${shlibs} "${library} ${abi} ${package} (>= ${PROJECT_VERSION})\n")
    set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers ${shlibs} PARENT_SCOPE)
endfunction()
describe_library(runtime libpiovios libpiovios${abi})
describe_library(platform libpiovios-platform libpiovios-platform${abi})
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)

include(CPack)
