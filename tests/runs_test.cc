// Runs of the real programs that the cases kept as data (tests/e2e) cannot
// set up: permissions, signals, named pipes, full disks, huge or endless
// sources, threads ending out of order, and what only the Windows build
// meets. A run that does not end well leaves every file of its folder as it
// was: the source, the previous target and log, and no temporary file.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <thread>

#include "exe_runner.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::string kVersion = "Quillon, Version 0.5.5\r\n";
const std::string kLignePtv =
    "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";
const std::string kCibleAvant = "cible d'avant\r\n";
const std::string kJournalAvant = "journal d'avant\r\n";

std::string Repeter(const std::string& ligne, int fois) {
  std::string texte;
  for (int i = 0; i < fois; ++i) texte += ligne;
  return texte;
}

std::string Fatal(const std::string& fichier, const std::string& raison) {
  return kVersion + "ERREUR FATALE: Le fichier " + fichier + " ne peut pas \xEAtre " + raison +
         ", l'application va s'arr\xEAter\r\n";
}

// Every entry under a folder by its path: its permission bits, owner and
// group, links and extended attributes (an ACL among them), then a file's
// size and a hash of its bytes (of its size alone past 64 MiB), where a link
// points, or whether it is a folder or a pipe.
using Etat = std::map<std::string, std::string>;
Etat EtatDe(const std::string& dossier) {
  Etat etat;
  for (const auto& e : fs::recursive_directory_iterator(dossier)) {
    const fs::file_status s = e.symlink_status();
    struct stat st {};
    lstat(e.path().c_str(), &st);
    std::ostringstream texte;
    texte << std::oct << static_cast<int>(s.permissions()) << std::dec << " " << st.st_uid << ":" << st.st_gid << " "
          << st.st_nlink;
    char noms[4096], valeur[4096];
    const ssize_t n = llistxattr(e.path().c_str(), noms, sizeof noms);
    for (const char* nom = noms; n > 0 && nom < noms + n; nom += std::strlen(nom) + 1) {
      const ssize_t v = lgetxattr(e.path().c_str(), nom, valeur, sizeof valeur);
      texte << " " << nom << "=" << std::string(valeur, static_cast<std::size_t>(v > 0 ? v : 0));
    }
    texte << " | ";
    if (fs::is_symlink(s)) texte << "-> " << fs::read_symlink(e.path()).string();
    if (fs::is_directory(s) || fs::is_fifo(s)) texte << (fs::is_fifo(s) ? "pipe" : "folder");
    if (fs::is_regular_file(s)) texte << e.file_size() << " bytes";
    if (fs::is_regular_file(s) && e.file_size() < (64u << 20)) {
      texte << " #" << std::hash<std::string>{}(LireFichier(e.path()));
    }
    etat[e.path().lexically_relative(dossier).string()] = texte.str();
  }
  return etat;
}

// The peak counts the test program's own at the fork.
void VerifierMemoire([[maybe_unused]] const ResultatExe& r, [[maybe_unused]] long maxMo) {
#ifndef QUILLON_SANITIZE  // the sanitizers' bookkeeping makes resident memory meaningless
  EXPECT_LT(r.memoireMaxKo, maxMo * 1024);
#endif
}

// A named pipe that a run reads as its source, kept open while it is written
// to, so that the run waits in the middle of its source.
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

// The bytes written so far into the files that the process `pid` has open
// in `dossier` and that have no name there yet (unnamed, or temporary).
std::uintmax_t OctetsEnCours(pid_t pid, const std::string& dossier) {
  std::uintmax_t octets = 0;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator("/proc/" + std::to_string(pid) + "/fd", ec)) {
    const std::string cible = fs::read_symlink(e.path(), ec).string();
    struct stat st {};
    if (!cible.starts_with(dossier + "/") || stat(e.path().c_str(), &st) != 0 || !S_ISREG(st.st_mode)) continue;
    if (cible.ends_with(" (deleted)") || cible.find(".quillon-") != std::string::npos) {
      octets += static_cast<std::uintmax_t>(st.st_size);
    }
  }
  return octets;
}

