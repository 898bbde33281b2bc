// The three value tables: value code <-> planimetric (and, for the fixed
// points, altimetric) precision and reliability.
#pragma once

#include <array>
#include <cstdint>

namespace quillon {

// Marks a precision that a table does not define.
inline constexpr double kNonDefini = -1.0;

// The definitions of one value code in one table.
struct PrecFiabValeur {
  // Column 0: a precision that does not depend on the scale; columns 1 to 6:
  // scale classes 1:250 to 1:5000. Column 7 is never filled.
  std::array<double, 8> PrecPlan;
  bool FiabPlan;
  double PrecAlt;
  bool FiabAlt;
};

// One table, indexed directly by the value code 0 to 100.
struct TableValeurs {
  std::array<PrecFiabValeur, 101> lignes;

  // Precision -> value code, for the precision-to-value direction. Every
  // precision of the tables has one decimal, so the code whose cell (rows 1
  // to 100, columns 0 to 6) holds a precision is kept at its number of
  // tenths; 0 where no cell holds it. Built with the table; a precision
  // occurs in at most one cell.
  static constexpr int kDixiemesMax = 2309;  // 230.9, the largest precision
  std::array<int16_t, kDixiemesMax + 1> codeParDixiemes;

  // The code whose cell holds exactly `precision`, or 0 when none does.
  int16_t CodeDePrecision(double precision) const;

  const PrecFiabValeur& operator[](int valeur) const { return lignes[valeur]; }
};

void InitialiserTableValeursPF(TableValeurs& table);
void InitialiserTableValeursBF(TableValeurs& table);
void InitialiserTableValeursCSOD(TableValeurs& table);

struct TablesValeurs {
  TableValeurs PF;    // themes 1, 71, 81
  TableValeurs BF;    // themes 6, 76, 86
  TableValeurs CSOD;  // themes 2, 3, 72, 73, 82, 83 (and 10 one way)
};

// The process-wide tables, built the first time they are asked for (start-up
// asks for them before anything else) and constant afterwards.
const TablesValeurs& Tables();

}  // namespace quillon
