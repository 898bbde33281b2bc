#include "ui/window_logic.h"

#include "conversion/conversions.h"
#include "io/encoding.h"
#include "model/point.h"
#include "ui/registry.h"
#include "version.h"

namespace quillon {

// --- Option dialogs ----------------------------------------------------------

LogiqueOptions::LogiqueOptions(Dialogue genre, ReglagesExecution& reglages, FinProgramme& fin)
    : genre_(genre), reglages_(reglages), fin_(fin) {}

const Formulaire& LogiqueOptions::Forme() const {
  return genre_ == Dialogue::ValPrecFiab ? FormulaireValPrecFiab() : FormulaireDCVal();
}

void LogiqueOptions::Form_Load() {
  classeEchelle_ = 1;
  groupeTheme_ = kGroupeCS;
  charge_ = true;
}

void LogiqueOptions::lstEchelle_Click(std::string_view texte) {
  if (const int16_t classe = ClasseEchellePourMot(texte); classe != 0) classeEchelle_ = classe;
}

void LogiqueOptions::lstTheme_Click(std::string_view texte) {
  // The list holds "CS" and "OD" only; the lookup of the console's words
  // gives them their groups.
  if (const int32_t groupe = GroupeThemePourMot(texte); groupe != 0) groupeTheme_ = groupe;
}

void LogiqueOptions::btnConvertir_Click() {
  const Conversion conversion = genre_ == Dialogue::ValPrecFiab ? Conversion::ValEnPrecFiab : Conversion::DCEnVal;
  if (!Convertir(reglages_, conversion, {classeEchelle_, groupeTheme_})) fin_.Terminer();
}

// --- Main window -------------------------------------------------------------

LogiqueQuillon::LogiqueQuillon(ReglagesExecution& reglages, Services& services, VueQuillon& vue)
    : reglages_(reglages),
      services_(services),
      vue_(vue),
      valPrecFiab_(Dialogue::ValPrecFiab, reglages, services.fin),
      dcVal_(Dialogue::DCVal, reglages, services.fin) {}

void LogiqueQuillon::Commander(Commande commande) {
  switch (commande) {
    case Commande::Ouvrir: mnuOuvrir_Click(); break;
    case Commande::Fermer:
      if (menusFichierActifs_) mnuFermer_Click();
      break;
    case Commande::EnregistrerSous:
      if (menusFichierActifs_) mnuEnregistrerSous_Click();
      break;
    case Commande::Quitter: mnuQuitter_Click(); break;
    case Commande::APropos: mnuAPropos_Click(); break;
    case Commande::Aucune:
    case Commande::MettreEnPage:
    case Commande::Imprimer: break;
  }
}

void LogiqueQuillon::ActiverMenusFichier(bool actifs) {
  menusFichierActifs_ = actifs;
  vue_.ActiverMenusFichier(actifs);
}

void LogiqueQuillon::mnuOuvrir_Click() {
  const std::optional<FichierChoisi> choix = services_.dialogues.Ouvrir(
      vue_.Fenetre(), std::string(kTitreOuvrir), std::string(kFiltreOuvrir), 1);
  if (!choix) return;

  reglages_.DefinirSource(choix->nom);
  reglages_.journal.NbErreursLecture = 0;
  reglages_.journal.NbErreursEcriture = 0;
  // The kind follows the filter selected, not the extension of the name.
  switch (choix->indexFiltre) {
    case 1: TypeFichierSource_ = TypeFichier::Valeur; break;
    case 2: TypeFichierSource_ = TypeFichier::PrecFiab; break;
    case 3: TypeFichierSource_ = TypeFichier::DC; break;
    default: break;
  }
  ActiverMenusFichier(true);
}

void LogiqueQuillon::mnuEnregistrerSous_Click() {
  std::string_view filtre;
  switch (TypeFichierSource_) {
    case TypeFichier::Valeur: filtre = kFiltreVersPrecFiab; break;
    case TypeFichier::PrecFiab: filtre = kFiltreDepuisPrecFiab; break;
    case TypeFichier::DC: filtre = kFiltreVersValeur; break;
    case TypeFichier::Aucun: return;
  }
  const std::optional<FichierChoisi> choix = services_.dialogues.EnregistrerSous(
      vue_.Fenetre(), std::string(kTitreEnregistrerSous), std::string(filtre), 1);
  if (!choix) return;

  reglages_.FichierCible.Nom = choix->nom;
  switch (TypeFichierSource_) {
    case TypeFichier::Valeur: vue_.MontrerDialogue(valPrecFiab_); break;
    case TypeFichier::PrecFiab: {
      // The target format follows the filter selected, not the extension.
      bool termine = true;
      if (choix->indexFiltre == 1) termine = Convertir(reglages_, Conversion::PrecFiabEnVal, {});
      if (choix->indexFiltre == 2) termine = Convertir(reglages_, Conversion::PrecFiabEnMD01, {});
      if (!termine) services_.fin.Terminer();
      break;
    }
    case TypeFichier::DC: vue_.MontrerDialogue(dcVal_); break;
    case TypeFichier::Aucun: break;
  }
}

void LogiqueQuillon::mnuFermer_Click() { ActiverMenusFichier(false); }

void LogiqueQuillon::mnuQuitter_Click() { services_.fin.Terminer(); }

void LogiqueQuillon::mnuAPropos_Click() { vue_.MontrerAPropos(); }

void LogiqueQuillon::Form_Unload() { services_.fin.Terminer(); }

// --- About box ---------------------------------------------------------------

void StartSysInfo(Registre& registre, Programmes& programmes, BoitesMessages& messages, Parent parent) {
  constexpr const char* kCleMsinfo = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
  constexpr const char* kCleEmplacements = "SOFTWARE\\Microsoft\\Shared Tools Location";
  std::string chemin;
  if (registre.GetKeyValue(kHkeyLocalMachine, kCleMsinfo, "PATH", chemin)) {
    if (programmes.Demarrer(chemin)) return;
  } else if (registre.GetKeyValue(kHkeyLocalMachine, kCleEmplacements, "MSINFO", chemin)) {
    chemin += "\\MSINFO32.EXE";
    if (programmes.FichierExiste(chemin) && programmes.Demarrer(chemin)) return;
  }
  messages.Message(parent, kTitreApplication, std::string(kMessageSysInfoIndisponible));
}

// --- Summaries and fatal errors ------------------------------------------------

void AffichageFenetre::MontrerBilan(const std::array<std::string, 4>& lignes) {
  std::string texte = lignes[0];
  for (std::size_t i = 1; i < lignes.size(); ++i) texte += "\r\n" + lignes[i];
  messages_.Message(parent_, kTitreApplication, Cp1252VersUtf8(texte));
}

void AffichageFenetre::MontrerErreurFatale(const ErreurFatale& erreur) {
  messages_.ErreurFatale(parent_, Cp1252VersUtf8(MessageFatal(erreur)));
}

}  // namespace quillon
