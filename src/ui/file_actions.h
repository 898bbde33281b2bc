// What the windows do for a file once it is checked, from the summary box
// of a run or from the main window's workbench: its check report opened in
// the browser, and its points exported in a format picked in a save dialog.
#pragma once

#include <array>
#include <string>

#include "conversion/conversions.h"
#include "report/collect.h"
#include "report/checks.h"
#include "ui/seams.h"

namespace quillon {

// The name without its folder.
std::string NomSeul(const std::string& chemin);

// A report written into `chemin` and opened in the browser; a box tells
// when either cannot be done.
void MontrerRapport(Services& services, SystemeFichiers& systeme, Parent parent, const std::string& chemin,
                    const std::string& html);

// What a report says of the run of a file.
struct FichierRapporte {
  std::string source, cible, journal;  // cible empty: a check only
  Conversion conversion = Conversion::ValEnPrecFiab;
  OptionsConversion options;
  bool verification = false;
  ComptesBilan bilan;
  bool rejets = false;
};

// Its check report, from what a watched run collected, into the user's
// temporary folder as "quillon-SOURCE.html", opened in the browser.
void VoirRapportDuFichier(Services& services, SystemeFichiers& systeme, Parent parent, const FichierRapporte& f,
                          const Collecte& collecte, const Controles& controles);

// The points of `f.source` in one format, named in a save dialog whose
// filters are the formats, GeoPackage first: a pass of its own over the
// source. A box tells what was written, or why not.
void ExporterFichier(Services& services, SystemeFichiers& systeme, Parent parent, const FichierRapporte& f);

}  // namespace quillon
