// The check report: one self-contained HTML file per converted file, and the
// index of a batch's reports, made as every report page is (report/page.h).
// Up to kPointsTous points with coordinates the report draws every point;
// above, a density picture and, exactly, at most kParSorte points of each
// kind (rejected, duplicate, close, far).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "io/display.h"
#include "report/collect.h"
#include "report/checks.h"
#include "report/page.h"

namespace quillon {

enum class Verdict { SansRejet, Rejets, Echec };

struct EnteteRapport {
  std::string programme;  // "quillon-lot"
  std::string date;       // Windows-1252, as the log's
  std::string source, cible, journal;  // as the file services take them
  std::string conversion;              // "ptv-ptp"...
  std::string options;                 // UTF-8
  ComptesBilan bilan;
  Verdict verdict = Verdict::SansRejet;
  int64_t lignesRejetees = 0;
  ErreurFatale echec;  // why it failed
  std::vector<std::string> avertissements;  // UTF-8: what else the run tells (exports without a system)
};

std::string RapportHtml(const EnteteRapport& entete, const Collecte& collecte, const Controles& controles);

struct LigneIndex {
  std::string source;  // as the file services take it
  std::string lien;    // the report's path relative to the index, '/' separated; empty: none
  std::string issue;   // "converti", "rejets"...
  std::array<int64_t, 4> comptes{};
  const Controles* controles = nullptr;
};

std::string IndexHtml(const std::string& programme, const std::string& date, const std::vector<LigneIndex>& lignes);

}  // namespace quillon
