// Two deliveries of the same points compared: each file read through the
// line reader of its kind into a compact record per point, the two sorted by
// identity (theme, commune, plan, point number) and merged, and every point
// put in one category. Nothing is written beside the sources.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "io/display.h"
#include "io/file_system.h"
#include "report/texts.h"

namespace quillon {

enum class SorteFichier : uint8_t { Valeur, Precision, DC };  // .ptv .ptp .pts

// By the extension, in capitals or small letters; none for any other.
std::optional<SorteFichier> SortePourChemin(std::string_view chemin);
const char* MotSorte(SorteFichier sorte);  // "ptv", "ptp", "pts"

// One point as the comparison keeps it: 72 bytes, a million per file.
struct PointCompare {
  double y = 0, x = 0, altitude = 0;  // altitude 0: none
  float precPlan = 0, precAlt = 0;
  uint32_t ligne = 0;
  int16_t commune = 0, plan = 0, valeur = 0;
  char numero[12];       // right-aligned in 12, as the writers put it
  char commentaire[12];  // as read, blank-padded
  char type[2];
  uint8_t theme = 0;
  uint16_t nature : 3 = 0, pfp3 : 2 = 0, fiabPlan : 2 = 0, fiabAlt : 2 = 0;
  uint16_t sansPrecision : 1 = 0;  // its value code has no precisions in the tables
};
static_assert(sizeof(PointCompare) <= 72);

// A line that the reader rejected: its messages, as the log writes them
// after "ligne N: ", and the line itself (Windows-1252).
struct LigneRejetee {
  uint32_t ligne = 0;
  std::string messages;  // "; " between two
  std::string texte;
};

struct FichierCompare {
  std::string chemin;
  SorteFichier sorte = SorteFichier::Valeur;
  int64_t lignes = 0;
  std::vector<PointCompare> points;  // sorted by identity once compared
  std::vector<LigneRejetee> rejets;
};

// The fields that can differ, as bits.
enum ChampCompare : uint16_t {
  kChampPosition = 1 << 0,
  kChampAltitude = 1 << 1,
  kChampNature = 1 << 2,
  kChampValeur = 1 << 3,
  kChampPrecPlan = 1 << 4,
  kChampFiabPlan = 1 << 5,
  kChampPrecAlt = 1 << 6,
  kChampFiabAlt = 1 << 7,
  kChampPFP3 = 1 << 8,
  kChampCommentaire = 1 << 9,
  kChampType = 1 << 10,
};
inline constexpr int kNombreChamps = 11;
// "position", "altitude", "nature", "valeur", "precision-plan"... joined by
// commas.
std::string NomsChamps(uint16_t champs);

// The categories in the order of the output.
enum class Categorie : uint8_t { Nouveau, Supprime, Deplace, Modifie, Doublon, Rejete, Identique };
inline constexpr int kNombreCategories = 7;
const char* MotCategorie(Categorie categorie);

inline constexpr uint32_t kAucun = UINT32_MAX;

// One line of the output. Points are indices into the sorted points of each
// file; a duplicate holds the first of its run of equal identities and their
// number in each file; a rejected line its index in that file's rejects.
struct Difference {
  Categorie categorie = Categorie::Nouveau;
  uint16_t champs = 0;  // what differs (Deplace, Modifie)
  uint32_t ancien = kAucun, nouveau = kAucun;
  uint32_t nombreAncien = 0, nombreNouveau = 0;  // Doublon
};

struct ReglagesComparaison {
  double tolerance = 0.01;          // metres, horizontal
  double toleranceAltitude = 0.01;  // metres
  int16_t classeEchelle = 0;        // for the value lookups
  int32_t groupeTheme = 0;          // 0: none given (a DC file takes CS)
};

struct Comparaison {
  FichierCompare ancien, nouveau;
  ReglagesComparaison reglages;
  uint16_t champsCompares = 0;
  // Which file's value codes were turned into precisions: 0 none, 1 the
  // old, 2 the new.
  int valeursEnPrecisions = 0;
  int64_t sansPrecision = 0;            // points whose value code the tables lack
  std::vector<Difference> differences;  // in the order of the output
  std::array<int64_t, kNombreCategories> totaux{};
  bool Differe() const;
};

// Reads both files (the old first) and compares them. False, with the
// file that failed and why, when one cannot be opened or read to its end.
bool Comparer(const std::string& ancien, const std::string& nouveau, const ReglagesComparaison& reglages,
              Comparaison& resultat, ErreurFatale& erreur, SystemeFichiers& systeme = SystemeFichiersReel());

// The point's identity as every report shows it. Windows-1252.
inline std::string TexteIdentite(const PointCompare& p) {
  return TexteIdentite(p.theme, p.commune, p.plan, {p.numero, sizeof p.numero});
}

// The text output: one line per difference, tab-separated, then the totals
// and the fields compared; each line ended by `finLigne`. Windows-1252.
std::string TexteComparaison(const Comparaison& c, std::string_view finLigne);

}  // namespace quillon
