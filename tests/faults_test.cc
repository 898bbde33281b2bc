// Failing files that the cases kept as data (tests/e2e) cannot set up:
// permissions, links, a full disk, a closed standard output, a huge line.
// Every case ends with its message, without a crash, the source untouched,
// the previous target and log as they were, and no temporary file left.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>

#include "exe_runner.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

const std::string kBonPtp =
    "02   5  12        1001 1 N 10.0  538000.500  152000.250                               \r\n";
const std::string kCibleAvant = "cible d'avant\r\n";

std::string Fatal(const std::string& fichier, const std::string& raison) {
  return "Quillon, Version 0.5.5\r\nERREUR FATALE: Le fichier " + fichier + " ne peut pas \xEAtre " + raison +
         ", l'application va s'arr\xEAter\r\n";
}

struct CasFaute {
  const char* nom;
  std::function<void(const DossierTemporaire&)> preparer;  // after the source a.ptp is written
  std::vector<std::string> arguments;
  std::string sortie;
  bool sansPrivileges;  // run as "nobody" when the tests run as root
  const char* cible;    // a target whose previous bytes (kCibleAvant) must stay, or null
};

void CibleAvant(const std::string& chemin, mode_t mode = 0644) {
  EcrireFichier(chemin, kCibleAvant);
  chmod(chemin.c_str(), mode);
}

TEST(Fautes, FichiersQuiNePeuventPasServir) {
  const CasFaute cas[] = {
      {"source unreadable", [](const auto& d) { chmod((d / "a.ptp").c_str(), 0); }, {"a.ptp", "b.ptv"},
       Fatal("a.ptp", "ouvert"), true, nullptr},
      {"target read-only", [](const auto& d) { CibleAvant(d / "b.ptv", 0444); }, {"a.ptp", "b.ptv"},
       Fatal("b.ptv", "cr\xE9\xE9"), true, "b.ptv"},
      {"target in a read-only folder",
       [](const auto& d) {
         fs::create_directory(d / "lecture");
         CibleAvant(d / "lecture/b.ptv", 0666);
         chmod((d / "lecture").c_str(), 0555);
       },
       {"a.ptp", "lecture/b.ptv"}, Fatal("lecture/b.ptv", "cr\xE9\xE9"), true, "lecture/b.ptv"},
      {"target is a folder", [](const auto& d) { fs::create_directory(d / "dossier.ptv"); }, {"a.ptp", "dossier.ptv"},
       Fatal("dossier.ptv", "cr\xE9\xE9"), false, nullptr},
      {"target is a link to the source", [](const auto& d) { fs::create_symlink("a.ptp", d / "lien.ptv"); },
       {"a.ptp", "lien.ptv"}, Fatal("lien.ptv", "cr\xE9\xE9"), false, nullptr},
      {"target is a hard link to the source", [](const auto& d) { fs::create_hard_link(d / "a.ptp", d / "dur.ptv"); },
       {"a.ptp", "dur.ptv"}, Fatal("dur.ptv", "cr\xE9\xE9"), false, nullptr},
      {"log in a read-only folder",
       [](const auto& d) {
         fs::create_directory(d / "lecture");
         fs::copy_file(d / "a.ptp", d / "lecture/a.ptp");
         CibleAvant(d / "b.ptm", 0666);
         chmod((d / "lecture").c_str(), 0555);
       },
       {"lecture/a.ptp", "b.ptm"}, Fatal("lecture/a.ptp.log", "cr\xE9\xE9"), true, "b.ptm"},
      {"disk full", [](const auto& d) { fs::create_symlink("/dev/full", d / "plein.ptm"); }, {"a.ptp", "plein.ptm"},
       Fatal("plein.ptm", "\xE9" "crit"), false, nullptr},
  };
  std::string source;
  for (int i = 0; i < 20000; ++i) source += kBonPtp;  // more than the buffers hold
  for (const CasFaute& c : cas) {
    DossierTemporaire d;
    EcrireFichier(d / "a.ptp", source);
    c.preparer(d);
    OptionsExe options;
    options.sansPrivileges = c.sansPrivileges;
    const ResultatExe r = LancerQuillon(c.arguments, d.chemin(), options);
    EXPECT_EQ(r.signal, 0) << c.nom;
    EXPECT_EQ(r.sortie, c.sortie) << c.nom;
    chmod((d / "a.ptp").c_str(), 0644);
    EXPECT_EQ(LireFichier(d / "a.ptp"), source) << c.nom;
    if (c.cible) {
      EXPECT_EQ(LireFichier(d / c.cible), kCibleAvant) << c.nom;
    }
    EXPECT_FALSE(fs::exists(d / "a.ptp.log")) << c.nom << ": no log after a fatal error";
    EXPECT_EQ(Temporaires(d.chemin()), std::vector<std::string>{}) << c.nom;
    if (fs::exists(d / "lecture")) {
      EXPECT_EQ(Temporaires(d / "lecture"), std::vector<std::string>{}) << c.nom;
    }
  }
}

TEST(Fautes, SortieStandardFermeeNArretePasLaConversion) {
  DossierTemporaire d;
  std::string source;
  for (int i = 0; i < 1000; ++i) source += kBonPtp;
  EcrireFichier(d / "a.ptp", source);
  OptionsExe options;
  options.sortieFermee = true;
  const ResultatExe r = LancerQuillon({"a.ptp", "b.ptm"}, d.chemin(), options);
  EXPECT_EQ(r.signal, 0);
  EXPECT_EQ(LireFichier(d / "b.ptm").size(), 1000u * 66);
}

// Past the longest accepted line, the source is taken as unreadable: the
// run stops, and memory stays bounded whatever the line's length.
TEST(Fautes, UneLigneDeCentMegaOctetsSansFinDeLigne) {
  DossierTemporaire d;
  EcrireFichier(d / "s.ptp", kBonPtp + std::string(100 << 20, '7'));
  CibleAvant(d / "c.ptm");
  const ResultatExe r = LancerQuillon({"s.ptp", "c.ptm"}, d.chemin());
  EXPECT_EQ(r.signal, 0);
  EXPECT_EQ(r.sortie, Fatal("s.ptp", "lu"));
  EXPECT_EQ(LireFichier(d / "c.ptm"), kCibleAvant);
  EXPECT_FALSE(fs::exists(d / "s.ptp.log"));
#ifndef QUILLON_SANITIZE  // the sanitizers' bookkeeping makes resident memory meaningless
  EXPECT_LT(r.memoireMaxKo, 16 * 1024);
#endif
}

}  // namespace
}  // namespace quillon::test
