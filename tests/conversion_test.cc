#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "conversion/conversions.h"
#include "conversion/encoding.h"
#include "conversion/locale.h"
#include "conversion/run_settings.h"
#include "conversion/text_file.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::W;

// Every line a stream gives, with the counter after each read.
struct Lecture {
  std::vector<std::string> lignes;
  std::vector<int64_t> compteurs;
};

Lecture ToutLire(const std::string& contenu) {
  SystemeFichiersMemoire fs;
  fs.fichiers["f"] = contenu;
  FluxTexte flux;
  EXPECT_TRUE(OuvrirFichierLecture(flux, "f", fs));
  Lecture l;
  std::string_view ligne;
  while (!flux.AtEndOfStream() && flux.ReadLine(ligne)) {
    l.lignes.emplace_back(ligne);
    l.compteurs.push_back(flux.Line());
  }
  return l;
}

TEST(FichiersTexte, FinsDeLigneEtCompteur) {
  struct Cas {
    const char* nom;
    std::string contenu;
    std::vector<std::string> lignes;
    int64_t compteurFinal;
  };
  const Cas cas[] = {
      {"empty", "", {}, 1},
      {"CR LF", "a\r\nb\r\n", {"a", "b"}, 3},
      {"lone LF", "a\nb\n", {"a", "b"}, 3},
      {"last line without end", "a\r\nb", {"a", "b"}, 2},
      {"lone CR stays in the line", "a\rb\r\n", {"a\rb"}, 2},
      {"CR at the very end", "a\r", {"a\r"}, 1},
      {"empty lines", "\r\n\n\r\n", {"", "", ""}, 4},
      {"NUL bytes", std::string("a\0b\n", 4), {std::string("a\0b", 3)}, 2},
  };
  for (const Cas& c : cas) {
    const Lecture l = ToutLire(c.contenu);
    EXPECT_EQ(l.lignes, c.lignes) << c.nom;
    EXPECT_EQ(l.compteurs.empty() ? 1 : l.compteurs.back(), c.compteurFinal) << c.nom;
  }
}

TEST(FichiersTexte, LignesPlusLonguesQueLeTampon) {
  const std::string longue(200000, 'x');
  std::string contenu;
  for (int i = 0; i < 3; ++i) contenu += longue + std::to_string(i) + "\r\n";
  contenu += "fin";
  const Lecture l = ToutLire(contenu);
  ASSERT_EQ(l.lignes.size(), 4u);
  EXPECT_EQ(l.lignes[1], longue + "1");
  EXPECT_EQ(l.lignes[3], "fin");
  EXPECT_EQ(l.compteurs.back(), 4);
}

TEST(FichiersTexte, CRLFCoupeEntreDeuxRemplissages) {
  // The CR LF of a line straddles the 64 KiB buffer boundary.
  std::string contenu(65535, 'y');
  contenu += "\r\nz\r\n";
  const Lecture l = ToutLire(contenu);
  ASSERT_EQ(l.lignes.size(), 2u);
  EXPECT_EQ(l.lignes[0].size(), 65535u);
  EXPECT_EQ(l.lignes[1], "z");
}

TEST(FichiersTexte, EcritureRemplaceEtTermineParCRLF) {
  SystemeFichiersMemoire fs;
  fs.fichiers["c"] = "ancien contenu";
  FluxTexte flux;
  ASSERT_TRUE(CreerFichierEcriture(flux, "c", fs));
  flux.WriteLine("un");
  flux.WriteLine(std::string(100000, 'z'));
  flux.WriteLine("");
  EXPECT_TRUE(FermerFichier(flux));
  EXPECT_EQ(fs.fichiers["c"], "un\r\n" + std::string(100000, 'z') + "\r\n\r\n");
}

