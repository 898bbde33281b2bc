# Embeds a page's script in a header at configure time: the sources given,
# joined in their order (the map's, then the page's own) and stripped of
# their comments and indentation, as kScript<NOM>,
# and the SHA-256 of those bytes in base64 for the page's
# Content-Security-Policy as kHashScript<NOM>. Every build, the Windows one
# included, carries the same bytes.
function(quillon_embarquer_script nom sortie)
  set(script "")
  set(fichiers "")
  foreach(source IN LISTS ARGN)
    get_filename_component(fichier ${source} NAME)
    file(READ ${source} morceau)
    string(APPEND script "${morceau}")
    list(APPEND fichiers src/report/${fichier})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  endforeach()
  list(JOIN fichiers " and " fichiers)
  # What the browser needs alone: no comment, no indentation, no blank line
  # (the scripts hold no text that spans lines or holds " // ").
  string(REGEX REPLACE "\n[ ]*//[^\n]*" "" script "\n${script}")
  string(REGEX REPLACE "[ ]+// [^\n]*" "" script "${script}")
  string(REGEX REPLACE "\n[ ]+" "\n" script "${script}")
  string(REGEX REPLACE "\n\n+" "\n" script "${script}")
  string(REGEX REPLACE "^\n" "" script "${script}")
  string(SHA256 hex "${script}")
  set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  set(base64 "")
  # 32 bytes: ten groups of three, then two bytes and one "=".
  foreach(debut RANGE 0 60 6)
    string(SUBSTRING ${hex} ${debut} 6 groupe)
    string(LENGTH ${groupe} longueur)
    if(longueur EQUAL 4)
      set(groupe "${groupe}00")
    endif()
    math(EXPR valeur "0x${groupe}")
    set(morceaux 4)
    if(longueur EQUAL 4)
      set(morceaux 3)
    endif()
    foreach(k RANGE 1 ${morceaux})
      math(EXPR decalage "24 - 6 * ${k}")
      math(EXPR index "(${valeur} >> ${decalage}) & 63")
      string(SUBSTRING ${alphabet} ${index} 1 lettre)
      string(APPEND base64 ${lettre})
    endforeach()
  endforeach()
  string(APPEND base64 "=")
  file(WRITE ${sortie}.tmp "// Generated from ${fichiers}, without their comments: do not edit.\n#pragma once\n#include <string_view>\n"
       "namespace quillon {\ninline constexpr std::string_view kScript${nom} = R\"QUILLONJS(${script})QUILLONJS\";\n"
       "inline constexpr const char* kHashScript${nom} = \"sha256-${base64}\";\n}  // namespace quillon\n")
  file(COPY_FILE ${sortie}.tmp ${sortie} ONLY_IF_DIFFERENT)
endfunction()

# The texts the pages' scripts show, each given to T('...') as one quoted
# literal (holding no quote, backslash or semicolon), as kTextesScripts: a
# page in another language than French carries their translations for the
# scripts to read (report/page.cc).
function(quillon_textes_scripts sortie)
  set(textes "")
  foreach(source IN LISTS ARGN)
    file(READ ${source} script)
    string(REGEX MATCHALL "[^A-Za-z0-9_]T\\('[^']*'" trouves "${script}")
    foreach(t IN LISTS trouves)
      string(REGEX REPLACE "^.T\\('(.*)'$" "\\1" t "${t}")
      list(APPEND textes "${t}")
    endforeach()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  endforeach()
  list(REMOVE_DUPLICATES textes)
  set(corps "")
  foreach(t IN LISTS textes)
    string(APPEND corps "    \"${t}\",\n")
  endforeach()
  file(WRITE ${sortie}.tmp "// Generated from the texts that src/report/*.js give to T(): do not edit.\n#pragma once\n"
       "namespace quillon {\ninline constexpr const char* kTextesScripts[] = {\n${corps}};\n}  // namespace quillon\n")
  file(COPY_FILE ${sortie}.tmp ${sortie} ONLY_IF_DIFFERENT)
endfunction()
