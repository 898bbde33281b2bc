#include "ui/print_layout.h"

#include <algorithm>
#include <cmath>

#include "io/encoding.h"
#include "io/journal.h"
#include "ui/file_actions.h"
#include "ui/forms.h"
#include "version.h"

namespace quillon {
namespace {

constexpr double kMmParPoint = 25.4 / 72;
constexpr Rgb kNoir{0, 0, 0};
constexpr Rgb kVert{0x1a, 0x7f, 0x37};
constexpr Rgb kRouge{0xc0, 0x00, 0x00};
constexpr double kPied = 8;  // mm kept at the bottom of every page for its footer

double Interligne(double taille) { return taille * kMmParPoint * 1.35; }

// Characters of a proportional font that fit in `largeur` mm at `taille`
// points, a little less than the average so that lines do not run over.
std::size_t Colonnes(double largeur, double taille) {
  return std::max<std::size_t>(10, std::size_t(largeur / (0.52 * taille * kMmParPoint)));
}

bool Suite(unsigned char c) { return (c & 0xC0) == 0x80; }

// Fills pages from the top down, a new page when one is full.
class Mise {
 public:
  Mise(double largeur, double hauteur) : largeur_(largeur), hauteur_(hauteur) { pages_.emplace_back(); }

  double Largeur() const { return largeur_; }
  double Reste() const { return hauteur_ - kPied - y_; }
  double Y() const { return y_; }
  void Avancer(double mm) { y_ += mm; }
  void Texte(const std::string& texte, double taille, bool gras = false, Rgb couleur = kNoir, double retrait = 0) {
    for (const std::string& ligne : CouperTexte(texte, Colonnes(largeur_ - retrait, taille))) {
      if (Interligne(taille) > Reste()) NouvellePage();
      y_ += Interligne(taille);
      pages_.back().textes.push_back({retrait, y_ - Interligne(taille) * 0.25, ligne, taille, gras, couleur});
    }
  }
  void Trait() {
    y_ += 1.5;
    pages_.back().traits.push_back({0, y_, largeur_, y_});
    y_ += 2.5;
  }
  void Carte(double hauteur, Dessin dessin) {
    pages_.back().cartes.push_back({0, y_, largeur_, hauteur, std::move(dessin)});
    y_ += hauteur;
  }
  void NouvellePage() {
    pages_.emplace_back();
    y_ = 0;
  }
  // Each page's footer: the file and "page k / n".
  std::vector<Page> Finir(const std::string& nom) {
    const std::string total = std::to_string(pages_.size());
    for (std::size_t k = 0; k < pages_.size(); ++k) {
      pages_[k].textes.push_back({0, hauteur_ - 1,
                                  Formater("%1$s — %2$s — page %3$s / %4$s",
                                           {kTitreApplication, nom, std::to_string(k + 1), total}),
                                  7, false, {0x60, 0x60, 0x60}});
    }
    return std::move(pages_);
  }

