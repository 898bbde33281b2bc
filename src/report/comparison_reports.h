// The comparison's JSON object and its HTML report.
#pragma once

#include <string>

#include "compare/comparison.h"

namespace quillon {

// One object: the two sources, the tolerances, the fields compared, every
// difference in the order of the text output, the totals, the exit status.
// UTF-8.
std::string JsonComparaison(const Comparaison& c, int codeSortie);

// One self-contained HTML file, built as the check report: the totals, both
// files' points in one picture with an arrow from each moved point's old
// place to its new one, and a table per category. `date` is Windows-1252.
std::string RapportComparaisonHtml(const Comparaison& c, const std::string& programme, const std::string& date);

}  // namespace quillon
