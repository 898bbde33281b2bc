#include "io/temporary_files.h"

#include "io/file_system.h"

#include <atomic>
#include <charconv>
#include <chrono>
#include <cstring>

namespace quillon {

namespace {

// Fixed places, so that a signal handler reads them without a lock or an
// allocation: a place is written while free, then marked pending.
constexpr int kPlaces = 128;
constexpr std::size_t kLongueurChemin = 4096;
enum : int { kLibre = 0, kPrise = 1, kEnCours = 2 };

std::atomic<int> etats[kPlaces];
char chemins[kPlaces][kLongueurChemin];

// A mix of the essay number, the clock and the address of a local, turned
// into six letters or digits.
std::string Suffixe(uint64_t essai) {
  static constexpr char kAlphabet[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  static std::atomic<uint64_t> compteur{0};
  int pile = 0;
  uint64_t x = static_cast<uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
               (reinterpret_cast<uintptr_t>(&pile) << 16) ^ (compteur.fetch_add(1) * 0x9E3779B97F4A7C15ull) ^
               (essai * 0xBF58476D1CE4E5B9ull);
  std::string texte(6, ' ');
  for (char& c : texte) {
    x ^= x >> 31;
    x *= 0x94D049BB133111EBull;
    c = kAlphabet[(x >> 33) % (sizeof kAlphabet - 1)];
  }
  return texte;
}

std::string Hexadecimal(uint32_t valeur) {
  static constexpr char kChiffres[] = "0123456789abcdef";
  std::string texte(8, '0');
  for (int i = 7; i >= 0; --i, valeur >>= 4) texte[static_cast<std::size_t>(i)] = kChiffres[valeur & 15];
  return texte;
}

}  // namespace

std::string NomTemporaire(const std::string& chemin, uint64_t essai) {
  const std::string auteur =
      ".quillon-" + std::to_string(ProcessusCourant()) + "-" + Hexadecimal(HoteCourant()) + "-";
  const std::size_t kNomMax = 255 - auteur.size() - (sizeof "XXXXXX.tmp" - 1);
  const std::size_t debutNom = chemin.find_last_of("/\\") + 1;  // 0 when there is no folder
  const std::size_t longueurNom = chemin.size() - debutNom;
  std::string nom = chemin.substr(0, debutNom + (longueurNom < kNomMax ? longueurNom : kNomMax));
  return nom + auteur + Suffixe(essai) + ".tmp";
}

// "<name>.quillon-<process>-<host>-XXXXXX.tmp": the process in decimal, the
// host in eight hexadecimal digits, six letters or digits.
std::optional<AuteurTemporaire> AuteurDe(std::string_view nom) {
  if (!nom.ends_with(".tmp")) return std::nullopt;
  nom.remove_suffix(4);
  if (nom.size() < 7 || nom[nom.size() - 7] != '-') return std::nullopt;
  nom.remove_suffix(7);
  const std::size_t tiret = nom.rfind('-');
  const std::size_t debut = nom.rfind(".quillon-");
  if (tiret == std::string_view::npos || debut == std::string_view::npos || tiret < debut + 9) return std::nullopt;
  const std::string_view processus = nom.substr(debut + 9, tiret - debut - 9);
  const std::string_view hote = nom.substr(tiret + 1);
  AuteurTemporaire auteur;
  if (hote.size() != 8 || processus.empty()) return std::nullopt;
  auto [finP, errP] = std::from_chars(processus.data(), processus.data() + processus.size(), auteur.processus);
  auto [finH, errH] = std::from_chars(hote.data(), hote.data() + hote.size(), auteur.hote, 16);
  if (errP != std::errc() || finP != processus.data() + processus.size() || errH != std::errc() ||
      finH != hote.data() + hote.size()) {
    return std::nullopt;
  }
  return auteur;
}

bool TemporaireAbandonne(std::string_view nom) {
  const std::optional<AuteurTemporaire> auteur = AuteurDe(nom);
  return auteur && auteur->hote == HoteCourant() && auteur->processus != ProcessusCourant() &&
         !ProcessusVivant(auteur->processus);
}

int RetenirTemporaire(const std::string& chemin) {
  if (chemin.size() >= kLongueurChemin) return -1;
  for (int i = 0; i < kPlaces; ++i) {
    int libre = kLibre;
    if (!etats[i].compare_exchange_strong(libre, kPrise)) continue;
    std::memcpy(chemins[i], chemin.c_str(), chemin.size() + 1);
    etats[i].store(kEnCours);
    return i;
  }
  return -1;
}

void OublierTemporaire(int place) {
  if (place >= 0 && place < kPlaces) etats[place].store(kLibre);
}

void Temporaire::Oublier(bool supprimer) {
  if (supprimer && !chemin_.empty()) SupprimerFichier(chemin_.c_str());
  chemin_.clear();
  OublierTemporaire(place_);
  place_ = -1;
}

void SupprimerTemporaires() {
  for (int i = 0; i < kPlaces; ++i) {
    if (etats[i].load() == kEnCours) SupprimerFichier(chemins[i]);
  }
}

}  // namespace quillon
