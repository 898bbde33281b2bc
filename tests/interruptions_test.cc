// Runs that do not end well, through the real executable: interrupted by a
// signal, two at once on one target, a disk that fills up, a source that
// never ends a line. Each leaves the previous target and log byte for byte,
// no temporary file (but after SIGKILL, which cannot be caught), and stays
// small in memory.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "exe_runner.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::string kLignePtv =
    "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";
const std::string kAutreLignePtv =
    "06  12  34      300103 3 R 17.  2600140.250 1200470.500                 limite       LI\r\n";
const std::string kCibleAvant = "cible d'avant\r\n";
const std::string kJournalAvant = "journal d'avant\r\n";

std::string Repeter(const std::string& ligne, int fois) {
  std::string texte;
  texte.reserve(ligne.size() * fois);
  for (int i = 0; i < fois; ++i) texte += ligne;
  return texte;
}

void VerifierMemoire(const ResultatExe& r, const char* cas) {
#ifndef QUILLON_SANITIZE  // the sanitizers' bookkeeping makes resident memory meaningless
  EXPECT_LT(r.memoireMaxKo, 64 * 1024) << cas;
#else
  (void)r;
  (void)cas;
#endif
}

// Writes `texte` into a named pipe that a run reads as its source, and keeps
// the pipe open, so that the run waits in the middle of its source.
class SourceEnTuyau {
 public:
  explicit SourceEnTuyau(const std::string& chemin) : chemin_(chemin) { mkfifo(chemin.c_str(), 0644); }
  ~SourceEnTuyau() { Fermer(); }
  // Blocks until the run has opened the pipe and taken `texte`.
  void Ecrire(const std::string& texte) {
    if (fd_ < 0) fd_ = open(chemin_.c_str(), O_WRONLY);
    for (std::size_t fait = 0; fd_ >= 0 && fait < texte.size();) {
      const ssize_t n = write(fd_, texte.data() + fait, texte.size() - fait);
      if (n <= 0) break;
      fait += static_cast<std::size_t>(n);
    }
  }
  void Fermer() {
    if (fd_ >= 0) close(fd_);
    fd_ = -1;
  }

 private:
  std::string chemin_;
  int fd_ = -1;
};

