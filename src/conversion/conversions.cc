#include "conversion/conversions.h"

#include <optional>
#include <string>
#include <string_view>

#include "conversion/observer.h"
#include "formats/ptm_format.h"
#include "formats/ptp_format.h"
#include "formats/ptv_format.h"
#include "formats/pts_format.h"
#include "formats/target_line.h"
#include "io/locale.h"
#include "io/translation.h"
#include "model/point.h"

namespace quillon {
namespace {

// What the four runs share: the files, the header, the fatal errors, the
// summary.
//
// The target and the log are written beside their names and put in place
// only when the run has completed: a run that fails, or is interrupted,
// leaves the previous target and log as they were.
class Deroulement {
 public:
  explicit Deroulement(ReglagesExecution& reglages) : r_(reglages), journal_(reglages.journal) {
    r_.Interrompu = false;
  }

  // Opens the source, creates the target, starts the log with its header.
  bool Demarrer(std::string_view titre) {
    FichierTexte& source = r_.FichierSource;
    FichierTexte& cible = r_.FichierCible;
    if (!OuvrirFichierLecture(source.Flux, source.Nom, *r_.systeme)) {
      return Echouer(ErreurFatale{source.Nom, RaisonFatale::Ouverture});
    }
    if (!CreerFichierEcriture(cible.Flux, cible.Nom, *r_.systeme, {&source.Flux})) {
      FermerFichier(source.Flux);
      return Echouer(ErreurFatale{cible.Nom, RaisonFatale::Creation});
    }
    journal_.InitialiserLog();
    journal_.Attacher(*r_.systeme, source.Flux, &cible.Flux);
    journal_.LigneEntete(titre);
    journal_.LigneEntete(DateHeureJournal());
    journal_.LigneEntete("Fichier source:");
    journal_.LigneEntete(CheminAffichable(source.Nom));
    journal_.LigneEntete("Fichier cible:");
    journal_.LigneEntete(CheminAffichable(cible.Nom));
    return !journal_.EnEchec() || Abandonner(journal_.Echec());
  }

  // The next source line; false at the end of the source, or when a file
  // failed (Terminer then reports it).
  bool LigneSuivante(std::string_view& ligne) {
    FluxTexte& source = r_.FichierSource.Flux;
    if (journal_.EnEchec() || r_.FichierCible.Flux.EnErreur()) return false;
    if (r_.arret != nullptr && r_.arret->load(std::memory_order_relaxed)) {
      r_.Interrompu = true;
      return false;
    }
    if (source.AtEndOfStream()) return false;
    return source.ReadLine(ligne);
  }

  void EcrireCible(std::string_view ligne) { r_.FichierCible.Flux.WriteLine(ligne); }

  // The summary, then the target and the log put in place; or the fatal
  // error that stopped the loop.
  bool Terminer() {
    FichierTexte& source = r_.FichierSource;
    FichierTexte& cible = r_.FichierCible;
    // A stop that comes while the last read waits still wins: nothing is put
    // in place once it is asked for.
    if (r_.arret != nullptr && r_.arret->load(std::memory_order_relaxed)) r_.Interrompu = true;
    if (r_.Interrompu) return Abandonner({});
    if (source.Flux.EnErreur()) return Abandonner(ErreurFatale{source.Nom, RaisonFatale::Lecture});
    if (!cible.Flux.Vider()) return Abandonner(ErreurFatale{cible.Nom, RaisonFatale::Ecriture});
    if (!journal_.Vider()) return Abandonner(journal_.Echec());

    journal_.EcrireBilan(*r_.affichage);
    if (!journal_.Vider()) return Abandonner(journal_.Echec());
    FermerFichier(source.Flux);
    if (!FermerFichier(cible.Flux)) return Abandonner(ErreurFatale{cible.Nom, RaisonFatale::Ecriture});
    if (!journal_.FermerLog()) return Echouer(ErreurFatale{journal_.FichierLog.Nom, RaisonFatale::Ecriture});
    return true;
  }

 private:
  bool Echouer(const ErreurFatale& erreur) {
    if (!r_.Interrompu) r_.affichage->MontrerErreurFatale(erreur);
    return false;
  }

