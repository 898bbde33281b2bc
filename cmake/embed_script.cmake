# Embeds src/report/rapport.js in a header at configure time, with the
# SHA-256 of its bytes in base64 for the report's Content-Security-Policy:
# every build, the Windows one included, carries the same bytes.
function(quillon_embarquer_script source sortie)
  file(READ ${source} script)
  file(SHA256 ${source} hex)
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
  file(WRITE ${sortie}.tmp "// Generated from src/report/rapport.js: do not edit.\n#pragma once\n#include <string_view>\n"
       "namespace quillon {\ninline constexpr std::string_view kScriptRapport = R\"QUILLONJS(${script})QUILLONJS\";\n"
       "inline constexpr const char* kHashScriptRapport = \"sha256-${base64}\";\n}  // namespace quillon\n")
  file(COPY_FILE ${sortie}.tmp ${sortie} ONLY_IF_DIFFERENT)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
endfunction()
