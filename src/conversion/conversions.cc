#include "conversion/conversions.h"

#include <string>
#include <string_view>

#include "conversion/locale.h"
#include "formats/ptm_format.h"
#include "formats/ptp_format.h"
#include "formats/ptv_format.h"
#include "formats/pts_format.h"
#include "model/point.h"

namespace quillon {
namespace {

// What the four runs share: the files, the header, the fatal errors, the
// summary. The per-line work stays in each run's loop.
class Deroulement {
 public:
  explicit Deroulement(ReglagesExecution& reglages) : r_(reglages), journal_(reglages.journal) {}

  // Opens the source, creates the target, starts the log with its header.
  bool Demarrer(std::string_view titre) {
    FichierTexte& source = r_.FichierSource;
    FichierTexte& cible = r_.FichierCible;
    if (!OuvrirFichierLecture(source.Flux, source.Nom, *r_.systeme)) {
      return Echouer(MessageFatal(source.Nom, RaisonFatale::Ouverture));
    }
    if (!CreerFichierEcriture(cible.Flux, cible.Nom, *r_.systeme, {&source.Flux})) {
      FermerFichier(source.Flux);
      return Echouer(MessageFatal(cible.Nom, RaisonFatale::Creation));
    }
    journal_.InitialiserLog();
    journal_.Attacher(*r_.systeme, source.Flux, &cible.Flux);
    EcrireEntete(titre);
    return !journal_.EnEchec() || Abandonner(journal_.MessageEchec());
  }

  // The next source line; false at the end of the source, or when a file
  // failed (Terminer then reports it).
  bool LigneSuivante(std::string_view& ligne) {
    FluxTexte& source = r_.FichierSource.Flux;
    if (journal_.EnEchec() || r_.FichierCible.Flux.EnErreur()) return false;
    if (source.AtEndOfStream()) return false;
    return source.ReadLine(ligne);
  }

  void EcrireCible(std::string_view ligne) { r_.FichierCible.Flux.WriteLine(ligne); }

  // Summary and closing, or the fatal error that stopped the loop.
  bool Terminer() {
    FichierTexte& source = r_.FichierSource;
    FichierTexte& cible = r_.FichierCible;
    if (source.Flux.EnErreur()) return Abandonner(MessageFatal(source.Nom, RaisonFatale::Lecture));
    if (!cible.Flux.Vider()) return Abandonner(MessageFatal(cible.Nom, RaisonFatale::Ecriture));
    if (!journal_.Vider()) return Abandonner(journal_.MessageEchec());

    journal_.EcrireBilan(*r_.affichage);
    if (!journal_.FermerLog() || journal_.EnEchec()) {
      return Abandonner(journal_.EnEchec() ? journal_.MessageEchec()
                                           : MessageFatal(journal_.FichierLog.Nom, RaisonFatale::Ecriture));
    }
    FermerFichier(source.Flux);
    if (!FermerFichier(cible.Flux)) return Echouer(MessageFatal(cible.Nom, RaisonFatale::Ecriture));
    return true;
  }

 private:
  void EcrireEntete(std::string_view titre) {
    const auto ligne = [this](std::string_view texte) { journal_.EcrireLog(true, false, false, false, texte); };
    ligne(titre);
    ligne(DateHeureJournal());
    ligne("Fichier source:");
    ligne(CheminAffichable(r_.FichierSource.Nom));
    ligne("Fichier cible:");
    ligne(CheminAffichable(r_.FichierCible.Nom));
  }

  bool Echouer(const std::string& message) {
    r_.affichage->MontrerErreurFatale(message);
    return false;
  }

  // A fatal error in the middle of a run: it goes to the log as well when the
  // log can still take it, then every file is closed.
  bool Abandonner(const std::string& message) {
    if (journal_.LogOuvert && !journal_.EnEchec()) journal_.EcrireLog(false, false, false, false, "ERREUR FATALE: " + message);
    if (journal_.LogOuvert) journal_.FermerLog();
    FermerFichier(r_.FichierSource.Flux);
    FermerFichier(r_.FichierCible.Flux);
    return Echouer(message);
  }

  ReglagesExecution& r_;
  Journal& journal_;
};

}  // namespace

bool ConvertirPtPrecFiabEnPtVal(ReglagesExecution& reglages) {
  Deroulement run(reglages);
  if (!run.Demarrer("Traduction de fichier de point de Prec/Fiab en Valeur")) return false;
  Journal& journal = reglages.journal;
  Point point;
  LigneCible cible;
  std::string_view ligne;
  while (run.LigneSuivante(ligne)) {
    if (!LireLignePtPrecFiab(ligne, point, journal)) continue;
    if (!EcrireLignePtVal(ligne, false, point, cible, journal)) continue;
    run.EcrireCible(cible.Texte());
  }
  return run.Terminer();
}

bool ConvertirPtValEnPtPrecFiab(ReglagesExecution& reglages, int16_t classeEchelle, int32_t groupeTheme) {
  Deroulement run(reglages);
  if (!run.Demarrer("Traduction de fichier de point de Valeur en Prec/Fiab")) return false;
  Journal& journal = reglages.journal;
  Point point;
  LigneCible cible;
  std::string_view ligne;
  while (run.LigneSuivante(ligne)) {
    if (!LireLignePtVal(ligne, point, journal)) continue;
    if (!EcrireLignePtPrecFiab(ligne, point, classeEchelle, groupeTheme, cible, journal)) continue;
    run.EcrireCible(cible.Texte());
  }
  return run.Terminer();
}

bool ConvertirPtDCEnPtVal(ReglagesExecution& reglages, int32_t groupeTheme) {
  Deroulement run(reglages);
  if (!run.Demarrer("Traduction de fichier de point de DC en Valeur")) return false;
  Journal& journal = reglages.journal;
  Point point;
  LigneCible cible;
  std::string_view ligne;
  while (run.LigneSuivante(ligne)) {
    if (!LireLignePtDC(ligne, groupeTheme, point, journal)) continue;
    if (!EcrireLignePtVal(ligne, true, point, cible, journal)) continue;
    run.EcrireCible(cible.Texte());
  }
  return run.Terminer();
}

bool ConvertirPtPrecFiabEnPtMD01(ReglagesExecution& reglages) {
  Deroulement run(reglages);
  if (!run.Demarrer("Traduction de fichier de point de Prec/Fiab en MD01")) return false;
  Journal& journal = reglages.journal;
  Point point;
  LigneCible cible;
  std::string_view ligne;
  while (run.LigneSuivante(ligne)) {
    if (!LireLignePtPrecFiab(ligne, point, journal)) continue;
    if (!EstThemeMD01(point.Theme)) {
      journal.CompterLigneIgnoree();
      continue;
    }
    if (!EcrireLignePtMD01(ligne, point, cible, journal)) continue;
    run.EcrireCible(cible.Texte());
  }
  return run.Terminer();
}

}  // namespace quillon