  // A fatal error in the middle of a run, or a stop asked for: every file is
  // closed, and neither the target nor the log replaces the one before.
  bool Abandonner(ErreurFatale erreur) {  // a copy: the log forgets its own on giving up
    journal_.Abandonner();
    FermerFichier(r_.FichierSource.Flux);
    AbandonnerFichier(r_.FichierCible.Flux);
    return Echouer(erreur);
  }

  ReglagesExecution& r_;
  Journal& journal_;
};

// What a watched run tells its observer: each line once its step is done,
// with the log's messages about it, gathered as they come, its outcome and
// the fields they name.
class Veille {
 public:
  Veille(ObservateurExecution& observateur, Journal& journal) : observateur_(observateur), journal_(journal) {
    journal_.Ecouter(&recueil_);
    observateur_.Debut();
    recueil_.Effacer();
  }
  ~Veille() { journal_.Ecouter(nullptr); }

  // The line just through the step; then the next one starts with nothing
  // gathered.
  void Ligne(std::string_view ligne, const Point& point, const LigneCible& cible, bool ecrite) {
    LigneObservee vue;
    vue.numero = journal_.NumeroLigne();
    vue.texte = ligne;
    if (ecrite) vue.cible = cible.Texte();
    vue.point = &point;
    vue.issue = recueil_.Erreurs()    ? IssueLigne::Rejetee
                : recueil_.Ignoree() ? IssueLigne::Ignoree
                                     : IssueLigne::Convertie;
    vue.illisibles = recueil_.Illisibles();
    vue.nonEcrits = recueil_.NonEcrits();
    vue.messages = recueil_.Messages();
    observateur_.Ligne(vue);
    recueil_.Effacer();
  }