 private:
  double largeur_, hauteur_, y_ = 0;
  std::vector<Page> pages_;
};

std::string Verdict(const LigneFichier& ligne, const FichierMontre& montre, Rgb& couleur) {
  if (ligne.issue == lot::Issue::Echec) {
    couleur = kRouge;
    return Formater("Échec : %s", {ligne.raison});
  }
  const int64_t rejetees = montre.Verifications().nombres[std::size_t(IssueLigne::Rejetee)];
  couleur = rejetees == 0 ? kVert : kRouge;
  return rejetees == 0 ? std::string(Traduire("Aucune ligne rejetée"))
                       : Formater("%s ligne(s) rejetée(s)", {std::to_string(rejetees)});
}

// The window's view made for the picture's pixels: the same centre, and
// what the window shows inside it.
VueCarte VuePapier(const VueCarte& fenetre, const PlanCarte& plan, double largeur, double hauteur) {
  VueCarte v;
  v.largeur = std::max(1, int(std::lround(largeur * kPixelsParMm)));
  v.hauteur = std::max(1, int(std::lround(hauteur * kPixelsParMm)));
  if (fenetre.largeur > 0 && fenetre.hauteur > 0) {
    v.Centrer(fenetre.centreY, fenetre.centreX);
    v.echelle = fenetre.echelle * std::min(double(v.largeur) / fenetre.largeur, double(v.hauteur) / fenetre.hauteur);
  } else if (plan.Etendue()) {
    v.Ajuster(*plan.Etendue());
  }
  return v;
}

void Liste(Mise& mise, const std::string& titre, const std::vector<EntreeListe>& entrees) {
  if (mise.Reste() < 20) mise.NouvellePage();
  mise.Avancer(2);
  mise.Texte(titre, 11, true);
  mise.Avancer(1);
  if (entrees.empty()) mise.Texte(Traduire("Aucune"), 8.5, false, kNoir, 3);
  for (const EntreeListe& e : entrees) mise.Texte(e.texte, 8.5, false, kNoir, 3);
}

}  // namespace

std::vector<std::string> CouperTexte(const std::string& texte, std::size_t colonnes) {
  std::vector<std::string> lignes;
  std::size_t debut = 0;
  while (debut < texte.size()) {
    // The longest piece that fits, ended at a blank when there is one.
    std::size_t fin = debut, blanc = std::string::npos, n = 0;
    while (fin < texte.size() && texte[fin] != '\n') {
      if (!Suite(static_cast<unsigned char>(texte[fin])) && n++ == colonnes) break;
      if (texte[fin] == ' ') blanc = fin;
      ++fin;
    }
    const bool toutTient = fin == texte.size() || texte[fin] == '\n';
    if (!toutTient && blanc != std::string::npos && blanc > debut) fin = blanc;
    lignes.push_back(texte.substr(debut, fin - debut));
    debut = fin;
    while (debut < texte.size() && (texte[debut] == ' ' || texte[debut] == '\n')) ++debut;
  }
  return lignes;
}

std::vector<Page> MettreEnPages(const LigneFichier& ligne, const FichierMontre& montre, const VueCarte& vue,
                                std::optional<uint32_t> choisie, double largeur, double hauteur) {
  Mise mise(largeur, hauteur);
  mise.Texte(NomSeul(ligne.source), 14, true);
  mise.Texte(ligne.source, 8);
  mise.Avancer(2);
  Rgb couleur;
  const std::string verdict = Verdict(ligne, montre, couleur);
  mise.Texte(verdict, 12, true, couleur);
  for (const std::string& l : LignesBilan({ligne.comptes[0], ligne.comptes[1], ligne.comptes[2], ligne.comptes[3]})) {
    mise.Texte(l, 9.5);
  }
  const Controles& c = montre.Verifications();
  mise.Texte(Formater("%1$s point(s) en double, %2$s paire(s) de points proches, %3$s point(s) éloigné(s)",
                      {std::to_string(c.doublons.size()),
                       std::to_string(c.proches.size()) + (c.prochesTronques ? "+" : ""),
                       std::to_string(c.eloignes.size())}),
             9.5);
  mise.Trait();

  if (!montre.Plan().Vide()) {
    const double rapport = vue.largeur > 0 && vue.hauteur > 0 ? double(vue.hauteur) / vue.largeur : 0.75;
    const double haut = std::min({largeur * rapport, hauteur * 0.55, mise.Reste() - 10});
    if (haut > 20) {
      const VueCarte papier = VuePapier(vue, montre.Plan(), largeur, haut);
      mise.Carte(haut, Composer(montre.Plan(), papier, choisie));
      mise.Trait();
    }
  }
  Liste(mise, TitreListe(true, &montre), montre.Rejets());
  Liste(mise, TitreListe(false, &montre), montre.Constats());
  return mise.Finir(NomSeul(ligne.source));
}

}  // namespace quillon
