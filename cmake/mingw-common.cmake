# Cross-building for Windows with Debian's mingw-w64 (posix threads); the
# toolchain files mingw-x86_64.cmake and mingw-i686.cmake set
# QUILLON_MINGW_ARCH and include this one:
#   cmake -S . -B build-win64 -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-x86_64.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${QUILLON_MINGW_ARCH})
set(CMAKE_C_COMPILER ${QUILLON_MINGW_ARCH}-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER ${QUILLON_MINGW_ARCH}-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER ${QUILLON_MINGW_ARCH}-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${QUILLON_MINGW_ARCH}-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The tests run under wine, where it is installed (make test-windows).
find_program(QUILLON_WINE NAMES wine)
if(QUILLON_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QUILLON_WINE})
endif()
