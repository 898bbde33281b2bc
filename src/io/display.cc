#include "io/display.h"

#include "io/ansi.h"
#include "io/locale.h"

namespace quillon {

namespace {

std::string Raison(const ErreurFatale& erreur) {
  static constexpr auto kOuvert = Ansi(u8" ne peut pas être ouvert");
  static constexpr auto kCree = Ansi(u8" ne peut pas être créé");
  static constexpr auto kLu = Ansi(u8" ne peut pas être lu");
  static constexpr auto kEcrit = Ansi(u8" ne peut pas être écrit");
  const std::string cause = "Le fichier " + CheminAffichable(erreur.fichier);
  switch (erreur.raison) {
    case RaisonFatale::Ouverture: return cause + kOuvert;
    case RaisonFatale::Creation: return cause + kCree;
    case RaisonFatale::Lecture: return cause + kLu;
    case RaisonFatale::Ecriture: return cause + kEcrit;
  }
  return cause;
}

}  // namespace

std::string CauseFatale(const ErreurFatale& erreur) {
  if (erreur.detail.empty()) return Raison(erreur);
  return Raison(erreur) + " (" + erreur.detail + ")";
}

std::string MessageFatal(const ErreurFatale& erreur) {
  static constexpr auto kFin = Ansi(u8", l'application va s'arrêter");
  return CauseFatale(erreur) + kFin;
}

}  // namespace quillon