struct CasFaute {
  const char* nom;
  // After the source a.ptv (20,000 lines), the previous target b.ptp and
  // log a.ptv.log are written; false when the case cannot be set up here.
  std::function<bool(const DossierTemporaire&)> preparer;
  std::string sortie;
  // Sent once the run has written part of its target; the source is then a
  // named pipe that never ends.
  int signal = 0;
  bool sansPrivileges = false;  // run as "nobody" when the tests run as root
  std::vector<std::string> arguments = {"a.ptv", "b.ptp"};
  bool sortieFermee = false;
  // The files the run replaces, by their size ("" for any); each keeps its
  // permission bits, owner, links and attributes. Every other entry of the
  // folder stays as it was.
  std::map<std::string, std::string> ecrits = {};
};

bool Rien(const DossierTemporaire&) { return true; }
bool Dossier(const DossierTemporaire& d, const std::string& nom, mode_t mode, const std::string& fichier) {
  fs::create_directory(d / nom);
  fs::copy_file(d / fichier, d / (nom + "/" + fichier));
  chmod((d / (nom + "/" + fichier)).c_str(), 0666);
  return chmod((d / nom).c_str(), mode) == 0;
}

TEST(Fautes, RunsQuiNeFinissentPasBien) {
  const std::string bilan = kVersion + "20000 ligne(s) lues dans le fichier source\r\n0 ligne(s) ignor\xE9" "e(s) "
                            "lors de la conversion\r\n0 erreur(s) constat\xE9" "e(s) lors de la lecture du "
                            "fichier source\r\n0 erreur(s) constat\xE9" "e(s) lors de l'\xE9" "criture dans le "
                            "fichier cible\r\n";
  const CasFaute cas[] = {
      {"source unreadable", [](auto& d) { return chmod((d / "a.ptv").c_str(), 0) == 0; }, Fatal("a.ptv", "ouvert"), 0,
       true},
      {"target read-only", [](auto& d) { return chmod((d / "b.ptp").c_str(), 0444) == 0; },
       Fatal("b.ptp", "cr\xE9\xE9"), 0, true},
      {"target in a read-only folder", [](auto& d) { return Dossier(d, "lecture", 0555, "b.ptp"); },
       Fatal("lecture/b.ptp", "cr\xE9\xE9"), 0, true, {"a.ptv", "lecture/b.ptp"}},
      {"log in a read-only folder", [](auto& d) { return Dossier(d, "lecture", 0555, "a.ptv"); },
       Fatal("lecture/a.ptv.log", "cr\xE9\xE9"), 0, true, {"lecture/a.ptv", "b.ptp"}},
      {"target is a hard link to the source",
       [](auto& d) { return fs::create_hard_link(d / "a.ptv", d / "dur.ptp"), true; }, Fatal("dur.ptp", "cr\xE9\xE9"),
       0, false, {"a.ptv", "dur.ptp"}},
      {"disk full", [](auto& d) { return fs::create_symlink("/dev/full", d / "plein.ptp"), true; },
       Fatal("plein.ptp", "\xE9" "crit"), 0, false, {"a.ptv", "plein.ptp"}},
      {"disk full under an existing target: 1 MiB of its own, mounted in a mount namespace of this test's",
       [](auto& d) {
         fs::create_directory(d / "petit");
         if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
             mount("tmpfs", (d / "petit").c_str(), "tmpfs", 0, "size=1m,mode=0777") != 0) {
           return false;  // needs root and CAP_SYS_ADMIN
         }
         EcrireFichier(d / "petit/b.ptp", Repeter(kCibleAvant, 20000));  // 300 KB: less than 1 MB left
         return true;
       },
       Fatal("petit/b.ptp", "\xE9" "crit"), 0, false, {"a.ptv", "petit/b.ptp"}},
      // Past the longest accepted line, the source is taken as unreadable.
      {"a line of 100 MB",
       [](auto& d) { return EcrireFichier(d / "a.ptv", kLignePtv + std::string(100 << 20, '7')), true; },
       Fatal("a.ptv", "lu")},
      {"an endless source",
       [](auto& d) { return fs::remove(d / "a.ptv") && (fs::create_symlink("/dev/zero", d / "a.ptv"), true); },
       Fatal("a.ptv", "lu")},
      {"4 GB without a line end, sparse",
       [](auto& d) { return truncate((d / "a.ptv").c_str(), int64_t{4} << 30) == 0; }, Fatal("a.ptv", "lu")},
      {"SIGINT", Rien, kVersion, SIGINT},
      {"SIGTERM", Rien, kVersion, SIGTERM},
      {"SIGHUP", Rien, kVersion, SIGHUP},
      {"SIGINT, the target with a second hard link",
       [](auto& d) { return fs::create_hard_link(d / "b.ptp", d / "lien.ptp"), true; }, kVersion, SIGINT},
      {"SIGKILL, which cannot be caught", Rien, kVersion, SIGKILL},
      {"standard output closed", Rien, "", 0, false, {"a.ptv", "b.ptp"}, true,
       {{"b.ptp", "1780000"}, {"a.ptv.log", ""}}},
      // Replaced through the link: the link stays, the file it points to
      // gets the new lines.
      {"target is a symbolic link",
       [](auto& d) {
         return Dossier(d, "vrai", 0755, "b.ptp") && (fs::create_symlink("vrai/b.ptp", d / "lien.ptp"), true);
       },
       bilan, 0, false, {"a.ptv", "lien.ptp"}, false, {{"vrai/b.ptp", "1780000"}, {"a.ptv.log", ""}}},
      // A replaced target keeps what it had.
      {"another user's and group's target, mode 640, replaced by root",
       [](auto& d) {
         return geteuid() == 0 && chown((d / "b.ptp").c_str(), 65534, 65534) == 0 && chmod((d / "b.ptp").c_str(), 0640) == 0;
       },
       bilan, 0, false,
       {"a.ptv", "b.ptp"}, false, {{"b.ptp", "1780000"}, {"a.ptv.log", ""}}},
      {"a target with a user. attribute and an access list",
       [](auto& d) {
         return setxattr((d / "b.ptp").c_str(), "user.quillon", "note", 4, 0) == 0 &&
                std::system(("setfacl -m u:65534:r '" + d / "b.ptp'").c_str()) == 0;
       },
       bilan, 0, false, {"a.ptv", "b.ptp"}, false, {{"b.ptp", "1780000"}, {"a.ptv.log", ""}}},
      {"a target with a second hard link: every name shows the new bytes",
       [](auto& d) { return fs::create_hard_link(d / "b.ptp", d / "lien.ptp"), true; }, bilan, 0, false,
       {"a.ptv", "b.ptp"}, false, {{"b.ptp", "1780000"}, {"lien.ptp", "1780000"}, {"a.ptv.log", ""}}},
  };
  const std::string source = Repeter(kLignePtv, 20000);  // more than the buffers hold
  for (const CasFaute& c : cas) {
    SCOPED_TRACE(c.nom);
    DossierTemporaire d;
    EcrireFichier(d / "a.ptv", source);
    for (const std::string nom : {"b.ptp", "a.ptv.log"}) {
      EcrireFichier(d / nom, nom == "b.ptp" ? kCibleAvant : kJournalAvant);
      chmod((d / nom).c_str(), 0666);
    }
    if (!c.preparer(d)) {
      std::cout << "skipped here: " << c.nom << "\n";
      continue;
    }
    std::optional<SourceEnTuyau> tuyau;
    if (c.signal != 0) {
      fs::remove(d / "a.ptv");
      tuyau.emplace(d / "a.ptv");
    }
    Etat avant = EtatDe(d.chemin());
    OptionsExe options;
    options.sansPrivileges = c.sansPrivileges;
    options.sortieFermee = c.sortieFermee;
    ProcessusQuillon run(c.arguments, d.chemin(), options);
    if (tuyau) {
      tuyau->Ecrire(Repeter(kLignePtv, 100000));  // 9 MB read and written, and more to come
      ASSERT_TRUE(AttendreQue([&] { return OctetsEnCours(run.pid(), d.chemin()) > 0; }));  // part written
      run.Signaler(c.signal);
    }
    const ResultatExe r = run.Attendre();
    tuyau.reset();

    EXPECT_EQ(r.signal, c.signal);
    EXPECT_EQ(r.sortie, c.sortie);
    Etat apres = EtatDe(d.chemin());
    for (const auto& [nom, taille] : c.ecrits) {
      const std::string mode = avant[nom].substr(0, avant[nom].find('|') + 2);
      EXPECT_TRUE(apres[nom].starts_with(mode + taille)) << nom << ": " << apres[nom] << ", was " << avant[nom];
      avant.erase(nom);
      apres.erase(nom);
    }
    EXPECT_EQ(apres, avant);  // after a SIGKILL too: the files being written had no name yet
    VerifierMemoire(r, c.ecrits.empty() ? 16 : 64);  // a run stopped early, or the whole source
    umount2((d / "petit").c_str(), MNT_DETACH);
  }
}

