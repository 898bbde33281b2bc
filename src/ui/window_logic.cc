#include "ui/window_logic.h"

#include <cctype>
#include <memory>

#include "conversion/conversions.h"
#include "io/encoding.h"
#include "io/locale.h"
#include "model/point.h"
#include "export/exports.h"
#include "report/comparaison.h"
#include "report/comparaison_rapports.h"
#include "report/html.h"
#include "ui/registry.h"
#include "version.h"

namespace quillon {
namespace {

std::string TexteBilan(const std::array<std::string, 4>& lignes) {
  std::string texte = lignes[0];
  for (std::size_t i = 1; i < lignes.size(); ++i) texte += "\r\n" + lignes[i];
  return Cp1252VersUtf8(texte);
}

// The words of the options that the conversion takes.
// The name picked without the format's extension (in any case), if it ends
// with it.
std::string SansExtension(std::string nom, std::string_view extension) {
  const std::size_t n = extension.size() + 1;
  if (nom.size() > n && nom[nom.size() - n] == '.') {
    bool meme = true;
    for (std::size_t k = 0; k < extension.size(); ++k) {
      meme = meme && std::tolower(static_cast<unsigned char>(nom[nom.size() - extension.size() + k])) == extension[k];
    }
    if (meme) nom.resize(nom.size() - n);
  }
  return nom;
}

// The name without its folder.
std::string NomSeul(const std::string& chemin) { return chemin.substr(chemin.find_last_of("/\\") + 1); }

// A report written into the user's temporary folder and opened in the
// browser; a box tells when either cannot be done.
void MontrerRapport(Services& services, SystemeFichiers& systeme, Parent parent, const std::string& chemin,
                    const std::string& html) {
  const char* echec = nullptr;
  if (!EcrireFichier(systeme, chemin, html)) {
    echec = " ne peut pas être écrit";
  } else if (!services.documents.Ouvrir(chemin)) {
    echec = " ne peut pas être ouvert";
  }
  if (echec != nullptr) services.messages.Message(parent, kTitreApplication, "Le rapport " + chemin + echec);
}

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
  void MontrerBilan(const std::array<std::string, 4>& lignes) override {
    const std::vector<std::string> boutons = {std::string(kBoutonRapport), std::string(kBoutonExporter)};
    for (;;) {
      const int choix = services_.messages.MessageAvecBoutons(parent_, kTitreApplication, TexteBilan(lignes), boutons);
      if (choix == 1) VoirRapport(lignes);
      else if (choix == 2) Exporter();
      else break;
    }
  }
  void MontrerErreurFatale(const ErreurFatale& erreur) override { fenetre_.MontrerErreurFatale(erreur); }

 private:
  void VoirRapport(const std::array<std::string, 4>& lignes) {
    const Controles controles = Controler(collecte_, kToleranceDefaut);
    EnteteRapport entete;
    entete.programme = "quillon";
    entete.date = DateHeureJournal();
    entete.source = reglages_.FichierSource.Nom;
    entete.cible = reglages_.FichierCible.Nom;
    entete.journal = reglages_.journal.FichierLog.Nom;
    entete.conversion = NomConversion(conversion_);
    entete.options = TexteOptions(conversion_, options_);
    entete.bilan = lignes;
    const bool rejets = reglages_.journal.NbErreursLecture + reglages_.journal.NbErreursEcriture != 0;
    entete.verdict = rejets ? Verdict::Rejets : Verdict::SansRejet;
    entete.lignesRejetees = controles.nombres[static_cast<std::size_t>(IssueLigne::Rejetee)];

    const std::string chemin =
        services_.documents.DossierTemporaire() + "quillon-" + NomSeul(reglages_.FichierSource.Nom) + ".html";
    MontrerRapport(services_, *reglages_.systeme, parent_, chemin, RapportHtml(entete, collecte_, controles));
  }

