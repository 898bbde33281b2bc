// quillon-lot's runs that the cases kept as data (tests/e2e) cannot set up:
// files that end out of order on several threads, and Ctrl-C in the middle
// of a file.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "exe_runner.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::string kLignePtv =
    "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";

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
  const ResultatExe r = LancerQuillon(arguments, d.chemin(), Programme::Lot);
  EXPECT_EQ(r.codeSortie, 0);
  std::string sortie = r.sortie;
  std::erase(sortie, '\r');
  EXPECT_EQ(sortie.substr(0, attendu.size()), attendu);
}

// True when nothing is left in the pipe and every thread of the batch
// sleeps: its reader waits in a read.
bool LectureEnAttente(pid_t pid, int tuyau) {
  int restant = 0;
  if (ioctl(tuyau, FIONREAD, &restant) != 0 || restant > 0) return false;
  for (const auto& t : fs::directory_iterator("/proc/" + std::to_string(pid) + "/task")) {
    if (LireFichier(t.path() / "stat").find(") S ") == std::string::npos) return false;
  }
  return true;
}

// True once no SIGINT is pending: a thread of the batch has taken it.
bool SigintPris(pid_t pid) {
  const std::string etat = LireFichier("/proc/" + std::to_string(pid) + "/status");
  const std::size_t i = etat.find("ShdPnd:");
  return i == std::string::npos || (std::stoull(etat.substr(i + 7), nullptr, 16) >> (SIGINT - 1) & 1) == 0;
}

// One thread; the second source is a named pipe kept open. Ctrl-C comes
// while the batch waits in the middle of it: a stop asked while a read waits
// still wins when the pipe then ends.
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
  const std::vector<std::string> arguments = {"-j", "1", "-e", "1000", "-t", "CS", "a.ptv", "b.ptv", "c.ptv"};
  ProcessusQuillon lot(arguments, d.chemin(), Programme::Lot);
  ASSERT_TRUE(lot.AttendreSortie("\tconverti\n"));  // a.ptv done
  const int tuyau = open((d / "b.ptv").c_str(), O_WRONLY);
  ASSERT_EQ(write(tuyau, lignes.data(), lignes.size()), static_cast<ssize_t>(lignes.size()));
  ASSERT_TRUE(AttendreQue([&] { return LectureEnAttente(lot.pid(), tuyau); }));
  lot.Signaler(SIGINT);
  ASSERT_TRUE(AttendreQue([&] { return SigintPris(lot.pid()); }));
  close(tuyau);
  const ResultatExe r = lot.Attendre();

  EXPECT_EQ(r.codeSortie, 130);
  EXPECT_EQ(r.sortie,
            "a.ptv\ta.ptp\t100\t0\t0\t0\tconverti\nb.ptv\tb.ptp\t100\t0\t0\t0\tinterrompu\n"
            "c.ptv\tc.ptp\t0\t0\t0\t0\tnon-traite\nTotal: 3 fichier(s) : 1 converti(s), 0 avec rejets, 0 en \xE9"
            "chec, 1 interrompu(s), 1 non trait\xE9(s)\nTotal: 200 ligne(s) lues, 0 ignor\xE9" "e(s), 0 erreur(s) de "
            "lecture, 0 erreur(s) d'\xE9" "criture\n");
  EXPECT_TRUE(fs::exists(d / "a.ptp"));
  for (const std::string nom : {"b", "c"}) {
    EXPECT_EQ(LireFichier(d / (nom + ".ptp")), "avant\r\n") << nom;
    EXPECT_EQ(LireFichier(d / (nom + ".ptv.log")), "journal d'avant\r\n") << nom;
  }
  EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
}

}  // namespace
}  // namespace quillon::test
