// The colours of the check report, which the main window's plan and the
// exports' styles take too, so that all of them agree: a colour per theme,
// by the theme's rank among the themes found in the file (sorted by
// number, the tenth rank taking the first colour again), then the marks.
// The themes found are those of every line whose Y and X read, converted,
// skipped or rejected.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillon {

struct Rgb {
  uint8_t r = 0, g = 0, b = 0;
  constexpr uint32_t Argb() const { return 0xFF000000u | uint32_t{r} << 16 | uint32_t{g} << 8 | b; }
};

inline constexpr std::array<Rgb, 10> kCouleursThemes = {{{0x1f, 0x77, 0xb4},
                                                         {0x2c, 0xa0, 0x2c},
                                                         {0x94, 0x67, 0xbd},
                                                         {0x8c, 0x56, 0x4b},
                                                         {0x17, 0xbe, 0xcf},
                                                         {0xbc, 0xbd, 0x22},
                                                         {0xe3, 0x77, 0xc2},
                                                         {0x00, 0x5f, 0x5f},
                                                         {0x6b, 0x8e, 0x23},
                                                         {0x4b, 0x00, 0x82}}};
inline constexpr Rgb kCouleurRejet{0xff, 0x00, 0x00};
inline constexpr Rgb kCouleurDoublon{0xff, 0x8c, 0x00};
inline constexpr Rgb kCouleurProche{0xc0, 0x00, 0xc0};
inline constexpr Rgb kCouleurEloigne{0x00, 0x50, 0xff};
inline constexpr Rgb kCouleurIgnore{0x99, 0x99, 0x99};
inline constexpr Rgb kCouleurGrille{0xe4, 0xe4, 0xe4};
inline constexpr Rgb kCouleurTexte{0x66, 0x66, 0x66};
inline constexpr Rgb kCouleurDensite{0x1f, 0x77, 0xb4};

constexpr Rgb CouleurDuRang(std::size_t rang) { return kCouleursThemes[rang % kCouleursThemes.size()]; }

// The themes found in a file (0 to 255, a theme out of that range taken as
// the nearest), and the rank of each among them.
class ThemesTrouves {
 public:
  void Ajouter(int theme) { presents_[Indice(theme)] = true; }
  void Ajouter(const ThemesTrouves& autres) {
    for (std::size_t t = 0; t < presents_.size(); ++t) presents_[t] = presents_[t] || autres.presents_[t];
  }
  bool Contient(int theme) const { return presents_[Indice(theme)]; }
  // Its rank among the themes found, by number; its own when not found.
  std::size_t Rang(int theme) const {
    const std::size_t i = Indice(theme);
    return static_cast<std::size_t>(std::count(presents_.begin(), presents_.begin() + static_cast<std::ptrdiff_t>(i), true));
  }
  Rgb Couleur(int theme) const { return CouleurDuRang(Rang(theme)); }
  std::vector<int> Liste() const {
    std::vector<int> themes;
    for (std::size_t t = 0; t < presents_.size(); ++t) {
      if (presents_[t]) themes.push_back(static_cast<int>(t));
    }
    return themes;
  }

 private:
  static std::size_t Indice(int theme) { return static_cast<std::size_t>(std::clamp(theme, 0, 255)); }
  std::array<bool, 256> presents_{};
};

}  // namespace quillon