  // The run's points in one format, named in a save dialog whose filters
  // are the formats, GeoPackage first: a pass of its own over the source.
  void Exporter() {
    std::vector<FormatExport> formats;
    std::string filtre;
    for (FormatExport f : {FormatExport::GeoPackage, FormatExport::Csv, FormatExport::GeoJson, FormatExport::Dxf}) {
      if (!FormatDisponible(f)) continue;
      formats.push_back(f);
      const std::string motif = std::string("*.") + MotFormat(f);
      filtre += (filtre.empty() ? "" : "|") + std::string(DescriptionFormat(f)) + " (" + motif + ")|" + motif;
    }
    const std::optional<FichierChoisi> choix =
        services_.dialogues.EnregistrerSous(parent_, std::string(kTitreExporter), filtre, 1);
    if (!choix || choix->indexFiltre < 1 || choix->indexFiltre > static_cast<int>(formats.size())) return;
    DemandeExport demande;
    demande.source = reglages_.FichierSource.Nom;
    demande.conversion = conversion_;
    demande.options = options_;
    demande.formats = {formats[static_cast<std::size_t>(choix->indexFiltre - 1)]};
    demande.base = SansExtension(choix->nom, MotFormat(demande.formats.front()));
    demande.systeme = reglages_.systeme;
    const std::vector<std::string> fichiers = FichiersExport(demande.formats.front(), demande.base);
    for (const std::string& f : fichiers) {
      if (f == reglages_.FichierSource.Nom || f == reglages_.FichierCible.Nom || f == reglages_.journal.FichierLog.Nom) {
        services_.messages.Message(parent_, kTitreApplication,
                                   "Le fichier " + f + " est la source, la cible ou le journal : rien n'est exporté");
        return;
      }
    }
    const BilanExport bilan = quillon::Exporter(demande);
    std::string texte;
    if (bilan.complet) {
      texte = std::to_string(bilan.points) + " point(s) et " + std::to_string(bilan.rejets) +
              " ligne(s) rejetée(s) exportés dans " + fichiers.front();
      texte += bilan.epsg != 0 ? "\r\nSystème de coordonnées : EPSG:" + std::to_string(bilan.epsg)
                               : "\r\nSystème de coordonnées inconnu : l'export n'en nomme aucun";
    } else {
      texte = Cp1252VersUtf8(CauseFatale(bilan.erreur));
    }
    services_.messages.Message(parent_, kTitreApplication, texte);
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
      executions_(reglages, services, vue),
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
      parent, std::string(kTitreComparerAncien), std::string(kFiltreComparer), 1);
  if (!ancien) return;
  const std::optional<FichierChoisi> nouveau = services_.dialogues.Ouvrir(
      parent, std::string(kTitreComparerNouveau), std::string(kFiltreComparer), 1);
  if (!nouveau) return;
  for (const std::string& nom : {ancien->nom, nouveau->nom}) {
    if (!SortePourChemin(nom)) {
      services_.messages.Message(parent, kTitreApplication,
                                 "Le fichier " + nom + " n'est pas un fichier .ptv, .ptp ou .pts");
      return;
    }
  }
  Comparaison comparaison;
  std::string erreur;
  if (!Comparer(ancien->nom, nouveau->nom, ReglagesComparaison{}, comparaison, erreur, *reglages_.systeme)) {
    services_.messages.Message(parent, kTitreApplication, Cp1252VersUtf8(erreur));
    return;
  }
  const std::string chemin = services_.documents.DossierTemporaire() + "quillon-" + NomSeul(ancien->nom) + "-" +
                             NomSeul(nouveau->nom) + ".html";
  MontrerRapport(services_, *reglages_.systeme, parent, chemin,
                 RapportComparaisonHtml(comparaison, "quillon", DateHeureJournal()));
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
  messages_.Message(parent_, kTitreApplication, TexteBilan(lignes));
}

void AffichageFenetre::MontrerErreurFatale(const ErreurFatale& erreur) {
  messages_.ErreurFatale(parent_, Cp1252VersUtf8(MessageFatal(erreur)));
}

}  // namespace quillon
