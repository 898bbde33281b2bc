#include "ui/forms.h"

#include <array>
#include <map>
#include <string>
#include <vector>

#include "io/encoding.h"
#include "io/locale.h"
#include "model/point.h"
#include "version.h"

namespace quillon {
namespace {

constexpr EntreeMenu kMenus[] = {
    {"mnuFichier", N_("Fichier"), 0, true, Commande::Aucune},
    {"mnuOuvrir", N_("Ouvrir..."), 1, true, Commande::Ouvrir},
    {"mnuControlerFichiers", N_("Contrôler des fichiers…"), 1, true, Commande::ControlerFichiers},
    {"mnuControlerDossier", N_("Contrôler un dossier…"), 1, true, Commande::ControlerDossier},
    {"mnuComparer", N_("Comparer deux fichiers…"), 1, true, Commande::Comparer},
    {"mnuFermer", N_("Fermer"), 1, false, Commande::Fermer},
    {"barre1", "-", 1, false, Commande::Aucune},
    {"mnuEnregistrerSous", N_("Enregistrer sous..."), 1, false, Commande::EnregistrerSous},
    {"barre2", "-", 1, false, Commande::Aucune},
    {"mnuMettreEnPage", N_("Mise en page..."), 1, false, Commande::MettreEnPage},
    {"mnuImprimer", N_("Imprimer..."), 1, false, Commande::Imprimer},
    {"barre3", "-", 1, false, Commande::Aucune},
    {"mnuQuitter", N_("Quitter"), 1, true, Commande::Quitter},
    {"Aide", "?", 0, true, Commande::Aucune},
    {"mnuAPropos", N_("A Propos de..."), 1, true, Commande::APropos},
    {"mnuLangue", N_("Langue"), 1, true, Commande::Aucune},
    {"mnuLangueSysteme", N_("Celle du système"), 2, true, Commande::LangueSysteme},
    {"mnuFrancais", "Français", 2, true, Commande::LangueFrancais},
    {"mnuDeutsch", "Deutsch", 2, true, Commande::LangueAllemand},
    {"mnuItaliano", "Italiano", 2, true, Commande::LangueItalien},
};

constexpr std::string_view kTexteTheme = N_("Thème pour Points de situation:");

constexpr Controle kControlesValPrecFiab[] = {
    {"btnConvertir", GenreControle::Bouton, N_("Convertir"), 5520, 360, 1215, 375},
    {"btnAbandonner", GenreControle::Bouton, N_("Abandonner"), 5520, 960, 1215, 375},
    {"lblEchelle", GenreControle::Etiquette, N_("Echelle du plan:"), 1320, 360, 1212, 252},
    {"lstEchelle", GenreControle::Liste, "", 2640, 360, 1935, 0},
    {"lblTheme", GenreControle::Etiquette, kTexteTheme, 120, 720, 2412, 252},
    {"lstTheme", GenreControle::Liste, "", 2640, 720, 1935, 0},
};

constexpr Controle kControlesDCVal[] = {
    {"btnConvertir", GenreControle::Bouton, N_("Convertir"), 5040, 240, 1215, 375},
    {"btnAbandonner", GenreControle::Bouton, N_("Abandonner"), 5040, 840, 1215, 375},
    {"lblTheme", GenreControle::Etiquette, kTexteTheme, 120, 240, 2412, 252},
    {"lstTheme", GenreControle::Liste, "", 2640, 240, 1935, 0},
};

// OK comes first in the tab order: the focus starts on it.
constexpr Controle kControlesAPropos[] = {
    {"cmdOK", GenreControle::Bouton, "OK", 4245, 2625, 1260, 345},
    {"cmdSysInfo", GenreControle::Bouton, N_("&System Info..."), 4260, 3075, 1245, 345},
    {"picIcon", GenreControle::Image, "", 240, 240, 540, 540},
    {"lblTitle", GenreControle::Etiquette, "", 1050, 240, 3885, 480},
    {"lblVersion", GenreControle::Etiquette, "", 1050, 780, 3885, 225},
    {"lblDescription", GenreControle::Etiquette, "", 1050, 1125, 3885, 1170},
    {"lblDisclaimer", GenreControle::Etiquette, "", 255, 2625, 3870, 825},
};

constexpr Formulaire kValPrecFiab = {"frmConvertirPtValEnPtPrecFiab",
                                     N_("Convertir fichier de points Val en points Préc/Fiab"), 6855, 1485,
                                     kControlesValPrecFiab};
constexpr Formulaire kDCVal = {"frmConvertirPtDCEnPtVal", N_("Convertir fichier de points DC en points Val"), 6450,
                               1440, kControlesDCVal};
constexpr Formulaire kAPropos = {"frmAPropos", "", 5730, 3555, kControlesAPropos};

constexpr std::size_t kLangues = 3;

// A table's copy in each language, made at first use: `traduire` turns an
// entry of the table into its copy in the chosen language.
template <typename T, typename Traduction>
std::span<const T> Copie(std::span<const T> table, Traduction traduire) {
  static std::map<const T*, std::array<std::vector<T>, kLangues>> copies;
  std::vector<T>& copie = copies[table.data()][static_cast<std::size_t>(LangueChoisie())];
  if (copie.size() != table.size()) {
    copie.clear();
    for (const T& entree : table) copie.push_back(traduire(entree));
  }
  return copie;
}

template <typename T>
T AvecTexte(T entree) {
  entree.texte = Traduire(entree.texte);
  return entree;
}

}  // namespace

std::span<const EntreeMenu> MenusQuillon() {
  return Copie(std::span<const EntreeMenu>(kMenus), AvecTexte<EntreeMenu>);
}

const Formulaire& EnLangue(const Formulaire& forme) {
  const auto traduire = [](const Formulaire& f) {
    return Formulaire{f.nom, Traduire(f.titre), f.largeur, f.hauteur, Copie(f.controles, AvecTexte<Controle>)};
  };
  return Copie(std::span<const Formulaire>(&forme, 1), traduire).front();
}

std::span<const std::string_view> EnLangue(std::span<const std::string_view> entrees) {
  return Copie(entrees, [](std::string_view e) { return Traduire(e); });
}

const Formulaire& FormulaireValPrecFiab() { return EnLangue(kValPrecFiab); }
const Formulaire& FormulaireDCVal() { return EnLangue(kDCVal); }
const Formulaire& FormulaireAPropos() { return EnLangue(kAPropos); }

std::span<const std::string_view> EntreesListe(std::string_view nom) {
  if (nom == "lstEchelle") return kMotsEchelle;
  if (nom == "lstTheme") return kMotsTheme;
  return {};
}

std::string TexteBilanFenetre(const ComptesBilan& comptes) {
  const std::array<std::string, 4> lignes = LignesBilan(comptes);
  std::string texte = lignes[0];
  for (std::size_t i = 1; i < lignes.size(); ++i) texte.append("\r\n").append(lignes[i]);
  return texte;
}

std::string MessageFatalFenetre(const ErreurFatale& erreur) {
  return CauseTraduite(erreur) + Traduire(", l'application va s'arrêter");
}

std::string_view TexteAPropos(std::string_view nom) {
  // Built from the program's one title and version.
  static std::array<std::string, kLangues> legendes, versions;
  const auto langue = static_cast<std::size_t>(LangueChoisie());
  if (legendes[langue].empty()) {
    legendes[langue] = Formater("A propos de %s", {kTitreApplication});
    versions[langue] = Formater("Version %s", {kTexteVersion});
  }
  if (nom == "frmAPropos") return legendes[langue];
  if (nom == "lblTitle") return kTitreApplication;
  if (nom == "lblVersion") return versions[langue];
  if (nom == "lblDescription") return Traduire("Utilitaire de conversion de fichiers de points MD01");
  if (nom == "lblDisclaimer") {
    return Traduire("Cette application est fournie \"en l'état\", sans aucune garantie, ni explicite, ni implicite");
  }
  return {};
}

}  // namespace quillon
