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

# The compiler's own run-time libraries go into each program and library; there is nothing to copy beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")
