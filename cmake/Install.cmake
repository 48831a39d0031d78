# What "cmake --install" puts where, in components for the packages at the end:
#   runtime   the shared libraries
#   dev       headers, CMake package, pkg-config files, the host kit
#   tool      the command line
#   simulator the local platform as a library, for tests
# Archives (BUILD_SHARED_LIBS=OFF) and shared libraries may stand side by side: what names them is called so.
# Nothing installed knows where it was installed to, so the tree can be moved.
include(CMakePackageConfigHelpers)

set(headers "${CMAKE_INSTALL_INCLUDEDIR}/nexwire-${PROJECT_VERSION_MAJOR}")
set(package "${CMAKE_INSTALL_LIBDIR}/cmake/nexwire")

# A Keel that was named from outside is installed by whoever built it.
set(libraries nexwire)
if(NEXWIRE_KEEL_TARGET STREQUAL "nexwire::keel")
    list(APPEND libraries keel)
endif()
set(kind "")
if(NOT BUILD_SHARED_LIBS)
    set(kind "-static")
endif()
install(TARGETS ${libraries} EXPORT nexwire
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
install(EXPORT nexwire NAMESPACE nexwire:: DESTINATION "${package}" FILE nexwire${kind}-targets.cmake
    COMPONENT dev)
install(FILES ${NEXWIRE_MINGW_RUNTIME} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
if(NOT APPLE AND NOT NEXWIRE_DEB)
    set_target_properties(${libraries} PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()

set(rooms include/nexwire protocol)
if(NEXWIRE_KEEL_TARGET STREQUAL "nexwire::keel")
    list(APPEND rooms platform/keel/include/keel)
    if(NOT NEXWIRE_LOG4CXX)
        list(APPEND rooms platform/keel/plain)
    endif()
endif()
if(NEXWIRE_ABACUS_TARGET STREQUAL "nexwire::abacus")
    list(APPEND rooms platform/abacus/include/abacus)
endif()
if(NEXWIRE_HOST)
    list(APPEND rooms host/include/nexwire)
    install(TARGETS nexwire_host EXPORT nexwire-host
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
    install(EXPORT nexwire-host NAMESPACE nexwire:: DESTINATION "${package}" FILE nexwire-host${kind}-targets.cmake
        COMPONENT dev)
endif()
if(TARGET nexwire_simulator)
    install(TARGETS nexwire_simulator EXPORT nexwire-simulator
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT simulator)
    install(EXPORT nexwire-simulator NAMESPACE nexwire:: DESTINATION "${package}"
        FILE nexwire-simulator${kind}-targets.cmake COMPONENT simulator)
    install(FILES "${PROJECT_SOURCE_DIR}/simulator/Platform.h" "${PROJECT_SOURCE_DIR}/simulator/VideoWallService.h"
        DESTINATION "${headers}/simulator" COMPONENT simulator)
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
set(log_flag "")
set(log_package "")
if(NEXWIRE_LOG4CXX)
    set(log_flag " -llog4cxx")
    set(log_package "liblog4cxx-dev, ")
endif()
set(pc_files nexwire${kind}.pc)
if(NEXWIRE_HOST)
    list(APPEND pc_files nexwire-host${kind}.pc)
endif()
# They name the libraries of a system that has pkg-config.
if(WIN32)
    set(pc_files "")
endif()
foreach(file IN LISTS pc_files)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/${file}.in" "${PROJECT_BINARY_DIR}/package/${file}" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/package/${file}" DESTINATION "${pkgconfig}" COMPONENT dev)
endforeach()

if(TARGET nexwire_cli AND NOT APPLE AND NOT NEXWIRE_DEB)
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
if(TARGET nexwire_simulator)
    list(APPEND CPACK_COMPONENTS_ALL simulator)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The tool's library is in a package that is not installed yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/core" "${PROJECT_BINARY_DIR}/platform/keel")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")

set(runtime_package "libnexwire${PROJECT_VERSION_MAJOR}")
if(NEXWIRE_DEB)
    # Each package has its terms and its history; texts are compressed without the date of doing so.
    find_program(GZIP gzip REQUIRED)
    string(TIMESTAMP NEXWIRE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
    set(deb "${PROJECT_BINARY_DIR}/package/deb")
    file(READ "${PROJECT_SOURCE_DIR}/LICENSE" license)
    string(REGEX REPLACE "^MIT License\n+Copyright[^\n]*\n+" "" license "${license}")
    string(REGEX REPLACE "\n\n" "\n.\n" license "${license}")
    string(REGEX REPLACE "\n([^\n])" "\n \\1" license "${license}")
    set(NEXWIRE_LICENSE " ${license}")
    configure_file("${CMAKE_CURRENT_LIST_DIR}/deb-copyright.in" "${deb}/copyright" @ONLY)
    configure_file("${CMAKE_CURRENT_LIST_DIR}/deb-changelog.in" "${deb}/changelog" @ONLY)
    configure_file("${PROJECT_SOURCE_DIR}/docs/nexwire.1" "${deb}/nexwire.1" COPYONLY)
    execute_process(COMMAND "${GZIP}" -9nkf changelog nexwire.1 WORKING_DIRECTORY "${deb}" COMMAND_ERROR_IS_FATAL ANY)
    # The cache of the loader is renewed by whoever watches for this, not by scripts of ours.
    file(WRITE "${deb}/triggers" "activate-noawait ldconfig\n")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${deb}/triggers")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_STRICT_PERMISSION ON)
    foreach(each "runtime ${runtime_package}" "dev libnexwire-dev" "tool nexwire"
            "simulator libnexwire-simulator-dev")
        string(REPLACE " " ";" each "${each}")
        list(GET each 0 component)
        list(GET each 1 name)
        if(component IN_LIST CPACK_COMPONENTS_ALL)
            install(FILES "${deb}/copyright" "${deb}/changelog.gz" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}"
                COMPONENT ${component})
        endif()
    endforeach()
    if(TARGET nexwire_cli)
        install(FILES "${deb}/nexwire.1.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tool)
    endif()
endif()
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${runtime_package}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Shared libraries: every request of a platform is one typed function.\nA client brings its own transport, or takes the one in libnexwire-dev.")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libnexwire-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
# Boost: the header that makes a singleton of the host's own.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
    "${runtime_package} (= ${PROJECT_VERSION}), ${log_package}libboost-thread-dev, libcurl4-openssl-dev")
set(CPACK_COMPONENT_DEV_DESCRIPTION "Headers, CMake package, pkg-config files and the ready-made\nHTTP transport of libnexwire.")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME nexwire)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "Command line of libnexwire: shows and calls its functions,\nand runs a local platform to try them on.")
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_NAME libnexwire-simulator-dev)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_DEPENDS
    "libnexwire-dev (= ${PROJECT_VERSION}), libsqlite3-dev, libssl-dev, pkg-config")
set(CPACK_COMPONENT_SIMULATOR_DESCRIPTION "Local platform of libnexwire as a library: tests of a client\nstart it in their own process.")
include(CPack)
