// libFuzzer target: watched runs, their checks across lines and their
// reports. The body is in harnesses.h.
#include <cstdio>
#include <cstdlib>

#include "harnesses.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  const std::string echec = quillon::fuzz::Rapport(donnees, taille);
  if (!echec.empty()) {
    std::fprintf(stderr, "property failed: %s\n", echec.c_str());
    std::abort();
  }
  return 0;
}
