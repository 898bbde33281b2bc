#include "ui/forms.h"

#include <string>

#include "model/point.h"
#include "version.h"

namespace quillon {
namespace {

constexpr EntreeMenu kMenus[] = {
    {"mnuFichier", "Fichier", 0, true, Commande::Aucune},
    {"mnuOuvrir", "Ouvrir...", 1, true, Commande::Ouvrir},
    {"mnuControlerFichiers", "Contrôler des fichiers…", 1, true, Commande::ControlerFichiers},
    {"mnuControlerDossier", "Contrôler un dossier…", 1, true, Commande::ControlerDossier},
    {"mnuComparer", "Comparer deux fichiers…", 1, true, Commande::Comparer},
    {"mnuFermer", "Fermer", 1, false, Commande::Fermer},
    {"barre1", "-", 1, false, Commande::Aucune},
    {"mnuEnregistrerSous", "Enregistrer sous...", 1, false, Commande::EnregistrerSous},
    {"barre2", "-", 1, false, Commande::Aucune},
    {"mnuMettreEnPage", "Mise en page...", 1, false, Commande::MettreEnPage},
    {"mnuImprimer", "Imprimer...", 1, false, Commande::Imprimer},
    {"barre3", "-", 1, false, Commande::Aucune},
    {"mnuQuitter", "Quitter", 1, true, Commande::Quitter},
    {"Aide", "?", 0, true, Commande::Aucune},
    {"mnuAPropos", "A Propos de...", 1, true, Commande::APropos},
};

constexpr std::string_view kTexteTheme = "Thème pour Points de situation:";

constexpr Controle kControlesValPrecFiab[] = {
    {"btnConvertir", GenreControle::Bouton, "Convertir", 5520, 360, 1215, 375},
    {"btnAbandonner", GenreControle::Bouton, "Abandonner", 5520, 960, 1215, 375},
    {"lblEchelle", GenreControle::Etiquette, "Echelle du plan:", 1320, 360, 1212, 252},
    {"lstEchelle", GenreControle::Liste, "", 2640, 360, 1935, 0},
    {"lblTheme", GenreControle::Etiquette, kTexteTheme, 120, 720, 2412, 252},
    {"lstTheme", GenreControle::Liste, "", 2640, 720, 1935, 0},
};

constexpr Controle kControlesDCVal[] = {
    {"btnConvertir", GenreControle::Bouton, "Convertir", 5040, 240, 1215, 375},
    {"btnAbandonner", GenreControle::Bouton, "Abandonner", 5040, 840, 1215, 375},
    {"lblTheme", GenreControle::Etiquette, kTexteTheme, 120, 240, 2412, 252},
    {"lstTheme", GenreControle::Liste, "", 2640, 240, 1935, 0},
};

// OK comes first in the tab order: the focus starts on it.
constexpr Controle kControlesAPropos[] = {
    {"cmdOK", GenreControle::Bouton, "OK", 4245, 2625, 1260, 345},
    {"cmdSysInfo", GenreControle::Bouton, "&System Info...", 4260, 3075, 1245, 345},
    {"picIcon", GenreControle::Image, "", 240, 240, 540, 540},
    {"lblTitle", GenreControle::Etiquette, "", 1050, 240, 3885, 480},
    {"lblVersion", GenreControle::Etiquette, "", 1050, 780, 3885, 225},
    {"lblDescription", GenreControle::Etiquette, "", 1050, 1125, 3885, 1170},
    {"lblDisclaimer", GenreControle::Etiquette, "", 255, 2625, 3870, 825},
};

constexpr Formulaire kValPrecFiab = {"frmConvertirPtValEnPtPrecFiab",
                                     "Convertir fichier de points Val en points Préc/Fiab", 6855, 1485,
                                     kControlesValPrecFiab};
constexpr Formulaire kDCVal = {"frmConvertirPtDCEnPtVal", "Convertir fichier de points DC en points Val", 6450,
                               1440, kControlesDCVal};
constexpr Formulaire kAPropos = {"frmAPropos", "", 5730, 3555, kControlesAPropos};

}  // namespace

std::span<const EntreeMenu> MenusQuillon() { return kMenus; }

const Formulaire& FormulaireValPrecFiab() { return kValPrecFiab; }
const Formulaire& FormulaireDCVal() { return kDCVal; }
const Formulaire& FormulaireAPropos() { return kAPropos; }

std::span<const std::string_view> EntreesListe(std::string_view nom) {
  if (nom == "lstEchelle") return kMotsEchelle;
  if (nom == "lstTheme") return kMotsTheme;
  return {};
}

std::string_view TexteAPropos(std::string_view nom) {
  // Built from the program's one title and version.
  static const std::string kLegende = std::string("A propos de ") + kTitreApplication;
  static const std::string kVersion = std::string("Version ") + kTexteVersion;
  if (nom == "frmAPropos") return kLegende;
  if (nom == "lblTitle") return kTitreApplication;
  if (nom == "lblVersion") return kVersion;
  if (nom == "lblDescription") return "Utilitaire de conversion de fichiers de points MD01";
  if (nom == "lblDisclaimer") {
    return "Cette application est fournie \"en l'état\", sans aucune garantie, ni explicite, ni implicite";
  }
  return {};
}

}  // namespace quillon
