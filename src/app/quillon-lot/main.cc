// quillon-lot: converts many point files at once, for scripts and
// scheduled jobs, with the console program's runs.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>

#include "app/batch/comparer.h"
#include "app/batch/json.h"
#include "app/batch/options.h"
#include "app/batch/platform.h"
#include "app/batch/pool.h"
#include "app/batch/totals.h"
#include "export/exports.h"
#include "io/console.h"
#include "io/encoding.h"
#include "io/file_system.h"
#include "io/interruptions.h"
#include "io/locale.h"
#include "io/translation.h"
#include "report/html.h"
#include "model/value_tables.h"
#include "version.h"

namespace quillon::lot {
namespace {

// Texts of this file are UTF-8; the console takes Windows-1252.
void Sortie(const std::string& utf8) { EcrireConsole(Utf8VersCp1252(utf8)); }

// The progress line on a terminal, redrawn in place and wiped before the
// report writes.
class Avancement {
 public:
  Avancement(bool actif, std::size_t total) : actif_(actif), total_(total) {}

  void Montrer(std::size_t faits, int64_t lignes) {
    if (!actif_) return;
    const double secondes =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - debut_).count();
    const std::string ligne = LigneAvancement(faits, total_, secondes > 0 ? lignes / secondes : 0.0);
    Effacer();
    EcrireErreur("\r" + ligne);
    largeur_ = ligne.size();
  }

  void Effacer() {
    if (!actif_ || largeur_ == 0) return;
    EcrireErreur("\r" + std::string(largeur_, ' ') + "\r");
    largeur_ = 0;
  }

 private:
  bool actif_;
  std::size_t total_;
  std::size_t largeur_ = 0;
  std::chrono::steady_clock::time_point debut_ = std::chrono::steady_clock::now();
};

bool EcrireRapportJson(SystemeFichiers& systeme, const std::string& chemin, const std::string& texte) {
  if (chemin == "-") {
    EcrireSortieBrute(texte);  // UTF-8 already
    return true;
  }
  return EcrireFichier(systeme, chemin, texte);
}

// DOSSIER/index.html: every file, its counts and checks, a link to its
// report.
bool EcrireIndex(const OptionsLot& options, const std::vector<FichierLot>& fichiers,
                 const std::vector<ResultatFichier>& resultats) {
  const std::filesystem::path dossier = CheminNatif(options.dossierRapport);
  std::vector<LigneIndex> lignes;
  for (std::size_t i = 0; i < fichiers.size() && i < resultats.size(); ++i) {
    const ResultatFichier& r = resultats[i];
    LigneIndex l;
    l.source = fichiers[i].source;
    if (r.rapportEcrit) {
      l.lien = TexteChemin(CheminNatif(fichiers[i].rapport).lexically_relative(dossier));
      std::replace(l.lien.begin(), l.lien.end(), '\\', '/');
    }
    l.issue = MotIssue(r.issue);
    l.comptes = {r.lues, r.ignorees, r.erreursLecture, r.erreursEcriture};
    l.controles = r.controles.get();
    lignes.push_back(std::move(l));
  }
  std::error_code ec;
  std::filesystem::create_directories(dossier, ec);
  return EcrireFichier(*options.systeme, TexteChemin(dossier / "index.html"),
                       IndexHtml("quillon-lot", DateHeureJournal(), lignes));
}

int Principal(int argc, char** argv) {
  const std::vector<std::string> mots = MotsProgramme(argc, argv);
  ChoisirLangue(LangueDemandee(mots).value_or(LangueDuSysteme()));
  const LectureOptions lu = LireOptions(mots);
  if (!lu.erreur.empty()) return ErreurUsage(lu.erreur);
  const OptionsLot& options = lu.options;
  if (options.aide) {
    Sortie(TexteAide());
    return kSortieConverti;
  }
  if (options.version) {
    Sortie(std::string("quillon-lot (") + kTitreApplication + ", Version " + kTexteVersion + ")" +
           std::string(FinLigne()));
    return kSortieConverti;
  }
  if (options.comparer) return ExecuterComparaison(options);

  const ListeLot liste = ListerFichiers(options);
  if (!liste.erreur.empty()) return ErreurUsage(liste.erreur);

  std::atomic<bool> arret{false};
  InstallerInterruptions(&arret);
  GrouperSynchronisationsDossiers();  // once per folder, at the end
  Tables();  // built once, before the threads read them

  const bool json = options.rapportJson.has_value();
  const bool jsonSeul = json && *options.rapportJson == "-";
  Avancement avancement(ErreurEstTerminal(), liste.fichiers.size());
  SuiviLot suivi;
  suivi.fichierTermine = [&](std::size_t i, const ResultatFichier& r) {
    if (r.exporte && r.epsg == 0) {
      avancement.Effacer();
      SignalerErreur(CheminAffichableUtf8(liste.fichiers[i].source) + " : " + Traduire(kSansSysteme));
    }
    if (jsonSeul) return;
    avancement.Effacer();
    EcrireConsole(LigneFichier(liste.fichiers[i], r) + std::string(FinLigne()));
  };
  suivi.avancement = [&](std::size_t faits, int64_t lignes) { avancement.Montrer(faits, lignes); };

  const unsigned fils =
      options.fils != 0 ? options.fils : std::clamp(std::thread::hardware_concurrency(), 1u, kFilsMax);
  const std::vector<ResultatFichier> resultats = ConvertirLot(liste.fichiers, options, fils, arret, suivi);
  avancement.Effacer();

  const Totaux totaux = Additionner(resultats);
  int code = CodeSortie(totaux);
  if (!jsonSeul) EcrireConsole(LignesTotaux(totaux, FinLigne()));
  if (json && !EcrireRapportJson(*options.systeme, *options.rapportJson, RapportJson(liste.fichiers, resultats,
                                                                   options.verification, code))) {
    SignalerErreur(Formater("le rapport %s ne peut pas être écrit", {CheminAffichableUtf8(*options.rapportJson)}));
    if (code < kSortieEchec) code = kSortieEchec;
  }
  bool rapportsEcrits = true;
  for (std::size_t i = 0; i < resultats.size(); ++i) {
    const Issue issue = resultats[i].issue;
    const bool tente = issue != Issue::Interrompu && issue != Issue::NonTraite && !liste.fichiers[i].empechement;
    if (tente && !liste.fichiers[i].rapport.empty() && !resultats[i].rapportEcrit) rapportsEcrits = false;
  }
  if (!options.dossierRapport.empty() && (!EcrireIndex(options, liste.fichiers, resultats) || !rapportsEcrits)) {
    SignalerErreur(Formater("les rapports de %s ne peuvent pas être écrits", {CheminAffichableUtf8(options.dossierRapport)}));
    if (code < kSortieEchec) code = kSortieEchec;
  }
  SynchroniserDossiers();
  return code;
}

}  // namespace
}  // namespace quillon::lot

int main(int argc, char** argv) { return quillon::lot::Principal(argc, argv); }
