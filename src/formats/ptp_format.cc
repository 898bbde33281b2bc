#include "formats/ptp_format.h"

#include "formats/field_readers.h"
#include "formats/field_writers.h"
#include "formats/value_lookups.h"

namespace quillon {

bool LireLignePtPrecFiab(std::string_view ligne, Point& point, Journal& journal) {
  bool ok = LireTheme(ligne, point.Theme, journal);
  ok &= LireCommune(ligne, point.NoCommune, journal);
  ok &= LirePlan(ligne, point.NoPlan, journal);
  ok &= LireNumeroPoint(ligne, point.NoPoint, journal);
  ok &= LireNature(ligne, point.Nature, journal);
  ok &= LireFichePFP3(ligne, point.FichePFP3, journal);
  ok &= LireFiabPlan(ligne, point.FiabPlan, journal);
  ok &= LirePrecPlan(ligne, point.PrecPlan, journal);
  ok &= LireCoordonneeY(ligne, point.CoordY, journal);
  ok &= LireCoordonneeX(ligne, point.CoordX, journal);
  ok &= LireAltitude(ligne, point.Altitude, journal);
  ok &= LireFiabAlt(ligne, point.Altitude, point.FiabAlt, journal);
  ok &= LirePrecAlt(ligne, point.Altitude, point.PrecAlt, journal);
  ok &= LireCommentaire(ligne, point.Commentaire, journal);
  ok &= LireType(ligne, point.Type, journal);
  if (!ok) journal.LigneSource(ligne);
  return ok;
}

bool EcrireLignePtPrecFiab(std::string_view ligneSource, const Point& point, int16_t classeEchelle,
                           int32_t groupeTheme, LigneCible& cible, Journal& journal) {
  cible.Effacer();
  const bool substitution = point.Theme == kThemeBlanc && (point.Nature == 5 || point.Nature == 6);
  bool ok = EcrireThemePtPrecFiab(cible, point.Theme, groupeTheme, substitution, journal);
  ok &= EcrireCommune(cible, point.NoCommune, journal);
  ok &= EcrirePlan(cible, point.NoPlan, journal);
  ok &= EcrireNumeroPoint(cible, point.NoPoint, journal);
  ok &= EcrireNature(cible, point.Nature, journal);
  ok &= EcrireFichePFP3(cible, point.FichePFP3, journal);

  TextesPrecFiab textes;
  ok &= EcrirePrecFiabPlan(textes, point.Theme, point.Valeur, classeEchelle, journal);
  cible.Ajouter(textes.FiabPlan);
  cible.Ajouter(textes.PrecPlan.Vue());

  cible.Ajouter(' ');
  ok &= EcrireCoordonneeY(cible, point.CoordY, journal);
  cible.Ajouter(' ');
  ok &= EcrireCoordonneeX(cible, point.CoordX, journal);
  cible.Ajouter(' ');
  ok &= EcrireAltitude(cible, point.Altitude, journal);
  if (point.Altitude == 0) {
    cible.AjouterBlancs(8);
  } else {
    cible.Ajouter(' ');
    cible.Ajouter(textes.FiabAlt);
    cible.Ajouter(textes.PrecAlt.Vue());
    cible.Ajouter(' ');
  }
  cible.Ajouter(point.Commentaire);
  cible.Ajouter(' ');
  cible.Ajouter(point.Type);

  if (!ok) journal.LigneSource(ligneSource);
  return ok;
}

}  // namespace quillon
