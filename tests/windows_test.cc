// What only the Windows build meets: the command line as one text, with its
// quotes and the program's own quoted path, and file names that Windows-1252
// cannot hold. Run under wine (tests/windows/run-tests.sh); skipped on Linux.
#include <gtest/gtest.h>

#include <filesystem>

#include "exe_runner.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::string kVersion = "Quillon, Version 0.5.5\r\n";
const std::string kLignePtv =
    "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";

class Windows : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!SousWindows()) GTEST_SKIP() << "Windows only: run under wine by make test-windows";
  }
  // A run of quillon.exe with the text after its name, or a whole command
  // line.
  ResultatExe Lancer(const std::string& texte, const std::string& ligne = "") {
    OptionsExe options;
    // wine reads Unix names and the command line in the locale's encoding.
    options.environnement = {"LC_ALL=C.UTF-8"};
    options.ligneCommande = ligne.empty() ? LigneCommandeWindows(std::getenv("QUILLON_EXE_WINDOWS"), texte) : ligne;
    return LancerQuillon({}, d.chemin(), options);
  }
  DossierTemporaire d;
};

TEST_F(Windows, LigneDeCommandeAvecGuillemets) {
  EcrireFichier(d / "a.ptv", kLignePtv);
  // Three words: "a, b.ptv" and c.ptp; nothing runs.
  ResultatExe r = Lancer("\"a b.ptv\" c.ptp");
  EXPECT_EQ(r.sortie, kVersion);
  EXPECT_FALSE(fs::exists(d / "c.ptp"));
  // The quotes stay in the words, and no file has such a name.
  r = Lancer("\"a.ptv\" \"b.ptp\"");
  EXPECT_EQ(r.sortie, kVersion + "ERREUR FATALE: Le fichier \"a.ptv\" ne peut pas \xEAtre ouvert, l'application va s'arr\xEAter\r\n");
  EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
}

// The same conversion by the Linux build and by the Windows build, the
// latter started from a folder with a blank in its name: the same target,
// log and summary, byte for byte.
TEST_F(Windows, ProgrammeDansUnDossierAvecUnBlanc) {
  fs::create_directory(d / "mes programmes");
  fs::copy_file(std::getenv("QUILLON_EXE_WINDOWS"), d / "mes programmes/quillon.exe");
  EcrireFichier(d / "a.ptv", kLignePtv + kLignePtv.substr(3) + kLignePtv);
  const ResultatExe r = Lancer("", LigneCommandeWindows(d / "mes programmes/quillon.exe", "a.ptv b.ptp 500 cs"));
  const std::string cible = LireFichier(d / "b.ptp");
  const std::string journal = MasquerDate(LireFichier(d / "a.ptv.log"));

  const std::string windows = std::getenv("QUILLON_EXE_WINDOWS");
  ::unsetenv("QUILLON_EXE_WINDOWS");  // the Linux build, for the same run
  const ResultatExe linux = LancerQuillon({"a.ptv", "b.ptp", "500", "cs"}, d.chemin());
  ::setenv("QUILLON_EXE_WINDOWS", windows.c_str(), 1);
  EXPECT_EQ(r.sortie, linux.sortie);
  EXPECT_EQ(cible, LireFichier(d / "b.ptp"));
  EXPECT_EQ(journal, MasquerDate(LireFichier(d / "a.ptv.log")));
  EXPECT_EQ(cible.size(), 2u * 89);
}

// A name that Windows-1252 cannot hold is opened and created all the same;
// the log and the messages show "?" for its missing characters.
TEST_F(Windows, CheminHorsWindows1252) {
  EcrireFichier(d / "relevé-日本.ptv", kLignePtv);
  const ResultatExe r = Lancer("relevé-日本.ptv sortie-Ω.ptp");
  EXPECT_EQ(r.sortie.substr(0, kVersion.size() + 2), kVersion + "1 ");
  EXPECT_EQ(LireFichier(d / "sortie-Ω.ptp").size(), 89u);
  const std::vector<std::string> journal = LignesCRLF(LireFichier(d / "relevé-日本.ptv.log"));
  ASSERT_GE(journal.size(), 6u);
  EXPECT_EQ(journal[3], "relev\xE9-??.ptv");
  EXPECT_EQ(journal[5], "sortie-?.ptp");
  EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
}

}  // namespace
}  // namespace quillon::test