// Two runs into one target at the same time, their sources taken in turns:
// the target is one run's whole output, never a mix.
TEST(Fautes, DeuxConversionsSurLaMemeCible) {
  DossierTemporaire d;
  const std::string sources[] = {
      Repeter(kLignePtv, 50000),
      Repeter("06  12  34      300103 3 R 17.  2600140.250 1200470.500                 limite       LI\r\n", 50000)};
  std::string seules[2];
  for (int i : {0, 1}) {  // each alone first, for the output to expect
    EcrireFichier(d / "seule.ptv", sources[i]);
    LancerQuillon({"seule.ptv", "seule.ptp"}, d.chemin());
    seules[i] = LireFichier(d / "seule.ptp");
  }
  ASSERT_EQ(seules[0].size(), 50000u * 89);
  ASSERT_NE(seules[0], seules[1]);
  EcrireFichier(d / "b.ptp", kCibleAvant);
  SourceEnTuyau tuyaux[] = {SourceEnTuyau(d / "a.ptv"), SourceEnTuyau(d / "c.ptv")};
  ProcessusQuillon runA({"a.ptv", "b.ptp"}, d.chemin());
  ProcessusQuillon runC({"c.ptv", "b.ptp"}, d.chemin());
  const std::size_t moitie = sources[0].size() / 2;
  for (std::size_t debut : {std::size_t{0}, moitie}) {
    for (int i : {0, 1}) tuyaux[i].Ecrire(sources[i].substr(debut, debut == 0 ? moitie : std::string::npos));
  }
  for (SourceEnTuyau& t : tuyaux) t.Fermer();
  for (ProcessusQuillon* run : {&runA, &runC}) {
    const ResultatExe r = run->Attendre();
    EXPECT_EQ(r.signal, 0);
    VerifierMemoire(r, 64);
  }
  const std::string cible = LireFichier(d / "b.ptp");
  EXPECT_TRUE(cible == seules[0] || cible == seules[1]) << "a mix of " << cible.size() << " bytes";
  EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
}

