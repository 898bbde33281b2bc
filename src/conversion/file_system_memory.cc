#include <algorithm>
#include <cstring>

#include "conversion/file_system.h"

namespace quillon {
namespace {

class SupportMemoire : public SupportFichier {
 public:
  SupportMemoire(std::string nom, std::string* contenu, bool echecEcriture)
      : nom_(std::move(nom)), contenu_(contenu), echecEcriture_(echecEcriture) {}

  long Lire(char* destination, std::size_t taille) override {
    const std::size_t n = std::min(taille, contenu_->size() - position_);
    std::memcpy(destination, contenu_->data() + position_, n);
    position_ += n;
    return static_cast<long>(n);
  }
  bool Ecrire(const char* source, std::size_t taille) override {
    if (echecEcriture_) return false;
    contenu_->append(source, taille);
    return true;
  }
  bool Fermer() override { return true; }
  bool MemeFichier(const SupportFichier& autre) const override {
    const auto* m = dynamic_cast<const SupportMemoire*>(&autre);
    return m != nullptr && m->nom_ == nom_;
  }

 private:
  std::string nom_;
  std::string* contenu_;
  std::size_t position_ = 0;
  bool echecEcriture_;
};

}  // namespace

std::unique_ptr<SupportFichier> SystemeFichiersMemoire::OuvrirLecture(const std::string& nom) {
  auto it = fichiers.find(nom);
  if (it == fichiers.end()) return nullptr;
  return std::make_unique<SupportMemoire>(nom, &it->second, false);
}

std::unique_ptr<SupportFichier> SystemeFichiersMemoire::CreerEcriture(
    const std::string& nom, std::span<const SupportFichier* const> proteges) {
  if (nom.empty() || nom == echecCreation) return nullptr;
  SupportMemoire essai(nom, nullptr, false);
  for (const SupportFichier* p : proteges) {
    if (p != nullptr && essai.MemeFichier(*p)) return nullptr;
  }
  std::string& contenu = fichiers[nom];
  contenu.clear();
  return std::make_unique<SupportMemoire>(nom, &contenu, nom == echecEcriture);
}

}  // namespace quillon
