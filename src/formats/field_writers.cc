#include "formats/field_writers.h"

#include "formats/numbers.h"
#include "io/ansi.h"
#include "model/point.h"

namespace quillon {
namespace {

constexpr auto kMsgThemeTexte = Ansi(u8"Problème lors de l'écriture du thème");
constexpr MessageChamp kMsgTheme{ChampPoint::Theme, kMsgThemeTexte};
constexpr auto kMsgThemeMD01Texte = Ansi(u8"Problème lors de l'écriture du thème, ce thème n'est pas supporté");
constexpr MessageChamp kMsgThemeMD01{ChampPoint::Theme, kMsgThemeMD01Texte};
constexpr auto kMsgCommuneTexte = Ansi(u8"Problème lors de l'écriture du numéro de commune");
constexpr MessageChamp kMsgCommune{ChampPoint::Commune, kMsgCommuneTexte};
constexpr auto kMsgPlanTexte = Ansi(u8"Problème lors de l'écriture du numéro de plan");
constexpr MessageChamp kMsgPlan{ChampPoint::Plan, kMsgPlanTexte};
constexpr auto kMsgNumeroPointTexte = Ansi(u8"Problème lors de l'écriture du numéro de point");
constexpr MessageChamp kMsgNumeroPoint{ChampPoint::NumeroPoint, kMsgNumeroPointTexte};
constexpr auto kMsgNatureTexte = Ansi(u8"Problème lors de l'écriture de la nature");
constexpr MessageChamp kMsgNature{ChampPoint::Nature, kMsgNatureTexte};
constexpr auto kMsgPrecFiabMD01Texte = Ansi(u8"Problème lors de l'écriture des champs Precxxxx et Fiabxxxx");
constexpr MessageChamp kMsgPrecFiabMD01{ChampPoint::PrecPlan, kMsgPrecFiabMD01Texte};
constexpr auto kMsgYTexte = Ansi(u8"Problème lors de l'écriture de la coordonnée Y");
constexpr MessageChamp kMsgY{ChampPoint::CoordY, kMsgYTexte};
constexpr auto kMsgXTexte = Ansi(u8"Problème lors de l'écriture de la coordonnée X");
constexpr MessageChamp kMsgX{ChampPoint::CoordX, kMsgXTexte};
constexpr auto kMsgAltitudeTexte = Ansi(u8"Problème lors de l'écriture de l'altitude");
constexpr MessageChamp kMsgAltitude{ChampPoint::Altitude, kMsgAltitudeTexte};

// The two-digit code of a theme that the value and precision files know.
bool AjouterCodeTheme(LigneCible& ligne, int32_t theme) {
  switch (theme) {
    case 1: case 2: case 3: case 4: case 6: case 7: case 9:
    case 71: case 72: case 73: case 74: case 76: case 77: case 79:
    case 81: case 82: case 83: case 84: case 86: case 87: case 89:
    case 99:
      ligne.Ajouter(static_cast<char>('0' + theme / 10));
      ligne.Ajouter(static_cast<char>('0' + theme % 10));
      return true;
    default:
      ligne.Ajouter("  ");
      return false;
  }
}

bool EcrireNombreADroite(LigneCible& ligne, double valeur, int decimales, std::size_t largeur) {
  const std::span<char> zone = ligne.Reserver(largeur);
  return PlacerDecimal(valeur, decimales, zone.data(), zone.size());
}

bool EcrireEntierADroite(LigneCible& ligne, int64_t valeur, std::size_t largeur) {
  const std::span<char> zone = ligne.Reserver(largeur);
  return PlacerEntierDiese(valeur, zone.data(), zone.size());
}

bool EcrireCoordonnee(LigneCible& ligne, double valeur, const MessageChamp& message, Journal& journal) {
  if (!EcrireNombreADroite(ligne, valeur, 3, 11)) return EchecEcriture(journal, message);
  return true;
}

}  // namespace

bool EchecEcriture(Journal& journal, const MessageChamp& message) {
  journal.ErreurEcriture(Numero(message.champ), message.texte);
  return false;
}

bool EcrireThemePtVal(LigneCible& ligne, int32_t theme, Journal& journal) {
  if (!AjouterCodeTheme(ligne, theme)) return EchecEcriture(journal, kMsgTheme);
  return true;
}

bool EcrireThemePtPrecFiab(LigneCible& ligne, int32_t theme, int32_t groupeTheme, bool substitution,
                           Journal& journal) {
  if (!substitution) return EcrireThemePtVal(ligne, theme, journal);
  if (groupeTheme == kGroupeCS) {
    ligne.Ajouter("02");
  } else if (groupeTheme == kGroupeOD) {
    ligne.Ajouter("03");
  } else {
    // A console run that named no theme group: the column stays blank.
    ligne.Ajouter("  ");
  }
  return true;
}

bool EcrireThemeMD01(LigneCible& ligne, int32_t theme, Journal& journal) {
  switch (theme) {
    case 1: ligne.Ajouter("PF"); return true;
    case 2: ligne.Ajouter("CS"); return true;
    case 3: ligne.Ajouter("OD"); return true;
    case 6: ligne.Ajouter("BF"); return true;
    default:
      ligne.Ajouter("  ");
      return EchecEcriture(journal, kMsgThemeMD01);
  }
}

bool EcrireCommune(LigneCible& ligne, int16_t commune, Journal& journal) {
  if (!EcrireEntierADroite(ligne, commune, 4)) return EchecEcriture(journal, kMsgCommune);
  return true;
}

bool EcrirePlan(LigneCible& ligne, int16_t plan, Journal& journal) {
  if (!EcrireEntierADroite(ligne, plan, 4)) return EchecEcriture(journal, kMsgPlan);
  return true;
}

bool EcrireCommunePlanMD01(LigneCible& ligne, int16_t commune, int16_t plan, Journal& journal) {
  TamponNombre tamponCommune, tamponPlan;
  const std::string_view texteCommune = FormaterEntierZeros(commune, 3, tamponCommune);
  const std::string_view textePlan = FormaterEntierZeros(plan, 4, tamponPlan);
  if (texteCommune.size() != 3 || textePlan.size() != 4) {
    ligne.AjouterBlancs(12);
    return EchecEcriture(journal, kMsgCommune);
  }
  ligne.Ajouter("KQ0");
  ligne.Ajouter(texteCommune);
  ligne.Ajouter("00");
  ligne.Ajouter(textePlan);
  return true;
}

bool EcrireNumeroPoint(LigneCible& ligne, std::string_view numero, Journal& journal) {
  // Read from twelve columns, the number is nearly always right-aligned in
  // them already: then it stands as it is.
  if (numero.size() == 12 && numero.back() != ' ') {
    ligne.Ajouter(numero);
    return true;
  }
  if (!ligne.AjouterADroite(Rogner(numero), 12)) return EchecEcriture(journal, kMsgNumeroPoint);
  return true;
}

bool EcrireNature(LigneCible& ligne, int32_t nature, Journal& journal) {
  if (nature < 1 || nature > 6) {
    ligne.AjouterBlancs(2);
    return EchecEcriture(journal, kMsgNature);
  }
  ligne.Ajouter(' ');
  ligne.Ajouter(static_cast<char>('0' + nature));
  return true;
}

bool EcrireNatureMD01(LigneCible& ligne, int32_t nature, Journal& journal) {
  static constexpr char kCodes[] = {'0', '2', '5', '4', '6', '6'};
  if (nature < 1 || nature > 6) {
    ligne.Ajouter(' ');
    return EchecEcriture(journal, kMsgNature);
  }
  ligne.Ajouter(kCodes[nature - 1]);
  return true;
}

bool EcrireFichePFP3(LigneCible& ligne, int32_t fiche, Journal&) {
  ligne.Ajouter(fiche == kOui ? 'O' : fiche == kNon ? 'N' : ' ');
  return true;
}

bool EcrireFichePFP3MD01(LigneCible& ligne, int32_t fiche, Journal&) {
  ligne.Ajouter(fiche == kOui ? '0' : '1');
  return true;
}

bool EcrireDefiniExactementMD01(LigneCible& ligne, int32_t theme, int32_t nature, Journal&) {
  ligne.Ajouter(theme == 1 ? ' ' : nature == 6 ? '1' : '0');
  return true;
}

bool EcrireAncienneBorneSpecialeMD01(LigneCible& ligne, int32_t theme, Journal&) {
  ligne.Ajouter(theme == 1 ? ' ' : '1');
  return true;
}

bool EcrireCoordonneeY(LigneCible& ligne, double y, Journal& journal) {
  return EcrireCoordonnee(ligne, y, kMsgY, journal);
}

bool EcrireCoordonneeX(LigneCible& ligne, double x, Journal& journal) {
  return EcrireCoordonnee(ligne, x, kMsgX, journal);
}

bool EcrireAltitude(LigneCible& ligne, double altitude, Journal& journal) {
  if (altitude == 0) {
    ligne.AjouterBlancs(8);
    return true;
  }
  if (!EcrireNombreADroite(ligne, altitude, 3, 8)) return EchecEcriture(journal, kMsgAltitude);
  return true;
}

bool FormaterPrecision(TextePrecision& texte, double precision) {
  return PlacerDecimal(precision, 1, texte.octets, sizeof texte.octets);
}

bool EcrirePrecFiabMD01(TextesPrecFiab& textes, double precPlan, int32_t fiabPlan, double precAlt,
                        int32_t fiabAlt, Journal& journal) {
  const bool plan = FormaterPrecision(textes.PrecPlan, precPlan);
  const bool alt = FormaterPrecision(textes.PrecAlt, precAlt);
  textes.FiabPlan = fiabPlan == kOui ? '0' : '1';
  textes.FiabAlt = fiabAlt == kOui ? '0' : '1';
  if (!plan || !alt) return EchecEcriture(journal, kMsgPrecFiabMD01);
  return true;
}

}  // namespace quillon
