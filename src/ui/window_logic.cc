#include "ui/window_logic.h"

#include <cctype>
#include <memory>

#include "conversion/conversions.h"
#include "io/encoding.h"
#include "io/locale.h"
#include "model/point.h"
#include "export/exports.h"
#include "compare/comparison.h"
#include "report/comparison_reports.h"
#include "report/html.h"
#include "ui/file_actions.h"
#include "ui/registry.h"
#include "version.h"

namespace quillon {
namespace {

// The words of the options that the conversion takes.
// A run's summary box with the report's button, over the windows' own
// display, which still shows the fatal errors.
class AffichageAvecRapport : public Affichage {
 public:
  AffichageAvecRapport(Affichage& fenetre, ReglagesExecution& reglages, Services& services, Parent parent,
                       Conversion conversion, const OptionsConversion& options)
      : fenetre_(fenetre),
        reglages_(reglages),
        services_(services),
        parent_(parent),
        conversion_(conversion),
        options_(options) {}

  Collecte& Observateur() { return collecte_; }

  // The box comes back after each of its other buttons, until OK: the
  // user may look at the report, then export.
  void MontrerBilan(const ComptesBilan& comptes) override {
    const std::vector<std::string> boutons = {std::string(Traduire(kBoutonRapport)), std::string(Traduire(kBoutonExporter))};
    for (;;) {
      const int choix =
          services_.messages.MessageAvecBoutons(parent_, kTitreApplication, TexteBilanFenetre(comptes), boutons);
      if (choix == 1) VoirRapport(comptes);
      else if (choix == 2) Exporter(comptes);
      else break;
    }
  }
  void MontrerErreurFatale(const ErreurFatale& erreur) override { fenetre_.MontrerErreurFatale(erreur); }

 private:
  FichierRapporte Fichier(const ComptesBilan& comptes) const {
    FichierRapporte f;
    f.source = reglages_.FichierSource.Nom;
    f.cible = reglages_.FichierCible.Nom;
    f.journal = reglages_.journal.FichierLog.Nom;
    f.conversion = conversion_;
    f.options = options_;
    f.bilan = comptes;
    f.rejets = reglages_.journal.NbErreursLecture + reglages_.journal.NbErreursEcriture != 0;
    return f;
  }
  void VoirRapport(const ComptesBilan& comptes) {
    VoirRapportDuFichier(services_, *reglages_.systeme, parent_, Fichier(comptes), collecte_,
                         Controler(collecte_, kToleranceDefaut));
  }
  void Exporter(const ComptesBilan& comptes) {
    ExporterFichier(services_, *reglages_.systeme, parent_, Fichier(comptes));
  }

  Affichage& fenetre_;
  ReglagesExecution& reglages_;
  Services& services_;
  Parent parent_;
  Conversion conversion_;
  OptionsConversion options_;
  Collecte collecte_;
};

}  // namespace

bool ExecutionsFenetre::Convertir(Conversion conversion, const OptionsConversion& options) {
  Affichage* const fenetre = reglages_.affichage;
  ObservateurExecution* const observateur = reglages_.observateur;
  AffichageAvecRapport affichage(*fenetre, reglages_, services_, vue_.Fenetre(), conversion, options);
  reglages_.affichage = &affichage;
  reglages_.observateur = &affichage.Observateur();
  const bool termine = quillon::Convertir(reglages_, conversion, options);
  reglages_.affichage = fenetre;
  reglages_.observateur = observateur;
  if (termine && atelier_ != nullptr) {
    const Journal& j = reglages_.journal;
    LigneFichier ligne;
    ligne.source = reglages_.FichierSource.Nom;
    ligne.cible = reglages_.FichierCible.Nom;
    ligne.journal = j.FichierLog.Nom;
    ligne.conversion = conversion;
    ligne.options = options;
    ligne.comptes = {j.NumeroLigne(), j.NbLignesIgnorees, j.NbErreursLecture, j.NbErreursEcriture};
    ligne.issue = j.NbErreursLecture + j.NbErreursEcriture == 0 ? lot::Issue::Converti : lot::Issue::Rejets;
    const Controles controles = Controler(affichage.Observateur(), kToleranceDefaut);
    ligne.controle = true;
    ligne.doublons = static_cast<int64_t>(controles.doublons.size());
    ligne.proches = static_cast<int64_t>(controles.proches.size());
    ligne.prochesTronques = controles.prochesTronques;
    ligne.eloignes = static_cast<int64_t>(controles.eloignes.size());
    atelier_->AjouterExecution(std::move(ligne));
  }
  return termine;
}

// --- Option dialogs ----------------------------------------------------------

LogiqueOptions::LogiqueOptions(Dialogue genre, ExecutionsFenetre& executions, FinProgramme& fin)
    : genre_(genre), executions_(executions), fin_(fin) {}

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
  if (!executions_.Convertir(conversion, {classeEchelle_, groupeTheme_})) fin_.Terminer();
}

// --- Main window -------------------------------------------------------------

