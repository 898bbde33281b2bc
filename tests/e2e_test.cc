// Whole runs of the real executable, kept as data: each folder of e2e/
// holds the command line ("arguments", one argument a line), optionally
// "environnement" (KEY=VALUE lines), the input files, the expected standard
// output ("sortie"), the files expected after the run ("attendu/") and the
// files that must not exist ("absents"). Input files that are not expected
// to change must come out untouched, and no run takes 8 MiB of memory. The
// second line of a log, the date, is compared by its shape.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "exe_runner.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::set<std::string> kFichiersDeControle = {"arguments", "environnement", "sortie", "attendu", "absents"};

// The lines of a control file.
std::vector<std::string> Lignes(const fs::path& fichier) {
  std::vector<std::string> lignes;
  std::istringstream texte(LireFichier(fichier.string()));
  for (std::string ligne; std::getline(texte, ligne);) lignes.push_back(ligne);
  return lignes;
}

// Under Windows, the cases that cannot apply there, with the reason
// (tests/windows/exclus: one "case: reason" a line).
std::string RaisonExclusion(const std::string& nomCas) {
  if (!SousWindows()) return "";
  for (const std::string& ligne : Lignes(fs::path(QUILLON_E2E_DIR) / "../windows/exclus")) {
    if (ligne.starts_with(nomCas + ": ")) return ligne.substr(nomCas.size() + 2);
  }
  return "";
}

class CasE2E : public ::testing::TestWithParam<std::string> {};

TEST_P(CasE2E, SortieEtFichiers) {
  if (const std::string raison = RaisonExclusion(GetParam()); !raison.empty()) GTEST_SKIP() << raison;
  const fs::path cas = fs::path(QUILLON_E2E_DIR) / GetParam();
  DossierTemporaire dossier;
  std::map<std::string, std::string> entrees;
  for (const auto& e : fs::directory_iterator(cas)) {
    const std::string nom = e.path().filename().string();
    if (kFichiersDeControle.count(nom)) continue;
    fs::copy(e.path(), dossier / nom, fs::copy_options::recursive);
    if (e.is_regular_file()) entrees[nom] = LireFichier(e.path().string());
  }
  const std::vector<std::string> arguments = Lignes(cas / "arguments");

  OptionsExe options;
  if (fs::exists(cas / "environnement")) options.environnement = Lignes(cas / "environnement");
  const ResultatExe r = LancerQuillon(arguments, dossier.chemin(), options);
  EXPECT_EQ(r.signal, 0);
  EXPECT_EQ(r.codeSortie, 0);
  EXPECT_EQ(r.sortie, LireFichier((cas / "sortie").string()));
#ifndef QUILLON_SANITIZE  // the sanitizers' bookkeeping makes resident memory meaningless
  if (!SousWindows()) {  // wine's own memory would be counted there
    EXPECT_LT(r.memoireMaxKo, 8 * 1024);
  }
#endif

  std::set<std::string> attendus;
  if (fs::exists(cas / "attendu")) {
    for (const auto& e : fs::directory_iterator(cas / "attendu")) {
      const std::string nom = e.path().filename().string();
      attendus.insert(nom);
      ASSERT_TRUE(fs::exists(dossier / nom)) << nom << " was not written";
      std::string obtenu = LireFichier(dossier / nom);
      std::string attendu = LireFichier(e.path().string());
      if (nom.ends_with(".log")) {
        obtenu = MasquerDate(obtenu);
        attendu = MasquerDate(attendu);
      }
      EXPECT_EQ(obtenu, attendu) << nom;
    }
  }
  if (fs::exists(cas / "absents")) {
    for (const std::string& nom : Lignes(cas / "absents")) {
      EXPECT_FALSE(fs::exists(dossier / nom)) << nom << " should not exist";
    }
  }
  EXPECT_EQ(Temporaires(dossier.chemin()), std::vector<std::string>{}) << "temporary files left";
  for (const auto& [nom, contenu] : entrees) {
    if (!attendus.count(nom)) {
      EXPECT_EQ(LireFichier(dossier / nom), contenu) << nom << " was modified";
    }
  }
}

std::vector<std::string> TousLesCas() {
  std::vector<std::string> cas;
  for (const auto& e : fs::directory_iterator(QUILLON_E2E_DIR)) {
    if (e.is_directory()) cas.push_back(e.path().filename().string());
  }
  std::sort(cas.begin(), cas.end());
  return cas;
}

INSTANTIATE_TEST_SUITE_P(Executable, CasE2E, ::testing::ValuesIn(TousLesCas()),
                         [](const auto& info) {
                           std::string nom = info.param;
                           for (char& c : nom) {
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           }
                           return nom;
                         });

}  // namespace
}  // namespace quillon::test
