// Fixed-size text buffers for the target line and its pieces. Every field of
// a target line has a bounded width, so the whole line is built in place,
// without allocation, and handed to the target file as one view.
#pragma once

#include <cstddef>
#include <cstring>
#include <span>
#include <string_view>

namespace quillon {

// Writes `texte` right-aligned in the `largeur` bytes at `zone` (blanks on
// the left). A longer text does not fit: the zone is all blanks and the
// result is false, so that the columns after it keep their places.
inline bool PlacerADroite(char* zone, std::size_t largeur, std::string_view texte) {
  if (texte.size() > largeur) {
    std::memset(zone, ' ', largeur);
    return false;
  }
  const std::size_t blancs = largeur - texte.size();
  std::memset(zone, ' ', blancs);
  if (!texte.empty()) std::memcpy(zone + blancs, texte.data(), texte.size());
  return true;
}

// A piece of exactly N bytes, blank until set: a precision ("#.0" in 5) or a
// value code (in 2).
template <std::size_t N>
struct TexteFixe {
  char octets[N];

  TexteFixe() { Effacer(); }
  void Effacer() { std::memset(octets, ' ', N); }
  // Right-aligned; a longer text leaves it blank and gives false.
  bool Placer(std::string_view texte) { return PlacerADroite(octets, N, texte); }
  std::string_view Vue() const { return {octets, N}; }
};

using TextePrecision = TexteFixe<5>;
using TexteValeur = TexteFixe<2>;

// The target line being built. The writers bound each field to its width,
// and the free-text columns come from fixed source columns, so a line stays
// near 100 bytes; anything beyond the capacity would be dropped rather than
// written past the buffer.
class LigneCible {
 public:
  static constexpr std::size_t kCapacite = 256;

  void Effacer() { taille_ = 0; }

  void Ajouter(char c) {
    if (taille_ < kCapacite) octets_[taille_++] = c;
  }

  void Ajouter(std::string_view texte) {
    const std::size_t n = texte.size() < Reste() ? texte.size() : Reste();
    if (n > 0) std::memcpy(octets_ + taille_, texte.data(), n);
    taille_ += n;
  }

  void AjouterBlancs(std::size_t n) {
    if (n > Reste()) n = Reste();
    std::memset(octets_ + taille_, ' ', n);
    taille_ += n;
  }

  // The next `largeur` bytes, for a field written in place; fewer when the
  // capacity is reached.
  std::span<char> Reserver(std::size_t largeur) {
    if (largeur > Reste()) largeur = Reste();
    char* zone = octets_ + taille_;
    taille_ += largeur;
    return {zone, largeur};
  }

  // `texte` right-aligned in `largeur` bytes; a longer text gives `largeur`
  // blanks and false.
  bool AjouterADroite(std::string_view texte, std::size_t largeur) {
    const std::span<char> zone = Reserver(largeur);
    return PlacerADroite(zone.data(), zone.size(), texte);
  }

  std::string_view Texte() const { return {octets_, taille_}; }

 private:
  std::size_t Reste() const { return kCapacite - taille_; }

  char octets_[kCapacite];
  std::size_t taille_ = 0;
};

}  // namespace quillon
