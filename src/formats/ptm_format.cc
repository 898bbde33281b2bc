#include "formats/ptm_format.h"

#include "formats/field_writers.h"

namespace quillon {

bool EcrireLignePtMD01(std::string_view ligneSource, const Point& point, std::string& cible, Journal& journal) {
  cible.clear();
  bool ok = EcrireThemeMD01(cible, point.Theme, journal);
  cible += ' ';
  ok &= EcrireCommunePlanMD01(cible, point.NoCommune, point.NoPlan, journal);
  cible += ' ';
  ok &= EcrireNumeroPoint(cible, point.NoPoint, journal);
  cible += ' ';
  ok &= EcrireNatureMD01(cible, point.Nature, journal);
  ok &= EcrireFichePFP3MD01(cible, point.FichePFP3, journal);
  ok &= EcrireDefiniExactementMD01(cible, point.Theme, point.Nature, journal);
  ok &= EcrireAncienneBorneSpecialeMD01(cible, point.Theme, journal);
  cible += ' ';
  ok &= EcrireCoordonneeY(cible, point.CoordY, journal);
  cible += ' ';
  ok &= EcrireCoordonneeX(cible, point.CoordX, journal);

  TextesPrecFiabMD01 textes;
  ok &= EcrirePrecFiabMD01(textes, point.PrecPlan, point.FiabPlan, point.PrecAlt, point.FiabAlt, journal);
  cible += ' ';
  cible += textes.FiabPlan;
  cible += textes.PrecPlan;

  if (point.Altitude != 0) {
    cible += ' ';
    ok &= EcrireAltitude(cible, point.Altitude, journal);
    cible += ' ';
    cible += textes.FiabAlt;
    cible += textes.PrecAlt;
  }

  if (!ok) journal.EcrireLog(false, false, false, false, ligneSource);
  return ok;
}

}  // namespace quillon
