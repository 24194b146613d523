include_guard(GLOBAL)

# Writes operations.inc: OPERATION(name, section) for every function that the version script exports; its sections say
# whether it attaches, asks or changes.
file(STRINGS ${PROJECT_SOURCE_DIR}/data/swch/piovios.map lines REGEX "^ *(Swct_|# (attach|ask|change|data))")
set(section "")
set(exports "")
foreach(line IN LISTS lines)
    if(line MATCHES "# ([a-z]+)")
        set(section ${CMAKE_MATCH_1})
    elseif(line MATCHES "(Swct_[A-Za-z0-9_]+)")
        string(APPEND exports "OPERATION(${CMAKE_MATCH_1}, ${section})\n")
    endif()
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/operations/operations.inc CONTENT "${exports}" @ONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/data/swch/piovios.map)

# The table of all operations, for whoever calls them all.
add_library(piovios-operations STATIC ${PROJECT_SOURCE_DIR}/fuzz/operations.cpp)
target_include_directories(piovios-operations PUBLIC
    ${PROJECT_SOURCE_DIR}/fuzz ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/data/swch/include ${PROJECT_BINARY_DIR}/operations)
# The library is what the sanitizers watch; its callers, 309 of a shape, are compiled in half the time without.
target_compile_options(piovios-operations PRIVATE $<$<BOOL:${PIOVIOS_SANITIZE}>:-fno-sanitize=address,undefined>)
