# Toolchain: Windows programs by Debian's mingw compiler with POSIX threads. NEXWIRE_MINGW is the target, and
# NEXWIRE_WINDOWS_LIBRARIES the folder of what scripts/windows built for it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES NEXWIRE_MINGW NEXWIRE_WINDOWS_LIBRARIES)
string(REGEX REPLACE "-.*" "" CMAKE_SYSTEM_PROCESSOR "${NEXWIRE_MINGW}")
set(CMAKE_C_COMPILER "${NEXWIRE_MINGW}-gcc-posix")
set(CMAKE_CXX_COMPILER "${NEXWIRE_MINGW}-g++-posix")
set(CMAKE_RC_COMPILER "${NEXWIRE_MINGW}-windres")

# Nothing of the build machine, whose headers and libraries are for another system.
set(CMAKE_FIND_ROOT_PATH "${NEXWIRE_WINDOWS_LIBRARIES}" "/usr/${NEXWIRE_MINGW}" ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${NEXWIRE_WINDOWS_LIBRARIES}/lib/pkgconfig")
set(ENV{PKG_CONFIG_SYSROOT_DIR} "")

# Last on every link line: what archives of third parties and Asio's headers ask for.
set(CMAKE_CXX_STANDARD_LIBRARIES "-lmswsock -lws2_32 -lcrypt32 -lbcrypt -lkernel32 -luser32 -lshell32 -lole32 -ladvapi32")

# All programs and libraries share the compiler's run-time libraries, so that an exception passes from one to another; what
# they are is NEXWIRE_MINGW_RUNTIME, full paths. They must stand beside the programs.
set(NEXWIRE_MINGW_RUNTIME "")
foreach(library libstdc++-6 libgcc_s_dw2-1 libgcc_s_seh-1 libwinpthread-1)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${library}.dll" OUTPUT_VARIABLE path
        OUTPUT_STRIP_TRAILING_WHITESPACE)
    # A library that the target does not have comes back as it was asked for.
    if(IS_ABSOLUTE "${path}")
        list(APPEND NEXWIRE_MINGW_RUNTIME "${path}")
    endif()
endforeach()
