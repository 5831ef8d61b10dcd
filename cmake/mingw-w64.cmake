# Cross-building for 64-bit Windows with Debian's g++, the one with POSIX threads, because std::thread needs them.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# What scripts/windows-prefix.sh built.
if(NOT "$ENV{NBSCORE_WINDOWS_PREFIX}" STREQUAL "")
    set(NBSCORE_WINDOWS_PREFIX $ENV{NBSCORE_WINDOWS_PREFIX})
else()
    set(NBSCORE_WINDOWS_PREFIX ${CMAKE_CURRENT_LIST_DIR}/../build/windows-prefix)
endif()
get_filename_component(NBSCORE_WINDOWS_PREFIX ${NBSCORE_WINDOWS_PREFIX} ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${NBSCORE_WINDOWS_PREFIX})
set(CMAKE_PREFIX_PATH ${NBSCORE_WINDOWS_PREFIX})
set(ENV{PKG_CONFIG_LIBDIR} ${NBSCORE_WINDOWS_PREFIX}/lib/pkgconfig)

# Use this machine's programs, but never its libraries, headers and packages.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
