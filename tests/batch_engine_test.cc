// quillon-lot's engine in-process: its words, the files it lists from
// folders, and the files it keeps apart so that no two threads share one.
// Whole runs of the program are cases in tests/e2e (lot-*).
#include <gtest/gtest.h>

#include <filesystem>

#include "app/batch/options.h"
#include "app/batch/sources.h"
#include "exe_runner.h"
#include "io/file_system.h"
#include "io/temporary_files.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

using lot::CiblePtp;
using lot::LireOptions;

TEST(LotEngine, OptionsLues) {
  const struct {
    std::vector<std::string> mots;
    const char* erreur;  // its start; empty: accepted
    int16_t classe;
    int32_t groupe;
    CiblePtp ptp;
    unsigned fils;
  } cas[] = {
      {{"-e", "1000", "-t", "cs", "a.ptv"}, "", 3, 2, CiblePtp::Aucune, 0},
      {{"--echelle=250", "--theme=OD", "-j3", "a.ptv"}, "", 1, 3, CiblePtp::Aucune, 3},
      {{"-e5000", "-tOD", "-p", "ptm", "--fils", "2", "a.ptp"}, "", 6, 3, CiblePtp::MD01, 2},
      {{"-rnp", "ptv", "d"}, "", 0, 0, CiblePtp::Valeur, 0},
      {{"--ptp-en=ptv", "--", "-a.ptp"}, "", 0, 0, CiblePtp::Valeur, 0},
      {{}, "aucune source", 0, 0, CiblePtp::Aucune, 0},
      {{"--vite", "a.ptv"}, "option inconnue : --vite", 0, 0, CiblePtp::Aucune, 0},
      {{"-x", "a.ptv"}, "option inconnue : -x", 0, 0, CiblePtp::Aucune, 0},
      {{"--recursif=oui", "a.ptv"}, "--recursif ne prend pas de valeur", 0, 0, CiblePtp::Aucune, 0},
      {{"a.ptv", "-e"}, "-e attend une valeur", 0, 0, CiblePtp::Aucune, 0},
      {{"-e", "0500", "a.ptv"}, "--echelle attend 250, 500, 1000, 2000, 4000 ou 5000", 0, 0, CiblePtp::Aucune, 0},
      {{"-j", "0", "a.ptv"}, "--fils attend un nombre de 1 à 64", 0, 0, CiblePtp::Aucune, 0},
      {{"-p", "pts", "a.ptp"}, "--ptp-en attend ptv ou ptm", 0, 0, CiblePtp::Aucune, 0},
      {{"-c", "x.ptp", "a.ptv", "b.ptv"}, "--cible ne va qu'avec une seule source", 0, 0, CiblePtp::Aucune, 0},
  };
  for (const auto& c : cas) {
    const lot::LectureOptions lu = LireOptions(c.mots);
    const std::string mots = ::testing::PrintToString(c.mots);
    EXPECT_TRUE(lu.erreur.starts_with(c.erreur) && lu.erreur.empty() == !*c.erreur) << mots << ": " << lu.erreur;
    if (!lu.erreur.empty()) continue;
    EXPECT_EQ(lu.options.classeEchelle, c.classe) << mots;
    EXPECT_EQ(lu.options.groupeTheme, c.groupe) << mots;
    EXPECT_EQ(lu.options.ciblePtp, c.ptp) << mots;
    EXPECT_EQ(lu.options.fils, c.fils) << mots;
  }
}

// A folder gives its point files by their real extension, sorted, with
// their subfolders only when asked; a file reached twice is listed once;
// conflicts are found before anything runs.
TEST(LotEngine, FichiersListesEtConflits) {
  DossierTemporaire d;
  fs::create_directories(d / "d/sous");
  fs::create_directories(d / "d/dossier.ptv");
  for (const char* nom : {"d/b.PTV", "d/a.ptp", "d/c.Pts", "d/x.ptv.txt", "d/sous/e.ptv", "d/a.ptv", "d/dossier.ptv/e.ptv"}) {
    EcrireFichier(d / nom, "");
  }
  const fs::path ici = fs::current_path();
  fs::current_path(d.chemin());  // the sources as relative paths, as a user gives them
  const auto lister = [](const std::vector<std::string>& mots) {
    const lot::ListeLot liste = lot::ListerFichiers(LireOptions(mots).options);
    if (!liste.erreur.empty()) return std::vector<std::string>{liste.erreur};
    std::vector<std::string> vus;
    for (const lot::FichierLot& f : liste.fichiers) {
      vus.push_back(f.source + " " + f.cible + " " + NomConversion(f.conversion) + (f.empechement ? " X" : ""));
    }
    return vus;
  };
  using V = std::vector<std::string>;
  // a.ptv's target is a.ptp, another source of the batch: left out.
  EXPECT_EQ(lister({"-p", "ptm", "d"}),
            (V{"d/a.ptp d/a.ptm ptp-ptm", "d/a.ptv d/a.ptp ptv-ptp X", "d/b.PTV d/b.PTP ptv-ptp", "d/c.Pts d/c.ptv pts-ptv"}));
  EXPECT_EQ(lister({"-r", "-p", "ptv", "d/sous", "d/sous/e.ptv", "d/sous/../sous/e.ptv"}),
            (V{"d/sous/e.ptv d/sous/e.ptp ptv-ptp"}));
  EXPECT_EQ(lister({"-r", "-o", "o", "-p", "ptv", "d/sous", "d/b.PTV"}),
            (V{"d/sous/e.ptv o/e.ptp ptv-ptp", "d/b.PTV o/b.PTP ptv-ptp"}));
  // The same target for two sources of different folders: the second waits
  // for another batch.
  EXPECT_EQ(lister({"-o", "o", "d/sous/e.ptv", "d/dossier.ptv/e.ptv"}).back().ends_with(" X"), true);
  // A name that is not UTF-8 is listed as it is (POSIX names are bytes).
  fs::create_directory("n");
  EcrireFichier("n/\xE9t\xE9.ptv", "");
  EXPECT_EQ(lister({"n"}), V{"n/\xE9t\xE9.ptv n/\xE9t\xE9.ptp ptv-ptp"});
  EXPECT_EQ(lister({"d"}), V{"d/a.ptp est un fichier .ptp : dites avec --ptp-en s'il devient .ptv ou .ptm"});
  EXPECT_EQ(lister({"d/x.ptv.txt"}), V{"d/x.ptv.txt n'est ni un dossier, ni un fichier .ptv, .ptp ou .pts"});
  fs::current_path(ici);
}

