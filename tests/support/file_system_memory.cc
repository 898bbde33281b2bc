#include <algorithm>
#include <cstring>

#include "support/file_system_memory.h"

namespace quillon {
namespace {

class SupportMemoire : public SupportFichier {
 public:
  // Reading `*contenu`, or writing into systeme->enCours and put into
  // systeme->fichiers on closing.
  SupportMemoire(std::string nom, const std::string* contenu, SystemeFichiersMemoire* systeme,
                 SystemeFichiersMemoire::Panne panne)
      : nom_(std::move(nom)), contenu_(contenu), systeme_(systeme), panne_(panne) {
    if (systeme_ != nullptr) systeme_->enCours[nom_].clear();
  }
  ~SupportMemoire() override { Abandonner(); }

  int64_t Lire(char* cible, std::size_t taille) override {
    const std::size_t n = std::min(taille, contenu_->size() - position_);
    std::memcpy(cible, contenu_->data() + position_, n);
    position_ += n;
    return static_cast<int64_t>(n);
  }
  bool Ecrire(const char* source, std::size_t taille) override {
    if (systeme_ == nullptr || !Permis(systeme_->enCours[nom_].size() + taille)) return false;
    systeme_->enCours[nom_].append(source, taille);
    return true;
  }
  bool Fermer() override {
    if (systeme_ == nullptr) return true;
    if (panne_.fermeture) {
      Abandonner();
      return false;
    }
    auto enCours = systeme_->enCours.extract(nom_);
    systeme_->fichiers[nom_] = std::move(enCours.mapped());
    systeme_ = nullptr;
    return true;
  }
  void Abandonner() override {
    if (systeme_ != nullptr) systeme_->enCours.erase(nom_);
    systeme_ = nullptr;
  }
  bool MemeFichier(const SupportFichier& autre) const override {
    const auto* m = dynamic_cast<const SupportMemoire*>(&autre);
    return m != nullptr && m->nom_ == nom_;
  }

  int64_t LireA(char* cible, std::size_t taille, uint64_t position) override {
    if (systeme_ == nullptr) return -1;
    const std::string& octets = systeme_->enCours[nom_];
    if (position >= octets.size()) return 0;
    const std::size_t n = std::min<std::size_t>(taille, octets.size() - position);
    std::memcpy(cible, octets.data() + position, n);
    return static_cast<int64_t>(n);
  }
  bool EcrireA(const char* source, std::size_t taille, uint64_t position) override {
    if (systeme_ == nullptr) return false;
    std::string& octets = systeme_->enCours[nom_];
    if (!Permis(std::max<std::size_t>(octets.size(), position + taille))) return false;
    if (octets.size() < position + taille) octets.resize(position + taille);
    std::memcpy(octets.data() + position, source, taille);
    return true;
  }
  int64_t Taille() override {
    return systeme_ == nullptr ? -1 : static_cast<int64_t>(systeme_->enCours[nom_].size());
  }
  bool Tronquer(uint64_t taille) override {
    if (systeme_ == nullptr) return false;
    systeme_->enCours[nom_].resize(taille);
    return true;
  }

 private:
  // Whether the next write, which leaves the file `taille` bytes long, goes
  // through; it counts as one write either way.
  bool Permis(std::size_t taille) {
    const bool permis = panne_.ecritures < 0 || ecritures_ < panne_.ecritures;
    ++ecritures_;
    return permis && (panne_.octets < 0 || taille <= static_cast<uint64_t>(panne_.octets));
  }

  std::string nom_;
  const std::string* contenu_;
  SystemeFichiersMemoire* systeme_;
  std::size_t position_ = 0;
  SystemeFichiersMemoire::Panne panne_;
  int64_t ecritures_ = 0;
};

}  // namespace

std::unique_ptr<SupportFichier> SystemeFichiersMemoire::OuvrirLecture(const std::string& nom) {
  auto it = fichiers.find(nom);
  if (it == fichiers.end()) return nullptr;
  ++lectures[nom];
  return std::make_unique<SupportMemoire>(nom, &it->second, nullptr, Panne{});
}

std::unique_ptr<SupportFichier> SystemeFichiersMemoire::CreerEcriture(
    const std::string& nom, std::span<const SupportFichier* const> proteges) {
  const auto trouvee = pannes.find(nom);
  Panne panne = trouvee != pannes.end() ? trouvee->second : Panne{};
  if (nom.empty() || nom == echecCreation || panne.creation) return nullptr;
  SupportMemoire essai(nom, nullptr, nullptr, Panne{});
  for (const SupportFichier* p : proteges) {
    if (p != nullptr && essai.MemeFichier(*p)) return nullptr;
  }
  if (nom == echecEcriture) panne.ecritures = 0;
  return std::make_unique<SupportMemoire>(nom, nullptr, this, panne);
}

}  // namespace quillon
