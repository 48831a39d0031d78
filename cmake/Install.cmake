# What "cmake --install" puts where, in components for the packages at the end:
#   runtime   the shared libraries
#   dev       headers, CMake package, pkg-config files, the host kit
#   tool      the command line
# Nothing installed knows where it was installed to, so the tree can be moved.
include(CMakePackageConfigHelpers)

set(headers "${CMAKE_INSTALL_INCLUDEDIR}/nexwire-${PROJECT_VERSION_MAJOR}")
set(package "${CMAKE_INSTALL_LIBDIR}/cmake/nexwire")

# A Keel that was named from outside is installed by whoever built it.
set(libraries nexwire)
if(NEXWIRE_KEEL_TARGET STREQUAL "nexwire::keel")
    list(APPEND libraries keel)
endif()
install(TARGETS ${libraries} EXPORT nexwire
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
install(EXPORT nexwire NAMESPACE nexwire:: DESTINATION "${package}" FILE nexwire-targets.cmake COMPONENT dev)
if(NOT APPLE)
    set_target_properties(${libraries} PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()

set(rooms include/nexwire protocol)
if(NEXWIRE_KEEL_TARGET STREQUAL "nexwire::keel")
    list(APPEND rooms platform/keel/include/keel)
endif()
if(NEXWIRE_ABACUS_TARGET STREQUAL "nexwire::abacus")
    list(APPEND rooms platform/abacus/include/abacus)
endif()
if(NEXWIRE_HOST)
    list(APPEND rooms host/include/nexwire)
    install(TARGETS nexwire_host EXPORT nexwire-host
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
    install(EXPORT nexwire-host NAMESPACE nexwire:: DESTINATION "${package}" FILE nexwire-host-targets.cmake
        COMPONENT dev)
endif()
foreach(room IN LISTS rooms)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/${room}" DESTINATION "${headers}" COMPONENT dev
        FILES_MATCHING PATTERN "*.h")
endforeach()

configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/nexwire-config.cmake.in"
    "${PROJECT_BINARY_DIR}/package/nexwire-config.cmake"
    INSTALL_DESTINATION "${package}" NO_SET_AND_CHECK_MACRO
    NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/package/nexwire-config-version.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/package/nexwire-config.cmake"
              "${PROJECT_BINARY_DIR}/package/nexwire-config-version.cmake"
    DESTINATION "${package}" COMPONENT dev)

# The way from the .pc file up to the prefix.
set(pkgconfig "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH up "/prefix/${pkgconfig}" "/prefix")
set(pc_files nexwire.pc)
if(NEXWIRE_HOST)
    list(APPEND pc_files nexwire-host.pc)
endif()
foreach(file IN LISTS pc_files)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/${file}.in" "${PROJECT_BINARY_DIR}/package/${file}" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/package/${file}" DESTINATION "${pkgconfig}" COMPONENT dev)
endforeach()

if(TARGET nexwire_cli AND NOT APPLE)
    file(RELATIVE_PATH from_bin "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(nexwire_cli PROPERTIES INSTALL_RPATH "$ORIGIN/${from_bin}")
endif()

# Debian packages: "cpack -G DEB" in the build directory.
set(CPACK_PACKAGE_CONTACT "nexwire maintainers <maintainers@nexwire.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime dev)
if(TARGET nexwire_cli)
    list(APPEND CPACK_COMPONENTS_ALL tool)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The tool's library is in a package that is not installed yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/core" "${PROJECT_BINARY_DIR}/platform/keel")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")

set(runtime_package "libnexwire${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Shared libraries")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libnexwire-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
# Boost: the header that makes a singleton of the host's own.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "${runtime_package} (= ${PROJECT_VERSION}), liblog4cxx-dev, libboost-thread-dev, libcurl4-openssl-dev")
set(CPACK_COMPONENT_DEV_DESCRIPTION "Headers, CMake package and ready-made transport of libnexwire")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME nexwire)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "Command line and local platform of libnexwire")
include(CPack)
