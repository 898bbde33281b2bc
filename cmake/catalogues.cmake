# The translations: each po/LL.po compiled by gettext's msgfmt (which checks
# it, placeholders included) and embedded in the programs as a byte array,
# so that the statically linked Windows programs need no file beside them.
# Sets QUILLON_CATALOGUES_CC, the generated source to build into the core.
find_program(QUILLON_MSGFMT msgfmt REQUIRED)
set(QUILLON_LANGUES de it)
set(quillon_mo "")
foreach(langue IN LISTS QUILLON_LANGUES)
  set(mo ${CMAKE_CURRENT_BINARY_DIR}/generated/quillon-${langue}.mo)
  add_custom_command(OUTPUT ${mo}
                     COMMAND ${QUILLON_MSGFMT} --check -o ${mo} ${PROJECT_SOURCE_DIR}/po/${langue}.po
                     DEPENDS ${PROJECT_SOURCE_DIR}/po/${langue}.po
                     COMMENT "Compiling the ${langue} translations")
  list(APPEND quillon_mo ${mo})
endforeach()
list(JOIN QUILLON_LANGUES "," quillon_langues)
set(QUILLON_CATALOGUES_CC ${CMAKE_CURRENT_BINARY_DIR}/generated/catalogues.cc)
add_custom_command(OUTPUT ${QUILLON_CATALOGUES_CC}
                   COMMAND ${CMAKE_COMMAND} -DLANGUES=${quillon_langues}
                           -DDOSSIER=${CMAKE_CURRENT_BINARY_DIR}/generated -DSORTIE=${QUILLON_CATALOGUES_CC}
                           -P ${PROJECT_SOURCE_DIR}/cmake/embed_catalogues.cmake
                   DEPENDS ${quillon_mo} ${PROJECT_SOURCE_DIR}/cmake/embed_catalogues.cmake)
