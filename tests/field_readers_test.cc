#include <gtest/gtest.h>

#include <functional>

#include "formats/field_readers.h"
#include "model/point.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::JournalMemoire;
using test::LigneFixe;
using test::W;

// One reader applied to a line; `attendu` is the field after the read,
// printed as text, and `message` the rejection (UTF-8), empty when accepted.
struct CasLecture {
  const char* nom;
  std::function<bool(std::string_view, Point&, Journal&)> lire;
  std::function<std::string(const Point&)> champ;
  std::size_t colonne;
  const char* texte;
  const char* attendu;
  const char* message;
};

std::string Entier(long long v) { return std::to_string(v); }

const auto kTheme = [](std::string_view l, Point& p, Journal& j) { return LireTheme(l, p.Theme, j); };
const auto kCommune = [](std::string_view l, Point& p, Journal& j) { return LireCommune(l, p.NoCommune, j); };
const auto kPlan = [](std::string_view l, Point& p, Journal& j) { return LirePlan(l, p.NoPlan, j); };
const auto kNumero = [](std::string_view l, Point& p, Journal& j) { return LireNumeroPoint(l, p.NoPoint, j); };
const auto kNature = [](std::string_view l, Point& p, Journal& j) { return LireNature(l, p.Nature, j); };
const auto kPFP3 = [](std::string_view l, Point& p, Journal& j) { return LireFichePFP3(l, p.FichePFP3, j); };
const auto kFiabilite = [](std::string_view l, Point& p, Journal& j) { return LireFiabilite(l, p.Fiabilite, j); };
const auto kFiabPlan = [](std::string_view l, Point& p, Journal& j) { return LireFiabPlan(l, p.FiabPlan, j); };
const auto kPrecPlan = [](std::string_view l, Point& p, Journal& j) { return LirePrecPlan(l, p.PrecPlan, j); };
const auto kValeur = [](std::string_view l, Point& p, Journal& j) { return LireValeur(l, p.Valeur, j); };
const auto kY = [](std::string_view l, Point& p, Journal& j) { return LireCoordonneeY(l, p.CoordY, j); };
const auto kX = [](std::string_view l, Point& p, Journal& j) { return LireCoordonneeX(l, p.CoordX, j); };
const auto kAltitude = [](std::string_view l, Point& p, Journal& j) { return LireAltitude(l, p.Altitude, j); };
// The altimetric readers with the altitude of the point (set by the case).
const auto kFiabAlt = [](std::string_view l, Point& p, Journal& j) { return LireFiabAlt(l, p.Altitude, p.FiabAlt, j); };
const auto kPrecAlt = [](std::string_view l, Point& p, Journal& j) { return LirePrecAlt(l, p.Altitude, p.PrecAlt, j); };

const auto fTheme = [](const Point& p) { return Entier(p.Theme); };
const auto fCommune = [](const Point& p) { return Entier(p.NoCommune); };
const auto fPlan = [](const Point& p) { return Entier(p.NoPlan); };
const auto fNumero = [](const Point& p) { return "[" + p.NoPoint + "]"; };
const auto fNature = [](const Point& p) { return Entier(p.Nature); };
const auto fPFP3 = [](const Point& p) { return Entier(p.FichePFP3); };
const auto fFiabilite = [](const Point& p) { return Entier(p.Fiabilite); };
const auto fFiabPlan = [](const Point& p) { return Entier(p.FiabPlan); };
const auto fPrecPlan = [](const Point& p) { return std::to_string(p.PrecPlan); };
const auto fValeur = [](const Point& p) { return Entier(p.Valeur); };
const auto fY = [](const Point& p) { return std::to_string(p.CoordY); };
const auto fX = [](const Point& p) { return std::to_string(p.CoordX); };
const auto fAltitude = [](const Point& p) { return std::to_string(p.Altitude); };
const auto fFiabAlt = [](const Point& p) { return Entier(p.FiabAlt); };
const auto fPrecAlt = [](const Point& p) { return std::to_string(p.PrecAlt); };

