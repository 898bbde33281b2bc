// The temporary files of the files being written, beside their final names:
// "<name>.quillon-XXXXXX.tmp". An interruption removes those still pending
// before the program ends; only a kill that cannot be caught leaves one.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace quillon {

// The temporary name for a file to be put in place at `chemin` (its folder
// and name), the `essai`-th one tried: a name of the same folder that no
// other run picks at the same time. A long name is shortened to keep the
// temporary name within 255 bytes.
std::string NomTemporaire(const std::string& chemin, uint64_t essai);

// Keeps `chemin` in the list of pending temporary files until it is
// forgotten; the place it took, or -1 when the list is full (the file is
// then not removed on an interruption).
int RetenirTemporaire(const std::string& chemin);
void OublierTemporaire(int place);

// A temporary file being written: in the list of pending ones while it
// lives; removed when given up, and when destroyed unless kept.
class Temporaire {
 public:
  explicit Temporaire(std::string chemin) : chemin_(std::move(chemin)), place_(RetenirTemporaire(chemin_)) {}
  ~Temporaire() { Supprimer(); }
  Temporaire(const Temporaire&) = delete;
  Temporaire& operator=(const Temporaire&) = delete;

  const std::string& Chemin() const { return chemin_; }
  // Put in place under its final name: nothing more to remove.
  void Garder() { Oublier(false); }
  // Given up: removed.
  void Supprimer() { Oublier(true); }

 private:
  void Oublier(bool supprimer);

  std::string chemin_;
  int place_;
};

// Removes every pending temporary file. Safe inside a signal handler.
void SupprimerTemporaires();

}  // namespace quillon
