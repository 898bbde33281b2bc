// The point record shared by every line reader and writer, and its codes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

// One surveyed point. A run zeroes it once and reuses it for every line:
// a reader overwrites only the fields it owns, the others keep the values of
// an earlier line. An altitude of exactly 0 means "no altitude".
struct Point {
  int32_t Theme = 0;        // 10 = blank theme column
  int16_t NoCommune = 0;
  int16_t NoPlan = 0;
  std::string NoPoint;      // the column as read, blanks included
  int32_t Nature = 0;       // 1 to 6
  int32_t FichePFP3 = 0;    // 1 "O", 2 "N", 3 blank, 0 never set
  int32_t Fiabilite = 0;    // 3 for "R"
  int16_t Valeur = 0;       // value code
  double CoordY = 0;
  double CoordX = 0;
  double Altitude = 0;      // 0 = no altitude
  std::string Commentaire;
  std::string Type;
  double PrecPlan = 0;
  int32_t FiabPlan = 0;     // 1 "O", 2 "N", 0 never set
  double PrecAlt = 0;
  int32_t FiabAlt = 0;      // 1 "O", 2 "N", 0 never set
};

// The fields of a point line, for whoever must tell which of them a reader
// rejected or a writer could not write: a bit each in ChampsPoint. The log
// hears them by number (Journal's `champ`).
enum class ChampPoint : uint8_t {
  Theme,
  Commune,
  Plan,
  NumeroPoint,
  Nature,
  FichePFP3,
  Fiabilite,
  Valeur,
  CoordY,
  CoordX,
  Altitude,
  Commentaire,
  Type,
  PrecPlan,
  FiabPlan,
  PrecAlt,
  FiabAlt,
};
using ChampsPoint = uint32_t;
constexpr ChampsPoint Bit(ChampPoint champ) { return ChampsPoint{1} << static_cast<int>(champ); }
constexpr uint8_t Numero(ChampPoint champ) { return static_cast<uint8_t>(champ); }
// The point's identity, and its place.
constexpr ChampsPoint kIdentitePoint =
    Bit(ChampPoint::Theme) | Bit(ChampPoint::Commune) | Bit(ChampPoint::Plan) | Bit(ChampPoint::NumeroPoint);
constexpr ChampsPoint kCoordonneesPoint = Bit(ChampPoint::CoordY) | Bit(ChampPoint::CoordX);

// Yes/no codes of FichePFP3, FiabPlan and FiabAlt.
inline constexpr int32_t kOui = 1;
inline constexpr int32_t kNon = 2;
inline constexpr int32_t kBlanc = 3;  // FichePFP3 only

// Theme given to a blank theme column.
inline constexpr int32_t kThemeBlanc = 10;

// Theme groups: the theme of situation points.
inline constexpr int32_t kGroupeCS = 2;
inline constexpr int32_t kGroupeOD = 3;

// The words that name the scales and the theme groups, in the order of the
// scale classes 1 to 6 and of the groups CS and OD: the console's words and
// the entries of the option dialogs' lists. (Not inline: mingw's linker
// warns about inline variables under link-time optimisation.)
constexpr std::array<std::string_view, 6> kMotsEchelle = {"250", "500", "1000", "2000", "4000", "5000"};
constexpr std::array<std::string_view, 2> kMotsTheme = {"CS", "OD"};

// The scale class of a scale word, character for character; 0 for any
// other word.
int16_t ClasseEchellePourMot(std::string_view mot);
// The theme group of a theme word in any mix of capitals and small letters;
// 0 for any other word.
int32_t GroupeThemePourMot(std::string_view mot);

// A value code is valid from 11 to 89, with a last digit of 1 to 7 up to 57
// and of 2 to 9 from 58 on (so 58 and 59 are valid, 60 and 61 are not).
bool EstValeurValide(int valeur);

// The seven base themes that the MD01 conversion hands to its writer.
bool EstThemeMD01(int32_t theme);

}  // namespace quillon
