#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

#include "formats/field_readers.h"
#include "model/point.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::JournalMemoire;
using test::LigneFixe;
using test::W;

// One reader applied to a line and the field it fills, printed as text;
// `message` is the rejection (UTF-8), empty when the field is accepted.
using Lecteur = std::function<std::string(std::string_view, Point&, Journal&, bool&)>;

struct CasLecture {
  const char* nom;
  Lecteur lire;
  std::size_t colonne;
  const char* texte;
  const char* attendu;
  const char* message;
};

template <typename Champ>
std::string Texte(const Champ& c) {
  if constexpr (std::is_same_v<Champ, std::string>) {
    return "[" + c + "]";
  } else {
    return std::to_string(c);
  }
}

// A reader of the form Lire(line, field, journal), through the field it fills.
template <auto Lire, auto Champ>
std::string Lit(std::string_view l, Point& p, Journal& j, bool& ok) {
  ok = Lire(l, p.*Champ, j);
  return Texte(p.*Champ);
}

const Lecteur kTheme = Lit<LireTheme, &Point::Theme>;
const Lecteur kCommune = Lit<LireCommune, &Point::NoCommune>;
const Lecteur kPlan = Lit<LirePlan, &Point::NoPlan>;
const Lecteur kNumero = Lit<LireNumeroPoint, &Point::NoPoint>;
const Lecteur kNature = Lit<LireNature, &Point::Nature>;
const Lecteur kPFP3 = Lit<LireFichePFP3, &Point::FichePFP3>;
const Lecteur kFiabilite = Lit<LireFiabilite, &Point::Fiabilite>;
const Lecteur kFiabPlan = Lit<LireFiabPlan, &Point::FiabPlan>;
const Lecteur kPrecPlan = Lit<LirePrecPlan, &Point::PrecPlan>;
const Lecteur kValeur = Lit<LireValeur, &Point::Valeur>;
const Lecteur kY = Lit<LireCoordonneeY, &Point::CoordY>;
const Lecteur kX = Lit<LireCoordonneeX, &Point::CoordX>;
const Lecteur kAltitude = Lit<LireAltitude, &Point::Altitude>;

