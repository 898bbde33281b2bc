// Whole runs of the real executable, kept as data: each folder of e2e/
// holds the command line ("arguments", one argument a line), optionally
// "environnement" (KEY=VALUE lines), the input files, the expected standard
// output ("sortie"), the files expected after the run ("attendu/") and the
// files that must not exist ("absents"). Input files that are not expected
// to change must come out untouched. The second line of a log, the date,
// is compared by its shape.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

#include "exe_runner.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::set<std::string> kFichiersDeControle = {"arguments", "environnement", "sortie", "attendu", "absents"};

std::vector<std::string> Lignes(const std::string& texte, const std::string& fin = "\n") {
  std::vector<std::string> lignes;
  std::size_t debut = 0;
  for (std::size_t f; (f = texte.find(fin, debut)) != std::string::npos; debut = f + fin.size()) {
    lignes.push_back(texte.substr(debut, f - debut));
  }
  if (debut < texte.size()) lignes.push_back(texte.substr(debut));
  return lignes;
}

// A log with its date line replaced by a mark, once the date has the
// expected shape.
std::string SansDate(const std::string& journal) {
  std::vector<std::string> lignes = Lignes(journal, "\r\n");
  if (lignes.size() < 2) return journal;
  static const std::regex kDate(R"(\d\d-[^-]{3,5}-\d{4}, \d\d:\d\d:\d\d)");
  EXPECT_TRUE(std::regex_match(lignes[1], kDate)) << "date line: " << lignes[1];
  lignes[1] = "<date>";
  std::string texte;
  for (const std::string& l : lignes) texte += l + "\r\n";
  return texte;
}

class CasE2E : public ::testing::TestWithParam<std::string> {};

TEST_P(CasE2E, SortieEtFichiers) {
  const fs::path cas = fs::path(QUILLON_E2E_DIR) / GetParam();
  DossierTemporaire dossier;
  std::map<std::string, std::string> entrees;
  for (const auto& e : fs::directory_iterator(cas)) {
    const std::string nom = e.path().filename().string();
    if (kFichiersDeControle.count(nom)) continue;
    entrees[nom] = LireFichier(e.path().string());
    fs::copy_file(e.path(), dossier / nom);
  }
  const std::vector<std::string> arguments = Lignes(LireFichier((cas / "arguments").string()));
  std::vector<std::string> environnement;
  if (fs::exists(cas / "environnement")) environnement = Lignes(LireFichier((cas / "environnement").string()));

  const ResultatExe r = LancerQuillon(arguments, dossier.chemin(), environnement);
  EXPECT_EQ(r.signal, 0);
  EXPECT_EQ(r.codeSortie, 0);
  EXPECT_EQ(r.sortie, LireFichier((cas / "sortie").string()));

  std::set<std::string> attendus;
  if (fs::exists(cas / "attendu")) {
    for (const auto& e : fs::directory_iterator(cas / "attendu")) {
      const std::string nom = e.path().filename().string();
      attendus.insert(nom);
      ASSERT_TRUE(fs::exists(dossier / nom)) << nom << " was not written";
      std::string obtenu = LireFichier(dossier / nom);
      std::string attendu = LireFichier(e.path().string());
      if (nom.ends_with(".log")) {
        obtenu = SansDate(obtenu);
        attendu = SansDate(attendu);
      }
      EXPECT_EQ(obtenu, attendu) << nom;
    }
  }
  if (fs::exists(cas / "absents")) {
    for (const std::string& nom : Lignes(LireFichier((cas / "absents").string()))) {
      EXPECT_FALSE(fs::exists(dossier / nom)) << nom << " should not exist";
    }
  }
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
