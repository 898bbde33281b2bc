// quillon-lot's runs that the cases kept as data (tests/e2e) cannot set up:
// files that end out of order on several threads, and Ctrl-C in the middle
// of a file.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <regex>

#include "exe_runner.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::string kLignePtv =
    "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";
const OptionsExe kLot = [] {
  OptionsExe o;
  o.programme = Programme::Lot;
  return o;
}();

std::string Repeter(const std::string& ligne, int fois) {
  std::string texte;
  for (int i = 0; i < fois; ++i) texte += ligne;
  return texte;
}

// The report comes in the order of the sources, whichever thread ends
// first: each long file comes before a short one.
TEST(Lot, RapportDansLOrdreDesSources) {
  DossierTemporaire d;
  std::vector<std::string> arguments = {"--fils=4", "-e", "1000", "-t", "CS"};
  std::string attendu;
  for (int i = 0; i < 8; ++i) {
    const std::string n = std::to_string(i);
    EcrireFichier(d / ("f" + n + ".ptv"), Repeter(kLignePtv, i % 2 == 0 ? 40000 : 10));
    arguments.push_back("f" + n + ".ptv");
    attendu += "f" + n + ".ptv\tf" + n + ".ptp\t" + (i % 2 == 0 ? "40000" : "10") + "\t0\t0\t0\tconverti\n";
  }
  const ResultatExe r = LancerQuillon(arguments, d.chemin(), kLot);
  EXPECT_EQ(r.codeSortie, 0);
  std::string sortie = r.sortie;
  std::erase(sortie, '\r');
  EXPECT_EQ(sortie.substr(0, attendu.size()), attendu);
}

// One thread; the second source is a named pipe kept open, so that the
// batch is in the middle of it when Ctrl-C comes. The stop, taken while a
// read waits, still wins when the pipe then ends.
TEST(Lot, InterrompuParCtrlC) {
  if (SousWindows()) GTEST_SKIP() << "no named pipe or SIGINT under wine";
  DossierTemporaire d;
  const std::string lignes = Repeter(kLignePtv, 100);
  EcrireFichier(d / "a.ptv", lignes);
  EcrireFichier(d / "c.ptv", lignes);
  mkfifo((d / "b.ptv").c_str(), 0644);
  for (const std::string nom : {"b", "c"}) {
    EcrireFichier(d / (nom + ".ptp"), "avant\r\n");
    EcrireFichier(d / (nom + ".ptv.log"), "journal d'avant\r\n");
  }
  ProcessusQuillon lot({"-j", "1", "-e", "1000", "-t", "CS", "a.ptv", "b.ptv", "c.ptv"}, d.chemin(), kLot);
  ASSERT_TRUE(lot.AttendreSortie("\tconverti\n"));  // a.ptv done
  const int tuyau = open((d / "b.ptv").c_str(), O_WRONLY);
  ASSERT_EQ(write(tuyau, lignes.data(), lignes.size()), static_cast<ssize_t>(lignes.size()));
  lot.Signaler(SIGINT);
  EXPECT_TRUE(lot.SignalPris(SIGINT));
  close(tuyau);
  const ResultatExe r = lot.Attendre();

  EXPECT_EQ(r.codeSortie, 130);
  EXPECT_TRUE(std::regex_search(
      r.sortie, std::regex("^a\\.ptv\ta\\.ptp\t100\t0\t0\t0\tconverti\nb\\.ptv\tb\\.ptp\t\\d+\t0\t0\t0\tinterrompu\n"
                           "c\\.ptv\tc\\.ptp\t0\t0\t0\t0\tnon-traite\nTotal: 3 fichier.s. : 1 converti.s., "
                           "0 avec rejets, 0 en .chec, 1 interrompu.s., 1 non trait..s.\n")))
      << r.sortie;
  EXPECT_TRUE(fs::exists(d / "a.ptp"));
  for (const std::string nom : {"b", "c"}) {
    EXPECT_EQ(LireFichier(d / (nom + ".ptp")), "avant\r\n") << nom;
    EXPECT_EQ(LireFichier(d / (nom + ".ptv.log")), "journal d'avant\r\n") << nom;
  }
  EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
}

}  // namespace
}  // namespace quillon::test
