// A file service held in memory, for the tests and the fuzzers.
#pragma once

#include <cstdint>
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
  // What goes wrong for one name, at any step of its writing.
  struct Panne {
    bool creation = false;   // it cannot be created
    int64_t ecritures = -1;  // the writes after this many fail (-1: none does)
    int64_t octets = -1;     // a write that would take it past this many bytes fails: a full disk
    bool fermeture = false;  // closing it fails, and the file of that name stays as it was
  };

  std::map<std::string, std::string> fichiers;
  std::map<std::string, std::string> enCours;
  std::string echecEcriture;
  std::string echecCreation;
  std::map<std::string, Panne> pannes;
  std::map<std::string, int> lectures;  // the times each name was opened for reading

  std::unique_ptr<SupportFichier> OuvrirLecture(const std::string& nom) override;
  std::unique_ptr<SupportFichier> CreerEcriture(
      const std::string& nom, std::span<const SupportFichier* const> proteges) override;
};

}  // namespace quillon
