// A file service held in memory, for the tests and the fuzzers.
#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>

#include "io/file_system.h"

namespace quillon {

// Files held in memory, by name. Reading a name that is not there fails; a
// created name is written in `enCours` and gets its new contents in
// `fichiers` when closed. `echecEcriture` makes every write to that name
// fail, like a full disk; `echecCreation` makes its creation fail.
class SystemeFichiersMemoire : public SystemeFichiers {
 public:
  std::map<std::string, std::string> fichiers;
  std::map<std::string, std::string> enCours;
  std::string echecEcriture;
  std::string echecCreation;

  std::unique_ptr<SupportFichier> OuvrirLecture(const std::string& nom) override;
  std::unique_ptr<SupportFichier> CreerEcriture(
      const std::string& nom, std::span<const SupportFichier* const> proteges) override;
};

}  // namespace quillon
