# Windows, i686: see mingw-common.cmake.
set(QUILLON_MINGW_ARCH i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
