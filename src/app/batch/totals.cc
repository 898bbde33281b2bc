#include "app/batch/totals.h"

#include <cstdio>

#include "app/batch/platform.h"
#include "io/ansi.h"
#include "io/locale.h"

namespace quillon::lot {

Totaux Additionner(const std::vector<ResultatFichier>& resultats) {
  Totaux t;
  t.fichiers = resultats.size();
  for (const ResultatFichier& r : resultats) {
    ++t.parIssue[static_cast<std::size_t>(r.issue)];
    t.lues += r.lues;
    t.ignorees += r.ignorees;
    t.erreursLecture += r.erreursLecture;
    t.erreursEcriture += r.erreursEcriture;
  }
  return t;
}

int CodeSortie(const Totaux& t) {
  if (t.Nombre(Issue::Interrompu) + t.Nombre(Issue::NonTraite) > 0) return kSortieInterrompu;
  if (t.Nombre(Issue::Echec) > 0) return kSortieEchec;
  if (t.Nombre(Issue::Rejets) > 0) return kSortieRejets;
  return kSortieConverti;
}

namespace {

std::string ChampTexte(const std::string& texte) {
  std::string champ;
  for (char c : texte) {
    switch (c) {
      case '\t': champ += "\\t"; break;
      case '\n': champ += "\\n"; break;
      case '\r': champ += "\\r"; break;
      case '\\': champ += BarreInverseDansLesNoms() ? "\\\\" : "\\"; break;
      default: champ += c;
    }
  }
  return champ;
}

}  // namespace

std::string LigneFichier(const FichierLot& f, const ResultatFichier& r) {
  std::string ligne = ChampTexte(CheminAffichable(f.source)) + '\t' + ChampTexte(CheminAffichable(f.cible));
  for (int64_t n : {r.lues, r.ignorees, r.erreursLecture, r.erreursEcriture}) ligne += '\t' + std::to_string(n);
  ligne += '\t';
  ligne += MotIssue(r.issue);
  if (r.echec) ligne += '\t' + ChampTexte(TexteEchec(*r.echec));
  return ligne;
}

std::string LignesTotaux(const Totaux& t, std::string_view finLigne) {
  auto n = [](auto valeur) { return std::to_string(valeur); };
  std::string texte = "Total: " + n(t.fichiers) + " fichier(s) : " + n(t.Nombre(Issue::Converti)) +
                      " converti(s), " + n(t.Nombre(Issue::Rejets)) + " avec rejets, " +
                      n(t.Nombre(Issue::Echec)) + Ansi(u8" en échec, ").str() + n(t.Nombre(Issue::Interrompu)) +
                      " interrompu(s), " + n(t.Nombre(Issue::NonTraite)) + Ansi(u8" non traité(s)").str();
  texte += finLigne;
  texte += "Total: " + n(t.lues) + " ligne(s) lues, " + n(t.ignorees) + Ansi(u8" ignorée(s), ").str() +
           n(t.erreursLecture) + " erreur(s) de lecture, " + n(t.erreursEcriture) + Ansi(u8" erreur(s) d'écriture").str();
  texte += finLigne;
  return texte;
}

std::string LigneAvancement(std::size_t faits, std::size_t total, double lignesParSeconde) {
  char texte[96];
  std::snprintf(texte, sizeof texte, "%zu/%zu fichier(s), %.0f ligne(s)/s", faits, total, lignesParSeconde);
  return texte;
}

}  // namespace quillon::lot
