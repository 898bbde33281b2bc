// The files of a batch: the sources found, each with its conversion, its
// target and its log.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/batch/options.h"
#include "conversion/conversions.h"

namespace quillon::lot {

// Why a file of the batch failed, as data: a run's fatal error, or what
// kept it from being tried (a folder that cannot be read, a file that
// another file of the batch reads or writes). The text report words it in
// Windows-1252 and the JSON report in UTF-8 (TexteEchec).
struct Echec {
  enum class Raison { Run, DossierIlisible, DejaDansLeLot };
  Raison raison = Raison::Run;
  ErreurFatale fatale;  // Run
  std::string chemin;   // DossierIlisible, DejaDansLeLot
};

// "Le fichier X ne peut pas être lu", "Le dossier X ne peut pas être
// parcouru", "Le fichier X sert déjà à un autre fichier du lot".
std::string TexteEchec(const Echec& echec);

struct FichierLot {
  std::string source;
  std::string cible;
  std::string log;
  std::string rapport;  // the check report, with --rapport
  std::vector<std::string> exports;  // the files of its exports, if asked for
  Conversion conversion = Conversion::ValEnPrecFiab;
  // Why the file is not tried at all.
  std::optional<Echec> empechement;
};

struct ListeLot {
  std::vector<FichierLot> fichiers;
  std::string erreur;  // a usage error, UTF-8 as the usage texts; empty otherwise
};

// The files of the sources in their order; those of a folder sorted by
// name, with the subfolders that cannot be read in their place as failed
// files. A source that is not a folder is a file whose extension tells its
// kind, whether or not it exists. A file reached twice is listed once; a
// recursive scan does not enter the output folder.
ListeLot ListerFichiers(const OptionsLot& options);

}  // namespace quillon::lot
