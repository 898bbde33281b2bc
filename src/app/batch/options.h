// The command line of quillon-lot: options and sources.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "export/export_writer.h"
#include "io/translation.h"

namespace quillon::lot {

// Threads at most: each file under way holds two temporary files (target
// and log), and an interruption finds at most 128 of them.
inline constexpr unsigned kFilsMax = 64;

// What a .ptp source becomes.
enum class CiblePtp { Aucune, Valeur, MD01 };

struct OptionsLot {
  std::vector<std::string> sources;
  bool recursif = false;
  CiblePtp ciblePtp = CiblePtp::Aucune;
  int16_t classeEchelle = 0;  // 0: none given, as the console with two words
  int32_t groupeTheme = 0;    // 0: none given
  std::string dossierSortie;  // empty: targets and logs beside their sources
  std::string cible;          // empty: the target is named after the source
  bool verification = false;  // readers and writers, log and counts, no target
  unsigned fils = 0;          // 0: as many as the machine has cores
  std::optional<std::string> rapportJson;  // "-": on standard output
  std::string dossierRapport;  // empty: no check report
  double tolerance = 0.01;     // metres: closer points of different identity are reported
  bool controles = false;      // the checks across lines without a report (the window's table)
  std::vector<FormatExport> exports;       // the exports of each file, beside its target
  int epsg = 0;                            // their system; 0: guessed from the points
  bool aide = false;
  bool version = false;
  // --comparer: the two sources are the old and the new file; --rapport
  // (dossierRapport) is then the HTML file.
  bool comparer = false;
  double toleranceAltitude = 0.01;  // metres
  std::optional<Langue> langue;     // --langue; otherwise the user's
  // The files every run, report and export goes through: the machine's,
  // or the tests' own.
  SystemeFichiers* systeme = &SystemeFichiersReel();
};

// The options read, or the usage error to show.
struct LectureOptions {
  OptionsLot options;
  std::string erreur;  // empty when the command line is acceptable
};

LectureOptions LireOptions(const std::vector<std::string>& mots);

// The language that --langue asks for, read before the other options so
// that their errors are in it; nothing when none is asked for, or an
// unknown one (which LireOptions then reports).
std::optional<Langue> LangueDemandee(const std::vector<std::string>& mots);

// The texts of --help and of a usage error, in UTF-8, in the chosen language.
std::string TexteAide();
const char* TexteUsage();

// What quillon-lot says on standard error, in the console's encoding: a
// line "quillon-lot : " and the message (UTF-8); and a usage error, the
// message and the usage after it, whose exit status it returns.
void SignalerErreur(std::string_view message);
int ErreurUsage(std::string_view message);

}  // namespace quillon::lot