TEST(FichiersTexte, NeCreeJamaisParDessusUnFichierProtege) {
  SystemeFichiersMemoire fs;
  fs.fichiers["s"] = "source";
  FluxTexte source, cible;
  ASSERT_TRUE(OuvrirFichierLecture(source, "s", fs));
  EXPECT_FALSE(CreerFichierEcriture(cible, "s", fs, {&source}));
  EXPECT_EQ(fs.fichiers["s"], "source");
  EXPECT_FALSE(OuvrirFichierLecture(source, "absent", fs));
  EXPECT_EQ(fs.fichiers.count("absent"), 0u);
}

TEST(Encodage, Cp1252EtUtf8) {
  EXPECT_EQ(Cp1252VersUtf8("\xE9t\xE9 \x80 \x9C"), "été € œ");
  EXPECT_EQ(Utf8VersCp1252("été € œ"), "\xE9t\xE9 \x80 \x9C");
  EXPECT_EQ(Utf8VersCp1252("日本"), "??");
  EXPECT_EQ(Utf8VersCp1252("caf\xE9"), "caf\xE9") << "not UTF-8: kept as it is";
  for (int c = 0; c < 256; ++c) {
    const std::string octet(1, static_cast<char>(c));
    EXPECT_EQ(Utf8VersCp1252(Cp1252VersUtf8(octet)), octet) << c;
  }
  EXPECT_EQ(MajusculeAnsi('r'), 'R');
  EXPECT_EQ(MajusculeAnsi('\xE9'), '\xC9');
  EXPECT_EQ(MajusculeAnsi('\xF7'), '\xF7');
  EXPECT_EQ(MajusculeAnsi('\xFF'), '\x9F');
}

TEST(Date, FormatDuJournal) {
  std::tm moment{};
  moment.tm_mday = 5;
  moment.tm_mon = 2;
  moment.tm_year = 104;
  moment.tm_hour = 8;
  moment.tm_min = 7;
  moment.tm_sec = 9;
  EXPECT_EQ(FormaterDateJournal(moment, "C"), "05-Mar-2004, 08:07:09");
  const std::string fr = FormaterDateJournal(moment, "fr_FR.UTF-8");
  if (fr == "05-Mar-2004, 08:07:09") GTEST_SKIP() << "fr_FR.UTF-8 not installed";
  EXPECT_EQ(fr, "05-mars-2004, 08:07:09");
  moment.tm_mon = 1;
  EXPECT_EQ(FormaterDateJournal(moment, "fr_FR.UTF-8"), W("05-févr.-2004, 08:07:09")) << "Windows-1252 in the log";
}

// An Affichage that remembers what it was asked to show.
class AffichageTest : public Affichage {
 public:
  void MontrerBilan(const std::array<std::string, 4>& lignes) override {
    bilans.emplace_back(lignes.begin(), lignes.end());
  }
  void MontrerErreurFatale(const std::string& message) override { fatales.push_back(message); }
  std::vector<std::vector<std::string>> bilans;
  std::vector<std::string> fatales;
};

// Runs in memory: a source, a target, a log.
class Execution : public ::testing::Test {
 protected:
  void SetUp() override {
    InitialiserTables(r);
    r.affichage = &affichage;
    r.systeme = &fs;
    r.DefinirSource("src");
    r.FichierCible.Nom = "cible";
  }
  std::vector<std::string> Lignes(const std::string& nom) {
    std::vector<std::string> lignes;
    const std::string& t = fs.fichiers[nom];
    std::size_t debut = 0;
    for (std::size_t fin; (fin = t.find("\r\n", debut)) != std::string::npos; debut = fin + 2) {
      lignes.push_back(t.substr(debut, fin - debut));
    }
    EXPECT_EQ(debut, t.size()) << nom << " ends with CR LF";
    return lignes;
  }

  ReglagesExecution r;
  AffichageTest affichage;
  SystemeFichiersMemoire fs;
};

const std::string kBonPtp =
    "02   5  12        1001 1 N 10.0  538000.500  152000.250                               ";
