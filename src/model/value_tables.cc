#include "model/value_tables.h"

namespace quillon {
namespace {

// Every precision has one decimal; "tenths / 10.0" is the double nearest to
// its decimal text because the division is correctly rounded.
double Dixiemes(int dixiemes) { return dixiemes / 10.0; }

// The other way: the nearest number of tenths of a precision of 0 or more.
int EnDixiemes(double precision) { return static_cast<int>(precision * 10 + 0.5); }

void Reinitialiser(TableValeurs& table) {
  for (PrecFiabValeur& ligne : table.lignes) {
    ligne.PrecPlan.fill(kNonDefini);
    ligne.FiabPlan = false;
    ligne.PrecAlt = kNonDefini;
    ligne.FiabAlt = false;
  }
}

// Codes 62 to 89 of all three tables: the precision in scale column k is
// "B.d", B from the tens digit and k, d the code's last digit.
constexpr int kBaseParEchelle[3][6] = {
    {8, 11, 20, 40, 80, 100},    // 6x
    {9, 14, 30, 60, 120, 150},   // 7x
    {18, 25, 50, 90, 180, 230},  // 8x
};

void RemplirParEchelle(PrecFiabValeur& ligne, int valeur) {
  const int* bases = kBaseParEchelle[valeur / 10 - 6];
  for (int k = 1; k <= 6; ++k) {
    ligne.PrecPlan[k] = Dixiemes(bases[k - 1] * 10 + valeur % 10);
  }
}

// Codes 13 to 57 of the BF and CSOD tables, column 0: the integer part by
// tens digit (row) and last digit 3 to 7 (column).
constexpr int kEntierBFCSOD[5][5] = {
    {3, 3, 3, 13, 13},
    {4, 4, 4, 24, 24},
    {7, 7, 7, 47, 47},
    {16, 16, 16, 116, 116},
    {35, 35, 35, 135, 135},
};

// Reliability of the defined rows by last digit (index 0 unused).
constexpr bool kFiabPF[10] = {false, true, true, false, false, false, true, true, false, false};
constexpr bool kFiabBF[10] = {false, false, true, true, true, false, true, true, false, false};
constexpr bool kFiabCSOD[10] = {false, false, true, true, true, false, true, false, false, false};

void RemplirBFCSOD(TableValeurs& table, const bool (&fiab)[10]) {
  Reinitialiser(table);
  for (int dizaine = 1; dizaine <= 5; ++dizaine) {
    for (int chiffre = 3; chiffre <= 7; ++chiffre) {
      PrecFiabValeur& ligne = table.lignes[dizaine * 10 + chiffre];
      ligne.PrecPlan[0] = Dixiemes(kEntierBFCSOD[dizaine - 1][chiffre - 3] * 10 + chiffre);
      ligne.FiabPlan = fiab[chiffre];
    }
  }
  for (int dizaine = 6; dizaine <= 8; ++dizaine) {
    for (int chiffre = 2; chiffre <= 9; ++chiffre) {
      PrecFiabValeur& ligne = table.lignes[dizaine * 10 + chiffre];
      RemplirParEchelle(ligne, dizaine * 10 + chiffre);
      ligne.FiabPlan = fiab[chiffre];
    }
  }
}

void Indexer(TableValeurs& table) {
  table.codeParDixiemes.fill(0);
  for (int valeur = 1; valeur <= 100; ++valeur) {
    for (int colonne = 0; colonne <= 6; ++colonne) {
      const double precision = table.lignes[valeur].PrecPlan[colonne];
      if (precision == kNonDefini) continue;
      const int dixiemes = EnDixiemes(precision);
      if (dixiemes <= TableValeurs::kDixiemesMax) table.codeParDixiemes[dixiemes] = static_cast<int16_t>(valeur);
    }
  }
}

}  // namespace

void InitialiserTableValeursPF(TableValeurs& table) {
  Reinitialiser(table);
  struct Fixe {
    int valeur, precPlan, precAlt;  // precisions in tenths
  };
  // Codes below 59: planimetric and altimetric precisions, both reliable.
  constexpr Fixe kFixes[] = {
      {11, 21, 31}, {12, 32, 41}, {21, 31, 41},  {22, 42, 82},  {31, 41, 41},
      {32, 52, 82}, {41, 51, 61}, {42, 102, 162}, {51, 61, 61}, {52, 122, 162},
  };
  for (const Fixe& f : kFixes) {
    PrecFiabValeur& ligne = table.lignes[f.valeur];
    ligne.PrecPlan[0] = Dixiemes(f.precPlan);
    ligne.FiabPlan = true;
    ligne.PrecAlt = Dixiemes(f.precAlt);
    ligne.FiabAlt = true;
  }
  for (int dizaine = 6; dizaine <= 8; ++dizaine) {
    for (int chiffre : {2, 6, 7, 8, 9}) {
      const int valeur = dizaine * 10 + chiffre;
      RemplirParEchelle(table.lignes[valeur], valeur);
      table.lignes[valeur].FiabPlan = kFiabPF[chiffre];
    }
  }
  Indexer(table);
}

void InitialiserTableValeursBF(TableValeurs& table) {
  RemplirBFCSOD(table, kFiabBF);
  Indexer(table);
}

void InitialiserTableValeursCSOD(TableValeurs& table) {
  RemplirBFCSOD(table, kFiabCSOD);
  Indexer(table);
}

int16_t TableValeurs::CodeDePrecision(double precision) const {
  if (!(precision >= 0 && precision <= kDixiemesMax / 10.0)) return 0;
  const int dixiemes = EnDixiemes(precision);
  // Only the exact precision of a cell finds it, not its neighbours.
  if (Dixiemes(dixiemes) != precision) return 0;
  return codeParDixiemes[dixiemes];
}

const TablesValeurs& Tables() {
  static const TablesValeurs tables = [] {
    TablesValeurs t;
    InitialiserTableValeursPF(t.PF);
    InitialiserTableValeursBF(t.BF);
    InitialiserTableValeursCSOD(t.CSOD);
    return t;
  }();
  return tables;
}

}  // namespace quillon
