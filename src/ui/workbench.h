// The main window's workbench: where a delivery is checked without leaving
// the window. Files and folders come in (dropped, picked from the Fichier
// menu, named on the command line); a batch dialog asks what the batch
// needs; the batch runs on quillon-lot's engine off the window's thread,
// watched by a progress bar with Annuler; every file checked gets a row of
// the table; the file selected is shown: its points as the check report
// draws them, its rejected lines and what the checks found, with buttons
// for its report, the batch's report, an export and its folder.
//
// Decided here, without any toolkit; each front end only shows what the
// workbench holds when told to (VueAtelier) and hands back the user's
// clicks, drags and wheel turns.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "conversion/run_settings.h"
#include "ui/batch_dialog.h"
#include "ui/checked_files.h"
#include "ui/file_actions.h"
#include "ui/map_plan.h"
#include "ui/seams.h"
#include "ui/shown_file.h"
#include "ui/window_batch.h"

namespace quillon {

// What changed, for the view to show again.
enum Partie : unsigned {
  kPartieTable = 1,        // the rows, their order or the row selected
  kPartieAvancement = 2,   // the progress bar and Annuler
  kPartieFichier = 4,      // the file shown: its picture and lists
  kPartieCarte = 8,        // the picture alone (the view moved, a point chosen)
  kPartieActions = 16,     // which buttons are live
};

class VueAtelier {
 public:
  virtual ~VueAtelier() = default;
  virtual Parent Fenetre() = 0;
  // Shows the batch dialog and waits for it: true for Contrôler.
  virtual bool MontrerDialogueLot(LogiqueDialogueLot& dialogue) = 0;
  // Shows again the parts named (a mask of Partie).
  virtual void Rafraichir(unsigned parties) = 0;
  // From any thread: asks the window's thread to call
  // Atelier::TraiterEvenements soon.
  virtual void Reveiller() = 0;
};

struct Avancement {
  bool enCours = false;
  std::size_t faits = 0, total = 0;
  double lignesParSeconde = 0;
  std::string Texte() const;  // "12 / 300 fichiers — 45 000 lignes/s"
};

class Atelier {
 public:
  Atelier(ReglagesExecution& reglages, Services& services, VueAtelier& vue);
  ~Atelier();

  // --- Bringing files in ---------------------------------------------------
  // Files and folders dropped on the window (or named on its command
  // line): the batch dialog, then the batch. Other kinds of files, and
  // folders without point files, get a row "non traité" with their reason.
  void Deposer(const std::vector<std::string>& chemins);
  void mnuControlerFichiers_Click();
  void mnuControlerDossier_Click();
  // A run of the menus (Ouvrir… then Enregistrer sous…) that completed:
  // its file joins the table and is shown.
  void AjouterExecution(LigneFichier ligne);

  // --- Watching the run ----------------------------------------------------
  // What the batch's and the reading's threads told, taken on the window's
  // thread.
  void TraiterEvenements();
  const Avancement& EtatAvancement() const { return avancement_; }
  void btnAnnuler_Click();
  // The window is being closed: during a batch, asks, then stops it and
  // waits for the files under way. False: the window stays.
  bool PeutFermer();

  // --- The table -----------------------------------------------------------
  const TableFichiers& Table() const { return table_; }
  std::optional<std::size_t> RangChoisi() const;
  void Table_Clic(std::size_t rang);
  void Table_Entete(int colonne);

  // --- The file shown --------------------------------------------------------
  // Null while nothing is shown, or while it is read.
  const FichierMontre* Montre() const { return lu_ ? montre_.get() : nullptr; }
  const std::string& MessageFichier() const { return messageFichier_; }  // "Lecture…", or why it cannot be shown
  const VueCarte& Vue() const { return vue_; }
  std::optional<uint32_t> LigneChoisie() const { return ligneChoisie_; }
  Dessin Dessiner() const;
  void Carte_Taille(int largeur, int hauteur);
  void Carte_Molette(int delta, double px, double py);
  void Carte_Glisser(double dx, double dy);
  // A click without a drag: the point under it is chosen, and its row in
  // the lists.
  void Carte_Clic(double px, double py);
  // The tooltip for the pixel: the line, its identity and its messages;
  // empty where there is no point.
  std::string Carte_Survol(double px, double py) const;
  void btnVueDEnsemble_Click();
  // A row of the rejected lines (`rejets`) or of the checks clicked: its
  // point is centred and ringed.
  void Liste_Clic(bool rejets, std::size_t rang);
  // The row of a list that is about the chosen line, for the view to
  // select it when a point was clicked.
  std::optional<std::size_t> RangDansListe(bool rejets) const;

  // --- The buttons -----------------------------------------------------------
  bool FichierActif() const { return Montre() != nullptr; }
  bool LotActif() const { return table_.Taille() > 0 && !lot_.EnCours(); }
  void btnVoirRapport_Click();
  void btnVoirRapportLot_Click();
  void btnExporter_Click();
  void btnOuvrirDossier_Click();

  // The batch dialog's choices, kept while the program runs.
  ChoixLot& Choix() { return choix_; }

 private:
  void Lancer(const std::vector<std::string>& chemins);
  void Fin();
  void Choisir(std::size_t index);
  void Lire(std::size_t index);
  void Poster(std::function<void()> tache);
  void Centrer(uint32_t ligne);
  FichierRapporte Rapporte() const;

  ReglagesExecution& reglages_;
  Services& services_;
  VueAtelier& vueAtelier_;
  ChoixLot choix_;
  TableFichiers table_;
  // The files of the batch under way, and their rows in the table.
  std::vector<lot::FichierLot> fichiersLot_;
  std::vector<std::size_t> lignesLot_;
  LotFenetre lot_;
  Avancement avancement_;
  std::optional<std::size_t> choisi_;  // index in the table

  std::unique_ptr<FichierMontre> montre_;
  bool lu_ = false;
  std::string messageFichier_;
  uint64_t lecture_ = 0;  // the reading that the shown file waits for
  std::thread lecteur_;
  VueCarte vue_;
  std::optional<uint32_t> ligneChoisie_;

  std::mutex verrou_;
  std::vector<std::function<void()>> taches_;
};

}  // namespace quillon
