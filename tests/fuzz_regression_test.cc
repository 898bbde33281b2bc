// Replays every input kept in tests/fuzz-regressions/TARGET/ through the
// body of that fuzz target (fuzz/harnesses.h): each one once crashed, broke
// a property or hit undefined behaviour, and must not any more. Under the
// sanitizer build the replay catches memory faults as well.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "harnesses.h"
#include "test_support.h"

#ifndef QUILLON_FUZZ_REGRESSIONS
#error "QUILLON_FUZZ_REGRESSIONS must name the folder of the kept inputs"
#endif

namespace {

struct Cible {
  const char* nom;  // the folder, named like the fuzz target
  std::string (*harnais)(const uint8_t*, std::size_t);
};

void PrintTo(const Cible& cible, std::ostream* os) { *os << cible.nom; }

std::vector<std::filesystem::path> Entrees(const std::filesystem::path& dossier) {
  std::vector<std::filesystem::path> entrees;
  if (!std::filesystem::is_directory(dossier)) return entrees;
  for (const auto& e : std::filesystem::directory_iterator(dossier)) {
    if (e.is_regular_file()) entrees.push_back(e.path());
  }
  std::sort(entrees.begin(), entrees.end());
  return entrees;
}

class RejeuFuzz : public testing::TestWithParam<Cible> {};

TEST_P(RejeuFuzz, ChaqueEntreeGardeePasse) {
  const auto entrees = Entrees(std::filesystem::path(QUILLON_FUZZ_REGRESSIONS) / GetParam().nom);
  if (entrees.empty()) GTEST_SKIP() << "no kept input for " << GetParam().nom;
  for (const auto& chemin : entrees) {
    const std::string octets = quillon::test::LireFichier(chemin);
    EXPECT_EQ(GetParam().harnais(reinterpret_cast<const uint8_t*>(octets.data()), octets.size()), "")
        << chemin.filename();
  }
}

INSTANTIATE_TEST_SUITE_P(Cibles, RejeuFuzz,
                         testing::Values(Cible{"ptv", quillon::fuzz::LignesPtVal},
                                         Cible{"ptp", quillon::fuzz::LignesPtPrecFiab},
                                         Cible{"pts", quillon::fuzz::LignesPtDC},
                                         Cible{"conversion", quillon::fuzz::Conversion},
                                         Cible{"rapport", quillon::fuzz::Rapport}),
                         [](const testing::TestParamInfo<Cible>& info) { return std::string(info.param.nom); });

}  // namespace
