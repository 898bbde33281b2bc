#include "report/collect.h"

#include <algorithm>
#include <cstring>


namespace quillon {

void Collecte::Debut() {
  lignes_.clear();
  messages_.clear();
  sources_.clear();
  textes_.clear();
  tailleSources_ = 0;
  tronques_ = {};
}

uint16_t Collecte::Interner(std::string_view texte) {
  const auto trouve = indexFixes_.find(std::string(texte));
  if (trouve != indexFixes_.end()) return trouve->second;
  if (fixes_.size() >= 0xFFFF) {  // never with the runs' own messages
    ++tronques_.fixes;
    return 0;
  }
  const auto index = static_cast<uint16_t>(fixes_.size());
  fixes_.emplace_back(texte);
  indexFixes_.emplace(texte, index);
  return index;
}

// A rejected field's message: its head and end kept once, its text in the
// pool (200 bytes of it at most).
void Collecte::Retenir(const MessageLigne& message) {
  if (fixes_.empty()) Interner("");
  MessageCollecte m;
  m.lecture = message.lecture;
  m.tete = Interner(message.nombre > 0 ? message.morceaux[0] : "");
  if (message.nombre > 1) {
    const std::string_view texte = message.morceaux[1].substr(0, kLongueurTexte);
    if (texte.size() < message.morceaux[1].size()) ++tronques_.textes;
    m.debutTexte = textes_.Garder(texte);
    if (m.debutTexte == PoolTextes::kAucun && !texte.empty()) ++tronques_.pool;
    m.longueurTexte = static_cast<uint16_t>(texte.size());
  }
  if (message.nombre > 2) m.fin = Interner(message.morceaux[2]);
  m.ligne = static_cast<uint32_t>(lignes_.size());
  messages_.push_back(m);
}

void Collecte::Ligne(const LigneObservee& vue) {
  const Point& p = *vue.point;
  LigneCollectee l;
  if (vue.Coordonnees()) {
    l.y = p.CoordY;
    l.x = p.CoordX;
    l.drapeaux |= LigneCollectee::kCoordonnees;
  }
  l.altitude = p.Altitude;
  const std::string_view numero = std::string_view(p.NoPoint).substr(0, LigneCollectee::kNumeroMax);
  std::memcpy(l.numero, numero.data(), numero.size());
  l.longueurNumero = static_cast<uint8_t>(numero.size());
  l.commune = p.NoCommune;
  l.plan = p.NoPlan;
  l.theme = static_cast<uint8_t>(std::clamp(p.Theme, 0, 255));
  l.nature = static_cast<uint8_t>(std::clamp(p.Nature, 0, 255));
  if (vue.Identite()) l.drapeaux |= LigneCollectee::kIdentite;
  l.drapeaux |= static_cast<uint8_t>(static_cast<uint8_t>(vue.issue) << 2);
  l.premierMessage = static_cast<uint32_t>(messages_.size());
  for (const MessageLigne& m : vue.messages) {
    if (m.erreur) Retenir(m);
  }
  if (vue.issue == IssueLigne::Rejetee) GarderSource(vue.texte);
  lignes_.push_back(l);
}

// The rejected source line, its first kLongueurSource bytes, while the
// lines kept stay within kTailleSources.
void Collecte::GarderSource(std::string_view ligne) {
  if (tailleSources_ >= kTailleSources) {
    ++tronques_.sources;
    return;
  }
  const std::string_view texte = ligne.substr(0, kLongueurSource);
  if (texte.size() < ligne.size()) ++tronques_.textes;
  const uint32_t debut = textes_.Garder(texte);
  if (debut == PoolTextes::kAucun && !texte.empty()) ++tronques_.pool;
  sources_.push_back({static_cast<uint32_t>(lignes_.size()), debut, static_cast<uint32_t>(texte.size())});
  tailleSources_ += texte.size();
}

std::size_t Collecte::FinMessages(std::size_t i) const {
  return i + 1 < lignes_.size() ? lignes_[i + 1].premierMessage : messages_.size();
}

std::string Collecte::TexteMessage(const MessageCollecte& m) const {
  std::string texte = fixes_[m.tete];
  texte.append(Texte(m.debutTexte, m.longueurTexte));
  texte += fixes_[m.fin];
  return texte;
}

std::string_view Collecte::Champ(const MessageCollecte& m) const {
  std::string_view tete = fixes_[m.tete];
  if (m.lecture && tete.ends_with(": '")) tete.remove_suffix(3);
  return tete;
}

}  // namespace quillon
