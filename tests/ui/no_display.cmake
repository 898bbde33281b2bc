# Started with no argument where no display can be opened, quillon says so
# in one line on standard error, writes nothing on standard output, and ends
# with a nonzero status instead of aborting.
#   cmake -DQUILLON=<path> -DDISPLAY_TEST=<value or empty> -P no_display.cmake
unset(ENV{WAYLAND_DISPLAY})
unset(ENV{QT_QPA_PLATFORM})
if(DISPLAY_TEST)
  set(ENV{DISPLAY} "${DISPLAY_TEST}")
else()
  unset(ENV{DISPLAY})
endif()
execute_process(COMMAND "${QUILLON}" RESULT_VARIABLE statut OUTPUT_VARIABLE sortie ERROR_VARIABLE erreurs TIMEOUT 20)
if(NOT statut MATCHES "^[0-9]+$" OR statut EQUAL 0)
  message(FATAL_ERROR "status '${statut}', expected a nonzero exit code")
endif()
if(NOT sortie STREQUAL "")
  message(FATAL_ERROR "standard output not empty: '${sortie}'")
endif()
if(NOT erreurs MATCHES "^[^\n]*aucun affichage disponible[^\n]*SOURCE CIBLE[^\n]*\n$")
  message(FATAL_ERROR "standard error is not the one expected line: '${erreurs}'")
endif()