// Waits until a temporary file of the run holds bytes: the run is under way
// and has written part of its target.
bool AttendreCibleEnCours(const std::string& dossier) {
  for (int i = 0; i < 1000; ++i) {
    for (const std::string& nom : Temporaires(dossier)) {
      std::error_code ec;
      if (nom.starts_with("b.ptp.") && fs::file_size(fs::path(dossier) / nom, ec) > 0) return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

TEST(Interruptions, UnSignalAuMilieuDeLaConversion) {
  const struct {
    int signal;
    bool temporairesRestent;  // only a signal that cannot be caught leaves them
  } cas[] = {{SIGINT, false}, {SIGTERM, false}, {SIGHUP, false}, {SIGKILL, true}};
  for (const auto& c : cas) {
    const std::string nom = strsignal(c.signal);
    DossierTemporaire d;
    EcrireFichier(d / "b.ptp", kCibleAvant);
    EcrireFichier(d / "a.ptv.log", kJournalAvant);
    SourceEnTuyau source(d / "a.ptv");
    ProcessusQuillon run({"a.ptv", "b.ptp"}, d.chemin());
    source.Ecrire(Repeter(kLignePtv, 100000));  // 9 MB read and written, and more to come
    ASSERT_TRUE(AttendreCibleEnCours(d.chemin())) << nom;
    run.Signaler(c.signal);
    const ResultatExe r = run.Attendre();
    source.Fermer();

    EXPECT_EQ(r.signal, c.signal) << nom << ": ends by the same signal";
    EXPECT_EQ(r.sortie, "Quillon, Version 0.5.5\r\n") << nom;
    EXPECT_EQ(LireFichier(d / "b.ptp"), kCibleAvant) << nom;
    EXPECT_EQ(LireFichier(d / "a.ptv.log"), kJournalAvant) << nom;
    const std::vector<std::string> restes = Temporaires(d.chemin());
    if (c.temporairesRestent) {
      EXPECT_EQ(restes.size(), 2u) << nom << ": the target's and the log's";
      for (const std::string& t : restes) {
        EXPECT_TRUE(t.starts_with("b.ptp.quillon-") || t.starts_with("a.ptv.log.quillon-")) << t;
      }
    } else {
      EXPECT_EQ(restes, std::vector<std::string>{}) << nom;
    }
    VerifierMemoire(r, nom.c_str());
  }
}

// Two runs into one target at the same time, their sources taken in turns:
// the target is one run's whole output, never a mix.
TEST(Interruptions, DeuxConversionsSurLaMemeCible) {
  DossierTemporaire d;
  const std::string a = Repeter(kLignePtv, 50000);
  const std::string c = Repeter(kAutreLignePtv, 50000);
  std::string sortieA, sortieC;
  {  // each alone first, for the output to expect
    EcrireFichier(d / "seul-a.ptv", a);
    EcrireFichier(d / "seul-c.ptv", c);
    LancerQuillon({"seul-a.ptv", "seul-a.ptp"}, d.chemin());
    LancerQuillon({"seul-c.ptv", "seul-c.ptp"}, d.chemin());
    sortieA = LireFichier(d / "seul-a.ptp");
    sortieC = LireFichier(d / "seul-c.ptp");
    ASSERT_EQ(sortieA.size(), 50000u * 89);
    ASSERT_NE(sortieA, sortieC);
  }
  EcrireFichier(d / "b.ptp", kCibleAvant);
  SourceEnTuyau sourceA(d / "a.ptv");
  SourceEnTuyau sourceC(d / "c.ptv");
  ProcessusQuillon runA({"a.ptv", "b.ptp"}, d.chemin());
  ProcessusQuillon runC({"c.ptv", "b.ptp"}, d.chemin());
  const std::size_t moitie = a.size() / 2;
  sourceA.Ecrire(a.substr(0, moitie));
  sourceC.Ecrire(c.substr(0, moitie));
  sourceA.Ecrire(a.substr(moitie));
  sourceC.Ecrire(c.substr(moitie));
  sourceA.Fermer();
  sourceC.Fermer();
  const ResultatExe rA = runA.Attendre();
  const ResultatExe rC = runC.Attendre();

  EXPECT_EQ(rA.signal, 0);
  EXPECT_EQ(rC.signal, 0);
  const std::string cible = LireFichier(d / "b.ptp");
  EXPECT_TRUE(cible == sortieA || cible == sortieC) << "a mix of " << cible.size() << " bytes";
  EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
  VerifierMemoire(rA, "a");
  VerifierMemoire(rC, "c");
}

// A source that never ends a line, endless or of several gigabytes: the run
// stops at the longest accepted line as if the source could not be read.
TEST(Interruptions, SourceSansFinDeLigne) {
  const struct {
    const char* nom;
    std::function<void(const std::string&)> creer;
  } cas[] = {
      {"endless", [](const std::string& chemin) { fs::create_symlink("/dev/zero", chemin); }},
      {"4 GB without a line end",
       [](const std::string& chemin) {
         const int fd = open(chemin.c_str(), O_WRONLY | O_CREAT, 0644);
         ASSERT_EQ(ftruncate(fd, int64_t{4} << 30), 0);  // sparse: no disk used
         close(fd);
       }},
  };
  for (const auto& c : cas) {
    DossierTemporaire d;
    c.creer(d / "z.ptv");
    EcrireFichier(d / "b.ptp", kCibleAvant);
    const ResultatExe r = LancerQuillon({"z.ptv", "b.ptp"}, d.chemin());
    EXPECT_EQ(r.signal, 0) << c.nom;
    EXPECT_EQ(r.sortie, "Quillon, Version 0.5.5\r\nERREUR FATALE: Le fichier z.ptv ne peut pas \xEAtre lu, "
                        "l'application va s'arr\xEAter\r\n")
        << c.nom;
    EXPECT_EQ(LireFichier(d / "b.ptp"), kCibleAvant) << c.nom;
    EXPECT_FALSE(fs::exists(d / "z.ptv.log")) << c.nom;
    EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{}) << c.nom;
    VerifierMemoire(r, c.nom);
  }
}

// A disk that fills up under an existing target: a 1 MiB file system of
// its own, mounted in this test's own mount namespace.
TEST(Interruptions, DisquePleinSousUneCibleExistante) {
  DossierTemporaire d;
  fs::create_directory(d / "petit");
  if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      mount("tmpfs", (d / "petit").c_str(), "tmpfs", 0, "size=1m,mode=0777") != 0) {
    GTEST_SKIP() << "no small file system can be mounted here (needs root and CAP_SYS_ADMIN)";
  }
  const std::string cibleAvant = Repeter(kCibleAvant, 20000);  // 300 KB, leaves room for less than 1 MB
  EcrireFichier(d / "petit/b.ptp", cibleAvant);
  EcrireFichier(d / "a.ptv", Repeter(kLignePtv, 20000));  // 1.7 MB to write
  const ResultatExe r = LancerQuillon({"a.ptv", "petit/b.ptp"}, d.chemin());
  EXPECT_EQ(r.signal, 0);
  EXPECT_EQ(r.sortie, "Quillon, Version 0.5.5\r\nERREUR FATALE: Le fichier petit/b.ptp ne peut pas \xEAtre "
                      "\xE9" "crit, l'application va s'arr\xEAter\r\n");
  EXPECT_EQ(LireFichier(d / "petit/b.ptp"), cibleAvant);
  EXPECT_FALSE(fs::exists(d / "a.ptv.log"));
  EXPECT_EQ(Temporaires(d / "petit"), std::vector<std::string>{});
  VerifierMemoire(r, "disk full");
  umount2((d / "petit").c_str(), MNT_DETACH);
}

// A target that is a symbolic link is replaced through it: the link stays,
// the file it points to gets the new lines and keeps its permission bits.
TEST(Interruptions, CibleLienSymbolique) {
  DossierTemporaire d;
  EcrireFichier(d / "a.ptv", Repeter(kLignePtv, 10));
  fs::create_directory(d / "vrai");
  EcrireFichier(d / "vrai/b.ptp", kCibleAvant);
  chmod((d / "vrai/b.ptp").c_str(), 0640);
  fs::create_symlink("vrai/b.ptp", d / "lien.ptp");
  const ResultatExe r = LancerQuillon({"a.ptv", "lien.ptp"}, d.chemin());
  EXPECT_EQ(r.signal, 0);
  EXPECT_TRUE(fs::is_symlink(d / "lien.ptp"));
  EXPECT_EQ(LireFichier(d / "vrai/b.ptp").size(), 10u * 89);
  struct stat etat;
  ASSERT_EQ(stat((d / "vrai/b.ptp").c_str(), &etat), 0);
  EXPECT_EQ(etat.st_mode & 07777, 0640u);
  EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
  EXPECT_EQ(Temporaires(d / "vrai"), std::vector<std::string>{});
  VerifierMemoire(r, "link");
}

}  // namespace
}  // namespace quillon::test
