// The batch dialog of the main window (frmControlerLot): what a batch of
// dropped files and folders needs, with the words of the option dialogs.
// Its choices stay from one batch to the next while the program runs, as
// the option dialogs' do.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/batch/options.h"
#include "ui/forms.h"
#include "ui/seams.h"

namespace quillon {

struct ChoixLot {
  int16_t classeEchelle = 1;       // 1:250, as the option dialog starts
  int32_t groupeTheme = 2;         // CS
  lot::CiblePtp ciblePtp = lot::CiblePtp::Valeur;
  bool convertir = false;          // false: check only, no target written
  bool recursif = true;            // the subfolders of a folder too
  bool dansUnDossier = false;      // false: beside the sources
  std::string dossier;             // the folder picked, kept while the program runs
  std::array<bool, 4> exports{};   // GeoPackage, CSV, GeoJSON, DXF
  int epsg = 0;                    // 0: guessed from the points
};

// The dialog's form: its lists, boxes and buttons in tab order.
const Formulaire& FormulaireLot();
// The entries of its lists, by name ("lstPtp", "lstAction", "lstDestination",
// "lstSysteme"; "lstEchelle" and "lstTheme" as in the option dialogs).
std::span<const std::string_view> EntreesListeLot(std::string_view nom);

// The batch's options from the choices and the sources.
lot::OptionsLot OptionsDuChoix(const ChoixLot& choix, const std::vector<std::string>& sources);

class LogiqueDialogueLot {
 public:
  LogiqueDialogueLot(ChoixLot& choix, DialoguesFichiers& dialogues, BoitesMessages& messages)
      : choix_(choix), dialogues_(dialogues), messages_(messages) {}

  const ChoixLot& Choix() const { return choix_; }
  // The entry of a list that the choices select, and the text of the
  // folder's label.
  std::string_view Selection(std::string_view liste) const;
  std::string TexteDossier() const;
  bool Coche(std::string_view caseACocher) const;

  // A list's entry picked, a box ticked or not: any other text changes
  // nothing.
  void Liste_Click(std::string_view liste, std::string_view texte);
  void Case_Click(std::string_view caseACocher, bool cochee);
  // "Choisir…": the folder picker; the choice goes to "Dans un dossier".
  void btnDossier_Click(Parent parent);
  // "Contrôler": true when the batch may start (a folder picked where one
  // is asked for; a box says so otherwise).
  bool btnControler_Click(Parent parent);

 private:
  ChoixLot& choix_;
  DialoguesFichiers& dialogues_;
  BoitesMessages& messages_;
};

}  // namespace quillon
