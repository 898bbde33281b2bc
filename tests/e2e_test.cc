// Whole runs of quillon and quillon-lot kept as data: one folder of e2e/ a
// case, its control files and checks described in e2e/README.md.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "conversion/conversions.h"
#include "exe_runner.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::set<std::string> kControle = {"programme", "arguments", "environnement", "sortie",
                                         "erreur",    "code",      "attendu",       "memes-octets"};

std::vector<std::string> Lignes(const std::string& texte, char separateur = '\n') {
  std::vector<std::string> lignes;
  std::istringstream flux(texte);
  for (std::string ligne; std::getline(flux, ligne, separateur);) lignes.push_back(ligne);
  return lignes;
}

std::string Controle(const fs::path& cas, const std::string& nom) {
  return fs::exists(cas / nom) ? LireFichier(cas / nom) : "";
}

// The inputs of a case, copied into `dossier`.
void Copier(const fs::path& cas, const fs::path& dossier) {
  fs::copy(cas, dossier, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  for (const std::string& nom : kControle) fs::remove_all(dossier / nom);
}

// The files under a folder by their path in it: their bytes, or where a
// link points.
using Fichiers = std::map<std::string, std::string>;
Fichiers Contenu(const fs::path& dossier) {
  Fichiers f;
  for (const auto& e : fs::recursive_directory_iterator(dossier)) {
    const std::string nom = e.path().lexically_relative(dossier).generic_string();
    if (e.is_symlink()) f[nom] = "-> " + fs::read_symlink(e.path()).string();
    if (!e.is_symlink() && e.is_regular_file()) f[nom] = LireFichier(e.path());
  }
  return f;
}

// True when `contenu` is new at `nom` or changed from `avant`.
bool Ecrit(const Fichiers& avant, const std::string& nom, const std::string& contenu) {
  return !avant.count(nom) || avant.at(nom) != contenu;
}

// An output as it is compared: a log's date masked, and a check report's;
// under wine, quillon-lot's line ends as LF and its separators as slashes.
std::string Comparable(const std::string& nom, std::string texte, bool lot) {
  if (nom.ends_with(".log")) texte = MasquerDate(texte);
  if (nom.ends_with(".html")) {
    static const std::regex kDate(R"(\d\d-[^-<]{3,8}-\d{4}, \d\d:\d\d:\d\d)");
    texte = std::regex_replace(texte, kDate, "<date>");
  }
  if (!lot || !SousWindows()) return texte;
  return std::regex_replace(std::regex_replace(texte, std::regex("\r\n"), "\n"), std::regex(R"(\\\\?)"), "/");
}

class AffichageMuet : public Affichage {
  void MontrerBilan(const ComptesBilan&) override {}
  void MontrerErreurFatale(const ErreurFatale&) override {}
};

// The runs of "memes-octets", against the batch's files after (`lot`) and
// its report.
void MemesOctets(const fs::path& cas, const Fichiers& avant, const Fichiers& lot, const std::string& rapport) {
  for (const std::string& ligne : Lignes(Controle(cas, "memes-octets"))) {
    const std::vector<std::string> mots = Lignes(ligne, ' ');
    if (mots[0] == "dialogue-dc" && SousWindows()) continue;  // the core built for Linux
    DossierTemporaire d;
    Copier(cas, d.chemin());
    for (const auto& [nom, contenu] : lot) fs::create_directories(fs::path(d / nom).parent_path());
    if (mots[0] == "quillon") {
      const ResultatExe r = LancerQuillon({mots.begin() + 1, mots.end()}, d.chemin());
      EXPECT_EQ(r.codeSortie, 0) << ligne;
      std::string comptes;  // the summary's counts, as the report writes them
      for (const std::string& l : Lignes(r.sortie)) {
        if (std::isdigit(static_cast<unsigned char>(l[0]))) comptes += "\t" + l.substr(0, l.find(' '));
      }
      EXPECT_NE(rapport.find(mots[1] + "\t" + mots[2] + comptes + "\t"), std::string::npos) << ligne;
    } else {
      ASSERT_EQ(mots[0], "dialogue-dc") << ligne;
      const fs::path ici = fs::current_path();
      fs::current_path(d.chemin());
      ReglagesExecution reglages;
      AffichageMuet muet;
      reglages.affichage = &muet;
      reglages.DefinirSource(mots[2]);
      reglages.FichierCible.Nom = mots[3];
      EXPECT_TRUE(ConvertirPtDCEnPtVal(reglages, std::stoi(mots[1]))) << ligne;
      fs::current_path(ici);
    }
    int memes = 0;
    for (const auto& [nom, contenu] : Contenu(d.chemin())) {
      if (!lot.count(nom) || !Ecrit(avant, nom, lot.at(nom)) || !Ecrit(avant, nom, contenu)) continue;
      EXPECT_EQ(Comparable(nom, contenu, false), Comparable(nom, lot.at(nom), false)) << ligne << ": " << nom;
      ++memes;
    }
    EXPECT_GT(memes, 0) << ligne << ": no file written by both";
  }
}

class CasE2E : public ::testing::TestWithParam<std::string> {};

TEST_P(CasE2E, SortieEtFichiers) {
  const fs::path cas = fs::path(QUILLON_E2E_DIR) / GetParam();
  for (const std::string& l : Lignes(LireFichier(QUILLON_E2E_DIR "/../windows/exclus"))) {
    if (SousWindows() && l.starts_with(GetParam() + ": ")) GTEST_SKIP() << l;
  }
  const bool lot = Controle(cas, "programme") == "quillon-lot\n";
  OptionsExe options(lot ? Programme::Lot : Programme::Quillon);
  options.environnement = Lignes(Controle(cas, "environnement"));
  DossierTemporaire dossier;
  Copier(cas, dossier.chemin());
  const Fichiers avant = Contenu(dossier.chemin());

  const ResultatExe r = LancerQuillon(Lignes(Controle(cas, "arguments")), dossier.chemin(), options);
  EXPECT_EQ(r.signal, 0);
  EXPECT_EQ(r.codeSortie, std::atoi(Controle(cas, "code").c_str()));
  EXPECT_EQ(Comparable("", r.sortie, lot), Comparable("", Controle(cas, "sortie"), lot));
  EXPECT_EQ(Comparable("", r.erreur, lot), Comparable("", Controle(cas, "erreur"), lot));
#ifndef QUILLON_SANITIZE  // the sanitizers' bookkeeping makes resident memory meaningless
  if (!SousWindows()) {  // wine's own memory would count there
    EXPECT_LT(r.memoireMaxKo, 8 * 1024);
  }
#endif

  // The files after: the inputs, but for those that attendu/ replaces.
  const Fichiers apres = Contenu(dossier.chemin());
  Fichiers attendus = fs::exists(cas / "attendu") ? Contenu(cas / "attendu") : Fichiers{};
  attendus.insert(avant.begin(), avant.end());
  Fichiers noms = apres;
  noms.insert(attendus.begin(), attendus.end());
  for (const auto& [nom, contenu] : noms) {
    auto texte = [&](const Fichiers& f) { return f.count(nom) ? Comparable(nom, f.at(nom), lot) : "(absent)"; };
    EXPECT_EQ(texte(apres), texte(attendus)) << nom;
  }
  MemesOctets(cas, avant, apres, Comparable("", r.sortie, lot));
}

std::vector<std::string> TousLesCas() {
  std::vector<std::string> cas;
  for (const auto& e : fs::directory_iterator(QUILLON_E2E_DIR)) {
    if (e.is_directory()) cas.push_back(e.path().filename().string());
  }
  std::sort(cas.begin(), cas.end());
  return cas;
}

INSTANTIATE_TEST_SUITE_P(Executable, CasE2E, ::testing::ValuesIn(TousLesCas()), [](const auto& info) {
  return std::regex_replace(info.param, std::regex("[^A-Za-z0-9]"), "_");
});

}  // namespace
}  // namespace quillon::test
