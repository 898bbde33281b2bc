// A file of the exports, written through the file services and buffered,
// for a writer that lays out its file itself: the bytes written so far are
// counted, and once written out they can be written again in place (room
// left at the top, filled at the end) or read back (a file of entities
// copied into the drawing at its end). Created beside its name, it is put
// in place by Fermer; given up, or destroyed before, it leaves the file of
// that name as it was.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "io/file_system.h"

namespace quillon {

class FichierSortie {
 public:
  FichierSortie() = default;
  FichierSortie(const FichierSortie&) = delete;
  FichierSortie& operator=(const FichierSortie&) = delete;
  ~FichierSortie() { Abandonner(); }

  // False when the file service could not create it.
  bool Creer(SystemeFichiers& systeme, const std::string& nom);
  // Buffered; a failure shows in EnErreur, and at Vider and Fermer.
  void Ecrire(std::string_view octets);
  // The bytes written so far, buffered ones included.
  uint64_t Taille() const { return ecrits_ + tampon_.size(); }
  bool EnErreur() const { return erreur_; }
  // Writes out the buffer.
  bool Vider();
  // Writes `octets` again at `position`, inside what was written before.
  bool EcrireA(std::string_view octets, uint64_t position);
  // Appends its own bytes, from the first, to `cible`.
  bool CopierVers(FichierSortie& cible);
  // Writes out the buffer and puts the file in place.
  bool Fermer();
  void Abandonner();

 private:
  std::unique_ptr<SupportFichier> support_;
  std::string tampon_;
  uint64_t ecrits_ = 0;
  bool erreur_ = false;
};

}  // namespace quillon
