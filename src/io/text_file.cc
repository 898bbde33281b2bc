#include "io/text_file.h"

#include <cstring>

namespace quillon {
namespace {
constexpr std::size_t kTailleTampon = 1 << 16;
}

void FluxTexte::Attacher(std::unique_ptr<SupportFichier> support, bool ecriture) {
  support_ = std::move(support);
  ecriture_ = ecriture;
  tampon_.assign(kTailleTampon, '\0');
  debut_ = fin_ = 0;
  finAtteinte_ = false;
  erreur_ = false;
  ligne_ = 1;
}

bool FluxTexte::Remplir() {
  if (finAtteinte_ || erreur_ || !support_) return false;
  if (debut_ > 0) {
    std::memmove(tampon_.data(), tampon_.data() + debut_, fin_ - debut_);
    fin_ -= debut_;
    debut_ = 0;
  }
  if (fin_ == tampon_.size()) {  // a line longer than the buffer
    if (fin_ > kLongueurLigneMax + 1) return TropLongue();  // its CR aside
    tampon_.resize(tampon_.size() * 2);
  }
  const int64_t n = support_->Lire(tampon_.data() + fin_, tampon_.size() - fin_);
  if (n < 0) {
    erreur_ = true;
    return false;
  }
  if (n == 0) {
    finAtteinte_ = true;
    return false;
  }
  fin_ += static_cast<std::size_t>(n);
  return true;
}

bool FluxTexte::AtEndOfStream() {
  if (debut_ < fin_) return false;
  return !Remplir();
}

bool FluxTexte::ReadLine(std::string_view& ligne) {
  std::size_t cherche = debut_;
  for (;;) {
    const void* lf = std::memchr(tampon_.data() + cherche, '\n', fin_ - cherche);
    if (lf != nullptr) {
      const std::size_t pos = static_cast<const char*>(lf) - tampon_.data();
      std::size_t finLigne = pos;
      if (finLigne > debut_ && tampon_[finLigne - 1] == '\r') --finLigne;
      if (finLigne - debut_ > kLongueurLigneMax) return TropLongue();
      ligne = std::string_view(tampon_.data() + debut_, finLigne - debut_);
      debut_ = pos + 1;
      ++ligne_;
      return true;
    }
    const std::size_t dejaVu = fin_ - debut_;
    if (!Remplir()) break;
    cherche = debut_ + dejaVu;  // the pending bytes moved to the front
  }
  if (erreur_ || debut_ == fin_) return false;
  if (fin_ - debut_ > kLongueurLigneMax) return TropLongue();
  // Last line, without line end: the counter stays where it is.
  ligne = std::string_view(tampon_.data() + debut_, fin_ - debut_);
  debut_ = fin_;
  return true;
}

bool FluxTexte::TropLongue() {
  erreur_ = true;
  return false;
}

bool FluxTexte::Preparer(std::size_t taille) {
  if (erreur_ || !support_) {
    erreur_ = true;
    return false;
  }
  if (fin_ + taille <= tampon_.size()) return true;
  return Vider() && taille <= tampon_.size();
}

bool FluxTexte::Direct(std::string_view texte) {
  if (!erreur_ && !support_->Ecrire(texte.data(), texte.size())) erreur_ = true;
  return !erreur_;
}

// Not Write then EndLine: one room check for the line and its end, on the
// path every target line takes.
void FluxTexte::WriteLine(std::string_view texte) {
  if (!Preparer(texte.size() + 2)) {
    if (!erreur_ && Direct(texte)) Direct("\r\n");
    return;
  }
  std::memcpy(tampon_.data() + fin_, texte.data(), texte.size());
  fin_ += texte.size();
  tampon_[fin_++] = '\r';
  tampon_[fin_++] = '\n';
}

void FluxTexte::Write(std::string_view texte) {
  if (!Preparer(texte.size())) {
    if (!erreur_) Direct(texte);
    return;
  }
  if (!texte.empty()) std::memcpy(tampon_.data() + fin_, texte.data(), texte.size());
  fin_ += texte.size();
}

bool FluxTexte::Vider() {
  if (erreur_) return false;
  if (fin_ > 0) {
    if (!support_->Ecrire(tampon_.data(), fin_)) erreur_ = true;
    fin_ = 0;
  }
  return !erreur_;
}

bool FluxTexte::Close() {
  if (!support_) return false;
  const bool ok = ecriture_ ? Vider() : !erreur_;
  if (ecriture_ && !ok) {
    Abandonner();
    return false;
  }
  const bool ferme = support_->Fermer();
  Liberer();
  return ok && ferme;
}

void FluxTexte::Abandonner() {
  if (!support_) return;
  support_->Abandonner();
  Liberer();
}

void FluxTexte::Liberer() {
  support_.reset();
  tampon_.clear();
  tampon_.shrink_to_fit();
}

bool OuvrirFichierLecture(FluxTexte& flux, const std::string& nom, SystemeFichiers& systeme) {
  auto support = systeme.OuvrirLecture(nom);
  if (!support) return false;
  flux.Attacher(std::move(support), false);
  return true;
}

bool CreerFichierEcriture(FluxTexte& flux, const std::string& nom, SystemeFichiers& systeme,
                          std::initializer_list<const FluxTexte*> proteges) {
  const SupportFichier* ouverts[4] = {};
  std::size_t n = 0;
  for (const FluxTexte* p : proteges) {
    if (p != nullptr && p->Support() != nullptr && n < 4) ouverts[n++] = p->Support();
  }
  auto support = systeme.CreerEcriture(nom, std::span<const SupportFichier* const>(ouverts, n));
  if (!support) return false;
  flux.Attacher(std::move(support), true);
  return true;
}

bool FermerFichier(FluxTexte& flux) { return flux.Close(); }

void AbandonnerFichier(FluxTexte& flux) { flux.Abandonner(); }

bool EcrireFichier(SystemeFichiers& systeme, const std::string& chemin, std::string_view octets) {
  const std::unique_ptr<SupportFichier> fichier = systeme.CreerEcriture(chemin, {});
  if (fichier == nullptr) return false;
  if (!fichier->Ecrire(octets.data(), octets.size())) {
    fichier->Abandonner();
    return false;
  }
  return fichier->Fermer();
}

}  // namespace quillon
