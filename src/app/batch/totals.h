// What quillon-lot reports: a line per file, the totals, the exit status.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "app/batch/run.h"
#include "app/batch/sources.h"

namespace quillon::lot {

// Exit statuses.
inline constexpr int kSortieConverti = 0;
inline constexpr int kSortieRejets = 1;
inline constexpr int kSortieEchec = 2;
inline constexpr int kSortieUsage = 64;
inline constexpr int kSortieInterrompu = 130;

struct Totaux {
  std::size_t fichiers = 0;
  std::array<std::size_t, 5> parIssue{};  // indexed by Issue
  int64_t lues = 0;
  int64_t ignorees = 0;
  int64_t erreursLecture = 0;
  int64_t erreursEcriture = 0;

  std::size_t Nombre(Issue issue) const { return parIssue[static_cast<std::size_t>(issue)]; }
};

Totaux Additionner(const std::vector<ResultatFichier>& resultats);

// 130 when the batch was stopped, else 2 when a file failed, else 1 when a
// field was rejected, else 0.
int CodeSortie(const Totaux& totaux);

// One file, its fields separated by tabs: source, target, the four counts,
// the outcome word and, after a failure, its message. Windows-1252, no line
// end; in the texts, a tab, a line feed, a carriage return and a backslash
// (where names may hold one) are written \t, \n, \r and \\, so that a line
// stays one file and its fields stay apart.
std::string LigneFichier(const FichierLot& fichier, const ResultatFichier& resultat);

// The two lines of totals, each ended by `finLigne`. Windows-1252.
std::string LignesTotaux(const Totaux& totaux, std::string_view finLigne);

// The progress line: files done out of the total, lines per second.
std::string LigneAvancement(std::size_t faits, std::size_t total, double lignesParSeconde);

}  // namespace quillon::lot
