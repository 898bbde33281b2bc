// The files of a batch: the sources found, each with its conversion, its
// target and its log.
#pragma once

#include <string>
#include <vector>

#include "app/batch/options.h"
#include "conversion/conversions.h"

namespace quillon::lot {

struct FichierLot {
  std::string source;
  std::string cible;
  std::string log;
  Conversion conversion = Conversion::ValEnPrecFiab;
  // Why the file is not converted before anything is tried (a folder that
  // cannot be read, a target that another file of the batch reads or
  // writes), in Windows-1252; empty otherwise.
  std::string empechement;
};

struct ListeLot {
  std::vector<FichierLot> fichiers;
  std::string erreur;  // a usage error, in UTF-8; empty otherwise
};

// The files of the sources in their order; those of a folder sorted by
// name. A source that is not a folder is a file whose extension tells its
// kind, whether or not it exists.
ListeLot ListerFichiers(const OptionsLot& options);

}  // namespace quillon::lot
