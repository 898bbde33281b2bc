// Bad input and failing files through the real executable: every case ends
// with its message, without a crash, the source untouched and the memory
// bounded.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <random>

#include "exe_runner.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

// The sanitizers' own bookkeeping makes resident memory meaningless there.
#ifdef QUILLON_SANITIZE
constexpr bool kMesurerMemoire = false;
#else
constexpr bool kMesurerMemoire = true;
#endif

const std::string kVersion = "Quillon, Version 0.5.5\r\n";
const std::string kBonPtp =
    "02   5  12        1001 1 N 10.0  538000.500  152000.250                               \r\n";

std::string Fatal(const std::string& fichier, const std::string& raison) {
  return kVersion + "ERREUR FATALE: Le fichier " + fichier + " ne peut pas \xEAtre " + raison +
         ", l'application va s'arr\xEAter\r\n";
}

struct CasFaute {
  const char* nom;
  std::function<void(const DossierTemporaire&)> preparer;
  std::vector<std::string> arguments;
  std::string sortie;     // expected standard output
  bool sansPrivileges;    // run as "nobody" when the tests run as root
  const char* source;     // the source, which must come out unchanged
};

TEST(Fautes, FichiersQuiNePeuventPasServir) {
  const CasFaute cas[] = {
      {"source is a folder", [](const auto& d) { fs::create_directory(d / "dossier.ptp"); },
       {"dossier.ptp", "b.ptv"}, Fatal("dossier.ptp", "ouvert"), false, nullptr},
      {"source unreadable",
       [](const auto& d) {
         EcrireFichier(d / "secret.ptp", kBonPtp);
         chmod((d / "secret.ptp").c_str(), 0);
       },
       {"secret.ptp", "b.ptv"}, Fatal("secret.ptp", "ouvert"), true, nullptr},
      {"target in a missing folder", [](const auto& d) { EcrireFichier(d / "a.ptp", kBonPtp); },
       {"a.ptp", "manque/b.ptv"}, Fatal("manque/b.ptv", "cr\xE9\xE9"), false, "a.ptp"},
      {"target read-only",
       [](const auto& d) {
         EcrireFichier(d / "a.ptp", kBonPtp);
         EcrireFichier(d / "b.ptv", "garde\r\n");
         chmod((d / "b.ptv").c_str(), 0444);
       },
       {"a.ptp", "b.ptv"}, Fatal("b.ptv", "cr\xE9\xE9"), true, "a.ptp"},
      {"target is a link to the source",
       [](const auto& d) {
         EcrireFichier(d / "x.ptv", kBonPtp);
         fs::create_symlink("x.ptv", d / "lien.ptp");
       },
       {"x.ptv", "lien.ptp"}, Fatal("lien.ptp", "cr\xE9\xE9"), false, "x.ptv"},
      {"target is a hard link to the source",
       [](const auto& d) {
         EcrireFichier(d / "x.ptv", kBonPtp);
         fs::create_hard_link(d / "x.ptv", d / "dur.ptp");
       },
       {"x.ptv", "dur.ptp"}, Fatal("dur.ptp", "cr\xE9\xE9"), false, "x.ptv"},
      {"log path is a folder",
       [](const auto& d) {
         EcrireFichier(d / "a.ptp", kBonPtp);
         fs::create_directory(d / "a.ptp.log");
       },
       {"a.ptp", "b.ptm"}, Fatal("a.ptp.log", "cr\xE9\xE9"), false, "a.ptp"},
      {"log in a read-only folder",
       [](const auto& d) {
         fs::create_directory(d / "lecture");
         EcrireFichier(d / "lecture/a.ptp", kBonPtp);
         chmod((d / "lecture").c_str(), 0555);
       },
       {"lecture/a.ptp", "b.ptm"}, Fatal("lecture/a.ptp.log", "cr\xE9\xE9"), true, "lecture/a.ptp"},
      {"disk full",
       [](const auto& d) {
         std::string source;
         for (int i = 0; i < 20000; ++i) source += kBonPtp;
         EcrireFichier(d / "a.ptp", source);
         fs::create_symlink("/dev/full", d / "plein.ptm");
       },
       {"a.ptp", "plein.ptm"}, Fatal("plein.ptm", "\xE9" "crit"), false, "a.ptp"},
  };
  for (const CasFaute& c : cas) {
    DossierTemporaire d;
    c.preparer(d);
    const std::string avant = c.source ? LireFichier(d / c.source) : "";
    const ResultatExe r = LancerQuillon(c.arguments, d.chemin(), {}, c.sansPrivileges);
    EXPECT_EQ(r.signal, 0) << c.nom;
    EXPECT_EQ(r.codeSortie, 0) << c.nom;
    EXPECT_EQ(r.sortie, c.sortie) << c.nom;
    if (c.source) {
      EXPECT_EQ(LireFichier(d / c.source), avant) << c.nom;
    }
    if (kMesurerMemoire) {
      EXPECT_LT(r.memoireMaxKo, 8 * 1024) << c.nom;
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
  EXPECT_NE(LireFichier(d / "a.ptp.log").find("1000 ligne(s) lues"), std::string::npos);
}

TEST(Fautes, DisqueSaturePendantLaConversionLeDitDansLeJournal) {
  DossierTemporaire d;
  std::string source;
  for (int i = 0; i < 20000; ++i) source += kBonPtp;
  EcrireFichier(d / "a.ptp", source);
  fs::create_symlink("/dev/full", d / "plein.ptm");
  LancerQuillon({"a.ptp", "plein.ptm"}, d.chemin());
  const std::string journal = LireFichier(d / "a.ptp.log");
  EXPECT_NE(journal.find("ERREUR FATALE: Le fichier plein.ptm ne peut pas \xEAtre \xE9"
                         "crit, l'application va s'arr\xEAter\r\n"),
            std::string::npos);
  EXPECT_EQ(journal.find("ligne(s) lues"), std::string::npos) << "no summary after a fatal error";
}

// Sources that are not point files at all: the run reads them to the end,
// rejects what it cannot read, and ends with its summary.
struct CasSource {
  const char* nom;
  std::function<std::string()> contenu;
  long memoireMaxKo;
};

TEST(Fautes, SourcesQuiNeSontPasDesFichiersDePoints) {
  const CasSource cas[] = {
      {"random bytes",
       [] {
         std::mt19937 alea(42);
         std::string s(2 << 20, '\0');
         for (char& c : s) c = static_cast<char>(alea());
         return s;
       },
       8 * 1024},
      {"NUL bytes", [] { return std::string(1 << 20, '\0'); }, 8 * 1024},
      {"lone CR line ends",
       [] {
         std::string s;
         for (int i = 0; i < 10000; ++i) s += kBonPtp.substr(0, kBonPtp.size() - 2) + "\r";
         return s;
       },
       8 * 1024},
      {"UTF-8 comments",
       [] {
         std::string s;
         for (int i = 0; i < 1000; ++i) {
           s += "02   5  12        1001 1 N 20.2  538000.500  152000.250               \xC3\xA9t\xC3\xA9 \xE2\x82\xAC     MU\r\n";
         }
         return s;
       },
       8 * 1024},
      {"one 100 MB line without line end", [] { return std::string(100 << 20, '7'); }, 450 * 1024},
  };
  for (const CasSource& c : cas) {
    DossierTemporaire d;
    const std::string source = c.contenu();
    EcrireFichier(d / "s.ptp", source);
    const ResultatExe r = LancerQuillon({"s.ptp", "c.ptm"}, d.chemin());
    EXPECT_EQ(r.signal, 0) << c.nom;
    EXPECT_NE(r.sortie.find("ligne(s) lues dans le fichier source"), std::string::npos) << c.nom << ": " << r.sortie;
    EXPECT_EQ(LireFichier(d / "s.ptp"), source) << c.nom;
    if (kMesurerMemoire) {
      EXPECT_LT(r.memoireMaxKo, c.memoireMaxKo) << c.nom;
    }
  }
}

TEST(Fautes, CommentairesUTF8CopiesOctetPourOctet) {
  // Columns count bytes: a 12-byte comment holding "été €" in UTF-8.
  const std::string commentaire = "\xC3\xA9t\xC3\xA9 \xE2\x82\xAC   ";
  ASSERT_EQ(commentaire.size(), 12u);
  DossierTemporaire d;
  EcrireFichier(d / "s.ptp", kBonPtp.substr(0, 26) + " 20.2" + kBonPtp.substr(31, 41) + commentaire + " MU\r\n");
  LancerQuillon({"s.ptp", "c.ptv"}, d.chemin());
  EXPECT_EQ(LireFichier(d / "c.ptv"),
            "02   5  12        1001 1 R 62.   538000.500  152000.250                 " + commentaire + " MU\r\n");
}

}  // namespace
}  // namespace quillon::test
