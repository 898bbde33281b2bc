// Field readers of the value (.ptv) and precision (.ptp) lines.
//
// Each reader cuts its column range out of the line, converts and checks it,
// stores it in its field of the point, and on rejection logs
//   LECTURE: ligne N: <head><text>' n'est pas valide
// counted as a reading error, and returns false. A reader that converts to a
// number stores it before checking its range; a failed conversion stores
// nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "io/journal.h"
#include "io/ansi.h"
#include "model/point.h"

namespace quillon {

// A message head, and the field it names: what the log is told along with
// a rejected field.
struct TeteChamp {
  ChampPoint champ;
  std::string_view texte;
};

// Message heads, shared with the DC readers.
namespace textes {
inline constexpr auto kTheme = Ansi(u8"Le numéro de thème: '");
inline constexpr auto kCommune = Ansi(u8"Le numéro de commune: '");
inline constexpr auto kPlan = Ansi(u8"Le numéro de plan: '");
inline constexpr auto kNumeroPoint = Ansi(u8"Le numéro de point: '");
inline constexpr auto kNature = Ansi(u8"La nature: '");
inline constexpr auto kFichePFP3 = Ansi(u8"La fiche PFP3: '");
inline constexpr auto kFiabilite = Ansi(u8"La fiabilite: '");
inline constexpr auto kFiabPlan = Ansi(u8"La fiabilite planimétrique: '");
inline constexpr auto kPrecPlan = Ansi(u8"La précision planimétrique: '");
inline constexpr auto kValeur = Ansi(u8"La valeur: '");
inline constexpr auto kCoordonneeY = Ansi(u8"La coordonnée Y: '");
inline constexpr auto kCoordonneeX = Ansi(u8"La coordonnée X: '");
inline constexpr auto kAltitude = Ansi(u8"L'altitude: '");
inline constexpr auto kFiabAlt = Ansi(u8"La fiabilite altimétrique: '");
inline constexpr auto kPrecAlt = Ansi(u8"La précision altimétrique: '");
}  // namespace textes
inline constexpr TeteChamp kTeteTheme{ChampPoint::Theme, textes::kTheme};
inline constexpr TeteChamp kTeteCommune{ChampPoint::Commune, textes::kCommune};
inline constexpr TeteChamp kTetePlan{ChampPoint::Plan, textes::kPlan};
inline constexpr TeteChamp kTeteNumeroPoint{ChampPoint::NumeroPoint, textes::kNumeroPoint};
inline constexpr TeteChamp kTeteNature{ChampPoint::Nature, textes::kNature};
inline constexpr TeteChamp kTeteFichePFP3{ChampPoint::FichePFP3, textes::kFichePFP3};
inline constexpr TeteChamp kTeteFiabilite{ChampPoint::Fiabilite, textes::kFiabilite};
inline constexpr TeteChamp kTeteFiabPlan{ChampPoint::FiabPlan, textes::kFiabPlan};
inline constexpr TeteChamp kTetePrecPlan{ChampPoint::PrecPlan, textes::kPrecPlan};
inline constexpr TeteChamp kTeteValeur{ChampPoint::Valeur, textes::kValeur};
inline constexpr TeteChamp kTeteCoordonneeY{ChampPoint::CoordY, textes::kCoordonneeY};
inline constexpr TeteChamp kTeteCoordonneeX{ChampPoint::CoordX, textes::kCoordonneeX};
inline constexpr TeteChamp kTeteAltitude{ChampPoint::Altitude, textes::kAltitude};
inline constexpr TeteChamp kTeteFiabAlt{ChampPoint::FiabAlt, textes::kFiabAlt};
inline constexpr TeteChamp kTetePrecAlt{ChampPoint::PrecAlt, textes::kPrecAlt};

// Stores a text field as read. (Plain assign() of a view makes GCC 12 warn
// falsely about the copy's size once it is inlined across files.)
void CopierTexte(std::string& champ, std::string_view texte);

// Logs "<tete><texte>' n'est pas valide" as a reading error; returns false.
bool RejeterChamp(Journal& journal, const TeteChamp& tete, std::string_view texte);
// The same with another tail ("' doit être au millimètre").
bool RejeterChamp(Journal& journal, const TeteChamp& tete, std::string_view texte, std::string_view fin);

bool LireTheme(std::string_view ligne, int32_t& theme, Journal& journal);
bool LireCommune(std::string_view ligne, int16_t& commune, Journal& journal);
bool LirePlan(std::string_view ligne, int16_t& plan, Journal& journal);
bool LireNumeroPoint(std::string_view ligne, std::string& numero, Journal& journal);
bool LireNature(std::string_view ligne, int32_t& nature, Journal& journal);
bool LireFichePFP3(std::string_view ligne, int32_t& fiche, Journal& journal);
bool LireFiabilite(std::string_view ligne, int32_t& fiabilite, Journal& journal);
bool LireFiabPlan(std::string_view ligne, int32_t& fiabPlan, Journal& journal);
bool LirePrecPlan(std::string_view ligne, double& precPlan, Journal& journal);
bool LireValeur(std::string_view ligne, int16_t& valeur, Journal& journal);
bool LireCoordonneeY(std::string_view ligne, double& y, Journal& journal);
bool LireCoordonneeX(std::string_view ligne, double& x, Journal& journal);
bool LireAltitude(std::string_view ligne, double& altitude, Journal& journal);
bool LireFiabAlt(std::string_view ligne, double altitude, int32_t& fiabAlt, Journal& journal);
bool LirePrecAlt(std::string_view ligne, double altitude, double& precAlt, Journal& journal);
bool LireCommentaire(std::string_view ligne, std::string& commentaire, Journal& journal);
bool LireType(std::string_view ligne, std::string& type, Journal& journal);

// Shared by the value and DC readers.
bool LireValeurTexte(std::string_view texte, int16_t& valeur, Journal& journal);
bool LireEntierBorne(std::string_view texte, int lo, int hi, int16_t& champ, const TeteChamp& tete,
                     Journal& journal);

}  // namespace quillon