TEST_F(Execution, LesCompteursNeSArretentPasA32767) {
  std::string source;
  for (int i = 0; i < 33000; ++i) source += "x\n";
  fs.fichiers["src"] = source;
  ASSERT_TRUE(ConvertirPtPrecFiabEnPtVal(r));
  EXPECT_EQ(affichage.bilans.at(0)[0], "33000 ligne(s) lues dans le fichier source");
  EXPECT_EQ(affichage.bilans.at(0)[2], W("297000 erreur(s) constatée(s) lors de la lecture du fichier source"));
}

TEST_F(Execution, DeuxExecutionsNeLaissentQueLeSecondJournal) {
  fs.fichiers["src"] = "x\r\n";
  ASSERT_TRUE(ConvertirPtPrecFiabEnPtMD01(r));
  fs.fichiers["src"] = "";
  ASSERT_TRUE(ConvertirPtPrecFiabEnPtMD01(r));
  EXPECT_EQ(Lignes("src.log").size(), 10u);
}

struct CasFatal {
  const char* nom;
  const char* source;  // null: missing
  const char* cible;
  const char* echecCreation;
  const char* echecEcriture;
  const char* message;  // UTF-8
  bool cibleExiste;
  bool journalExiste;
};

TEST_F(Execution, ErreursFatales) {
  const CasFatal cas[] = {
      {"missing source", nullptr, "cible", "", "", "Le fichier src ne peut pas être ouvert, l'application va s'arrêter",
       false, false},
      {"target over the source", "x\r\n", "src", "", "",
       "Le fichier src ne peut pas être créé, l'application va s'arrêter", false, false},
      {"target not creatable", "x\r\n", "cible", "cible", "",
       "Le fichier cible ne peut pas être créé, l'application va s'arrêter", false, false},
      {"log not creatable", "x\r\n", "cible", "src.log", "",
       "Le fichier src.log ne peut pas être créé, l'application va s'arrêter", true, false},
      {"log is the target", "x\r\n", "src.log", "", "",
       "Le fichier src.log ne peut pas être créé, l'application va s'arrêter", true, false},
      {"target write fails", "x\r\n", "cible", "", "cible",
       "Le fichier cible ne peut pas être écrit, l'application va s'arrêter", true, true},
      {"log write fails", "x\r\n", "cible", "", "src.log",
       "Le fichier src.log ne peut pas être écrit, l'application va s'arrêter", true, true},
  };
  for (const CasFatal& c : cas) {
    SystemeFichiersMemoire memoire;
    AffichageTest vu;
    r.systeme = &memoire;
    r.affichage = &vu;
    memoire.echecCreation = c.echecCreation;
    memoire.echecEcriture = c.echecEcriture;
    if (c.source) memoire.fichiers["src"] = std::string(c.source) + kBonPtp + "\r\n";
    r.FichierCible.Nom = c.cible;
    EXPECT_FALSE(ConvertirPtPrecFiabEnPtVal(r)) << c.nom;
    EXPECT_EQ(vu.fatales, std::vector<std::string>{W(c.message)}) << c.nom;
    EXPECT_TRUE(vu.bilans.empty()) << c.nom;
    EXPECT_EQ(memoire.fichiers.count(c.cible) == 1, c.cibleExiste || std::string(c.cible) == "src") << c.nom;
    EXPECT_EQ(memoire.fichiers.count("src.log") == 1, c.journalExiste || std::string(c.cible) == "src.log") << c.nom;
    if (c.source) {
      EXPECT_EQ(memoire.fichiers["src"], std::string(c.source) + kBonPtp + "\r\n") << "source untouched: " << c.nom;
    }
    EXPECT_FALSE(r.FichierSource.Flux.Ouvert()) << c.nom;
    EXPECT_FALSE(r.FichierCible.Flux.Ouvert()) << c.nom;
    EXPECT_FALSE(r.journal.LogOuvert) << c.nom;
  }
}

}  // namespace
}  // namespace quillon
