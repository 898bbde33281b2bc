#include "formats/pts_format.h"

#include "formats/field_readers.h"
#include "formats/numbers.h"

namespace quillon {
namespace {

constexpr auto kAuMillimetre = Ansi(u8"' doit être au millimètre");

bool LireCoordonneePtDC(std::string_view ligne, std::size_t premiere, double& champ, const TeteChamp& tete,
                        Journal& journal) {
  const std::string_view texte = Rogner(Colonnes(ligne, premiere, 10));
  if (texte.size() != 10) return RejeterChamp(journal, tete, texte, kAuMillimetre);
  if (!ConvertirDecimal(texte, champ)) return RejeterChamp(journal, tete, texte);
  return true;
}

}  // namespace

bool LireCommunePtDC(std::string_view ligne, int16_t& commune, Journal& journal) {
  return LireEntierBorne(Colonnes(ligne, 1, 3), 1, 400, commune, kTeteCommune, journal);
}

bool LirePlanPtDC(std::string_view ligne, int16_t& plan, Journal& journal) {
  return LireEntierBorne(Colonnes(ligne, 4, 4), 0, 2999, plan, kTetePlan, journal);
}

bool LireNumeroPointPtDC(std::string_view ligne, std::string& numero, Journal& journal) {
  CopierTexte(numero, Colonnes(ligne, 14, 4));
  if (!EstNumerique(numero)) return RejeterChamp(journal, kTeteNumeroPoint, numero);
  return true;
}

bool LireNaturePtDC(std::string_view ligne, int32_t& nature, std::string& texteNature, Journal& journal) {
  const std::string_view texte = Rogner(Colonnes(ligne, 19, 2));
  CopierTexte(texteNature, texte);
  if (texte.size() != 1 || texte[0] < '1' || texte[0] > '6') return RejeterChamp(journal, kTeteNature, texte);
  nature = texte[0] == '6' ? 5 : texte[0] - '0';
  return true;
}

bool LireValeurPtDC(std::string_view ligne, int16_t& valeur, Journal& journal) {
  return LireValeurTexte(Colonnes(ligne, 22, 2), valeur, journal);
}

bool LireCoordonneeYPtDC(std::string_view ligne, double& y, Journal& journal) {
  return LireCoordonneePtDC(ligne, 25, y, kTeteCoordonneeY, journal);
}

bool LireCoordonneeXPtDC(std::string_view ligne, double& x, Journal& journal) {
  return LireCoordonneePtDC(ligne, 35, x, kTeteCoordonneeX, journal);
}

bool LireAltitudePtDC(std::string_view ligne, double& altitude, Journal& journal) {
  const std::string_view texte = Rogner(Colonnes(ligne, 45, 8));
  if (texte.empty()) {
    altitude = 0;
    return true;
  }
  if (!ConvertirDecimal(texte, altitude)) return RejeterChamp(journal, kTeteAltitude, texte);
  return true;
}

bool LireCommentairePtDC(std::string_view ligne, std::string& commentaire, Journal&) {
  CopierTexte(commentaire, Colonnes(ligne, 69, 5));
  return true;
}

void DeduireThemePtDC(int16_t valeur, std::string_view texteNature, int16_t commune, int32_t groupeTheme,
                      int32_t& theme) {
  if (commune == 400) {
    theme = 1;
  } else if (texteNature == "6") {
    theme = groupeTheme;
  } else {
    const int chiffre = valeur % 10;
    theme = chiffre == 1 || chiffre == 2 ? 1 : 6;
  }
}

bool LireLignePtDC(std::string_view ligne, int32_t groupeTheme, Point& point, Journal& journal) {
  std::string texteNature;
  bool ok = LireCommunePtDC(ligne, point.NoCommune, journal);
  ok &= LirePlanPtDC(ligne, point.NoPlan, journal);
  ok &= LireNumeroPointPtDC(ligne, point.NoPoint, journal);
  ok &= LireNaturePtDC(ligne, point.Nature, texteNature, journal);
  ok &= LireValeurPtDC(ligne, point.Valeur, journal);
  ok &= LireCoordonneeYPtDC(ligne, point.CoordY, journal);
  ok &= LireCoordonneeXPtDC(ligne, point.CoordX, journal);
  ok &= LireAltitudePtDC(ligne, point.Altitude, journal);
  ok &= LireCommentairePtDC(ligne, point.Commentaire, journal);
  if (!ok) {
    journal.LigneSource(ligne);
    return false;
  }
  DeduireThemePtDC(point.Valeur, texteNature, point.NoCommune, groupeTheme, point.Theme);
  return true;
}

}  // namespace quillon
