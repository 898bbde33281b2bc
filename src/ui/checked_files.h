// The main window's table of the files checked since the program started:
// one row per file, its outcome and counts; sorted with the files with
// problems first, or by a column the user clicked, names in natural order.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/batch/run.h"
#include "conversion/conversions.h"
#include "model/natural_order.h"

namespace quillon {

// Why a row is there without a run: its outcome is "non traité" or "échec".
struct LigneFichier {
  std::string source;   // as the file services take it
  std::string cible;    // empty: none written (a check, or no run)
  std::string journal;
  Conversion conversion = Conversion::ValEnPrecFiab;
  OptionsConversion options;
  bool verification = false;
  lot::Issue issue = lot::Issue::NonTraite;
  std::string raison;  // UTF-8: why it failed or was not run
  std::array<int64_t, 4> comptes{};  // lines read, skipped, reading and writing errors
  bool controle = false;             // the three counts below are known
  int64_t doublons = 0, proches = 0, eloignes = 0;
  bool prochesTronques = false;

  // Something to look at: a failure, rejected lines, or a check that
  // found something.
  bool Probleme() const;
};

// The outcome in words ("converti", "rejets", "échec", "interrompu",
// "non traité") and its colour (0xRRGGBB, for the cell's background).
std::string_view MotIssueFenetre(lot::Issue issue);
uint32_t CouleurIssue(lot::Issue issue);

class TableFichiers {
 public:
  enum class Colonne { Probleme, Source, Issue, Lues, Ignorees, Lecture, Ecriture, Doublons, Proches, Eloignes };
  static constexpr int kColonnes = 9;  // shown, from Source on
  // The headings of the shown columns.
  static std::string_view Entete(int colonne);

  // A new row; a row of the same source replaces the earlier one, where it
  // was. Its index.
  std::size_t Ajouter(LigneFichier ligne);
  void Vider();

  std::size_t Taille() const { return lignes_.size(); }
  // The rows in the order shown: Ligne(rang).
  const LigneFichier& Ligne(std::size_t rang) const { return lignes_[ordre_[rang]]; }
  std::size_t Index(std::size_t rang) const { return ordre_[rang]; }
  const LigneFichier& ParIndex(std::size_t index) const { return lignes_[index]; }
  // The rank where row `index` is shown.
  std::size_t Rang(std::size_t index) const;
  // The text of a shown cell.
  std::string Cellule(std::size_t rang, int colonne) const;

  // A heading clicked: sorts by its column, the other way round when it was
  // already sorted by it. Colonne::Probleme is the default order.
  void Trier(Colonne colonne);
  Colonne Tri() const { return tri_; }
  bool Descendant() const { return descendant_; }

 private:
  void Ordonner();
  // Whether row `a` comes before row `b` in the order chosen; rows that
  // compare equal keep the order they came in.
  bool Avant(std::size_t a, std::size_t b) const;

  std::vector<LigneFichier> lignes_;
  std::vector<std::size_t> ordre_;
  std::unordered_map<std::string, std::size_t> parSource_;
  Colonne tri_ = Colonne::Probleme;
  bool descendant_ = false;
};

}  // namespace quillon