// A batch's files wait complete, beside their names, until their group is
// placed; one dropped unplaced leaves nothing. Unnamed where the system
// can, so that a killed batch leaves nothing either; named from the start
// otherwise. Where the system places each file when it is closed
// (Windows), there is nothing to wait for.
TEST(LotEngine, PlacementsParGroupes) {
  for (const bool sansNom : {true, false}) {
    SCOPED_TRACE(sansNom ? "unnamed" : "named");
    DossierTemporaire d;
    EcrireFichier(d / "b.ptp", "avant\r\n");
    UtiliserFichiersSansNom(sansNom);
    DifererPlacements(true);
    auto ecrire = [&](const std::string& nom) {
      const std::unique_ptr<SupportFichier> f = SystemeFichiersReel().CreerEcriture(d / nom, {});
      EXPECT_TRUE(f != nullptr && f->Ecrire("nouveau\r\n", 9) && f->Fermer());
      return PlacementsDiferes();
    };
    std::vector<std::unique_ptr<PlacementDifere>> groupe = ecrire("b.ptp");
    auto c = ecrire("c.ptp");
    DifererPlacements(false);
    UtiliserFichiersSansNom(true);
    if (groupe.empty()) GTEST_SKIP() << "each file placed when closed";
    EXPECT_EQ(LireFichier(d / "b.ptp"), "avant\r\n");
    EXPECT_FALSE(fs::exists(d / "c.ptp"));
    EXPECT_EQ(Temporaires(d.chemin()).size(), sansNom ? 0u : 2u);
    EXPECT_EQ(PlacerGroupe(groupe), std::vector<bool>{true});
    EXPECT_EQ(LireFichier(d / "b.ptp"), "nouveau\r\n");
    c.clear();
    EXPECT_FALSE(fs::exists(d / "c.ptp"));
    groupe.clear();
    EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
  }
}

// The first file written into a folder removes the temporary files that
// runs of this machine killed outright left there, and no other: not a
// live process's, not another machine's (a shared folder), not a name of
// another shape.
TEST(LotEngine, TemporairesAbandonnesRetires) {
  DossierTemporaire d;
  const std::string moi = std::to_string(ProcessusCourant());
  const uint32_t mort = ProcessusTermine();
  char hote[9], autreHote[9];
  std::snprintf(hote, sizeof hote, "%08x", HoteCourant());
  std::snprintf(autreHote, sizeof autreHote, "%08x", HoteCourant() ^ 1u);
  const struct {
    std::string nom;
    bool retire;
  } cas[] = {
      {"b.ptp.quillon-" + std::to_string(mort) + "-" + hote + "-aZ09xy.tmp", true},
      {"c.ptv.log.quillon-" + std::to_string(mort) + "-" + hote + "-Qwerty.tmp", true},
      {"b.ptp.quillon-" + moi + "-" + hote + "-aZ09xy.tmp", false},
      {"b.ptp.quillon-1-" + std::string(hote) + "-aZ09xy.tmp", false},  // init, alive
      {"b.ptp.quillon-" + std::to_string(mort) + "-" + autreHote + "-aZ09xy.tmp", false},
      {"b.ptp.quillon-aZ09xy.tmp", false},
      {"b.ptp.quillon-" + std::to_string(mort) + "-" + hote + "-aZ09xy.tmp.bak", false},
      {"notes-" + std::to_string(mort) + "-" + hote + "-aZ09xy.tmp", false},
  };
  for (const auto& c : cas) EcrireFichier(d / c.nom, "x");
  const std::unique_ptr<SupportFichier> f = SystemeFichiersReel().CreerEcriture(d / "b.ptp", {});
  ASSERT_TRUE(f != nullptr && f->Fermer());
  for (const auto& c : cas) EXPECT_EQ(!fs::exists(d / c.nom), c.retire) << c.nom;
}

}  // namespace
}  // namespace quillon::test
