include_guard(GLOBAL)

# Writes operations.inc: OPERATION(name) for every function that the version script exports.
file(STRINGS ${PROJECT_SOURCE_DIR}/data/swch/piovios.map exports REGEX "Swct_")
list(TRANSFORM exports REPLACE " *([A-Za-z0-9_]+);" "OPERATION(\\1)\n")
list(JOIN exports "" exports)
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/operations/operations.inc CONTENT "${exports}" @ONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/data/swch/piovios.map)

# The table of all operations, for whoever calls them all.
add_library(piovios-operations INTERFACE)
target_sources(piovios-operations INTERFACE ${PROJECT_SOURCE_DIR}/fuzz/operations.cpp)
target_include_directories(piovios-operations INTERFACE
    ${PROJECT_SOURCE_DIR}/fuzz ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/data/swch/include ${PROJECT_BINARY_DIR}/operations)
