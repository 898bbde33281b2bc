#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "conversion/conversions.h"
#include "io/encoding.h"
#include "io/locale.h"
#include "conversion/run_settings.h"
#include "io/text_file.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::W;

struct Lecture {
  std::vector<std::string> lignes;
  int64_t compteur;  // at the end
  bool erreur;
};

// Every line a stream gives, its line counter at the end, and its error.
Lecture ToutLire(const std::string& contenu) {
  SystemeFichiersMemoire fs;
  fs.fichiers["f"] = contenu;
  FluxTexte flux;
  EXPECT_TRUE(OuvrirFichierLecture(flux, "f", fs));
  std::vector<std::string> lignes;
  std::string_view ligne;
  while (!flux.AtEndOfStream() && flux.ReadLine(ligne)) lignes.emplace_back(ligne);
  return {lignes, flux.Line(), flux.EnErreur()};
}

TEST(FichiersTexte, FinsDeLigneEtCompteur) {
  const std::string longue(200000, 'x');      // longer than the buffer
  const std::string bord(65535, 'y');         // its CR LF straddles two reads
  const struct {
    const char* nom;
    std::string contenu;
    std::vector<std::string> lignes;
    int64_t compteurFinal;
  } cas[] = {
      {"empty", "", {}, 1},
      {"CR LF", "a\r\nb\r\n", {"a", "b"}, 3},
      {"lone LF", "a\nb\n", {"a", "b"}, 3},
      {"last line without end", "a\r\nb", {"a", "b"}, 2},
      {"lone CR stays in the line", "a\rb\r\n", {"a\rb"}, 2},
      {"CR at the very end", "a\r", {"a\r"}, 1},
      {"empty lines", "\r\n\n\r\n", {"", "", ""}, 4},
      {"NUL bytes", std::string("a\0b\n", 4), {std::string("a\0b", 3)}, 2},
      {"long lines", longue + "\r\n" + longue + "1\r\nfin", {longue, longue + "1", "fin"}, 3},
      {"CR LF across reads", bord + "\r\nz\r\n", {bord, "z"}, 3},
  };
  for (const auto& c : cas) {
    const Lecture l = ToutLire(c.contenu);
    EXPECT_EQ(l.lignes, c.lignes) << c.nom;
    EXPECT_EQ(l.compteur, c.compteurFinal) << c.nom;
    EXPECT_FALSE(l.erreur) << c.nom;
  }
}

// The longest line accepted, its line end aside; one byte more and the
// stream is in error there, as if it could not be read.
TEST(FichiersTexte, LigneLaPlusLongue) {
  const std::string max(FluxTexte::kLongueurLigneMax, 'x');
  const struct {
    const char* nom;
    std::string contenu;
    std::size_t lignes;
    bool erreur;
  } cas[] = {
      {"longest, CR LF", "a\n" + max + "\r\nb\n", 3, false},
      {"longest, last without end", "a\n" + max, 2, false},
      {"one more, LF", "a\n" + max + "x\nb\n", 1, true},
      {"one more, CR LF", "a\n" + max + "x\r\nb\n", 1, true},
      {"one more, last without end", "a\n" + max + "x", 1, true},
      {"far more", "a\n" + max + max + max, 1, true},
  };
  for (const auto& c : cas) {
    const Lecture l = ToutLire(c.contenu);
    EXPECT_EQ(l.lignes.size(), c.lignes) << c.nom;
    EXPECT_EQ(l.erreur, c.erreur) << c.nom;
  }
}

// Lines written whole or in pieces, short or longer than the buffer, come
// out as their bytes followed by CR LF, in order.
TEST(FichiersTexte, EcritureParLignesEtParMorceaux) {
  const std::string longue(200000, 'x');
  const std::string bord(65530, 'y');  // the next pieces straddle the buffer's end
  SystemeFichiersMemoire fs;
  FluxTexte flux;
  ASSERT_TRUE(CreerFichierEcriture(flux, "f", fs));
  flux.WriteLine("a");
  flux.WriteLine(bord);
  for (std::string_view morceau : {"ligne ", "12", ": ", "", "fin"}) flux.Write(morceau);
  flux.EndLine();
  flux.Write(longue);
  flux.EndLine();
  flux.WriteLine(longue);
  flux.WriteLine("");
  ASSERT_TRUE(FermerFichier(flux));
  EXPECT_EQ(fs.fichiers["f"], "a\r\n" + bord + "\r\nligne 12: fin\r\n" + longue + "\r\n" + longue + "\r\n\r\n");
}

