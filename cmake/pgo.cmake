# quillon_pgo(TARGET...): compiles the targets for profile-guided
# optimisation, as QUILLON_PGO and QUILLON_PGO_DIR say.
#
# The profile's file names are made relative to the build directory, so that
# the instrumented build and the optimised one, in two directories, name the
# same files. The training run touches `profil.stamp` in the profile
# directory once the profile is complete; the optimised objects depend on it
# and are compiled again when it changes.
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  message(FATAL_ERROR "QUILLON_PGO needs g++")
endif()
if(NOT QUILLON_PGO_DIR)
  message(FATAL_ERROR "QUILLON_PGO needs QUILLON_PGO_DIR")
endif()
if(NOT QUILLON_PGO MATCHES "^(generate|use)$")
  message(FATAL_ERROR "QUILLON_PGO is generate or use, not '${QUILLON_PGO}'")
endif()

function(quillon_pgo)
  set(chemins -fprofile-prefix-path=${CMAKE_BINARY_DIR})
  foreach(cible IN LISTS ARGN)
    if(QUILLON_PGO STREQUAL "generate")
      target_compile_options(${cible} PRIVATE -fprofile-generate=${QUILLON_PGO_DIR} ${chemins})
      target_link_options(${cible} PUBLIC -fprofile-generate=${QUILLON_PGO_DIR})
    else()
      # Code the training did not run (the DC conversion, the windowed
      # program's paths) keeps the usual optimisation rather than being
      # taken as never run; a missing profile is not worth a warning. A
      # profile older than the sources (a build by hand after an edit) only
      # warns: the functions that changed are compiled without it.
      set(options -fprofile-use=${QUILLON_PGO_DIR} ${chemins} -fprofile-partial-training -Wno-missing-profile
        -Wno-error=coverage-mismatch)
      target_compile_options(${cible} PRIVATE ${options})
      target_link_options(${cible} PRIVATE ${options})
      get_target_property(sources ${cible} SOURCES)
      set_source_files_properties(${sources} TARGET_DIRECTORY ${cible}
        PROPERTIES OBJECT_DEPENDS ${QUILLON_PGO_DIR}/profil.stamp)
    endif()
  endforeach()
endfunction()