// quillon-lot's report comes in the order of the sources, whichever thread
// ends first: each long file comes before a short one.
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

// A scan goes past the folders it cannot read (or look into), each a failed
// line in its place, and lists the rest.
TEST(Lot, DossiersIlisiblesDansUnParcours) {
  if (SousWindows()) GTEST_SKIP() << "no permission bits under wine";
  DossierTemporaire d;
  std::string attendu;
  for (const auto& [nom, mode] : {std::pair{"a", 0777}, {"ferme", 0}, {"sans-x", 0444}, {"sous", 0777}}) {
    const std::string n = std::string("d/") + nom;
    fs::create_directories(d / n);
    EcrireFichier(d / (n + "/f.ptv"), kLignePtv);
    chmod((d / n).c_str(), mode);  // 0777: "nobody" writes the logs
    attendu += mode == 0777 ? n + "/f.ptv\t" + n + "/f.ptp\t1\t0\t0\t0\tconverti\n"
                            : n + "\t\t0\t0\t0\t0\techec\tLe dossier " + n + " ne peut pas \xEAtre parcouru\n";
  }
  OptionsExe options(Programme::Lot);
  options.sansPrivileges = true;
  const ResultatExe r = LancerQuillon({"-r", "-n", "-e", "1000", "-t", "CS", "d"}, d.chemin(), options);
  EXPECT_EQ(r.sortie.substr(0, r.sortie.find("Total")), attendu);
  EXPECT_EQ(r.codeSortie, 2);
}

