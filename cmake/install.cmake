# What `cmake --install` puts where, honouring CMAKE_INSTALL_PREFIX and
# DESTDIR.
#
# Linux, in the folders of GNUInstallDirs, in two components that are also
# the two Debian packages (cmake/packaging.cmake):
#   quillon    the console and batch programs, their manual pages, the bash
#              completion, the README, the samples, copyright, the
#              third-party notices and changelog
#   fenetres   the windowed program, its manual page, the desktop entry, the
#              icons in the hicolor theme, the AppStream metainfo, and its
#              own copyright, notices and changelog
# The windowed program stays in bin beside quillon, which starts it from its
# own folder, installed as in the build tree.
#
# Windows: one flat folder, the programs at its root with the README, the
# license, the third-party notices and the samples, for the zip and the
# installer (packaging/windows).
include(GNUInstallDirs)

# The application's one identifier: desktop entry, icons, metainfo.
set(QUILLON_ID "ch.quillon.Quillon")
set(QUILLON_URL "https://quillon.ch" CACHE STRING "Home page of the project, for the packages and the metainfo")
set(QUILLON_MAINTENEUR "Mainteneurs de Quillon <quillon@quillon.ch>" CACHE STRING
    "Maintainer of the packages, as Debian writes it")
# The documentation folder, share/doc/quillon whatever the project's name.
set(QUILLON_DOCDIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/quillon")

# The date of this version, for the manual pages, the changelog and the
# metainfo: SOURCE_DATE_EPOCH when given, otherwise the last commit's.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(QUILLON_EPOCH "$ENV{SOURCE_DATE_EPOCH}")
else()
  execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
                  OUTPUT_VARIABLE QUILLON_EPOCH OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(NOT QUILLON_EPOCH MATCHES "^[0-9]+$")
    string(TIMESTAMP QUILLON_EPOCH "%s" UTC)
  endif()
  set(ENV{SOURCE_DATE_EPOCH} "${QUILLON_EPOCH}")  # string(TIMESTAMP) reads it
endif()
string(TIMESTAMP QUILLON_DATE "%Y-%m-%d" UTC)
string(TIMESTAMP QUILLON_DATE_DEBIAN "%a, %d %b %Y %H:%M:%S +0000" UTC)

if(WIN32)
  install(TARGETS quillon quillon-lot RUNTIME DESTINATION .)
  if(TARGET quillon-fenetres)
    install(TARGETS quillon-fenetres RUNTIME DESTINATION .)
  endif()
  install(FILES README.md LICENSE NOTICES DESTINATION .)
  install(DIRECTORY samples/ DESTINATION samples)
  return()
endif()

set(QUILLON_AVEC_FENETRES OFF)
if(TARGET quillon-fenetres)
  set(QUILLON_AVEC_FENETRES ON)
endif()

# Programs.
install(TARGETS quillon quillon-lot RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT quillon)
if(QUILLON_AVEC_FENETRES)
  install(TARGETS quillon-fenetres RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT fenetres)
endif()

# Manual pages, in scdoc (docs/man), turned into roff and compressed at
# build time.
option(QUILLON_MAN "Build and install the manual pages (needs scdoc)" ON)
set(QUILLON_PAGES_MAN "")
if(QUILLON_MAN)
  find_program(QUILLON_SCDOC scdoc)
  if(NOT QUILLON_SCDOC)
    message(FATAL_ERROR "scdoc is needed for the manual pages: run scripts/install-deps.sh, or give -DQUILLON_MAN=OFF")
  endif()
  set(pages quillon quillon-lot)
  if(QUILLON_AVEC_FENETRES)
    list(APPEND pages quillon-fenetres)
  endif()
  # The pages translated, in docs/man/LANGUAGE, go to man/LANGUAGE/man1
  # (man -L de quillon-lot).
  foreach(langue IN ITEMS de it)
    file(GLOB traduites CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/docs/man
         ${PROJECT_SOURCE_DIR}/docs/man/${langue}/*.1.scd)
    foreach(traduite IN LISTS traduites)
      string(REGEX REPLACE "\\.1\\.scd$" "" traduite ${traduite})
      # The windowed program's page only with that program.
      if(QUILLON_AVEC_FENETRES OR NOT traduite MATCHES "/quillon-fenetres$")
        list(APPEND pages ${traduite})
      endif()
    endforeach()
  endforeach()
  foreach(page IN LISTS pages)
    set(source ${CMAKE_CURRENT_BINARY_DIR}/man/${page}.1.scd)
    set(roff ${CMAKE_CURRENT_BINARY_DIR}/man/${page}.1)
    configure_file(docs/man/${page}.1.scd ${source} @ONLY)
    add_custom_command(OUTPUT ${roff} ${roff}.gz
      COMMAND ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=${QUILLON_EPOCH}
              sh -c "\"$0\" < \"$1\" > \"$2\" && gzip -9nc \"$2\" > \"$2.gz\"" ${QUILLON_SCDOC} ${source} ${roff}
      DEPENDS ${source}
      COMMENT "Manual page ${page}(1)"
      VERBATIM)
    list(APPEND QUILLON_PAGES_MAN ${roff})
    get_filename_component(nom ${page} NAME)
    get_filename_component(dossier ${page} DIRECTORY)  # the language, or nothing
    set(composant quillon)
    if(nom STREQUAL "quillon-fenetres")
      set(composant fenetres)
    endif()
    if(dossier)
      set(dossier ${dossier}/)
    endif()
    install(FILES ${roff}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/${dossier}man1 COMPONENT ${composant})
  endforeach()
  add_custom_target(quillon_man ALL DEPENDS ${QUILLON_PAGES_MAN})
endif()

# Bash completion, where bash-completion looks for it by the command's name.
install(FILES data/completion/quillon data/completion/quillon-lot
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions COMPONENT quillon)

# Documentation: README, samples, and for each package the copyright and the
# changelog Debian asks for, and the third-party notices (NOTICES: what the
# programs hold of other works, and their licenses). The changelog and the
# notices are compressed, as Debian wants its longer documents; the license
# itself is in copyright.
configure_file(packaging/debian/changelog.in ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog @ONLY)
configure_file(NOTICES ${CMAKE_CURRENT_BINARY_DIR}/debian/NOTICES COPYONLY)
set(QUILLON_DOCS_DEBIAN ${CMAKE_CURRENT_BINARY_DIR}/debian/changelog.gz ${CMAKE_CURRENT_BINARY_DIR}/debian/NOTICES.gz)
foreach(gz IN LISTS QUILLON_DOCS_DEBIAN)
  string(REGEX REPLACE "[.]gz$" "" texte ${gz})
  add_custom_command(OUTPUT ${gz} COMMAND gzip -9nc ${texte} > ${gz} DEPENDS ${texte} VERBATIM)
endforeach()
add_custom_target(quillon_docs_debian ALL DEPENDS ${QUILLON_DOCS_DEBIAN})
install(FILES README.md packaging/debian/copyright ${QUILLON_DOCS_DEBIAN}
        DESTINATION ${QUILLON_DOCDIR} COMPONENT quillon)
install(DIRECTORY samples/ DESTINATION ${QUILLON_DOCDIR}/samples COMPONENT quillon)

# The windowed program's menu entry, file kinds, icon and metainfo.
if(QUILLON_AVEC_FENETRES)
  install(FILES data/${QUILLON_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications COMPONENT fenetres)
  # The kinds of point files that the desktop entry opens.
  install(FILES data/${QUILLON_ID}.mime.xml DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/mime/packages
          RENAME ${QUILLON_ID}.xml COMPONENT fenetres)
  foreach(taille 16 32 48 64 128 256)
    install(FILES data/icons/quillon-${taille}.png
            DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor/${taille}x${taille}/apps
            RENAME ${QUILLON_ID}.png COMPONENT fenetres)
  endforeach()
  configure_file(data/${QUILLON_ID}.metainfo.xml.in ${CMAKE_CURRENT_BINARY_DIR}/${QUILLON_ID}.metainfo.xml @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${QUILLON_ID}.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo COMPONENT fenetres)
  install(FILES packaging/debian/copyright ${QUILLON_DOCS_DEBIAN}
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/quillon-fenetres COMPONENT fenetres)
endif()

# The install rules' tests: a DESTDIR install whose programs convert like the
# build tree's, and the manual pages as man shows them.
if(QUILLON_TESTS AND NOT CMAKE_CROSSCOMPILING)
  add_test(NAME installation
    COMMAND sh ${PROJECT_SOURCE_DIR}/tests/install/install_test.sh
            ${CMAKE_COMMAND} ${CMAKE_BINARY_DIR} ${PROJECT_SOURCE_DIR} ${QUILLON_AVEC_FENETRES} ${QUILLON_MAN})
  if(QUILLON_MAN)
    add_test(NAME pages_de_manuel
      COMMAND sh ${PROJECT_SOURCE_DIR}/tests/install/man_test.sh
              ${CMAKE_CURRENT_BINARY_DIR}/man $<TARGET_FILE:quillon-lot> ${PROJECT_SOURCE_DIR}/data/completion/quillon-lot)
  endif()
endif()
