// The file service: how the runs open their source and create their target
// and log. The real one works on the machine's files, its half of the
// platform in file_system-posix.cc or file_system-win32.cc.
//
// A file created for writing is not the file of that name until it is
// closed: its bytes go to a temporary file beside it, which the close puts
// in place in one step. Until then, and for good when the writing is given
// up, the file of that name stays as it was.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace quillon {

// The bytes of one open file.
class SupportFichier {
 public:
  virtual ~SupportFichier() = default;
  // Reads up to `taille` bytes: the count read, 0 at the end, -1 on error.
  virtual int64_t Lire(char* destination, std::size_t taille) = 0;
  // Writes all `taille` bytes; false on error (disk full, I/O error).
  virtual bool Ecrire(const char* source, std::size_t taille) = 0;
  // Closes; a file being written is put in place under its name. False when
  // that failed, the file of that name then being left as it was.
  virtual bool Fermer() = 0;
  // Closes a file being written without putting it in place: the file of
  // that name stays as it was. The same as Fermer for a file being read.
  // A support destroyed while still open gives up the same way.
  virtual void Abandonner() { Fermer(); }
  // True when this open file and `autre` are the same file (same path, a
  // link to it, the same inode), or would be once put in place.
  virtual bool MemeFichier(const SupportFichier& autre) const = 0;

  // Random access, for a writer that lays out its file itself (a
  // database), on a file created for writing: reads up to `taille` bytes
  // at `position` (the count read, fewer past the end, -1 on error); writes
  // all `taille` bytes there; the size (-1 on error); cuts it to `taille`.
  // A file that has none fails them.
  virtual int64_t LireA(char* /*destination*/, std::size_t /*taille*/, uint64_t /*position*/) { return -1; }
  virtual bool EcrireA(const char* /*source*/, std::size_t /*taille*/, uint64_t /*position*/) { return false; }
  virtual int64_t Taille() { return -1; }
  virtual bool Tronquer(uint64_t /*taille*/) { return false; }
};

class SystemeFichiers {
 public:
  virtual ~SystemeFichiers() = default;
  // Opens an existing file for reading; null when it cannot be read (missing,
  // a folder, no right to read).
  virtual std::unique_ptr<SupportFichier> OuvrirLecture(const std::string& nom) = 0;
  // Creates `nom` for writing, to replace an existing file when closed. Null
  // when it could not be written: a missing or read-only folder, a
  // read-only file, a folder, and also `nom` being the same file as one of
  // `proteges` (an open file is never created over).
  virtual std::unique_ptr<SupportFichier> CreerEcriture(
      const std::string& nom, std::span<const SupportFichier* const> proteges) = 0;
};

// The machine's files.
SystemeFichiers& SystemeFichiersReel();

// Whether the machine's files being written have no name until they are
// complete, where the system can (the default). False names them from the
// start, as a file system without unnamed files does: for the tests.
void UtiliserFichiersSansNom(bool oui);

// The folder of a file put in place is synced after it, so that a crash of
// the machine brings back the new file: at once by default. Once
// GrouperSynchronisationsDossiers is called, the folders are kept until
// SynchroniserDossiers, which syncs each of them once and ends the
// grouping: a batch of many files in a few folders. Every file is on the disk before it is put in place
// either way; a crash before its folder is synced may bring back the
// previous file, whole.
void GrouperSynchronisationsDossiers();
void SynchroniserDossiers();

// Files put in place by groups, for a batch of many small files. Once a
// thread defers its placements, a file it closes there is complete beside
// its name, but not yet synced nor in place: PlacementsDiferes() hands such files over, and PlacerGroupe()
// syncs a whole group at once (on Linux one syncfs of each file system
// they are on) before renaming each over its name, in order: every file is
// on the disk before it is in place all the same, for one sync a group
// instead of one a file. A placement dropped unplaced removes its
// temporary file. Where the system has no such sync (Windows), nothing is
// deferred: each file is put in place when closed, as ever.
class PlacementDifere {
 public:
  virtual ~PlacementDifere() = default;
  // The name the file is to have.
  virtual const std::string& Nom() const = 0;
};
void DifererPlacements(bool differer);
std::vector<std::unique_ptr<PlacementDifere>> PlacementsDiferes();
// Whether each file of the group is in place; a file that is not keeps
// its previous bytes.
std::vector<bool> PlacerGroupe(const std::vector<std::unique_ptr<PlacementDifere>>& groupe);

// Removes one file by its name, quietly; safe inside a signal handler (a
// pending temporary file on an interruption).
void SupprimerFichier(const char* chemin);

}  // namespace quillon