LogiqueQuillon::LogiqueQuillon(ReglagesExecution& reglages, Services& services, VueQuillon& vue)
    : reglages_(reglages),
      services_(services),
      vue_(vue),
      atelier_(reglages, services, vue),
      executions_(reglages, services, vue, &atelier_),
      valPrecFiab_(Dialogue::ValPrecFiab, executions_, services.fin),
      dcVal_(Dialogue::DCVal, executions_, services.fin) {}

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
    case Commande::Comparer: mnuComparer_Click(); break;
    case Commande::ControlerFichiers: atelier_.mnuControlerFichiers_Click(); break;
    case Commande::ControlerDossier: atelier_.mnuControlerDossier_Click(); break;
    case Commande::LangueSysteme:
    case Commande::LangueFrancais:
    case Commande::LangueAllemand:
    case Commande::LangueItalien: mnuLangue_Click(commande); break;
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
      vue_.Fenetre(), std::string(Traduire(kTitreOuvrir)), std::string(Traduire(kFiltreOuvrir)), 1);
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
      vue_.Fenetre(), std::string(Traduire(kTitreEnregistrerSous)), std::string(Traduire(filtre)), 1);
  if (!choix) return;

  reglages_.FichierCible.Nom = choix->nom;
  switch (TypeFichierSource_) {
    case TypeFichier::Valeur: vue_.MontrerDialogue(valPrecFiab_); break;
    case TypeFichier::PrecFiab: {
      // The target format follows the filter selected, not the extension.
      bool termine = true;
      if (choix->indexFiltre == 1) termine = executions_.Convertir(Conversion::PrecFiabEnVal, {});
      if (choix->indexFiltre == 2) termine = executions_.Convertir(Conversion::PrecFiabEnMD01, {});
      if (!termine) services_.fin.Terminer();
      break;
    }
    case TypeFichier::DC: vue_.MontrerDialogue(dcVal_); break;
    case TypeFichier::Aucun: break;
  }
}

// Two deliveries of the same points: the old file, then the new one, each
// of any kind; their comparison report opens in the browser, as
// quillon-lot --comparer writes it with its default tolerances.
void LogiqueQuillon::mnuComparer_Click() {
  const Parent parent = vue_.Fenetre();
  const std::optional<FichierChoisi> ancien = services_.dialogues.Ouvrir(
      parent, std::string(Traduire(kTitreComparerAncien)), std::string(Traduire(kFiltreComparer)), 1);
  if (!ancien) return;
  const std::optional<FichierChoisi> nouveau = services_.dialogues.Ouvrir(
      parent, std::string(Traduire(kTitreComparerNouveau)), std::string(Traduire(kFiltreComparer)), 1);
  if (!nouveau) return;
  for (const std::string& nom : {ancien->nom, nouveau->nom}) {
    if (!SortePourChemin(nom)) {
      services_.messages.Message(parent, kTitreApplication,
                                 Formater("Le fichier %s n'est pas un fichier .ptv, .ptp ou .pts", {nom}));
      return;
    }
  }
  Comparaison comparaison;
  ErreurFatale erreur;
  if (!Comparer(ancien->nom, nouveau->nom, ReglagesComparaison{}, comparaison, erreur, *reglages_.systeme)) {
    services_.messages.Message(parent, kTitreApplication, CauseTraduite(erreur));
    return;
  }
  const std::string chemin = services_.documents.DossierTemporaire() + "quillon-" + NomSeul(ancien->nom) + "-" +
                             NomSeul(nouveau->nom) + ".html";
  MontrerRapport(services_, *reglages_.systeme, parent, chemin,
                 RapportComparaisonHtml(comparaison, "quillon", DateHeureJournal()));
}

void LogiqueQuillon::mnuFermer_Click() { ActiverMenusFichier(false); }

void LogiqueQuillon::mnuQuitter_Click() {
  if (atelier_.PeutFermer()) services_.fin.Terminer();
}

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

// --- The language ------------------------------------------------------------

namespace {

constexpr std::pair<Commande, std::string_view> kLangues[] = {
    {Commande::LangueSysteme, ""}, {Commande::LangueFrancais, "fr"},
    {Commande::LangueAllemand, "de"}, {Commande::LangueItalien, "it"}};

}  // namespace

Langue LangueAuDemarrage(Preferences& preferences) {
  return LangueDuCode(preferences.Lire(std::string(kCleLangue))).value_or(LangueDuSysteme());
}

Commande CommandeLangue(Preferences& preferences) {
  const std::string code = preferences.Lire(std::string(kCleLangue));
  for (const auto& [commande, c] : kLangues) {
    if (c == code) return commande;
  }
  return Commande::LangueSysteme;
}

// The choice is kept; the windows take it at the next start, which the box
// says in the language chosen. Nothing is said when the language stays.
void LogiqueQuillon::mnuLangue_Click(Commande commande) {
  std::string_view code;
  for (const auto& [c, k] : kLangues) {
    if (c == commande) code = k;
  }
  services_.preferences.Ecrire(std::string(kCleLangue), std::string(code));
  const Langue apres = LangueAuDemarrage(services_.preferences);
  if (apres == LangueChoisie()) return;
  services_.messages.Message(
      vue_.Fenetre(), kTitreApplication,
      std::string(Traduire(N_("La langue choisie s'appliquera au prochain démarrage de Quillon."), apres)));
}

// --- Summaries and fatal errors ------------------------------------------------

void AffichageFenetre::MontrerBilan(const ComptesBilan& comptes) {
  messages_.Message(parent_, kTitreApplication, TexteBilanFenetre(comptes));
}

void AffichageFenetre::MontrerErreurFatale(const ErreurFatale& erreur) {
  messages_.ErreurFatale(parent_, MessageFatalFenetre(erreur));
}

}  // namespace quillon
