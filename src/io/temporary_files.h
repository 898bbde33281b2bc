// The temporary files of the files being written. Where the system has
// unnamed files (Linux's O_TMPFILE), a file being written has no name at
// all until it is complete, and a killed run leaves nothing; it is given a
// temporary name beside its final one only for the moment of its rename.
// Elsewhere it is written under such a name from the start:
// "<name>.quillon-<process>-<host>-XXXXXX.tmp". An interruption removes
// those still pending before the program ends; a run killed outright leaves
// them, and a later run that writes into their folder removes those whose
// process is gone, on this machine, and no other.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillon {

// The temporary name for a file to be put in place at `chemin` (its folder
// and name), the `essai`-th one tried: a name of the same folder that no
// other run picks at the same time. A long name is shortened to keep the
// temporary name within 255 bytes.
std::string NomTemporaire(const std::string& chemin, uint64_t essai);

// Who made a temporary file, read from its name (without its folder); none
// for a name that is not one of NomTemporaire's.
struct AuteurTemporaire {
  uint32_t processus = 0;
  uint32_t hote = 0;
  bool operator==(const AuteurTemporaire&) const = default;
};
std::optional<AuteurTemporaire> AuteurDe(std::string_view nom);

// This process, and a fingerprint of this machine's name (the platform's
// half, beside its file service).
uint32_t ProcessusCourant();
uint32_t HoteCourant();
// False once the process of this machine numbered `processus` has ended.
bool ProcessusVivant(uint32_t processus);
// Whether a temporary file of that name is left over from a run of this
// machine that is over, and may be removed.
bool TemporaireAbandonne(std::string_view nom);

// Keeps `chemin` in the list of pending temporary files until it is
// forgotten; the place it took, or -1 when the list is full (the file is
// then not removed on an interruption).
int RetenirTemporaire(const std::string& chemin);
void OublierTemporaire(int place);

// A temporary file being written: in the list of pending ones while it
// lives; removed when given up, and when destroyed unless kept.
class Temporaire {
 public:
  Temporaire() : place_(-1) {}
  explicit Temporaire(std::string chemin) : chemin_(std::move(chemin)), place_(RetenirTemporaire(chemin_)) {}
  ~Temporaire() { Supprimer(); }
  Temporaire(const Temporaire&) = delete;
  Temporaire& operator=(const Temporaire&) = delete;
  Temporaire(Temporaire&& autre) noexcept : chemin_(std::move(autre.chemin_)), place_(autre.place_) {
    autre.chemin_.clear();
    autre.place_ = -1;
  }
  Temporaire& operator=(Temporaire&& autre) noexcept {
    if (this != &autre) {
      Supprimer();
      chemin_ = std::move(autre.chemin_);
      place_ = autre.place_;
      autre.chemin_.clear();
      autre.place_ = -1;
    }
    return *this;
  }

  const std::string& Chemin() const { return chemin_; }
  bool Vide() const { return chemin_.empty(); }
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
