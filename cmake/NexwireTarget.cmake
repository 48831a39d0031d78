# What every target of this project is built with.

set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

if(WIN32)
    # A program finds its libraries beside it.
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
    foreach(library IN LISTS NEXWIRE_MINGW_RUNTIME)
        file(COPY "${library}" DESTINATION "${PROJECT_BINARY_DIR}/bin")
    endforeach()
endif()

if(NEXWIRE_SANITIZE)
    add_compile_options(-fsanitize=${NEXWIRE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        # RapidJSON adds an offset to the null pointer of its empty buffers.
        add_compile_options(-fno-sanitize=pointer-overflow)
    endif()
    add_link_options(-fsanitize=${NEXWIRE_SANITIZE})
endif()

if(NOT MSVC)
    # Log messages name their source file; not where it was built.
    add_compile_options(-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
endif()

# What runs for a moment, or waits most of the time, is long to optimise: little is done about it, or nothing.
if(NOT MSVC)
    set(NEXWIRE_LITTLE "$<$<CONFIG:Release>:-O1>")
    set(NEXWIRE_NOTHING "$<$<CONFIG:Release>:-O0>")
endif()

# For sources that are many or seldom run: small instead of fast. Sections of their own let the linker drop what nobody
# calls. Constructors and destructors for classes that derive are left out only where they are functions of their own.
if(NOT MSVC)
    set(NEXWIRE_MEDIUM "$<$<CONFIG:Release>:-O2;-ffunction-sections>")
    set(NEXWIRE_SMALL "$<$<CONFIG:Release>:-Os;-ffunction-sections;$<$<CXX_COMPILER_ID:GNU>:-fno-declone-ctor-dtor>>")
endif()

# Exceptions need to know how to unwind a function only if one can pass through it, and only at its calls. The assembler
# would be told of all of them.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag("-fno-asynchronous-unwind-tables -fno-dwarf2-cfi-asm" NEXWIRE_FEW_UNWIND_TABLES)
function(nexwire_few_unwind_tables target)
    if(NEXWIRE_FEW_UNWIND_TABLES AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
        target_compile_options(${target} PRIVATE
            "$<$<CONFIG:Release>:-fno-asynchronous-unwind-tables;-fno-dwarf2-cfi-asm>")
    endif()
endfunction()

# C++17 and warnings as errors.
function(nexwire_target target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /WX /utf-8 /permissive-)
        target_compile_definitions(${target} PRIVATE NOMINMAX WIN32_LEAN_AND_MEAN)
    else()
        target_compile_options(${target} PRIVATE
            -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Werror)
        if(MINGW AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # gcc 12 sees overlaps in its own std::string where sizes have 32 bits.
            target_compile_options(${target} PRIVATE -Wno-restrict)
        endif()
        get_target_property(type ${target} TYPE)
        if(MINGW AND type MATCHES "^(EXECUTABLE|SHARED_LIBRARY|MODULE_LIBRARY)$")
            target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/platform/mingw/ThreadEnd.cpp")
        endif()
    endif()
endfunction()

# Headers that most sources of a target include, read once. Only what is of others stands here: it never changes, and a
# source includes all the same what it uses. Targets can share one reading where all their options are the same.
set(NEXWIRE_STANDARD_HEADERS
    <algorithm> <array> <atomic> <charconv> <chrono> <cstddef> <cstdint> <cstdio> <cstring> <functional> <map> <memory>
    <mutex> <optional> <set> <stdexcept> <string> <string_view> <utility> <vector>)
function(nexwire_precompile target)
    if(NOT NEXWIRE_PCH)
        return()
    endif()
    if(ARGV1 STREQUAL "LIKE")
        target_precompile_headers(${target} REUSE_FROM ${ARGV2})
        # Where a package brings a macro of its own, they are read as they stand.
        set_target_properties(${target} PROPERTIES PCH_WARN_INVALID OFF)
    else()
        target_precompile_headers(${target} PRIVATE ${NEXWIRE_STANDARD_HEADERS} ${ARGN})
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND NOT MSVC)
        # Else no two are the same, and compiler caches find nothing.
        target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    endif()
endfunction()

# One test executable per room: nexwire_test(<name> SOURCES ... LIBS ...). Each gtest case is a ctest entry.
function(nexwire_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    nexwire_target(${name})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gmock GTest::gtest_main)
    nexwire_precompile(${name} LIKE nexwire_test_headers)
    # Wine takes a second to start, so there a program is one entry, without what tests/wine.txt takes out.
    if(CMAKE_CROSSCOMPILING)
        add_test(NAME ${name} COMMAND ${name} "--gtest_filter=-${NEXWIRE_NOT_UNDER_WINE}")
        set_tests_properties(${name} PROPERTIES TIMEOUT 900)
    else()
        gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300)
    endif()
endfunction()

# Makes FILE, a source that lists the tables of all structures, whenever a table is added, changed or removed.
function(nexwire_list_structures file)
    set(protocol "${PROJECT_SOURCE_DIR}/protocol")
    file(GLOB_RECURSE tables CONFIGURE_DEPENDS "${protocol}/*.cpp")
    # A removed table changes no other, but the command.
    string(MD5 names "${tables}")
    add_custom_command(
        OUTPUT "${file}"
        COMMAND "${CMAKE_COMMAND}" "-DPROTOCOL=${protocol}" "-DOUTPUT=${file}" "-DNAMES=${names}"
                -P "${PROJECT_SOURCE_DIR}/cmake/ListStructures.cmake"
        DEPENDS ${tables} "${PROJECT_SOURCE_DIR}/cmake/ListStructures.cmake" VERBATIM)
endfunction()
