#include "io/display.h"

#include "io/ansi.h"
#include "io/encoding.h"
#include "io/locale.h"
#include "io/translation.h"

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

std::string CauseTraduite(const ErreurFatale& erreur) {
  const char* modele = N_("Le fichier %s ne peut pas être ouvert");
  switch (erreur.raison) {
    case RaisonFatale::Ouverture: break;
    case RaisonFatale::Creation: modele = N_("Le fichier %s ne peut pas être créé"); break;
    case RaisonFatale::Lecture: modele = N_("Le fichier %s ne peut pas être lu"); break;
    case RaisonFatale::Ecriture: modele = N_("Le fichier %s ne peut pas être écrit"); break;
  }
  std::string texte = Formater(modele, {CheminAffichableUtf8(erreur.fichier)});
  if (!erreur.detail.empty()) texte += " (" + Cp1252VersUtf8(erreur.detail) + ")";
  return texte;
}

std::array<std::string, 4> LignesBilan(const ComptesBilan& c) {
  const auto n = [](int64_t v) { return std::to_string(v); };
  return {Formater("%s ligne(s) lues dans le fichier source", {n(c.lues)}),
          Formater("%s ligne(s) ignorée(s) lors de la conversion", {n(c.ignorees)}),
          Formater("%s erreur(s) constatée(s) lors de la lecture du fichier source", {n(c.lecture)}),
          Formater("%s erreur(s) constatée(s) lors de l'écriture dans le fichier cible", {n(c.ecriture)})};
}

}  // namespace quillon
