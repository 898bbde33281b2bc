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

namespace quillon {

// Message heads, shared with the DC readers.
inline constexpr auto kTeteTheme = Ansi(u8"Le numéro de thème: '");
inline constexpr auto kTeteCommune = Ansi(u8"Le numéro de commune: '");
inline constexpr auto kTetePlan = Ansi(u8"Le numéro de plan: '");
inline constexpr auto kTeteNumeroPoint = Ansi(u8"Le numéro de point: '");
inline constexpr auto kTeteNature = Ansi(u8"La nature: '");
inline constexpr auto kTeteFichePFP3 = Ansi(u8"La fiche PFP3: '");
inline constexpr auto kTeteFiabilite = Ansi(u8"La fiabilite: '");
inline constexpr auto kTeteFiabPlan = Ansi(u8"La fiabilite planimétrique: '");
inline constexpr auto kTetePrecPlan = Ansi(u8"La précision planimétrique: '");
inline constexpr auto kTeteValeur = Ansi(u8"La valeur: '");
inline constexpr auto kTeteCoordonneeY = Ansi(u8"La coordonnée Y: '");
inline constexpr auto kTeteCoordonneeX = Ansi(u8"La coordonnée X: '");
inline constexpr auto kTeteAltitude = Ansi(u8"L'altitude: '");
inline constexpr auto kTeteFiabAlt = Ansi(u8"La fiabilite altimétrique: '");
inline constexpr auto kTetePrecAlt = Ansi(u8"La précision altimétrique: '");

// Stores a text field as read. (Plain assign() of a view makes GCC 12 warn
// falsely about the copy's size once it is inlined across files.)
void CopierTexte(std::string& champ, std::string_view texte);

// Logs "<tete><texte>' n'est pas valide" as a reading error; returns false.
bool RejeterChamp(Journal& journal, std::string_view tete, std::string_view texte);
// The same with another tail ("' doit être au millimètre").
bool RejeterChamp(Journal& journal, std::string_view tete, std::string_view texte, std::string_view fin);

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
bool LireEntierBorne(std::string_view texte, int lo, int hi, int16_t& champ, std::string_view tete,
                     Journal& journal);

}  // namespace quillon