TEST(LecteursDeChamps, ReglesEtMessages) {
  const CasLecture cas[] = {
      {"theme blank", kTheme, fTheme, 1, "  ", "10", ""},
      {"theme 1", kTheme, fTheme, 1, " 1", "1", ""},
      {"theme 1 left", kTheme, fTheme, 1, "1 ", "1", ""},
      {"theme 01", kTheme, fTheme, 1, "01", "1", ""},
      {"theme 89", kTheme, fTheme, 1, "89", "89", ""},
      {"theme 09", kTheme, fTheme, 1, "09", "9", ""},
      {"theme 5", kTheme, fTheme, 1, "5 ", "-1", "Le numéro de thème: '5' n'est pas valide"},
      {"theme 05", kTheme, fTheme, 1, "05", "-1", "Le numéro de thème: '05' n'est pas valide"},
      {"theme 10", kTheme, fTheme, 1, "10", "-1", "Le numéro de thème: '10' n'est pas valide"},
      {"theme 70", kTheme, fTheme, 1, "70", "-1", "Le numéro de thème: '70' n'est pas valide"},
      {"theme 99", kTheme, fTheme, 1, "99", "-1", "Le numéro de thème: '99' n'est pas valide"},
      {"theme 1a", kTheme, fTheme, 1, "1a", "-1", "Le numéro de thème: '1a' n'est pas valide"},
      {"theme 8", kTheme, fTheme, 1, " 8", "-1", "Le numéro de thème: '8' n'est pas valide"},
      {"commune blank", kCommune, fCommune, 3, "    ", "-1", "Le numéro de commune: '    ' n'est pas valide"},
      {"commune 401", kCommune, fCommune, 3, " 401", "401", "Le numéro de commune: ' 401' n'est pas valide"},
      {"commune 400", kCommune, fCommune, 3, " 400", "400", ""},
      {"commune 0", kCommune, fCommune, 3, "   0", "0", "Le numéro de commune: '   0' n'est pas valide"},
      {"commune 1.5", kCommune, fCommune, 3, " 1.5", "2", ""},
      {"plan 0", kPlan, fPlan, 7, "   0", "0", ""},
      {"plan 2999", kPlan, fPlan, 7, "2999", "2999", ""},
      {"plan 3000", kPlan, fPlan, 7, "3000", "3000", "Le numéro de plan: '3000' n'est pas valide"},
      {"plan -1", kPlan, fPlan, 7, "  -1", "-1", "Le numéro de plan: '  -1' n'est pas valide"},
      {"point ok", kNumero, fNumero, 11, "      123456", "[      123456]", ""},
      {"point bad", kNumero, fNumero, 11, "      12345A", "[      12345A]", "Le numéro de point: '      12345A' n'est pas valide"},
      {"point blank", kNumero, fNumero, 11, "            ", "[            ]", "Le numéro de point: '            ' n'est pas valide"},
      {"nature 6", kNature, fNature, 23, " 6", "6", ""},
      {"nature 0", kNature, fNature, 23, " 0", "-1", "La nature: '0' n'est pas valide"},
      {"nature blank", kNature, fNature, 23, "  ", "-1", "La nature: '' n'est pas valide"},
      {"nature 12", kNature, fNature, 23, "12", "-1", "La nature: '12' n'est pas valide"},
      {"pfp3 blank", kPFP3, fPFP3, 25, " ", "3", ""},
      {"pfp3 O", kPFP3, fPFP3, 25, "O", "1", ""},
      {"pfp3 N", kPFP3, fPFP3, 25, "N", "2", ""},
      {"pfp3 o", kPFP3, fPFP3, 25, "o", "-1", "La fiche PFP3: 'o' n'est pas valide"},
      {"fiabilite r", kFiabilite, fFiabilite, 26, "r", "3", ""},
      {"fiabilite blank", kFiabilite, fFiabilite, 26, " ", "-1", "La fiabilite: ' ' n'est pas valide"},
      {"fiabilite x", kFiabilite, fFiabilite, 26, "x", "-1", "La fiabilite: 'X' n'est pas valide"},
      {"fiabilite é", kFiabilite, fFiabilite, 26, "\xE9", "-1", "La fiabilite: 'É' n'est pas valide"},
      {"fiabplan o", kFiabPlan, fFiabPlan, 26, "o", "1", ""},
      {"fiabplan N", kFiabPlan, fFiabPlan, 26, "N", "2", ""},
      {"fiabplan blank", kFiabPlan, fFiabPlan, 26, " ", "-1", "La fiabilite planimétrique: ' ' n'est pas valide"},
      {"precplan", kPrecPlan, fPrecPlan, 27, " 20.2", "20.200000", ""},
      {"precplan -1", kPrecPlan, fPrecPlan, 27, "   -1", "-1.000000", ""},
      {"precplan blank", kPrecPlan, fPrecPlan, 27, "     ", "-1.000000", "La précision planimétrique: '     ' n'est pas valide"},
      {"valeur 11", kValeur, fValeur, 28, "11", "11", ""},
      {"valeur 58", kValeur, fValeur, 28, "58", "58", ""},
      {"valeur 59", kValeur, fValeur, 28, "59", "59", ""},
      {"valeur 60", kValeur, fValeur, 28, "60", "60", "La valeur: '60' n'est pas valide"},
      {"valeur 18", kValeur, fValeur, 28, "18", "18", "La valeur: '18' n'est pas valide"},
      {"valeur 90", kValeur, fValeur, 28, "90", "90", "La valeur: '90' n'est pas valide"},
      {"valeur ' 1'", kValeur, fValeur, 28, " 1", "1", "La valeur: ' 1' n'est pas valide"},
      {"valeur '1 '", kValeur, fValeur, 28, "1 ", "1", "La valeur: '1 ' n'est pas valide"},
      {"y", kY, fY, 33, " 538123.450", "538123.450000", ""},
      {"y comma", kY, fY, 33, " 538123,450", "-1.000000", "La coordonnée Y: ' 538123,450' n'est pas valide"},
      {"x", kX, fX, 45, "-152000.25 ", "-152000.250000", ""},
      {"x blank", kX, fX, 45, "           ", "-1.000000", "La coordonnée X: '           ' n'est pas valide"},
      {"altitude blank", kAltitude, fAltitude, 57, "        ", "0.000000", ""},
      {"altitude", kAltitude, fAltitude, 57, " 450.100", "450.100000", ""},
      {"altitude bad", kAltitude, fAltitude, 57, "  45a   ", "-1.000000", "L'altitude: '45a' n'est pas valide"},
  };
  for (const CasLecture& c : cas) {
    JournalMemoire j(12);
    Point p;
    p.Theme = p.Nature = p.FichePFP3 = p.Fiabilite = p.FiabPlan = -1;
    p.NoCommune = p.NoPlan = p.Valeur = -1;
    p.PrecPlan = p.CoordY = p.CoordX = p.Altitude = -1;
    const LigneFixe ligne = LigneFixe().Longueur(90).Colonne(c.colonne, c.texte);
    const bool attenduOk = std::string(c.message).empty();
    EXPECT_EQ(c.lire(ligne, p, j.journal), attenduOk) << c.nom;
    EXPECT_EQ(c.champ(p), c.attendu) << c.nom;
    if (attenduOk) {
      EXPECT_TRUE(j.Lignes().empty()) << c.nom;
    } else {
      EXPECT_EQ(j.Lignes(), std::vector<std::string>{"LECTURE: ligne 12: " + W(c.message)}) << c.nom;
      EXPECT_EQ(j.journal.NbErreursLecture, 1) << c.nom;
    }
  }
}