TEST(LecteursDeChamps, ReglesEtMessages) {
  const CasLecture cas[] = {
      {"theme blank", kTheme, 1, "  ", "10", ""},
      {"theme 1", kTheme, 1, " 1", "1", ""},
      {"theme 1 left", kTheme, 1, "1 ", "1", ""},
      {"theme 01", kTheme, 1, "01", "1", ""},
      {"theme 89", kTheme, 1, "89", "89", ""},
      {"theme 09", kTheme, 1, "09", "9", ""},
      {"theme 5", kTheme, 1, "5 ", "-1", "Le numéro de thème: '5' n'est pas valide"},
      {"theme 05", kTheme, 1, "05", "-1", "Le numéro de thème: '05' n'est pas valide"},
      {"theme 10", kTheme, 1, "10", "-1", "Le numéro de thème: '10' n'est pas valide"},
      {"theme 70", kTheme, 1, "70", "-1", "Le numéro de thème: '70' n'est pas valide"},
      {"theme 99", kTheme, 1, "99", "-1", "Le numéro de thème: '99' n'est pas valide"},
      {"theme 1a", kTheme, 1, "1a", "-1", "Le numéro de thème: '1a' n'est pas valide"},
      {"theme 8", kTheme, 1, " 8", "-1", "Le numéro de thème: '8' n'est pas valide"},
      {"commune blank", kCommune, 3, "    ", "-1", "Le numéro de commune: '    ' n'est pas valide"},
      {"commune 401", kCommune, 3, " 401", "401", "Le numéro de commune: ' 401' n'est pas valide"},
      {"commune 400", kCommune, 3, " 400", "400", ""},
      {"commune 0", kCommune, 3, "   0", "0", "Le numéro de commune: '   0' n'est pas valide"},
      {"commune 1.5", kCommune, 3, " 1.5", "2", ""},
      {"plan 0", kPlan, 7, "   0", "0", ""},
      {"plan 2999", kPlan, 7, "2999", "2999", ""},
      {"plan 3000", kPlan, 7, "3000", "3000", "Le numéro de plan: '3000' n'est pas valide"},
      {"plan -1", kPlan, 7, "  -1", "-1", "Le numéro de plan: '  -1' n'est pas valide"},
      {"point ok", kNumero, 11, "      123456", "[      123456]", ""},
      {"point bad", kNumero, 11, "      12345A", "[      12345A]", "Le numéro de point: '      12345A' n'est pas valide"},
      {"point blank", kNumero, 11, "            ", "[            ]", "Le numéro de point: '            ' n'est pas valide"},
      {"nature 6", kNature, 23, " 6", "6", ""},
      {"nature 0", kNature, 23, " 0", "-1", "La nature: '0' n'est pas valide"},
      {"nature blank", kNature, 23, "  ", "-1", "La nature: '' n'est pas valide"},
      {"nature 12", kNature, 23, "12", "-1", "La nature: '12' n'est pas valide"},
      {"pfp3 blank", kPFP3, 25, " ", "3", ""},
      {"pfp3 O", kPFP3, 25, "O", "1", ""},
      {"pfp3 N", kPFP3, 25, "N", "2", ""},
      {"pfp3 o", kPFP3, 25, "o", "-1", "La fiche PFP3: 'o' n'est pas valide"},
      {"fiabilite r", kFiabilite, 26, "r", "3", ""},
      {"fiabilite blank", kFiabilite, 26, " ", "-1", "La fiabilite: ' ' n'est pas valide"},
      {"fiabilite x", kFiabilite, 26, "x", "-1", "La fiabilite: 'X' n'est pas valide"},
      {"fiabilite é", kFiabilite, 26, "\xE9", "-1", "La fiabilite: 'É' n'est pas valide"},
      {"fiabplan o", kFiabPlan, 26, "o", "1", ""},
      {"fiabplan N", kFiabPlan, 26, "N", "2", ""},
      {"fiabplan blank", kFiabPlan, 26, " ", "-1", "La fiabilite planimétrique: ' ' n'est pas valide"},
      {"precplan", kPrecPlan, 27, " 20.2", "20.200000", ""},
      {"precplan -1", kPrecPlan, 27, "   -1", "-1.000000", ""},
      {"precplan blank", kPrecPlan, 27, "     ", "-1.000000", "La précision planimétrique: '     ' n'est pas valide"},
      {"valeur 11", kValeur, 28, "11", "11", ""},
      {"valeur 58", kValeur, 28, "58", "58", ""},
      {"valeur 59", kValeur, 28, "59", "59", ""},
      {"valeur 60", kValeur, 28, "60", "60", "La valeur: '60' n'est pas valide"},
      {"valeur 18", kValeur, 28, "18", "18", "La valeur: '18' n'est pas valide"},
      {"valeur 90", kValeur, 28, "90", "90", "La valeur: '90' n'est pas valide"},
      {"valeur ' 1'", kValeur, 28, " 1", "1", "La valeur: ' 1' n'est pas valide"},
      {"valeur '1 '", kValeur, 28, "1 ", "1", "La valeur: '1 ' n'est pas valide"},
      {"y", kY, 33, " 538123.450", "538123.450000", ""},
      {"y comma", kY, 33, " 538123,450", "-1.000000", "La coordonnée Y: ' 538123,450' n'est pas valide"},
      {"x", kX, 45, "-152000.25 ", "-152000.250000", ""},
      {"x blank", kX, 45, "           ", "-1.000000", "La coordonnée X: '           ' n'est pas valide"},
      {"altitude blank", kAltitude, 57, "        ", "0.000000", ""},
      {"altitude", kAltitude, 57, " 450.100", "450.100000", ""},
      {"altitude bad", kAltitude, 57, "  45a   ", "-1.000000", "L'altitude: '45a' n'est pas valide"},
  };
  for (const CasLecture& c : cas) {
    JournalMemoire j(12);
    Point p;
    p.Theme = p.Nature = p.FichePFP3 = p.Fiabilite = p.FiabPlan = -1;
    p.NoCommune = p.NoPlan = p.Valeur = -1;
    p.PrecPlan = p.CoordY = p.CoordX = p.Altitude = -1;
    const LigneFixe ligne = LigneFixe().Longueur(90).Colonne(c.colonne, c.texte);
    const bool attenduOk = std::string(c.message).empty();
    bool ok = false;
    EXPECT_EQ(c.lire(ligne, p, j.journal, ok), c.attendu) << c.nom;
    EXPECT_EQ(ok, attenduOk) << c.nom;
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
    EXPECT_EQ(LireFiabAlt(ligne, p.Altitude, p.FiabAlt, j.journal), c.fiabOk) << c.colonnes66a71;
    EXPECT_EQ(LirePrecAlt(ligne, p.Altitude, p.PrecAlt, j.journal), c.precOk) << c.colonnes66a71;
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
