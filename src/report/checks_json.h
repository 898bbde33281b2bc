// The checks as the JSON report gives them, per file: "controles".
#pragma once

#include <nlohmann/json.hpp>

#include "report/checks.h"

namespace quillon {

// Line numbers, not indices; texts in UTF-8.
nlohmann::ordered_json JsonControles(const Controles& controles);

}  // namespace quillon
