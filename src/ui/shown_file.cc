#include "ui/shown_file.h"

#include <algorithm>
#include <charconv>

#include "conversion/run_settings.h"
#include "io/encoding.h"
#include "io/translation.h"
#include "ui/forms.h"

namespace quillon {
namespace {

std::string Distance(double metres) {
  char texte[32];
  const auto r = std::to_chars(texte, texte + sizeof texte, Arrondi(metres), std::chars_format::fixed, 4);
  std::string s(texte, r.ptr);
  while (s.back() == '0') s.pop_back();
  if (s.back() == '.') s.pop_back();
  return s + " m";
}

std::string Numero(uint32_t ligne) { return std::to_string(ligne + 1); }

}  // namespace

std::string TexteIdentite(const Collecte& c, uint32_t ligne) {
  const LigneCollectee& l = c.Lignes()[ligne];
  if (!l.Identite()) return "?";
  std::string_view numero = l.Numero();
  while (!numero.empty() && numero.front() == ' ') numero.remove_prefix(1);
  while (!numero.empty() && numero.back() == ' ') numero.remove_suffix(1);
  return std::to_string(l.theme) + "/" + std::to_string(l.commune) + "/" + std::to_string(l.plan) + "/" +
         Cp1252VersUtf8(numero);
}

bool FichierMontre::Lire(const LigneFichier& f, SystemeFichiers& systeme, std::string& erreur,
                         const std::atomic<bool>* arret) {
  SystemeSansEcriture sansEcriture(systeme);
  AffichageRetenu affichage;
  ReglagesExecution r;
  r.affichage = &affichage;
  r.systeme = &sansEcriture;
  r.arret = arret;
  r.DefinirSource(f.source);
  r.FichierCible.Nom = f.source + ".quillon-lecture";
  collecte_ = std::make_unique<CollecteControlee>(kToleranceDefaut);
  r.observateur = collecte_.get();
  if (!Convertir(r, f.conversion, f.options)) {
    erreur = CauseTraduite(affichage.Erreur());
    collecte_.reset();
    return false;
  }
  controles_ = collecte_->Terminer();
  plan_ = PlanCarte(collecte_->Lignes(), controles_);
  Lister();
  return true;
}

void FichierMontre::Lister() {
  const Collecte& c = collecte_->Lignes();
  rejets_.clear();
  constats_.clear();
  for (std::size_t i = 0; i < c.Lignes().size() && rejets_.size() < kEntreesMax; ++i) {
    if (c.Lignes()[i].Issue() != IssueLigne::Rejetee) continue;
    std::string texte;
    for (std::size_t m = c.Lignes()[i].premierMessage; m < c.FinMessages(i); ++m) {
      texte += (texte.empty() ? "" : " ; ") + Cp1252VersUtf8(c.TexteMessage(c.Messages()[m]));
    }
    rejets_.push_back({uint32_t(i), Formater("ligne %1$s — %2$s — %3$s",
                                             {Numero(uint32_t(i)), TexteIdentite(c, uint32_t(i)), texte})});
  }
  for (const Doublon& d : controles_.doublons) {
    if (constats_.size() >= kEntreesMax) break;
    const uint32_t premiere = controles_.membresDoublons[d.debut];
    std::string lignes;
    for (uint32_t k = 0; k < d.nombre && k < 10; ++k) {
      if (k > 0) lignes += ' ';
      lignes += Numero(controles_.membresDoublons[d.debut + k]);
    }
    constats_.push_back({premiere, Formater("en double : %1$s, lignes %2$s", {TexteIdentite(c, premiere), lignes})});
  }
  for (std::size_t k = 0; k < controles_.proches.size() && constats_.size() < kEntreesMax; ++k) {
    const PointsProches& p = controles_.proches[k];
    constats_.push_back(
        {p.a, Formater("proches : lignes %1$s et %2$s, %3$s", {Numero(p.a), Numero(p.b), Distance(p.distance)})});
  }
  for (std::size_t k = 0; k < controles_.eloignes.size() && constats_.size() < kEntreesMax; ++k) {
    const uint32_t l = controles_.eloignes[k];
    constats_.push_back({l, Formater("éloigné : ligne %1$s — %2$s", {Numero(l), TexteIdentite(c, l)})});
  }
}

std::string FichierMontre::TexteDeLaLigne(uint32_t ligne) const {
  const Collecte& c = collecte_->Lignes();
  if (ligne >= c.Lignes().size()) return {};
  std::string texte = Formater("ligne %1$s — %2$s", {Numero(ligne), TexteIdentite(c, ligne)});
  for (std::size_t m = c.Lignes()[ligne].premierMessage; m < c.FinMessages(ligne); ++m) {
    texte += "\n" + Cp1252VersUtf8(c.TexteMessage(c.Messages()[m]));
  }
  return texte;
}

std::string TitreListe(bool rejets, const FichierMontre* montre) {
  std::string titre(Traduire(rejets ? kTitreRejets : kTitreConstats));
  if (montre == nullptr) return titre;
  return titre + " (" + std::to_string((rejets ? montre->Rejets() : montre->Constats()).size()) + ")";
}

}  // namespace quillon
