# What a shared library exports, and the test that watches it.

# Links a shared library with a version script, so that only what the script names is exported. On platforms without
# version scripts the export macros alone decide.
function(nexwire_version_script target script)
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL "SHARED_LIBRARY")
        return()
    endif()
    get_filename_component(script "${script}" ABSOLUTE)
    if(UNIX AND NOT APPLE)
        target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
    elseif(MINGW)
        # What third parties mark for export stays inside as well.
        target_link_options(${target} PRIVATE "LINKER:--exclude-libs,ALL")
    endif()
endfunction()

# A test that compares the classes and free functions a shared library exports with a list.
function(nexwire_exports_test target list)
    get_target_property(type ${target} TYPE)
    if(((UNIX AND NOT APPLE) OR MINGW) AND CMAKE_HOST_UNIX AND type STREQUAL "SHARED_LIBRARY")
        add_test(NAME exports.${target}
            COMMAND "${PROJECT_SOURCE_DIR}/tests/exports/check-exports" "$<TARGET_FILE:${target}>" "${list}")
        set_tests_properties(exports.${target} PROPERTIES ENVIRONMENT "NM=${CMAKE_NM};OBJDUMP=${CMAKE_OBJDUMP}")
    endif()
endfunction()