// Windows' file names: any UTF-16 text, lone surrogate halves included,
// makes the round trip through UTF-8.
TEST(Encodage, Utf16EtUtf8) {
  const struct {
    std::u16string utf16;
    std::string utf8;
  } cas[] = {
      {u"lot12.ptv", "lot12.ptv"},
      {u"été €", "été €"},
      {u"日本\U0001F600", "日本\U0001F600"},
      {std::u16string(1, char16_t(0xD800)) + u"x", "\xED\xA0\x80x"},
      {std::u16string(1, char16_t(0xDC01)), "\xED\xB0\x81"},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(Utf16VersUtf8(c.utf16), c.utf8) << c.utf8;
    EXPECT_EQ(Utf8VersUtf16(c.utf8), c.utf16) << c.utf8;
  }
  EXPECT_EQ(Utf8VersUtf16("caf\xE9"), u"caf\uFFFD") << "not UTF-8";
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
  moment.tm_year = 104, moment.tm_mon = 2, moment.tm_mday = 5;
  moment.tm_hour = 8, moment.tm_min = 7, moment.tm_sec = 9;
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
  void MontrerBilan(const ComptesBilan& comptes) override {
    const std::array<std::string, 4> lignes = TexteBilan(comptes);
    bilans.emplace_back(lignes.begin(), lignes.end());
  }
  void MontrerErreurFatale(const ErreurFatale& erreur) override { fatales.push_back(MessageFatal(erreur)); }
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
  ReglagesExecution r;
  AffichageTest affichage;
  SystemeFichiersMemoire fs;
};

TEST_F(Execution, LesCompteursNeSArretentPasA32767) {
  std::string source;
  for (int i = 0; i < 33000; ++i) source += "x\n";
  fs.fichiers["src"] = source;
  ASSERT_TRUE(ConvertirPtPrecFiabEnPtVal(r));
  EXPECT_EQ(affichage.bilans.at(0)[0], "33000 ligne(s) lues dans le fichier source");
  EXPECT_EQ(affichage.bilans.at(0)[2], W("297000 erreur(s) constatée(s) lors de la lecture du fichier source"));
}

// A stop asked for is seen before the next line: the run reads no more of
// its source, shows nothing, and leaves the previous target and log.
TEST_F(Execution, UnArretDemandeEstVuAvantLaLigneSuivante) {
  std::string source;
  for (int i = 0; i < 1000; ++i) source += "02   5  12        1001 1 N 10.0  538000.500  152000.250\r\n";
  fs.fichiers = {{"src", source}, {"cible", "cible d'avant\r\n"}, {"src.log", "journal d'avant\r\n"}};
  const auto avant = fs.fichiers;
  const std::atomic<bool> arret{true};
  r.arret = &arret;
  EXPECT_FALSE(ConvertirPtPrecFiabEnPtVal(r));
  EXPECT_TRUE(r.Interrompu);
  EXPECT_EQ(r.journal.NumeroLigne(), 0);
  EXPECT_TRUE(affichage.bilans.empty() && affichage.fatales.empty());
  EXPECT_EQ(fs.fichiers, avant);
}

// What the executable's cases cannot make fail: a write refused in the
// middle of the run. With the other fatal errors: one message, no summary,
// every file closed, the source untouched, and the previous target and log
// as they were.
TEST_F(Execution, ErreursFatales) {
  const std::string source = "x\r\n02   5  12        1001 1 N 10.0  538000.500  152000.250\r\n";
  const struct {
    const char* nom;
    const char* cible;
    const char* echecCreation;
    const char* echecEcriture;
    const char* message;  // UTF-8
  } cas[] = {
      {"target over the source", "src", "", "", "Le fichier src ne peut pas être créé, l'application va s'arrêter"},
      {"target not creatable", "cible", "cible", "", "Le fichier cible ne peut pas être créé, l'application va s'arrêter"},
      {"log not creatable", "cible", "src.log", "", "Le fichier src.log ne peut pas être créé, l'application va s'arrêter"},
      {"log is the target", "src.log", "", "", "Le fichier src.log ne peut pas être créé, l'application va s'arrêter"},
      {"target write fails", "cible", "", "cible", "Le fichier cible ne peut pas être écrit, l'application va s'arrêter"},
      {"log write fails", "cible", "", "src.log", "Le fichier src.log ne peut pas être écrit, l'application va s'arrêter"},
  };
  for (const auto& c : cas) {
    SystemeFichiersMemoire memoire;
    AffichageTest vu;
    r.systeme = &memoire;
    r.affichage = &vu;
    memoire.echecCreation = c.echecCreation;
    memoire.echecEcriture = c.echecEcriture;
    memoire.fichiers = {{"src", source}, {"cible", "cible d'avant\r\n"}, {"src.log", "journal d'avant\r\n"}};
    const auto avant = memoire.fichiers;
    r.FichierCible.Nom = c.cible;
    EXPECT_FALSE(ConvertirPtPrecFiabEnPtVal(r)) << c.nom;
    EXPECT_EQ(vu.fatales, std::vector<std::string>{W(c.message)}) << c.nom;
    EXPECT_TRUE(vu.bilans.empty()) << c.nom;
    EXPECT_EQ(memoire.fichiers, avant) << c.nom;
    EXPECT_TRUE(memoire.enCours.empty()) << c.nom;
    EXPECT_FALSE(r.FichierSource.Flux.Ouvert() || r.FichierCible.Flux.Ouvert() || r.journal.LogOuvert) << c.nom;
  }
}

}  // namespace
}  // namespace quillon
