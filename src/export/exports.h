// The exports of one source: its converted points and its rejected lines,
// in any of the formats, beside the run's target. The conversion's own run
// feeds them: each line it converts or rejects is handed, with its target
// line and its messages, to a second thread that makes the line's record
// and writes it in every format asked for while the run goes on: one pass
// over the source, and a first one, over the coordinates alone, only for a
// GeoPackage whose system is not given.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "conversion/conversions.h"
#include "conversion/observer.h"
#include "io/journal.h"
#include "io/translation.h"
#include "model/point.h"
#include "export/export_writer.h"

namespace quillon {

struct DemandeExport {
  std::string source;
  Conversion conversion = Conversion::ValEnPrecFiab;
  OptionsConversion options;
  std::string base;  // the exports' path without its extension
  std::vector<FormatExport> formats;
  int epsg = 0;      // 0: guessed (SystemeDeLEmprise)
  const std::atomic<bool>* arret = nullptr;
  SystemeFichiers* systeme = &SystemeFichiersReel();
};

struct BilanExport {
  bool complet = false;
  bool interrompu = false;
  ErreurFatale erreur;  // when neither complete nor stopped
  int epsg = 0;         // the system written; 0 when none could be told
  int64_t points = 0;
  int64_t rejets = 0;
};

// What standard error and the check report say when no system could be
// told (UTF-8), untranslated.
inline constexpr const char* kSansSysteme =
    N_("système de coordonnées inconnu, exports sans système (--srs=EPSG:CODE)");

// The system of an extent: EPSG:2056 for Y from 2,480,000 to 2,850,000 and
// X from 1,070,000 to 1,300,000, EPSG:21781 for the same less 2,000,000
// and 1,000,000; 0 for anything else, and for no point at all. A system not
// given is guessed from the extent of every point exported, converted or
// rejected: the lines whose Y and X read (the lines the MD01 run skips
// aside), the same whether the run's exports or the GeoPackage's first
// pass reads them.
int SystemeDeLEmprise(const Emprise& emprise);

// What the writers must know before the first record: the system when it
// is given, or when the GeoPackage, whose geometries carry it, is asked
// for: then a first pass over the source reads the coordinates of each
// line alone and guesses it. Otherwise the system is guessed at the end of
// the run, from the points the writers were given. False when that pass
// failed or was stopped (`bilan` tells).
bool PreparerExport(const DemandeExport& demande, EnteteExport& entete, BilanExport& bilan);

// The exports of one run, as its observer. The run's thread only copies
// each line it hands over (blocks of lines go to the writers' thread, four
// at most at a time: memory stays the same whatever the source).
class ExportsEnCours : public ObservateurExecution {
 public:
  ExportsEnCours(const DemandeExport& demande, const EnteteExport& entete);
  // A run that did not complete: nothing is put in place.
  ~ExportsEnCours() override;

  void Debut() override;
  void Ligne(const LigneObservee& ligne) override;

  // After a completed run: every export in place, or none (the previous
  // files of those names stay).
  BilanExport Terminer();

  struct Lot;

 private:
  void Travailler();
  void Arreter(bool abandon);
  void Transmettre();
  // The writers' thread's steps.
  void Commencer();
  void EcrireLot(const Lot& lot);
  void Finir(bool abandon);
  void Echouer(const ErreurFatale& erreur);

  DemandeExport demande_;
  EnteteExport entete_;
  // The writers' thread's, read once it has ended.
  BilanExport bilan_;
  std::vector<std::unique_ptr<EcrivainExport>> ecrivains_;
  bool echec_ = false;
  Emprise emprise_;  // of every point exported
  ThemesTrouves themes_;  // the run's thread's until the run is over
  // The themes of the points as their target lines give them (a blank
  // theme given its group's), their categories' in the styles.
  ThemesTrouves themesCibles_;
  Journal muet_;
  Point point_;
  Enregistrement enregistrement_;

  std::thread fil_;
  std::mutex verrou_;
  std::condition_variable signal_;
  std::vector<std::unique_ptr<Lot>> lots_;
  std::vector<Lot*> pleins_, libres_;
  bool fin_ = false, abandon_ = false;
  Lot* courant_ = nullptr;
};

// Every export asked for, from a pass of its own over the source (the
// windows, once a run is over): a run of the conversion that writes no
// target and no log, with the exports as its observer; and before it the
// GeoPackage's first pass when it has to guess the system.
BilanExport Exporter(const DemandeExport& demande);

}  // namespace quillon
