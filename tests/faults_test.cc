// Failing files that the cases kept as data (tests/e2e) cannot set up:
// permissions, links, a full disk, a closed standard output, a huge line.
// Every case ends with its message, without a crash, the source untouched.
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

std::string Fatal(const std::string& fichier, const std::string& raison) {
  return "Quillon, Version 0.5.5\r\nERREUR FATALE: Le fichier " + fichier + " ne peut pas \xEAtre " + raison +
         ", l'application va s'arr\xEAter\r\n";
}

struct CasFaute {
  const char* nom;
  std::function<void(const DossierTemporaire&)> preparer;  // after the source a.ptp is written
  std::vector<std::string> arguments;
  std::string sortie;
  bool sansPrivileges;         // run as "nobody" when the tests run as root
  const char* journalContient; // a line the log must hold, or null
};

TEST(Fautes, FichiersQuiNePeuventPasServir) {
  const auto lectureSeule = [](const std::string& chemin) { chmod(chemin.c_str(), 0444); };
  const CasFaute cas[] = {
      {"source unreadable", [](const auto& d) { chmod((d / "a.ptp").c_str(), 0); }, {"a.ptp", "b.ptv"},
       Fatal("a.ptp", "ouvert"), true, nullptr},
      {"target read-only",
       [&](const auto& d) {
         EcrireFichier(d / "b.ptv", "garde\r\n");
         lectureSeule(d / "b.ptv");
       },
       {"a.ptp", "b.ptv"}, Fatal("b.ptv", "cr\xE9\xE9"), true, nullptr},
      {"target is a link to the source", [](const auto& d) { fs::create_symlink("a.ptp", d / "lien.ptv"); },
       {"a.ptp", "lien.ptv"}, Fatal("lien.ptv", "cr\xE9\xE9"), false, nullptr},
      {"target is a hard link to the source", [](const auto& d) { fs::create_hard_link(d / "a.ptp", d / "dur.ptv"); },
       {"a.ptp", "dur.ptv"}, Fatal("dur.ptv", "cr\xE9\xE9"), false, nullptr},
      {"log in a read-only folder",
       [&](const auto& d) {
         fs::create_directory(d / "lecture");
         fs::copy_file(d / "a.ptp", d / "lecture/a.ptp");
         chmod((d / "lecture").c_str(), 0555);
       },
       {"lecture/a.ptp", "b.ptm"}, Fatal("lecture/a.ptp.log", "cr\xE9\xE9"), true, nullptr},
      {"disk full", [](const auto& d) { fs::create_symlink("/dev/full", d / "plein.ptm"); }, {"a.ptp", "plein.ptm"},
       Fatal("plein.ptm", "\xE9" "crit"),
       false, "ERREUR FATALE: Le fichier plein.ptm ne peut pas \xEAtre \xE9" "crit, l'application va s'arr\xEAter\r\n"},
  };
  std::string source;
  for (int i = 0; i < 20000; ++i) source += kBonPtp;  // more than the buffers hold
  for (const CasFaute& c : cas) {
    DossierTemporaire d;
    EcrireFichier(d / "a.ptp", source);
    c.preparer(d);
    const ResultatExe r = LancerQuillon(c.arguments, d.chemin(), {}, c.sansPrivileges);
    EXPECT_EQ(r.signal, 0) << c.nom;
    EXPECT_EQ(r.sortie, c.sortie) << c.nom;
    chmod((d / "a.ptp").c_str(), 0644);
    EXPECT_EQ(LireFichier(d / "a.ptp"), source) << c.nom;
    if (c.journalContient) {
      const std::string journal = LireFichier(d / "a.ptp.log");
      EXPECT_NE(journal.find(c.journalContient), std::string::npos) << c.nom;
      EXPECT_EQ(journal.find("ligne(s) lues"), std::string::npos) << "no summary after a fatal error";
    }
  }
}

TEST(Fautes, SortieStandardFermeeNArretePasLaConversion) {
  DossierTemporaire d;
  std::string source;
  for (int i = 0; i < 1000; ++i) source += kBonPtp;
  EcrireFichier(d / "a.ptp", source);
  const ResultatExe r = LancerQuillon({"a.ptp", "b.ptm"}, d.chemin(), {}, false, true);
  EXPECT_EQ(r.signal, 0);
  EXPECT_EQ(LireFichier(d / "b.ptm").size(), 1000u * 66);
}

TEST(Fautes, UneLigneDeCentMegaOctetsSansFinDeLigne) {
  DossierTemporaire d;
  const std::string source(100 << 20, '7');
  EcrireFichier(d / "s.ptp", source);
  const ResultatExe r = LancerQuillon({"s.ptp", "c.ptm"}, d.chemin());
  EXPECT_EQ(r.signal, 0);
  EXPECT_NE(r.sortie.find("0 ligne(s) lues dans le fichier source"), std::string::npos) << r.sortie;
#ifndef QUILLON_SANITIZE  // the sanitizers' bookkeeping makes resident memory meaningless
  EXPECT_LT(r.memoireMaxKo, 450 * 1024) << "the longest line aside, memory stays bounded";
#endif
}

}  // namespace
}  // namespace quillon::test
