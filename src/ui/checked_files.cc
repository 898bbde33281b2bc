#include "ui/checked_files.h"

#include "io/translation.h"

#include <algorithm>
#include <tuple>

namespace quillon {
namespace {

// 0 first: a failure, rejected lines, checks that found something, a run
// stopped, a file not run; the files without problems last.
int RangProbleme(const LigneFichier& l) {
  switch (l.issue) {
    case lot::Issue::Echec: return 0;
    case lot::Issue::Rejets: return 1;
    case lot::Issue::Interrompu: return 3;
    case lot::Issue::NonTraite: return 4;
    case lot::Issue::Converti: break;
  }
  return l.Probleme() ? 2 : 5;
}

int64_t ValeurColonne(const LigneFichier& l, TableFichiers::Colonne c) {
  using C = TableFichiers::Colonne;
  switch (c) {
    case C::Lues: return l.comptes[0];
    case C::Ignorees: return l.comptes[1];
    case C::Lecture: return l.comptes[2];
    case C::Ecriture: return l.comptes[3];
    case C::Doublons: return l.controle ? l.doublons : -1;
    case C::Proches: return l.controle ? l.proches : -1;
    case C::Eloignes: return l.controle ? l.eloignes : -1;
    case C::Issue: return RangProbleme(l);
    case C::Probleme:
    case C::Source: break;
  }
  return 0;
}

}  // namespace

bool LigneFichier::Probleme() const {
  if (issue != lot::Issue::Converti) return true;
  return doublons > 0 || proches > 0 || eloignes > 0;
}

std::string_view MotIssueFenetre(lot::Issue issue) {
  switch (issue) {
    case lot::Issue::Converti: return Traduire("converti");
    case lot::Issue::Rejets: return Traduire("rejets");
    case lot::Issue::Echec: return Traduire("échec");
    case lot::Issue::Interrompu: return Traduire("interrompu");
    case lot::Issue::NonTraite: break;
  }
  return Traduire("non traité");
}

// The check report's shades: green, amber, red; grey for what did not run.
uint32_t CouleurIssue(lot::Issue issue) {
  switch (issue) {
    case lot::Issue::Converti: return 0xd8f0d8;
    case lot::Issue::Rejets: return 0xfde7c8;
    case lot::Issue::Echec: return 0xf6cfd4;
    case lot::Issue::Interrompu:
    case lot::Issue::NonTraite: break;
  }
  return 0xe4e4e4;
}

std::string_view TableFichiers::Entete(int colonne) {
  static constexpr std::string_view kEntetes[kColonnes] = {
      N_("Fichier"),  N_("Issue"),          N_("Lues"),           N_("Ignorées"), N_("Erreurs de lecture"),
      N_("Erreurs d'écriture"), N_("Doublons"), N_("Points proches"), N_("Points éloignés")};
  return colonne >= 0 && colonne < kColonnes ? Traduire(kEntetes[colonne]) : std::string_view();
}

// A row takes its place in the order at once: a batch of n files costs
// n log n comparisons, not a sort per file.
std::size_t TableFichiers::Ajouter(LigneFichier ligne) {
  const auto [trouve, nouveau] = parSource_.try_emplace(ligne.source, lignes_.size());
  const std::size_t index = trouve->second;
  if (nouveau) {
    lignes_.push_back(std::move(ligne));
  } else {
    ordre_.erase(std::find(ordre_.begin(), ordre_.end(), index));
    lignes_[index] = std::move(ligne);
  }
  const auto avant = [this](std::size_t a, std::size_t b) { return Avant(a, b); };
  ordre_.insert(std::lower_bound(ordre_.begin(), ordre_.end(), index, avant), index);
  return index;
}

void TableFichiers::Vider() {
  lignes_.clear();
  ordre_.clear();
  parSource_.clear();
}

std::size_t TableFichiers::Rang(std::size_t index) const {
  return static_cast<std::size_t>(std::find(ordre_.begin(), ordre_.end(), index) - ordre_.begin());
}

std::string TableFichiers::Cellule(std::size_t rang, int colonne) const {
  const LigneFichier& l = Ligne(rang);
  static constexpr Colonne kChiffres[] = {Colonne::Lues, Colonne::Ignorees, Colonne::Lecture, Colonne::Ecriture,
                                          Colonne::Doublons, Colonne::Proches, Colonne::Eloignes};
  if (colonne == 0) return l.source;
  if (colonne == 1) return std::string(MotIssueFenetre(l.issue));
  if (colonne < 2 || colonne >= kColonnes) return {};
  const int64_t v = ValeurColonne(l, kChiffres[colonne - 2]);
  if (v < 0 || (l.issue == lot::Issue::NonTraite && colonne < 6)) return {};
  std::string texte = std::to_string(v);
  if (colonne == 7 && l.prochesTronques) texte += "+";
  return texte;
}

void TableFichiers::Trier(Colonne colonne) {
  descendant_ = colonne == tri_ && colonne != Colonne::Probleme ? !descendant_ : false;
  tri_ = colonne;
  Ordonner();
}

bool TableFichiers::Avant(std::size_t a, std::size_t b) const {
  const LigneFichier &la = lignes_[a], &lb = lignes_[b];
  if (tri_ != Colonne::Source) {
    const int64_t va = tri_ == Colonne::Probleme ? RangProbleme(la) : ValeurColonne(la, tri_);
    const int64_t vb = tri_ == Colonne::Probleme ? RangProbleme(lb) : ValeurColonne(lb, tri_);
    if (va != vb) return (va < vb) != descendant_;
  }
  if (la.source != lb.source && AvantNaturel(la.source, lb.source) != AvantNaturel(lb.source, la.source)) {
    return AvantNaturel(la.source, lb.source) != (tri_ == Colonne::Source && descendant_);
  }
  return a < b;
}

void TableFichiers::Ordonner() {
  ordre_.resize(lignes_.size());
  for (std::size_t k = 0; k < ordre_.size(); ++k) ordre_[k] = k;
  std::sort(ordre_.begin(), ordre_.end(), [this](std::size_t a, std::size_t b) { return Avant(a, b); });
}

}  // namespace quillon
