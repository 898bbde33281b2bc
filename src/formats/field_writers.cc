#include "formats/field_writers.h"

#include "formats/numbers.h"
#include "model/ansi.h"
#include "model/point.h"

namespace quillon {
namespace {

constexpr auto kMsgTheme = Ansi(u8"Problème lors de l'écriture du thème");
constexpr auto kMsgThemeMD01 = Ansi(u8"Problème lors de l'écriture du thème, ce thème n'est pas supporté");
constexpr auto kMsgCommune = Ansi(u8"Problème lors de l'écriture du numéro de commune");
constexpr auto kMsgPlan = Ansi(u8"Problème lors de l'écriture du numéro de plan");
constexpr auto kMsgNumeroPoint = Ansi(u8"Problème lors de l'écriture du numéro de point");
constexpr auto kMsgNature = Ansi(u8"Problème lors de l'écriture de la nature");
constexpr auto kMsgPrecFiabMD01 = Ansi(u8"Problème lors de l'écriture des champs Precxxxx et Fiabxxxx");
constexpr auto kMsgY = Ansi(u8"Problème lors de l'écriture de la coordonnée Y");
constexpr auto kMsgX = Ansi(u8"Problème lors de l'écriture de la coordonnée X");
constexpr auto kMsgAltitude = Ansi(u8"Problème lors de l'écriture de l'altitude");

// The two-digit code of a theme that the value and precision files know.
bool AjouterCodeTheme(std::string& ligne, int32_t theme) {
  switch (theme) {
    case 1: case 2: case 3: case 4: case 6: case 7: case 9:
    case 71: case 72: case 73: case 74: case 76: case 77: case 79:
    case 81: case 82: case 83: case 84: case 86: case 87: case 89:
    case 99:
      ligne += static_cast<char>('0' + theme / 10);
      ligne += static_cast<char>('0' + theme % 10);
      return true;
    default:
      ligne += "  ";
      return false;
  }
}

bool EcrireNombreADroite(std::string& ligne, double valeur, int decimales, std::size_t largeur) {
  const std::size_t debut = ligne.size();
  if (!AjouterDecimal(ligne, valeur, decimales)) {
    ligne.append(largeur, ' ');
    return false;
  }
  return AlignerADroite(ligne, debut, largeur);
}

bool EcrireEntierADroite(std::string& ligne, long long valeur, std::size_t largeur) {
  const std::size_t debut = ligne.size();
  AjouterEntierDiese(ligne, valeur);
  return AlignerADroite(ligne, debut, largeur);
}

bool EcrireCoordonnee(std::string& ligne, double valeur, std::string_view message, Journal& journal) {
  if (!EcrireNombreADroite(ligne, valeur, 3, 11)) return EchecEcriture(journal, message);
  return true;
}

}  // namespace

bool EchecEcriture(Journal& journal, std::string_view message) {
  journal.EcrireLog(false, true, true, true, message);
  return false;
}

bool EcrireThemePtVal(std::string& ligne, int32_t theme, Journal& journal) {
  if (!AjouterCodeTheme(ligne, theme)) return EchecEcriture(journal, kMsgTheme);
  return true;
}

bool EcrireThemePtPrecFiab(std::string& ligne, int32_t theme, int32_t groupeTheme, bool substitution,
                           Journal& journal) {
  if (!substitution) return EcrireThemePtVal(ligne, theme, journal);
  if (groupeTheme == kGroupeCS) {
    ligne += "02";
  } else if (groupeTheme == kGroupeOD) {
    ligne += "03";
  } else {
    // A console run that named no theme group: the column stays blank.
    ligne += "  ";
  }
  return true;
}

bool EcrireThemeMD01(std::string& ligne, int32_t theme, Journal& journal) {
  switch (theme) {
    case 1: ligne += "PF"; return true;
    case 2: ligne += "CS"; return true;
    case 3: ligne += "OD"; return true;
    case 6: ligne += "BF"; return true;
    default:
      ligne += "  ";
      return EchecEcriture(journal, kMsgThemeMD01);
  }
}

bool EcrireCommune(std::string& ligne, int16_t commune, Journal& journal) {
  if (!EcrireEntierADroite(ligne, commune, 4)) return EchecEcriture(journal, kMsgCommune);
  return true;
}

bool EcrirePlan(std::string& ligne, int16_t plan, Journal& journal) {
  if (!EcrireEntierADroite(ligne, plan, 4)) return EchecEcriture(journal, kMsgPlan);
  return true;
}

bool EcrireCommunePlanMD01(std::string& ligne, int16_t commune, int16_t plan, Journal& journal) {
  const std::size_t debut = ligne.size();
  ligne += "KQ0";
  AjouterEntierZeros(ligne, commune, 3);
  ligne += "00";
  AjouterEntierZeros(ligne, plan, 4);
  if (ligne.size() - debut != 12) return EchecEcriture(journal, kMsgCommune);
  return true;
}

bool EcrireNumeroPoint(std::string& ligne, std::string_view numero, Journal& journal) {
  if (!AjouterADroite(ligne, Rogner(numero), 12)) return EchecEcriture(journal, kMsgNumeroPoint);
  return true;
}

bool EcrireNature(std::string& ligne, int32_t nature, Journal& journal) {
  if (nature < 1 || nature > 6) return EchecEcriture(journal, kMsgNature);
  ligne += ' ';
  ligne += static_cast<char>('0' + nature);
  return true;
}

bool EcrireNatureMD01(std::string& ligne, int32_t nature, Journal& journal) {
  static constexpr char kCodes[] = {'0', '2', '5', '4', '6', '6'};
  if (nature < 1 || nature > 6) return EchecEcriture(journal, kMsgNature);
  ligne += kCodes[nature - 1];
  return true;
}

bool EcrireFichePFP3(std::string& ligne, int32_t fiche, Journal&) {
  ligne += fiche == kOui ? 'O' : fiche == kNon ? 'N' : ' ';
  return true;
}

bool EcrireFichePFP3MD01(std::string& ligne, int32_t fiche, Journal&) {
  ligne += fiche == kOui ? '0' : '1';
  return true;
}

bool EcrireDefiniExactementMD01(std::string& ligne, int32_t theme, int32_t nature, Journal&) {
  ligne += theme == 1 ? ' ' : nature == 6 ? '1' : '0';
  return true;
}

bool EcrireAncienneBorneSpecialeMD01(std::string& ligne, int32_t theme, Journal&) {
  ligne += theme == 1 ? ' ' : '1';
  return true;
}

bool EcrireCoordonneeY(std::string& ligne, double y, Journal& journal) {
  return EcrireCoordonnee(ligne, y, kMsgY, journal);
}

bool EcrireCoordonneeX(std::string& ligne, double x, Journal& journal) {
  return EcrireCoordonnee(ligne, x, kMsgX, journal);
}

bool EcrireAltitude(std::string& ligne, double altitude, Journal& journal) {
  if (altitude == 0) {
    ligne.append(8, ' ');
    return true;
  }
  if (!EcrireNombreADroite(ligne, altitude, 3, 8)) return EchecEcriture(journal, kMsgAltitude);
  return true;
}

bool AjouterPrecision(std::string& ligne, double precision) {
  return EcrireNombreADroite(ligne, precision, 1, 5);
}

bool EcrirePrecFiabMD01(TextesPrecFiabMD01& textes, double precPlan, int32_t fiabPlan, double precAlt,
                        int32_t fiabAlt, Journal& journal) {
  textes.PrecPlan.clear();
  textes.PrecAlt.clear();
  const bool plan = AjouterPrecision(textes.PrecPlan, precPlan);
  const bool alt = AjouterPrecision(textes.PrecAlt, precAlt);
  textes.FiabPlan = fiabPlan == kOui ? '0' : '1';
  textes.FiabAlt = fiabAlt == kOui ? '0' : '1';
  if (!plan || !alt) return EchecEcriture(journal, kMsgPrecFiabMD01);
  return true;
}

}  // namespace quillon
