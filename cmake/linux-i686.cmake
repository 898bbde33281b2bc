# A 32-bit x86 Linux build on an x86-64 Debian, with g++-multilib
# (`scripts/install-deps.sh 32bits`): the i686 Windows programs cannot run
# here, so `make test-32bits` runs these in their place, built as they are
# (SSE2 arithmetic, see CMakeLists.txt), and compares them with the 64-bit
# build. Console and batch programs only, SQLite compiled from Debian's
# source as for Windows:
#   cmake -S . -B build-32bits -DCMAKE_TOOLCHAIN_FILE=cmake/linux-i686.cmake \
#         -DQUILLON_UI=OFF -DQUILLON_TESTS=OFF
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
# Files past 2 GiB, as on the other builds.
string(APPEND CMAKE_C_FLAGS_INIT " -m32 -D_FILE_OFFSET_BITS=64")
string(APPEND CMAKE_CXX_FLAGS_INIT " -m32 -D_FILE_OFFSET_BITS=64")
