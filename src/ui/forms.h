// What the windows look like, for every front end: captions, menus, file
// filters, and the controls of the dialogs with their places in twips
// (1/1440 inch). Texts are UTF-8.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "io/display.h"
#include "io/translation.h"

namespace quillon {

// --- The main window --------------------------------------------------------

inline constexpr std::string_view kTitreQuillon = N_("Convertir fichier de points aux formats KQ");
inline constexpr int kLargeurQuillon = 7665;  // client area, below the menu bar
inline constexpr int kHauteurQuillon = 3105;

// The menu commands, as the front ends number them.
enum class Commande {
  Aucune,
  Ouvrir,
  Fermer,
  EnregistrerSous,
  MettreEnPage,
  Imprimer,
  Quitter,
  APropos,
  Comparer,
  ControlerFichiers,
  ControlerDossier,
  LangueSysteme,
  LangueFrancais,
  LangueAllemand,
  LangueItalien,
};

// One entry of the menu bar, in display order: a top-level menu (niveau 0),
// an entry under the last one (niveau 1), or a separator (texte "-"); an
// entry of niveau 1 without a command opens a submenu of the entries of
// niveau 2 that follow it (the languages: one of them checked). No caption
// has an access key, no entry a shortcut.
struct EntreeMenu {
  std::string_view nom;
  std::string_view texte;
  int niveau;
  bool actifAuDepart;
  Commande commande;
};

// The menus in the chosen language.
std::span<const EntreeMenu> MenusQuillon();

inline constexpr std::string_view kTitreOuvrir = N_("Ouvrir un fichier points");
inline constexpr std::string_view kTitreEnregistrerSous = N_("Enregistrer le fichier de points sous");
inline constexpr std::string_view kFiltreOuvrir =
    N_("Points avec valeur (*.ptv)|*.ptv|Points avec précisions (*.ptp)|*.ptp|Points au format DC (*.pts)|*.pts");
inline constexpr std::string_view kFiltreVersPrecFiab = N_("Points avec précision (*.ptp)|*.ptp");
inline constexpr std::string_view kFiltreDepuisPrecFiab =
    N_("Points avec valeur (*.ptv)|*.ptv|Points au format MD01 (*.ptm)|*.ptm");
inline constexpr std::string_view kFiltreVersValeur = N_("Points avec valeur (*.ptv)|*.ptv");

// Comparing two deliveries: the old file, then the new one, of any kind.
inline constexpr std::string_view kTitreComparerAncien = N_("Comparer : l'ancien fichier");
inline constexpr std::string_view kTitreComparerNouveau = N_("Comparer : le nouveau fichier");
inline constexpr std::string_view kFiltreComparer =
    N_("Fichiers de points (*.ptv;*.ptp;*.pts)|*.ptv;*.ptp;*.pts");

// The buttons of a run's summary box beside OK, and the export's dialog.
inline constexpr std::string_view kBoutonRapport = N_("Voir le rapport");
inline constexpr std::string_view kBoutonExporter = N_("Exporter…");
inline constexpr std::string_view kTitreExporter = N_("Exporter les points");

// The workbench: its buttons beside those above, and its two lists' titles.
inline constexpr std::string_view kBoutonVueDEnsemble = N_("Vue d'ensemble");
inline constexpr std::string_view kBoutonRapportLot = N_("Voir le rapport du lot");
inline constexpr std::string_view kBoutonOuvrirDossier = N_("Ouvrir le dossier");
inline constexpr std::string_view kBoutonAnnuler = N_("Annuler");
inline constexpr std::string_view kTitreRejets = N_("Lignes rejetées");
inline constexpr std::string_view kTitreConstats = N_("Contrôles");

// Every text the windows show goes through the language chosen: a caption
// or a filter of the constants above through Traduire, a table's entries
// and a form's controls through EnLangue. The texts are French in the code,
// marked N_ for the catalogues.

// --- Dialogs ---------------------------------------------------------------

enum class GenreControle { Etiquette, Liste, Bouton, Image, Case };

// A control at its place in twips. A list's height is the one its entries
// need (hauteur 0).
struct Controle {
  std::string_view nom;
  GenreControle genre;
  std::string_view texte;
  int gauche, haut, largeur, hauteur;
};

// A fixed-size dialog: its caption, its client area in twips, and its
// controls in tab order.
struct Formulaire {
  std::string_view nom;
  std::string_view titre;
  int largeur, hauteur;
  std::span<const Controle> controles;
};

// `forme` with its caption and controls in the chosen language; and a
// list's entries. A copy per form and language, made at first use, by the
// windows' thread.
const Formulaire& EnLangue(const Formulaire& forme);
std::span<const std::string_view> EnLangue(std::span<const std::string_view> entrees);

// The two option dialogs, in the chosen language, whose controls come in tab order: Convertir,
// Abandonner, then the lists from top to bottom, each list's label with it.
const Formulaire& FormulaireValPrecFiab();
const Formulaire& FormulaireDCVal();

// The entries of a dialog's list, by its name: the scales of "lstEchelle",
// the theme groups of "lstTheme".
std::span<const std::string_view> EntreesListe(std::string_view nom);

// The about box; its labels' texts are set when it loads (TexteAPropos).
const Formulaire& FormulaireAPropos();

// The text the about box's control `nom` shows once loaded, its caption for
// "frmAPropos"; empty for a control without text.
std::string_view TexteAPropos(std::string_view nom);

// The etched rule of the about box, in twips: a grey line (808080) and a
// white one, two wide, just below it.
struct Regle {
  int gaucheGris, gaucheBlanc, fin, hautGris, hautBlanc;
};
inline constexpr Regle kRegleAPropos = {90, 105, 5654, 2445, 2460};

// A run's summary as the windows word it, in the chosen language (UTF-8),
// and a fatal error's message.
std::string TexteBilanFenetre(const ComptesBilan& comptes);  // lines joined by "\r\n"
std::string MessageFatalFenetre(const ErreurFatale& erreur);

inline constexpr std::string_view kMessageSysInfoIndisponible = "System Information Is Unavailable At This Time";

}  // namespace quillon
