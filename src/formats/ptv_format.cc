#include "formats/ptv_format.h"

#include "formats/field_readers.h"
#include "formats/field_writers.h"
#include "formats/value_lookups.h"

namespace quillon {

bool LireLignePtVal(std::string_view ligne, Point& point, Journal& journal) {
  bool ok = LireTheme(ligne, point.Theme, journal);
  ok &= LireCommune(ligne, point.NoCommune, journal);
  ok &= LirePlan(ligne, point.NoPlan, journal);
  ok &= LireNumeroPoint(ligne, point.NoPoint, journal);
  ok &= LireNature(ligne, point.Nature, journal);
  ok &= LireFichePFP3(ligne, point.FichePFP3, journal);
  ok &= LireFiabilite(ligne, point.Fiabilite, journal);
  ok &= LireValeur(ligne, point.Valeur, journal);
  ok &= LireCoordonneeY(ligne, point.CoordY, journal);
  ok &= LireCoordonneeX(ligne, point.CoordX, journal);
  ok &= LireAltitude(ligne, point.Altitude, journal);
  ok &= LireCommentaire(ligne, point.Commentaire, journal);
  ok &= LireType(ligne, point.Type, journal);
  if (!ok) journal.LigneSource(ligne);
  return ok;
}

bool EcrireLignePtVal(std::string_view ligneSource, bool valeurConnue, const Point& point, LigneCible& cible,
                      Journal& journal) {
  cible.Effacer();
  bool champsOk = EcrireThemePtVal(cible, point.Theme, journal);
  champsOk &= EcrireCommune(cible, point.NoCommune, journal);
  champsOk &= EcrirePlan(cible, point.NoPlan, journal);
  champsOk &= EcrireNumeroPoint(cible, point.NoPoint, journal);
  champsOk &= EcrireNature(cible, point.Nature, journal);
  if (point.Theme == 1 || point.Theme == 71 || point.Theme == 81) {
    champsOk &= EcrireFichePFP3(cible, point.FichePFP3, journal);
  } else {
    cible.Ajouter(' ');
  }
  cible.Ajouter('R');

  // A theme without a value table leaves the column blank, two wide.
  TexteValeur texteValeur;
  const bool valeurOk = valeurConnue ? EcrireValeurConnue(texteValeur, point.Valeur, journal)
                                     : EcrireValeur(texteValeur, point.Theme, point.PrecPlan, point.FiabPlan, journal);
  cible.Ajouter(' ');
  cible.Ajouter(texteValeur.Vue());
  cible.Ajouter(". ");

  cible.Ajouter(' ');
  champsOk &= EcrireCoordonneeY(cible, point.CoordY, journal);
  cible.Ajouter(' ');
  champsOk &= EcrireCoordonneeX(cible, point.CoordX, journal);
  cible.Ajouter(' ');
  champsOk &= EcrireAltitude(cible, point.Altitude, journal);
  cible.AjouterBlancs(8);
  cible.Ajouter(point.Commentaire);
  cible.Ajouter(' ');
  cible.Ajouter(point.Type);

  if (!champsOk || !valeurOk) journal.LigneSource(ligneSource);
  return champsOk;
}

}  // namespace quillon