// An export that fills the disk fails its file and leaves the previous
// export as it was, and no other: 1 MiB of its own, mounted in a mount
// namespace of this test's, for 2.4 MB of CSV.
TEST(Lot, ExportSurUnDisquePlein) {
  if (SousWindows()) GTEST_SKIP() << "no mount under wine";
  DossierTemporaire d;
  fs::create_directory(d / "petit");
  if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      mount("tmpfs", (d / "petit").c_str(), "tmpfs", 0, "size=1m,mode=0777") != 0) {
    GTEST_SKIP() << "needs root and CAP_SYS_ADMIN";
  }
  EcrireFichier(d / "a.ptv", Repeter(kLignePtv, 20000));
  EcrireFichier(d / "petit/a.csv", "l'export d'avant\r\n");
  const Etat avant = EtatDe(d.chemin());
  const ResultatExe r =
      LancerQuillon({"-n", "-c", "petit/a.ptp", "--exporter=csv", "--srs=EPSG:2056", "-e", "1000", "-t", "CS", "a.ptv"},
                    d.chemin(), Programme::Lot);
  EXPECT_EQ(r.codeSortie, 2);
  EXPECT_NE(r.sortie.find("\techec\tLe fichier petit/a.csv ne peut pas \xEAtre \xE9" "crit"), std::string::npos) << r.sortie;
  Etat apres = EtatDe(d.chemin());
  EXPECT_EQ(apres.erase("a.ptv.log"), 1u);  // the check's log, beside its source
  EXPECT_EQ(apres, avant);
  umount2((d / "petit").c_str(), MNT_DETACH);
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
    EcrireFichier(d / (nom + ".ptp"), kCibleAvant);
    EcrireFichier(d / (nom + ".ptv.log"), kJournalAvant);
  }
  const Etat avant = EtatDe(d.chemin());
  ProcessusQuillon lot({"-j", "1", "-e", "1000", "-t", "CS", "a.ptv", "b.ptv", "c.ptv"}, d.chemin(), Programme::Lot);
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
  Etat apres = EtatDe(d.chemin());
  EXPECT_EQ(apres.erase("a.ptp") + apres.erase("a.ptv.log"), 2u);
  EXPECT_EQ(apres, avant);
}

// `n` different points: their numbers and coordinates change from line to
// line.
std::string PointsVaries(int64_t n) {
  std::string texte;
  texte.reserve(static_cast<std::size_t>(n) * kLignePtv.size());
  char nombre[24];
  for (int64_t i = 0; i < n; ++i) {
    std::string ligne = kLignePtv;
    std::snprintf(nombre, sizeof nombre, "%06lld", static_cast<long long>(i % 1000000));
    ligne.replace(16, 6, nombre);
    std::snprintf(nombre, sizeof nombre, "%07lld", static_cast<long long>(2600000 + (i * 7919) % 200000));
    ligne.replace(32, 7, nombre);
    std::snprintf(nombre, sizeof nombre, "%07lld", static_cast<long long>(1200000 + (i * 104729) % 150000));
    ligne.replace(44, 7, nombre);
    texte += ligne;
  }
  return texte;
}

// Whether `octets` is the file `nom` as a run to its end writes it: the
// same bytes, the date of a log or a report aside; a GeoPackage, which
// holds its time of writing, whole at least.
bool CommeNeuf(const std::string& nom, const std::string& octets, const std::string& complet) {
  if (nom.ends_with(".gpkg")) return octets.size() == complet.size();
  if (nom.ends_with(".log")) return MasquerDate(octets) == MasquerDate(complet);
  if (nom.ends_with(".html")) return octets.size() == complet.size();
  return octets == complet;
}

