#include "conversion/observer.h"

namespace quillon {

void AjouterMessages(std::string& sortie, std::span<const MessageLigne> messages, std::string_view separateur,
                     bool prefixe) {
  for (std::size_t k = 0; k < messages.size(); ++k) {
    const MessageLigne& m = messages[k];
    if (k > 0) sortie += separateur;
    if (prefixe) sortie += m.lecture ? "LECTURE: " : "ECRITURE: ";
    for (std::size_t i = 0; i < m.nombre; ++i) sortie += m.morceaux[i];
  }
}

void RecueilLigne::Message(const MessageJournal& m) {
  Place place;
  place.message.lecture = m.lecture;
  place.message.erreur = m.erreur;
  place.message.champ = static_cast<ChampPoint>(m.champ);
  for (const std::string_view morceau : m.morceaux) {
    if (place.message.nombre == place.debuts.size()) break;
    place.debuts[place.message.nombre] = static_cast<uint32_t>(textes_.size());
    place.message.morceaux[place.message.nombre++] = {nullptr, morceau.size()};
    textes_ += morceau;
  }
  places_.push_back(place);
  if (!m.erreur) return;
  erreurs_ = true;
  (m.lecture ? illisibles_ : nonEcrits_) |= ChampsPoint{1} << m.champ;
}

void RecueilLigne::Effacer() {
  textes_.clear();
  places_.clear();
  illisibles_ = nonEcrits_ = 0;
  erreurs_ = ignoree_ = false;
}

// The views are made once the line is over: its texts no longer move.
std::span<const MessageLigne> RecueilLigne::Messages() {
  messages_.clear();
  for (const Place& p : places_) {
    MessageLigne m = p.message;
    for (std::size_t i = 0; i < m.nombre; ++i) m.morceaux[i] = {textes_.data() + p.debuts[i], m.morceaux[i].size()};
    messages_.push_back(m);
  }
  return messages_;
}

}  // namespace quillon
