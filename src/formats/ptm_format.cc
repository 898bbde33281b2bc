#include "formats/ptm_format.h"

#include "formats/field_writers.h"

namespace quillon {

bool EcrireLignePtMD01(std::string_view ligneSource, const Point& point, LigneCible& cible, Journal& journal) {
  cible.Effacer();
  bool ok = EcrireThemeMD01(cible, point.Theme, journal);
  cible.Ajouter(' ');
  ok &= EcrireCommunePlanMD01(cible, point.NoCommune, point.NoPlan, journal);
  cible.Ajouter(' ');
  ok &= EcrireNumeroPoint(cible, point.NoPoint, journal);
  cible.Ajouter(' ');
  ok &= EcrireNatureMD01(cible, point.Nature, journal);
  ok &= EcrireFichePFP3MD01(cible, point.FichePFP3, journal);
  ok &= EcrireDefiniExactementMD01(cible, point.Theme, point.Nature, journal);
  ok &= EcrireAncienneBorneSpecialeMD01(cible, point.Theme, journal);
  cible.Ajouter(' ');
  ok &= EcrireCoordonneeY(cible, point.CoordY, journal);
  cible.Ajouter(' ');
  ok &= EcrireCoordonneeX(cible, point.CoordX, journal);

  TextesPrecFiab textes;
  ok &= EcrirePrecFiabMD01(textes, point.PrecPlan, point.FiabPlan, point.PrecAlt, point.FiabAlt, journal);
  cible.Ajouter(' ');
  cible.Ajouter(textes.FiabPlan);
  cible.Ajouter(textes.PrecPlan.Vue());

  if (point.Altitude != 0) {
    cible.Ajouter(' ');
    ok &= EcrireAltitude(cible, point.Altitude, journal);
    cible.Ajouter(' ');
    cible.Ajouter(textes.FiabAlt);
    cible.Ajouter(textes.PrecAlt.Vue());
  }

  if (!ok) journal.LigneSource(ligneSource);
  return ok;
}

}  // namespace quillon
