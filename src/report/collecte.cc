#include "report/collecte.h"

#include <algorithm>
#include <cstring>

#include "formats/field_readers.h"

namespace quillon {
namespace {

bool TeteIdentite(std::string_view tete) {
  return tete == kTeteTheme.vue() || tete == kTeteCommune.vue() || tete == kTetePlan.vue() ||
         tete == kTeteNumeroPoint.vue();
}

}  // namespace

void Collecte::Debut() {
  lignes_.clear();
  messages_.clear();
  sources_.clear();
  textes_.clear();
  tailleSources_ = 0;
  messagesVus_ = 0;
  identiteRejetee_ = false;
}

uint16_t Collecte::Interner(std::string_view texte) {
  const auto trouve = indexFixes_.find(std::string(texte));
  if (trouve != indexFixes_.end()) return trouve->second;
  if (fixes_.size() >= 0xFFFF) return 0;  // never with the runs' own messages
  const auto index = static_cast<uint16_t>(fixes_.size());
  fixes_.emplace_back(texte);
  indexFixes_.emplace(texte, index);
  return index;
}

void Collecte::ChampRejete(bool lecture, std::initializer_list<std::string_view> message) {
  if (fixes_.empty()) Interner("");
  MessageCollecte m;
  m.lecture = lecture;
  const std::string_view* morceau = message.begin();
  m.tete = Interner(message.size() > 0 ? morceau[0] : "");
  if (message.size() > 1) {
    const std::string_view texte = morceau[1].substr(0, 200);
    m.debutTexte = textes_.Garder(texte);
    m.longueurTexte = static_cast<uint16_t>(texte.size());
  }
  if (message.size() > 2) m.fin = Interner(morceau[2]);
  if (lecture && TeteIdentite(morceau[0])) identiteRejetee_ = true;
  m.ligne = static_cast<uint32_t>(lignes_.size());
  messages_.push_back(m);
}

void Collecte::Ligne(const LigneObservee& vue) {
  const Point& p = *vue.point;
  LigneCollectee l;
  if (vue.coordonnees) {
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
  if (!identiteRejetee_) l.drapeaux |= LigneCollectee::kIdentite;
  l.drapeaux |= static_cast<uint8_t>(static_cast<uint8_t>(vue.issue) << 2);
  // The messages heard since the line before are this line's.
  l.premierMessage = static_cast<uint32_t>(messagesVus_);
  messagesVus_ = messages_.size();
  identiteRejetee_ = false;
  if (vue.issue == IssueLigne::Rejetee && tailleSources_ < kTailleSources) {
    const std::string_view texte = vue.texte.substr(0, kLongueurSource);
    sources_.push_back(
        {static_cast<uint32_t>(lignes_.size()), textes_.Garder(texte), static_cast<uint32_t>(texte.size())});
    tailleSources_ += texte.size();
  }
  lignes_.push_back(l);
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
