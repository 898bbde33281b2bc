#include "formats/field_readers.h"

#include <algorithm>

#include "io/encoding.h"
#include "formats/numbers.h"
#include "model/point.h"

namespace quillon {
namespace {

// A column of one byte, in capitals.
std::string_view EnMajuscule(std::string_view texte, char& tampon) {
  if (texte.empty()) return texte;
  tampon = MajusculeAnsi(texte[0]);
  return {&tampon, 1};
}

bool LireDecimal(std::string_view texte, double& champ, const TeteChamp& tete, Journal& journal) {
  if (!ConvertirDecimal(texte, champ)) return RejeterChamp(journal, tete, texte);
  return true;
}

bool LireOuiNon(std::string_view texte, int32_t& champ, const TeteChamp& tete, Journal& journal) {
  if (texte == "O") {
    champ = kOui;
  } else if (texte == "N") {
    champ = kNon;
  } else {
    return RejeterChamp(journal, tete, texte);
  }
  return true;
}

}  // namespace

void CopierTexte(std::string& champ, std::string_view texte) {
  champ.resize(texte.size());
  std::copy(texte.begin(), texte.end(), champ.begin());
}

bool RejeterChamp(Journal& journal, const TeteChamp& tete, std::string_view texte, std::string_view fin) {
  journal.ErreurLecture(Numero(tete.champ), {tete.texte, texte, fin});
  return false;
}

bool RejeterChamp(Journal& journal, const TeteChamp& tete, std::string_view texte) {
  return RejeterChamp(journal, tete, texte, "' n'est pas valide");
}

bool LireEntierBorne(std::string_view texte, int lo, int hi, int16_t& champ, const TeteChamp& tete,
                     Journal& journal) {
  if (!ConvertirEntier(texte, champ) || champ < lo || champ > hi) return RejeterChamp(journal, tete, texte);
  return true;
}

bool LireTheme(std::string_view ligne, int32_t& theme, Journal& journal) {
  const std::string_view texte = Rogner(Colonnes(ligne, 1, 2));
  if (texte.empty()) {
    theme = kThemeBlanc;
    return true;
  }
  // One digit, or two: "0" followed by a base theme, or 7x / 8x.
  int chiffre = -1;
  int dizaine = 0;
  if (texte.size() == 1) {
    chiffre = texte[0] - '0';
  } else if (texte[0] == '0' || texte[0] == '7' || texte[0] == '8') {
    dizaine = texte[0] - '0';
    chiffre = texte[1] - '0';
  }
  switch (chiffre) {
    case 1: case 2: case 3: case 4: case 6: case 7: case 9:
      theme = dizaine * 10 + chiffre;
      return true;
    default:
      return RejeterChamp(journal, kTeteTheme, texte);
  }
}

bool LireCommune(std::string_view ligne, int16_t& commune, Journal& journal) {
  return LireEntierBorne(Colonnes(ligne, 3, 4), 1, 400, commune, kTeteCommune, journal);
}

bool LirePlan(std::string_view ligne, int16_t& plan, Journal& journal) {
  return LireEntierBorne(Colonnes(ligne, 7, 4), 0, 2999, plan, kTetePlan, journal);
}

bool LireNumeroPoint(std::string_view ligne, std::string& numero, Journal& journal) {
  CopierTexte(numero, Colonnes(ligne, 11, 12));
  if (!EstNumerique(numero)) return RejeterChamp(journal, kTeteNumeroPoint, numero);
  return true;
}

bool LireNature(std::string_view ligne, int32_t& nature, Journal& journal) {
  const std::string_view texte = Rogner(Colonnes(ligne, 23, 2));
  if (texte.size() != 1 || texte[0] < '1' || texte[0] > '6') return RejeterChamp(journal, kTeteNature, texte);
  nature = texte[0] - '0';
  return true;
}

bool LireFichePFP3(std::string_view ligne, int32_t& fiche, Journal& journal) {
  const std::string_view texte = Rogner(Colonnes(ligne, 25, 1));
  if (texte.empty()) {
    fiche = kBlanc;
    return true;
  }
  return LireOuiNon(texte, fiche, kTeteFichePFP3, journal);
}

bool LireFiabilite(std::string_view ligne, int32_t& fiabilite, Journal& journal) {
  char tampon;
  const std::string_view texte = EnMajuscule(Colonnes(ligne, 26, 1), tampon);
  if (texte != "R") return RejeterChamp(journal, kTeteFiabilite, texte);
  fiabilite = 3;
  return true;
}

bool LireFiabPlan(std::string_view ligne, int32_t& fiabPlan, Journal& journal) {
  char tampon;
  return LireOuiNon(EnMajuscule(Colonnes(ligne, 26, 1), tampon), fiabPlan, kTeteFiabPlan, journal);
}

bool LirePrecPlan(std::string_view ligne, double& precPlan, Journal& journal) {
  return LireDecimal(Colonnes(ligne, 27, 5), precPlan, kTetePrecPlan, journal);
}

bool LireValeurTexte(std::string_view texte, int16_t& valeur, Journal& journal) {
  if (!ConvertirEntier(texte, valeur) || !EstValeurValide(valeur)) return RejeterChamp(journal, kTeteValeur, texte);
  return true;
}

bool LireValeur(std::string_view ligne, int16_t& valeur, Journal& journal) {
  return LireValeurTexte(Colonnes(ligne, 28, 2), valeur, journal);
}

bool LireCoordonneeY(std::string_view ligne, double& y, Journal& journal) {
  return LireDecimal(Colonnes(ligne, 33, 11), y, kTeteCoordonneeY, journal);
}

bool LireCoordonneeX(std::string_view ligne, double& x, Journal& journal) {
  return LireDecimal(Colonnes(ligne, 45, 11), x, kTeteCoordonneeX, journal);
}

bool LireAltitude(std::string_view ligne, double& altitude, Journal& journal) {
  const std::string_view texte = Rogner(Colonnes(ligne, 57, 8));
  if (texte.empty()) {
    altitude = 0;
    return true;
  }
  return LireDecimal(texte, altitude, kTeteAltitude, journal);
}

bool LireFiabAlt(std::string_view ligne, double altitude, int32_t& fiabAlt, Journal& journal) {
  if (altitude == 0) {
    fiabAlt = kNon;
    return true;
  }
  char tampon;
  return LireOuiNon(EnMajuscule(Colonnes(ligne, 66, 1), tampon), fiabAlt, kTeteFiabAlt, journal);
}

bool LirePrecAlt(std::string_view ligne, double altitude, double& precAlt, Journal& journal) {
  if (altitude == 0) {
    precAlt = 0;
    return true;
  }
  return LireDecimal(Colonnes(ligne, 67, 5), precAlt, kTetePrecAlt, journal);
}

bool LireCommentaire(std::string_view ligne, std::string& commentaire, Journal&) {
  CopierTexte(commentaire, Colonnes(ligne, 73, 12));
  return true;
}

bool LireType(std::string_view ligne, std::string& type, Journal&) {
  CopierTexte(type, Colonnes(ligne, 86, 2));
  return true;
}

}  // namespace quillon
