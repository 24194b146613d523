# How everything of the project is compiled: C++20, C11, nothing exported unless it says so.  The presets make warnings
# errors (CMAKE_COMPILE_WARNING_AS_ERROR); a newer compiler than ours shall not stop somebody else's build.

# The region is a record of the processor's own bytes, and every node that shares it is little-endian with 64 bits.
if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8 OR NOT CMAKE_CXX_BYTE_ORDER STREQUAL "LITTLE_ENDIAN")
    message(FATAL_ERROR "piovios needs a little-endian target of 64 bits; this one, ${CMAKE_SYSTEM_PROCESSOR}, is none")
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion)
# Trace points and assertions name sources relative to the project.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)

option(PIOVIOS_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
if(PIOVIOS_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# What CLI11, JSON and gmock bring along takes seconds to compile in each source.
option(PIOVIOS_JOIN_SOURCES "Compile the command in a few pieces: quicker, but each change compiles more" OFF)
option(PIOVIOS_PRECOMPILE "Precompile the headers of command and tests" ${PIOVIOS_JOIN_SOURCES})

# A build tree's own search path, too, is the same wherever the tree lies: it counts into the build id.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# One optimisation over all sources of the library; not in a static one, whose objects shall be any linker's.
if(BUILD_SHARED_LIBS AND NOT PIOVIOS_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    include(CheckIPOSupported)
    check_ipo_supported(RESULT PIOVIOS_LTO OUTPUT ignored LANGUAGES CXX)
endif()
