#include "app/batch/run.h"

#include <filesystem>
#include <optional>

#include "app/batch/platform.h"
#include "conversion/conversions.h"
#include "export/exports.h"
#include "io/locale.h"
#include "model/point.h"
#include "report/checked_collect.h"
#include "report/html.h"

namespace quillon::lot {
namespace {

// The words of the options that the conversion took.
// The folder of a file to write under the output folder.
void CreerDossierDe(const std::string& chemin) {
  std::error_code ec;
  std::filesystem::create_directories(CheminNatif(chemin).parent_path(), ec);
}

// What the exports of a file are asked for.
DemandeExport Demande(const FichierLot& fichier, const OptionsLot& options, const OptionsConversion& conversion,
                      const std::atomic<bool>* arret) {
  DemandeExport demande;
  demande.source = fichier.source;
  demande.conversion = fichier.conversion;
  demande.options = conversion;
  demande.systeme = options.systeme;
  demande.base = fichier.exports.front().substr(0, fichier.exports.front().find_last_of('.'));
  demande.formats = options.exports;
  demande.epsg = options.epsg;
  demande.arret = arret;
  return demande;
}

// A completed run's exports: in place, or the file fails and leaves no
// export behind.
void Exporte(const BilanExport& bilan, ResultatFichier& r) {
  if (bilan.complet) {
    r.exporte = true;
    r.epsg = bilan.epsg;
  } else if (bilan.interrompu) {
    r.issue = Issue::Interrompu;
  } else {
    r.issue = Issue::Echec;
    r.echec = Echec{Echec::Raison::Run, bilan.erreur, {}};
  }
}

// As many lines as point lines of 87 bytes would fill the source with:
// what the checks' tables are first made for.
std::size_t LignesAttendues(const std::string& source) {
  std::error_code ec;
  const std::uintmax_t octets = std::filesystem::file_size(CheminNatif(source), ec);
  return ec ? 0 : static_cast<std::size_t>(std::min<std::uintmax_t>(octets / 89, std::uintmax_t{1} << 30));
}

}  // namespace

const char* MotIssue(Issue issue) {
  switch (issue) {
    case Issue::Converti: return "converti";
    case Issue::Rejets: return "rejets";
    case Issue::Echec: return "echec";
    case Issue::Interrompu: return "interrompu";
    case Issue::NonTraite: return "non-traite";
  }
  return "";
}

ResultatFichier ConvertirFichier(const FichierLot& fichier, const OptionsLot& options,
                                 const std::atomic<bool>* arret) {
  ResultatFichier r;
  if (fichier.empechement) {
    r.issue = Issue::Echec;
    r.echec = fichier.empechement;
    return r;
  }
  if (!options.dossierSortie.empty()) {
    if (!options.verification) CreerDossierDe(fichier.cible);
    CreerDossierDe(fichier.log);
  }

  // The batch goes on after a failure: the report gives its cause alone.
  AffichageRetenu affichage;
  SystemeSansEcriture verification(*options.systeme, fichier.cible);
  ReglagesExecution reglages;
  reglages.affichage = &affichage;
  reglages.systeme = options.verification ? &verification : options.systeme;
  reglages.arret = arret;
  reglages.DefinirSource(fichier.source);
  reglages.journal.FichierLog.Nom = fichier.log;
  reglages.FichierCible.Nom = fichier.cible;

  // Without a theme group the DC run takes CS, as its dialog starts.
  const int32_t groupe =
      fichier.conversion == Conversion::DCEnVal && options.groupeTheme == 0 ? kGroupeCS : options.groupeTheme;
  const bool controler = options.controles || !options.dossierRapport.empty() || options.rapportJson.has_value();
  // The checks go along the run on a second thread, and so do the exports
  // (after a first pass over the coordinates alone when a GeoPackage must
  // guess its system before its first row).
  const OptionsConversion conversion{options.classeEchelle, groupe};
  CollecteControlee collecte(options.tolerance, controler ? LignesAttendues(fichier.source) : 0);
  std::optional<ExportsEnCours> exports;
  BilanExport bilanExport;
  if (!options.exports.empty()) {
    const DemandeExport demande = Demande(fichier, options, conversion, arret);
    EnteteExport entete;
    if (PreparerExport(demande, entete, bilanExport)) {
      exports.emplace(demande, entete);
    } else if (bilanExport.interrompu) {
      r.issue = Issue::Interrompu;
      return r;
    }
  }
  std::vector<ObservateurExecution*> observateurs;
  if (controler) observateurs.push_back(&collecte);
  if (exports) observateurs.push_back(&*exports);
  Observateurs tous(observateurs);
  if (!observateurs.empty()) reglages.observateur = observateurs.size() == 1 ? observateurs[0] : &tous;
  const bool complete = Convertir(reglages, fichier.conversion, conversion);

  const Journal& journal = reglages.journal;
  r.lues = journal.NumeroLigne();
  r.ignorees = journal.NbLignesIgnorees;
  r.erreursLecture = journal.NbErreursLecture;
  r.erreursEcriture = journal.NbErreursEcriture;
  if (complete) {
    r.issue = r.erreursLecture + r.erreursEcriture == 0 ? Issue::Converti : Issue::Rejets;
  } else if (reglages.Interrompu) {
    r.issue = Issue::Interrompu;
  } else {
    r.issue = Issue::Echec;
    r.echec = Echec{Echec::Raison::Run, affichage.Erreur(), {}};
  }
  if (complete && !options.exports.empty()) Exporte(exports ? exports->Terminer() : bilanExport, r);
  if (controler && r.issue != Issue::Interrompu) {
    auto controles = std::make_shared<const Controles>(collecte.Terminer());
    if (complete) r.controles = controles;
    if (!fichier.rapport.empty()) {
      EnteteRapport entete;
      entete.programme = "quillon-lot";
      entete.date = DateHeureJournal();
      entete.source = fichier.source;
      entete.cible = options.verification ? std::string() : fichier.cible;
      entete.journal = fichier.log;
      entete.conversion = NomConversion(fichier.conversion);
      entete.options = TexteOptions(fichier.conversion, conversion, options.verification);
      entete.bilan = journal.Bilan();
      entete.verdict = !complete                                                   ? Verdict::Echec
                       : r.erreursLecture + r.erreursEcriture != 0 ? Verdict::Rejets
                                                                   : Verdict::SansRejet;
      entete.lignesRejetees = controles->nombres[static_cast<std::size_t>(IssueLigne::Rejetee)];
      if (r.echec) entete.echec = r.echec->fatale;
      if (r.exporte && r.epsg == 0) entete.avertissements.emplace_back(kSansSysteme);
      CreerDossierDe(fichier.rapport);
      r.rapportEcrit = EcrireFichier(*options.systeme, fichier.rapport, RapportHtml(entete, collecte.Lignes(), *controles));
    }
  }
  return r;
}

}  // namespace quillon::lot
