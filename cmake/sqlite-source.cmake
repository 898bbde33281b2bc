# SQLite for the cross builds (Windows with mingw-w64, 32-bit Linux),
# compiled by their own compiler from Debian's source package of sqlite3,
# which `scripts/install-deps.sh windows` (or `32bits`) unpacks into
# /usr/src/quillon-sqlite3. Its amalgamation (one C file) is made once with
# the package's own tools, on the build machine, then built as a static
# library that the programs link. Without that source, SQLite::SQLite3 is not
# defined.
set(QUILLON_SQLITE_SOURCES "/usr/src/quillon-sqlite3" CACHE PATH "Where Debian's source of sqlite3 was unpacked")
file(GLOB _quillon_sqlite_arbre LIST_DIRECTORIES true "${QUILLON_SQLITE_SOURCES}/sqlite3-*")
list(FILTER _quillon_sqlite_arbre EXCLUDE REGEX "\\.(dsc|tar\\..*)$")
if(_quillon_sqlite_arbre)
  list(GET _quillon_sqlite_arbre 0 _quillon_sqlite_arbre)
  set(_quillon_amalgame ${CMAKE_BINARY_DIR}/sqlite-amalgamation)
  if(NOT EXISTS ${_quillon_amalgame}/sqlite3.c)
    message(STATUS "Making SQLite's amalgamation from ${_quillon_sqlite_arbre}")
    file(MAKE_DIRECTORY ${_quillon_amalgame})
    execute_process(COMMAND sh ${_quillon_sqlite_arbre}/configure --disable-tcl --disable-readline
                    WORKING_DIRECTORY ${_quillon_amalgame} OUTPUT_QUIET ERROR_QUIET RESULT_VARIABLE _quillon_r1)
    execute_process(COMMAND make sqlite3.c WORKING_DIRECTORY ${_quillon_amalgame} OUTPUT_QUIET ERROR_QUIET
                    RESULT_VARIABLE _quillon_r2)
  endif()
  if(EXISTS ${_quillon_amalgame}/sqlite3.c)
    enable_language(C)
    add_library(quillon_sqlite STATIC ${_quillon_amalgame}/sqlite3.c)
    target_include_directories(quillon_sqlite SYSTEM PUBLIC ${_quillon_amalgame})
    # Threads are the program's own; no extension is loaded at run time.
    target_compile_definitions(quillon_sqlite PRIVATE SQLITE_THREADSAFE=1 SQLITE_OMIT_LOAD_EXTENSION
                               SQLITE_ENABLE_RTREE=1 SQLITE_DQS=0)
    target_compile_options(quillon_sqlite PRIVATE -w)
    set_target_properties(quillon_sqlite PROPERTIES INTERPROCEDURAL_OPTIMIZATION OFF)
    add_library(SQLite::SQLite3 ALIAS quillon_sqlite)
  endif()
endif()