 private:
  ObservateurExecution& observateur_;
  Journal& journal_;
  RecueilLigne recueil_;
};

// The run itself: the lines of the source one after the other through the
// run's step, which reads a line into the point and, when it can, writes the
// target line; only then is that line written to the target.
//
// The step is called from this one place, watched or not. The compiler
// inlines a function called from one place whatever its size, so that in a
// program whose readers and writers serve only the runs (the console
// program) a line goes through its reader and writer without a call. A
// second loop for the watched runs made it keep them apart, and every run
// paid for calls per line. Unwatched, the watch costs one test of a null
// pointer per line.
template <typename Etape>
bool Executer(ReglagesExecution& reglages, std::string_view titre, Etape etape) {
  Deroulement run(reglages);
  if (!run.Demarrer(titre)) return false;
  Point point;
  LigneCible cible;
  std::string_view ligne;
  Journal& journal = reglages.journal;
  std::optional<Veille> veille;
  if (reglages.observateur != nullptr) veille.emplace(*reglages.observateur, journal);
  Veille* const vue = veille ? &*veille : nullptr;
  while (run.LigneSuivante(ligne)) {
    const bool ecrite = etape(ligne, point, cible, journal);
    if (ecrite) run.EcrireCible(cible.Texte());
    if (vue != nullptr) vue->Ligne(ligne, point, cible, ecrite);
  }
  veille.reset();
  return run.Terminer();
}

// The steps of the four runs.
bool EtapePrecFiabEnVal(std::string_view ligne, Point& point, LigneCible& cible, Journal& journal,
                        const OptionsConversion&) {
  return LireLignePtPrecFiab(ligne, point, journal) && EcrireLignePtVal(ligne, false, point, cible, journal);
}

bool EtapeValEnPrecFiab(std::string_view ligne, Point& point, LigneCible& cible, Journal& journal,
                        const OptionsConversion& o) {
  return LireLignePtVal(ligne, point, journal) &&
         EcrireLignePtPrecFiab(ligne, point, o.classeEchelle, o.groupeTheme, cible, journal);
}

bool EtapeDCEnVal(std::string_view ligne, Point& point, LigneCible& cible, Journal& journal,
                  const OptionsConversion& o) {
  return LireLignePtDC(ligne, o.groupeTheme, point, journal) && EcrireLignePtVal(ligne, true, point, cible, journal);
}

// Only the themes of the MD01 model go to the writer; the others are
// counted as skipped, and leave nothing in the log.
bool EtapePrecFiabEnMD01(std::string_view ligne, Point& point, LigneCible& cible, Journal& journal,
                         const OptionsConversion&) {
  if (!LireLignePtPrecFiab(ligne, point, journal)) return false;
  if (!EstThemeMD01(point.Theme)) {
    journal.CompterLigneIgnoree();
    return false;
  }
  return EcrireLignePtMD01(ligne, point, cible, journal);
}

// A run of one step with its options (a template: the step is called
// directly, inlined where the compiler sees fit).
template <EtapeLigne etape>
bool ExecuterEtape(ReglagesExecution& reglages, std::string_view titre, const OptionsConversion& options) {
  return Executer(reglages, titre,
                  [options](std::string_view ligne, Point& point, LigneCible& cible, Journal& journal) {
                    return etape(ligne, point, cible, journal, options);
                  });
}

}  // namespace

EtapeLigne EtapeDe(Conversion conversion) {
  switch (conversion) {
    case Conversion::ValEnPrecFiab: return EtapeValEnPrecFiab;
    case Conversion::PrecFiabEnVal: return EtapePrecFiabEnVal;
    case Conversion::PrecFiabEnMD01: return EtapePrecFiabEnMD01;
    case Conversion::DCEnVal: return EtapeDCEnVal;
  }
  return EtapeValEnPrecFiab;
}

bool ConvertirPtPrecFiabEnPtVal(ReglagesExecution& reglages) {
  return ExecuterEtape<EtapePrecFiabEnVal>(reglages, "Traduction de fichier de point de Prec/Fiab en Valeur", {});
}

bool ConvertirPtValEnPtPrecFiab(ReglagesExecution& reglages, int16_t classeEchelle, int32_t groupeTheme) {
  return ExecuterEtape<EtapeValEnPrecFiab>(reglages, "Traduction de fichier de point de Valeur en Prec/Fiab",
                                           {classeEchelle, groupeTheme});
}

bool ConvertirPtDCEnPtVal(ReglagesExecution& reglages, int32_t groupeTheme) {
  return ExecuterEtape<EtapeDCEnVal>(reglages, "Traduction de fichier de point de DC en Valeur", {0, groupeTheme});
}

bool ConvertirPtPrecFiabEnPtMD01(ReglagesExecution& reglages) {
  return ExecuterEtape<EtapePrecFiabEnMD01>(reglages, "Traduction de fichier de point de Prec/Fiab en MD01", {});
}

const char* NomConversion(Conversion conversion) {
  switch (conversion) {
    case Conversion::ValEnPrecFiab: return "ptv-ptp";
    case Conversion::PrecFiabEnVal: return "ptp-ptv";
    case Conversion::PrecFiabEnMD01: return "ptp-ptm";
    case Conversion::DCEnVal: return "pts-ptv";
  }
  return "";
}

std::string TexteOptions(Conversion conversion, const OptionsConversion& options, bool verification) {
  std::string texte;
  const auto ajouter = [&](std::string_view option) { texte.append(texte.empty() ? "" : ", ").append(option); };
  const std::size_t echelle = static_cast<std::size_t>(options.classeEchelle);
  if (conversion == Conversion::ValEnPrecFiab && echelle >= 1 && echelle <= kMotsEchelle.size()) {
    ajouter(Formater("échelle %s", {kMotsEchelle[echelle - 1]}));
  }
  const std::size_t groupe = static_cast<std::size_t>(options.groupeTheme - kGroupeCS);
  if ((conversion == Conversion::ValEnPrecFiab || conversion == Conversion::DCEnVal) && options.groupeTheme >= kGroupeCS &&
      groupe < kMotsTheme.size()) {
    ajouter(Formater("thème %s", {kMotsTheme[groupe]}));
  }
  if (verification) ajouter(Traduire("vérification seule"));
  return texte;
}

bool Convertir(ReglagesExecution& reglages, Conversion conversion, const OptionsConversion& options) {
  switch (conversion) {
    case Conversion::ValEnPrecFiab:
      return ConvertirPtValEnPtPrecFiab(reglages, options.classeEchelle, options.groupeTheme);
    case Conversion::PrecFiabEnVal: return ConvertirPtPrecFiabEnPtVal(reglages);
    case Conversion::PrecFiabEnMD01: return ConvertirPtPrecFiabEnPtMD01(reglages);
    case Conversion::DCEnVal: return ConvertirPtDCEnPtVal(reglages, options.groupeTheme);
  }
  return false;
}

}  // namespace quillon
