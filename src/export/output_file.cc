#include "export/output_file.h"

namespace quillon {
namespace {

// As a text file's: the buffer, made at the first write, and what a copy
// reads at a time, through the same buffer.
constexpr std::size_t kTampon = std::size_t{64} << 10;

}  // namespace

bool FichierSortie::Creer(SystemeFichiers& systeme, const std::string& nom) {
  Abandonner();
  support_ = systeme.CreerEcriture(nom, {});
  tampon_.clear();
  ecrits_ = 0;
  erreur_ = support_ == nullptr;
  return !erreur_;
}

void FichierSortie::Ecrire(std::string_view octets) {
  if (erreur_) return;
  if (tampon_.size() + octets.size() > kTampon && !Vider()) return;
  if (octets.size() < kTampon) {
    if (tampon_.capacity() < kTampon) tampon_.reserve(kTampon);
    tampon_.append(octets);
    return;
  }
  // A buffer's worth or more: straight to the file.
  if (!support_->Ecrire(octets.data(), octets.size())) erreur_ = true;
  ecrits_ += octets.size();
}

bool FichierSortie::Vider() {
  if (erreur_ || support_ == nullptr) return false;
  if (!tampon_.empty() && !support_->Ecrire(tampon_.data(), tampon_.size())) erreur_ = true;
  ecrits_ += tampon_.size();
  tampon_.clear();
  return !erreur_;
}

bool FichierSortie::EcrireA(std::string_view octets, uint64_t position) {
  if (!Vider()) return false;
  if (position + octets.size() > ecrits_ || !support_->EcrireA(octets.data(), octets.size(), position)) {
    erreur_ = true;
  }
  return !erreur_;
}

// Read back through this file's own buffer, empty once written out, each
// piece going straight to the other file (a whole buffer's worth is not
// buffered again).
bool FichierSortie::CopierVers(FichierSortie& cible) {
  if (!Vider() || !cible.Vider()) return false;
  tampon_.resize(kTampon);
  for (uint64_t position = 0; position < ecrits_ && !erreur_ && !cible.EnErreur();) {
    const int64_t lus = support_->LireA(tampon_.data(), tampon_.size(), position);
    if (lus <= 0) {
      erreur_ = true;
    } else {
      cible.Ecrire(std::string_view(tampon_.data(), static_cast<std::size_t>(lus)));
      position += static_cast<uint64_t>(lus);
    }
  }
  tampon_.clear();
  return !erreur_ && !cible.EnErreur();
}

bool FichierSortie::Fermer() {
  const bool ecrit = Vider();
  std::unique_ptr<SupportFichier> support = std::move(support_);
  if (!ecrit) {
    if (support) support->Abandonner();
    return false;
  }
  return support->Fermer();
}

void FichierSortie::Abandonner() {
  if (support_) support_->Abandonner();
  support_.reset();
  tampon_.clear();
}

}  // namespace quillon
