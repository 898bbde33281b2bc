#include "app/batch/comparer.h"

#include "app/batch/platform.h"
#include "app/batch/report.h"
#include "app/batch/run.h"
#include "io/console.h"
#include "io/encoding.h"
#include "io/locale.h"
#include "report/comparaison.h"
#include "report/comparaison_rapports.h"

namespace quillon::lot {

int ExecuterComparaison(const OptionsLot& options) {
  for (const std::string& source : options.sources) {
    if (!SortePourChemin(source)) {
      EcrireErreur(Utf8VersCp1252("quillon-lot : " + NomEnUtf8(source) + " n'est pas un fichier .ptv, .ptp ou .pts\n" +
                                  TexteUsage()));
      return kSortieUsage;
    }
  }
  ReglagesComparaison reglages;
  reglages.tolerance = options.tolerance;
  reglages.toleranceAltitude = options.toleranceAltitude;
  reglages.classeEchelle = options.classeEchelle;
  reglages.groupeTheme = options.groupeTheme;
  Comparaison c;
  std::string erreur;
  if (!Comparer(options.sources[0], options.sources[1], reglages, c, erreur)) {
    EcrireErreur("quillon-lot : " + erreur + std::string(FinLigne()));
    return kSortieEchec;
  }
  int code = c.Differe() ? kSortieRejets : kSortieConverti;
  if (c.sansPrecision > 0) {
    EcrireErreur(Utf8VersCp1252("quillon-lot : " + std::to_string(c.sansPrecision) +
                                " code(s) de valeur sans précisions dans les tables à cette échelle (--echelle ?) : "
                                "leurs précisions ne sont pas comparées") +
                 std::string(FinLigne()));
  }
  const bool jsonSeul = options.rapportJson && *options.rapportJson == "-";
  if (!jsonSeul) EcrireConsole(TexteComparaison(c, FinLigne()));
  if (options.rapportJson) {
    const std::string json = JsonComparaison(c, code);
    if (jsonSeul) {
      EcrireSortieBrute(json);
    } else if (!EcrireFichier(*options.systeme, *options.rapportJson, json)) {
      EcrireErreur(Utf8VersCp1252("quillon-lot : le rapport " + *options.rapportJson + " ne peut pas être écrit") +
                   std::string(FinLigne()));
      code = kSortieEchec;
    }
  }
  if (!options.dossierRapport.empty() &&
      !EcrireFichier(*options.systeme, options.dossierRapport, RapportComparaisonHtml(c, "quillon-lot", DateHeureJournal()))) {
    EcrireErreur(Utf8VersCp1252("quillon-lot : le rapport " + options.dossierRapport + " ne peut pas être écrit") +
                 std::string(FinLigne()));
    code = kSortieEchec;
  }
  return code;
}

}  // namespace quillon::lot
