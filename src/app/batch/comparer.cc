#include "app/batch/comparer.h"

#include <filesystem>

#include "app/batch/platform.h"
#include "app/batch/totals.h"
#include "app/batch/run.h"
#include "io/console.h"
#include "io/encoding.h"
#include "io/translation.h"
#include "io/locale.h"
#include "compare/comparison.h"
#include "report/comparison_reports.h"

namespace quillon::lot {
namespace {

// --rapport names the HTML file; an existing folder gets OLD-NEW.html, the
// two names without their folders, as in a batch it gets the reports.
std::string CheminRapport(const OptionsLot& options) {
  const std::string& rapport = options.dossierRapport;
  std::error_code ec;
  if (!std::filesystem::is_directory(CheminNatif(rapport), ec)) return rapport;
  const auto nom = [](const std::string& chemin) { return TexteChemin(CheminNatif(chemin).filename()); };
  return TexteChemin(CheminNatif(rapport) / CheminNatif(nom(options.sources[0]) + "-" + nom(options.sources[1]) + ".html"));
}

}  // namespace

int ExecuterComparaison(const OptionsLot& options) {
  for (const std::string& source : options.sources) {
    if (!SortePourChemin(source)) {
      return ErreurUsage(Formater("%s n'est pas un fichier .ptv, .ptp ou .pts", {CheminAffichableUtf8(source)}));
    }
  }
  ReglagesComparaison reglages;
  reglages.tolerance = options.tolerance;
  reglages.toleranceAltitude = options.toleranceAltitude;
  reglages.classeEchelle = options.classeEchelle;
  reglages.groupeTheme = options.groupeTheme;
  Comparaison c;
  ErreurFatale erreur;
  if (!Comparer(options.sources[0], options.sources[1], reglages, c, erreur, *options.systeme)) {
    SignalerErreur(CauseTraduite(erreur));
    return kSortieEchec;
  }
  int code = c.Differe() ? kSortieRejets : kSortieConverti;
  if (c.sansPrecision > 0) {
    SignalerErreur(Formater("%s code(s) de valeur sans précisions dans les tables à cette échelle "
                            "(--echelle ?) : leurs précisions ne sont pas comparées",
                            {std::to_string(c.sansPrecision)}));
  }
  const bool jsonSeul = options.rapportJson && *options.rapportJson == "-";
  if (!jsonSeul) EcrireConsole(TexteComparaison(c, FinLigne()));
  if (options.rapportJson) {
    const std::string json = JsonComparaison(c, code);
    if (jsonSeul) {
      EcrireSortieBrute(json);
    } else if (!EcrireFichier(*options.systeme, *options.rapportJson, json)) {
      SignalerErreur(Formater("le rapport %s ne peut pas être écrit", {CheminAffichableUtf8(*options.rapportJson)}));
      code = kSortieEchec;
    }
  }
  const std::string rapport = options.dossierRapport.empty() ? std::string() : CheminRapport(options);
  if (!rapport.empty() &&
      !EcrireFichier(*options.systeme, rapport, RapportComparaisonHtml(c, "quillon-lot", DateHeureJournal()))) {
    SignalerErreur(Formater("le rapport %s ne peut pas être écrit", {CheminAffichableUtf8(rapport)}));
    code = kSortieEchec;
  }
  return code;
}

}  // namespace quillon::lot