TEST(LecteursDeChamps, AltimetrieSelonLAltitude) {
  struct Cas {
    double altitude;
    const char* colonnes66a71;
    bool fiabOk, precOk;
    int fiabAlt;
    double precAlt;
  };
  const Cas cas[] = {
      {0, "XYZABC", true, true, 2, 0},      // no altitude: nothing is looked at
      {450.1, "O  5.0", true, true, 1, 5.0},
      {450.1, "n 12.5", true, true, 2, 12.5},
      {450.1, "       ", false, false, -1, -1},
      {450.1, "Q", false, false, -1, -1},
  };
  for (const Cas& c : cas) {
    JournalMemoire j;
    Point p;
    p.Altitude = c.altitude;
    p.FiabAlt = -1;
    p.PrecAlt = -1;
    const LigneFixe ligne = LigneFixe().Longueur(72).Colonne(66, c.colonnes66a71);
    EXPECT_EQ(kFiabAlt(ligne, p, j.journal), c.fiabOk) << c.colonnes66a71;
    EXPECT_EQ(kPrecAlt(ligne, p, j.journal), c.precOk) << c.colonnes66a71;
    EXPECT_EQ(p.FiabAlt, c.fiabAlt);
    EXPECT_EQ(p.PrecAlt, c.precAlt);
  }
  JournalMemoire j;
  Point p;
  p.Altitude = 3;
  LireFiabAlt(LigneFixe().Longueur(72), p.Altitude, p.FiabAlt, j.journal);
  LirePrecAlt(LigneFixe().Longueur(72), p.Altitude, p.PrecAlt, j.journal);
  EXPECT_EQ(j.Lignes(), (std::vector<std::string>{
                            "LECTURE: ligne 1: " + W("La fiabilite altimétrique: ' ' n'est pas valide"),
                            "LECTURE: ligne 1: " + W("La précision altimétrique: '     ' n'est pas valide")}));
}

TEST(LecteursDeChamps, LigneCourteDonneDesTextesCourts) {
  JournalMemoire j;
  Point p;
  const LigneFixe ligne = LigneFixe().Colonne(73, "comm");
  EXPECT_TRUE(LireCommentaire(ligne, p.Commentaire, j.journal));
  EXPECT_TRUE(LireType(ligne, p.Type, j.journal));
  EXPECT_EQ(p.Commentaire, "comm");
  EXPECT_EQ(p.Type, "");
  EXPECT_FALSE(LirePrecPlan("01", p.PrecPlan, j.journal));
  EXPECT_EQ(j.Lignes(), std::vector<std::string>{"LECTURE: ligne 1: " + W("La précision planimétrique: '' n'est pas valide")});
}

}  // namespace
}  // namespace quillon
