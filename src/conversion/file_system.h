// The file service: how the runs open their source and create their target
// and log. The real one works on the machine's files; the in-memory one
// serves the tests and the fuzzers.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string>

namespace quillon {

// The bytes of one open file.
class SupportFichier {
 public:
  virtual ~SupportFichier() = default;
  // Reads up to `taille` bytes: the count read, 0 at the end, -1 on error.
  virtual long Lire(char* destination, std::size_t taille) = 0;
  // Writes all `taille` bytes; false on error (disk full, I/O error).
  virtual bool Ecrire(const char* source, std::size_t taille) = 0;
  virtual bool Fermer() = 0;
  // True when this open file and `autre` are the same file (same path, a
  // link to it, or the same inode).
  virtual bool MemeFichier(const SupportFichier& autre) const = 0;
};

class SystemeFichiers {
 public:
  virtual ~SystemeFichiers() = default;
  // Opens an existing file for reading; null when it cannot be read (missing,
  // a folder, no right to read).
  virtual std::unique_ptr<SupportFichier> OuvrirLecture(const std::string& nom) = 0;
  // Creates `nom` for writing, replacing an existing file. Null when it
  // cannot be created, and also when `nom` is the same file as one of
  // `proteges`: an open file is never created over.
  virtual std::unique_ptr<SupportFichier> CreerEcriture(
      const std::string& nom, std::span<const SupportFichier* const> proteges) = 0;
};

// The machine's files.
SystemeFichiers& SystemeFichiersReel();

// Files held in memory, by name. Reading a name that is not there fails;
// creating one replaces its contents. `echecEcriture` makes every write to
// that name fail, like a full disk.
class SystemeFichiersMemoire : public SystemeFichiers {
 public:
  std::map<std::string, std::string> fichiers;
  std::string echecEcriture;
  std::string echecCreation;

  std::unique_ptr<SupportFichier> OuvrirLecture(const std::string& nom) override;
  std::unique_ptr<SupportFichier> CreerEcriture(
      const std::string& nom, std::span<const SupportFichier* const> proteges) override;
};

}  // namespace quillon