// A batch that writes every export and a report, killed outright (the
// out-of-memory killer, a power cut: SIGKILL) at several points: beside
// the source there is nothing but the files of before, each as it was or
// whole and new, as a run to the end writes it.
TEST(Lot, TueSansPreavis) {
  if (SousWindows()) GTEST_SKIP() << "killed by TerminateProcess in Windows.TueSansPreavis";
  const std::vector<std::string> arguments = {"-e", "1000", "-t", "CS", "--srs=EPSG:2056",
                                              "--exporter=gpkg,csv,geojson,dxf", "--rapport=r", "a.ptv"};
  const std::string source = PointsVaries(150000);
  DossierTemporaire complet;  // what a run to the end writes
  EcrireFichier(complet / "a.ptv", source);
  ASSERT_EQ(LancerQuillon(arguments, complet.chemin(), Programme::Lot).codeSortie, 0);
  std::map<std::string, std::string> nouveaux;
  for (const auto& e : fs::recursive_directory_iterator(complet.chemin())) {
    if (e.is_regular_file()) nouveaux[e.path().lexically_relative(complet.chemin())] = LireFichier(e.path());
  }
  for (const int millisecondes : {0, 30, 120, 400, 900}) {
    SCOPED_TRACE(millisecondes);
    DossierTemporaire d;
    fs::create_directory(d / "r");
    for (const auto& [nom, octets] : nouveaux) EcrireFichier(d / nom, nom == "a.ptv" ? source : "avant\r\n");
    ProcessusQuillon run(arguments, d.chemin(), Programme::Lot);
    if (millisecondes == 0) {
      ASSERT_TRUE(AttendreQue([&] { return OctetsEnCours(run.pid(), d.chemin()) > 0; }));
    } else {
      std::this_thread::sleep_for(std::chrono::milliseconds(millisecondes));
    }
    run.Signaler(SIGKILL);
    run.Attendre();
    std::size_t vus = 0;
    for (const auto& e : fs::recursive_directory_iterator(d.chemin())) {
      if (!e.is_regular_file()) continue;
      const std::string nom = e.path().lexically_relative(d.chemin());
      ASSERT_EQ(nouveaux.count(nom), 1u) << "left behind: " << nom;
      const std::string octets = LireFichier(e.path());
      EXPECT_TRUE(octets == "avant\r\n" || CommeNeuf(nom, octets, nouveaux[nom])) << nom;
      ++vus;
    }
    EXPECT_EQ(vus, nouveaux.size());
  }
}

// What only the Windows build meets: the program's own quoted path with a
// blank in it, and file names that Windows-1252 cannot hold. Run under wine
// (tests/windows/run-tests.sh); skipped on Linux.
class Windows : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!SousWindows()) GTEST_SKIP() << "Windows only: run under wine by make test-windows";
  }
  // A run of quillon.exe from `programme` with the text after its name.
  ResultatExe Lancer(const std::string& texte, const std::string& programme = std::getenv("QUILLON_EXE_WINDOWS")) {
    OptionsExe options;
    options.environnement = {"LC_ALL=C.UTF-8"};  // wine reads Unix names and the command line in it
    options.ligneCommande = LigneCommandeWindows(programme, texte);
    return LancerQuillon({}, d.chemin(), options);
  }
  DossierTemporaire d;
};

