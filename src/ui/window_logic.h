// What the windows decide, without any toolkit: the main window's menus and
// the runs they start, the option dialogs' choices, the about box's System
// Info, and how a run's summary and fatal errors are shown. Each front end
// (Qt, Win32) is a thin view: it draws the forms of forms.h, hands every
// click to this logic, and does what the logic asks of it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "conversion/conversions.h"
#include "conversion/run_settings.h"
#include "io/display.h"
#include "ui/forms.h"
#include "ui/seams.h"
#include "ui/workbench.h"

namespace quillon {

class Registre;

enum class Dialogue { ValPrecFiab, DCVal };

class VueQuillon;

// The windows' runs. Each is watched for its check report: the summary box
// keeps its text and gains a button "Voir le rapport", which writes the
// run's report into the user's temporary folder and opens it.
class ExecutionsFenetre {
 public:
  // A run that completes joins the workbench's table, when there is one.
  ExecutionsFenetre(ReglagesExecution& reglages, Services& services, VueQuillon& vue, Atelier* atelier = nullptr)
      : reglages_(reglages), services_(services), vue_(vue), atelier_(atelier) {}
  // As the run below: false after a fatal error, which it has shown.
  bool Convertir(Conversion conversion, const OptionsConversion& options);

 private:
  ReglagesExecution& reglages_;
  Services& services_;
  VueQuillon& vue_;
  Atelier* atelier_;
};

// The state of one option dialog, which exists once in the program. Its
// buttons only hide it, so its choices stay from one showing to the next;
// closed from its title bar it is unloaded, and the next showing loads it
// anew with the initial choices.
class LogiqueOptions {
 public:
  LogiqueOptions(Dialogue genre, ExecutionsFenetre& executions, FinProgramme& fin);

  Dialogue Genre() const { return genre_; }
  const Formulaire& Forme() const;

  // True once Form_Load has run and until the dialog is closed from its
  // title bar.
  bool Charge() const { return charge_; }
  // The initial choices: scale class 1, theme group 2. The view then fills
  // its lists and selects their first entries, which reports them through
  // lstEchelle_Click and lstTheme_Click.
  void Form_Load();
  // The text of the entry now selected: "250" ... "5000" give the scale
  // classes 1 to 6, "CS" and "OD" the theme groups 2 and 3; any other text
  // changes nothing.
  void lstEchelle_Click(std::string_view texte);
  void lstTheme_Click(std::string_view texte);
  // Once the view has hidden the dialog: runs the dialog's conversion with
  // the run settings' paths as they stand, and ends the program when the
  // run met a fatal error (which it has shown).
  void btnConvertir_Click();
  // Closed from the title bar: the choices go with it.
  void Form_Unload() { charge_ = false; }

  int16_t ClasseEchelle() const { return classeEchelle_; }
  int32_t GroupeTheme() const { return groupeTheme_; }

 private:
  Dialogue genre_;
  ExecutionsFenetre& executions_;
  FinProgramme& fin_;
  bool charge_ = false;
  int16_t classeEchelle_ = 1;
  int32_t groupeTheme_ = 2;
};

// What the main window's view does when its logic asks; and, as the
// workbench's view, the table, the progress and the file shown.
class VueQuillon : public VueAtelier {
 public:
  // Enables or disables Fermer and Enregistrer sous... together.
  virtual void ActiverMenusFichier(bool actifs) = 0;
  // Shows the dialog without waiting for it, in front; loads it first
  // (LogiqueOptions::Form_Load, then the lists) when it is not loaded.
  virtual void MontrerDialogue(LogiqueOptions& dialogue) = 0;
  // Shows the about box without waiting for it, loading it anew.
  virtual void MontrerAPropos() = 0;
};

// The language of the windows: the one chosen in ? > Langue, kept in the
// preferences under kCleLangue ("fr", "de", "it"; empty: the system's);
// and the entry of that menu to check.
inline constexpr std::string_view kCleLangue = "langue";
Langue LangueAuDemarrage(Preferences& preferences);
Commande CommandeLangue(Preferences& preferences);

// The main window frmQuillon: the user picks a source and a target through
// the standard open and save dialogs, and the window starts the conversion
// that the kinds of the two files call for, directly for a precision source,
// through an option dialog for a value or a DC source.
class LogiqueQuillon {
 public:
  LogiqueQuillon(ReglagesExecution& reglages, Services& services, VueQuillon& vue);

  // A menu command; Commande::Aucune and the entries never enabled do
  // nothing.
  void Commander(Commande commande);
  // Files and folders dropped on the window, or named on its command line.
  void Deposer(const std::vector<std::string>& chemins) { atelier_.Deposer(chemins); }
  Atelier& Travail() { return atelier_; }
  void mnuOuvrir_Click();
  void mnuComparer_Click();
  void mnuFermer_Click();
  void mnuEnregistrerSous_Click();
  void mnuQuitter_Click();
  void mnuAPropos_Click();
  // One of the languages' entries: the choice kept for the next start.
  void mnuLangue_Click(Commande commande);
  // The window closed from its title bar ends the program as Quitter does,
  // so that no hidden dialog keeps it running. During a batch, both ask
  // first, then stop it cleanly: false when the window is to stay.
  bool Form_QueryUnload() { return atelier_.PeutFermer(); }
  void Form_Unload();

  bool MenusFichierActifs() const { return menusFichierActifs_; }
  // Kind of the source picked by the filter of the open dialog.
  enum class TypeFichier : int32_t { Aucun = 0, Valeur = 1, PrecFiab = 2, DC = 3 };
  TypeFichier TypeFichierSource() const { return TypeFichierSource_; }
  LogiqueOptions& DialogueValPrecFiab() { return valPrecFiab_; }
  LogiqueOptions& DialogueDCVal() { return dcVal_; }

 private:
  void ActiverMenusFichier(bool actifs);

  ReglagesExecution& reglages_;
  Services& services_;
  VueQuillon& vue_;
  Atelier atelier_;
  ExecutionsFenetre executions_;
  bool menusFichierActifs_ = false;
  TypeFichier TypeFichierSource_ = TypeFichier::Aucun;
  LogiqueOptions valPrecFiab_;
  LogiqueOptions dcVal_;
};

// Starts the System Information tool where the registry says it is: the
// program named by "PATH" under "SOFTWARE\Microsoft\Shared Tools\MSINFO" when
// that value exists; otherwise "MSINFO32.EXE" in the folder named by "MSINFO"
// under "SOFTWARE\Microsoft\Shared Tools Location", if the file is there.
// When that gives no program, or the program does not start, one message box
// says the tool is unavailable. The tool runs on its own; nothing waits.
void StartSysInfo(Registre& registre, Programmes& programmes, BoitesMessages& messages, Parent parent);

// Windowed mode's way of showing a run's summary and fatal errors: message
// boxes over the main window.
class AffichageFenetre : public Affichage {
 public:
  explicit AffichageFenetre(BoitesMessages& messages) : messages_(messages) {}

  // The window the boxes belong to (the main window, once it exists).
  void DefinirParent(Parent parent) { parent_ = parent; }

  // The four lines joined by "\r\n", captioned with the application's title.
  void MontrerBilan(const ComptesBilan& comptes) override;
  // "Erreur fatale" with the error icon; whoever started the run then ends
  // the program.
  void MontrerErreurFatale(const ErreurFatale& erreur) override;

 private:
  BoitesMessages& messages_;
  Parent parent_ = nullptr;
};

}  // namespace quillon
