# Windows, x86_64: see mingw-common.cmake.
set(QUILLON_MINGW_ARCH x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