// The same run from the program's folder and from a folder with a blank in
// its name: the same target, log and summary, byte for byte.
TEST_F(Windows, ProgrammeDansUnDossierAvecUnBlanc) {
  fs::create_directory(d / "mes programmes");
  fs::copy_file(std::getenv("QUILLON_EXE_WINDOWS"), d / "mes programmes/quillon.exe");
  EcrireFichier(d / "a.ptv", kLignePtv + kLignePtv.substr(3) + kLignePtv);
  std::string vus[2][3];
  for (int i : {0, 1}) {
    const ResultatExe r =
        i == 0 ? Lancer("a.ptv b.ptp 500 cs") : Lancer("a.ptv b.ptp 500 cs", d / "mes programmes/quillon.exe");
    vus[i][0] = r.sortie;
    vus[i][1] = LireFichier(d / "b.ptp");
    vus[i][2] = MasquerDate(LireFichier(d / "a.ptv.log"));
    fs::remove(d / "b.ptp");
  }
  EXPECT_EQ(vus[1][0], vus[0][0]);
  EXPECT_EQ(vus[1][1], vus[0][1]);
  EXPECT_EQ(vus[1][2], vus[0][2]);
  EXPECT_EQ(vus[1][1].size(), 2u * 89);
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

// A replaced target as far as wine models Windows' files: a target with a
// second hard link gets the new bytes under both names, still one file; a
// read-only target is refused and stays as it was.
TEST_F(Windows, CibleAvecUnLienDurOuEnLectureSeule) {
  EcrireFichier(d / "a.ptv", kLignePtv);
  EcrireFichier(d / "b.ptp", kCibleAvant);
  fs::create_hard_link(d / "b.ptp", d / "lien.ptp");
  EXPECT_EQ(Lancer("a.ptv b.ptp").sortie.substr(0, kVersion.size() + 2), kVersion + "1 ");
  EXPECT_EQ(LireFichier(d / "lien.ptp").size(), 89u);
  EXPECT_TRUE(fs::equivalent(d / "b.ptp", d / "lien.ptp"));

  EcrireFichier(d / "c.ptp", kCibleAvant);
  fs::permissions(d / "c.ptp", fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  EXPECT_NE(Lancer("a.ptv c.ptp").sortie.find("c.ptp ne peut pas \xEAtre cr\xE9\xE9"), std::string::npos);
  EXPECT_EQ(LireFichier(d / "c.ptp"), kCibleAvant);
  EXPECT_EQ(fs::status(d / "c.ptp").permissions() & fs::perms::owner_write, fs::perms::none);
  EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
}

// quillon-lot.exe writing every export, ended by TerminateProcess at several
// points: its temporary files, whose deletion was asked for when they were
// made, go with it, but for one caught while being put in place, which the
// next run removes; every file is as it was or whole and new.
TEST_F(Windows, TueSansPreavis) {
  const std::string lot = fs::path(std::getenv("QUILLON_EXE_WINDOWS")).parent_path() / "quillon-lot.exe";
  const std::string texte = "-e 1000 -t CS --srs=EPSG:2056 --exporter=gpkg,csv,geojson,dxf a.ptv";
  EcrireFichier(d / "a.ptv", PointsVaries(60000));
  ASSERT_EQ(Lancer(texte, lot).codeSortie, 0);
  std::map<std::string, std::string> nouveaux;
  for (const auto& e : fs::directory_iterator(d.chemin())) nouveaux[e.path().filename()] = LireFichier(e.path());
  for (const char* millisecondes : {"300", "500", "700", "900"}) {
    SCOPED_TRACE(millisecondes);
    for (const auto& [nom, octets] : nouveaux) {
      if (nom != "a.ptv") EcrireFichier(d / nom, "avant\r\n");
    }
    OptionsExe options;
    options.environnement = {"LC_ALL=C.UTF-8", std::string("QUILLON_TERMINER_APRES=") + millisecondes};
    options.ligneCommande = LigneCommandeWindows(lot, texte);
    LancerQuillon({}, d.chemin(), options);
    std::size_t vus = 0;
    const std::vector<std::string> restes = Temporaires(d.chemin());
    for (const auto& e : fs::directory_iterator(d.chemin())) {
      const std::string nom = e.path().filename();
      if (std::find(restes.begin(), restes.end(), nom) != restes.end()) continue;
      ASSERT_EQ(nouveaux.count(nom), 1u) << "left behind: " << nom;
      const std::string octets = LireFichier(e.path());
      EXPECT_TRUE(octets == "avant\r\n" || CommeNeuf(nom, octets, nouveaux[nom])) << nom;
      ++vus;
    }
    EXPECT_EQ(vus, nouveaux.size());
    // A file killed between the withdrawal of its deletion and its rename
    // (a few calls) keeps its temporary: the next run into the folder
    // removes it, its process being gone.
    EXPECT_LE(restes.size(), 2u) << "at most the files being put in place";
    if (!restes.empty()) {
      EXPECT_EQ(Lancer(texte, lot).codeSortie, 0);
      EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{});
    }
  }
}

}  // namespace
}  // namespace quillon::test
