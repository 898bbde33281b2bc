// Whole runs of the real programs, kept as data. Each folder of e2e/ is a
// run of quillon, or of quillon-lot when its file "programme" says so. It
// holds the command line ("arguments", one argument a line), optionally
// "environnement" (KEY=VALUE lines), the files before the run, and what the
// run must give: its standard output ("sortie"), standard error ("erreur")
// and exit status ("code"), empty or 0 when the file is absent, and the
// files it writes or changes ("attendu/"). After the run the folder holds
// the files before, untouched but for those of attendu/, and attendu/'s
// files: nothing else, no temporary file. A log's second line, the date, is
// compared by its shape; no run takes 8 MiB of memory.
//
// A quillon-lot case may name in "memes-octets" runs that must write what
// the batch writes, one a line: "quillon WORDS" runs the console program,
// "dialogue-dc GROUP SOURCE TARGET" the run of the DC dialog (compared on
// Linux only), each on the files before. Every file that the batch and the
// run both write must be the same, byte for byte, and there must be one;
// the batch's report line for the console's source and target carries the
// console's counts.
//
// Under wine, quillon-lot's outputs are compared with their line ends as LF
// and their path separators as slashes.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "conversion/conversions.h"
#include "exe_runner.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::set<std::string> kControle = {"arguments", "environnement", "programme", "sortie",
                                         "erreur",    "code",          "attendu",   "memes-octets"};

std::vector<std::string> Lignes(const std::string& texte, char separateur = '\n') {
  std::vector<std::string> lignes;
  std::istringstream flux(texte);
  for (std::string ligne; std::getline(flux, ligne, separateur);) lignes.push_back(ligne);
  return lignes;
}

std::string Controle(const fs::path& cas, const std::string& nom) {
  return fs::exists(cas / nom) ? LireFichier(cas / nom) : "";
}

// Under Windows, the cases that cannot apply there, with the reason
// (tests/windows/exclus: one "case: reason" a line).
std::string RaisonExclusion(const std::string& nomCas) {
  if (!SousWindows()) return "";
  for (const std::string& ligne : Lignes(LireFichier(QUILLON_E2E_DIR "/../windows/exclus"))) {
    if (ligne.starts_with(nomCas + ": ")) return ligne.substr(nomCas.size() + 2);
  }
  return "";
}

// The files before the run, copied from the case into `dossier`.
void Copier(const fs::path& cas, const fs::path& dossier) {
  for (const auto& e : fs::directory_iterator(cas)) {
    if (kControle.count(e.path().filename().string())) continue;
    fs::copy(e.path(), dossier / e.path().filename(), fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  }
}

// The files under a folder by their path in it: their bytes, or where a
// link points.
using Fichiers = std::map<std::string, std::string>;
Fichiers Contenu(const fs::path& dossier) {
  Fichiers fichiers;
  if (!fs::exists(dossier)) return fichiers;
  for (const auto& e : fs::recursive_directory_iterator(dossier)) {
    const std::string nom = e.path().lexically_relative(dossier).generic_string();
    if (e.is_symlink()) {
      fichiers[nom] = "-> " + fs::read_symlink(e.path()).string();
    } else if (e.is_regular_file()) {
      fichiers[nom] = LireFichier(e.path());
    }
  }
  return fichiers;
}

std::string Remplacer(std::string texte, const std::string& de, const std::string& par) {
  for (std::size_t i = 0; (i = texte.find(de, i)) != std::string::npos; i += par.size()) texte.replace(i, de.size(), par);
  return texte;
}

// An output as it is compared: see the top of the file.
std::string Comparable(const std::string& nom, std::string texte, bool lot) {
  if (nom.ends_with(".log")) texte = MasquerDate(texte);
  if (!lot || !SousWindows()) return texte;
  return Remplacer(Remplacer(Remplacer(texte, "\r\n", "\n"), "\\\\", "/"), "\\", "/");
}

class AffichageMuet : public Affichage {
 public:
  void MontrerBilan(const std::array<std::string, 4>&) override {}
  void MontrerErreurFatale(const std::string&) override {}
};

// The runs of "memes-octets", on the files before; `ecrits` are the files
// that the batch wrote, `rapport` its standard output.
void MemesOctets(const fs::path& cas, const Fichiers& avant, const Fichiers& ecrits, const std::string& rapport) {
  for (const std::string& ligne : Lignes(Controle(cas, "memes-octets"))) {
    const std::vector<std::string> mots = Lignes(ligne, ' ');
    if (mots[0] == "dialogue-dc" && SousWindows()) continue;
    DossierTemporaire d;
    Copier(cas, d.chemin());
    for (const auto& [nom, contenu] : Contenu(cas / "attendu")) fs::create_directories(fs::path(d / nom).parent_path());
    if (mots[0] == "quillon") {
      const ResultatExe r = LancerQuillon({mots.begin() + 1, mots.end()}, d.chemin());
      EXPECT_EQ(r.codeSortie, 0) << ligne;
      std::string comptes;  // the summary's counts, as the report writes them
      for (const std::string& l : Lignes(r.sortie)) {
        if (std::isdigit(static_cast<unsigned char>(l[0]))) comptes += "\t" + l.substr(0, l.find(' '));
      }
      EXPECT_NE(rapport.find(mots[1] + "\t" + mots[2] + comptes + "\t"), std::string::npos) << ligne;
    } else {
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
      if ((avant.count(nom) && avant.at(nom) == contenu) || !ecrits.count(nom)) continue;
      EXPECT_EQ(Comparable(nom, contenu, false), Comparable(nom, ecrits.at(nom), false)) << ligne << ": " << nom;
      ++memes;
    }
    EXPECT_GT(memes, 0) << ligne << ": no file written by both";
  }
}

class CasE2E : public ::testing::TestWithParam<std::string> {};

TEST_P(CasE2E, SortieEtFichiers) {
  if (const std::string raison = RaisonExclusion(GetParam()); !raison.empty()) GTEST_SKIP() << raison;
  const fs::path cas = fs::path(QUILLON_E2E_DIR) / GetParam();
  const bool lot = Controle(cas, "programme") == "quillon-lot\n";
  OptionsExe options;
  options.programme = lot ? Programme::Lot : Programme::Quillon;
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
  if (!SousWindows()) {  // wine's own memory would be counted there
    EXPECT_LT(r.memoireMaxKo, 8 * 1024);
  }
#endif

  const Fichiers apres = Contenu(dossier.chemin());
  Fichiers attendus = avant;
  for (const auto& [nom, contenu] : Contenu(cas / "attendu")) attendus[nom] = contenu;
  std::set<std::string> noms;
  for (const auto& [nom, contenu] : apres) noms.insert(nom);
  for (const auto& [nom, contenu] : attendus) noms.insert(nom);
  for (const std::string& nom : noms) {
    auto texte = [&](const Fichiers& f) { return f.count(nom) ? Comparable(nom, f.at(nom), lot) : "(absent)"; };
    EXPECT_EQ(texte(apres), texte(attendus)) << nom;
  }
  Fichiers ecrits;
  for (const auto& [nom, contenu] : apres) {
    if (!avant.count(nom) || avant.at(nom) != contenu) ecrits[nom] = contenu;
  }
  MemesOctets(cas, avant, ecrits, Comparable("", r.sortie, lot));
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
