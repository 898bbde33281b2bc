// frmQuillon on Win32: the main window and its menu bar, drawn from the menu
// table and handed to the window logic; it owns the dialogs it shows. Its
// client area is the workbench (workbench_view.h); files and folders
// dropped on it from Explorer go to the workbench.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <memory>
#include <string>
#include <vector>

#include "conversion/run_settings.h"
#include "ui/win32/about_box.h"
#include "ui/win32/batch_dialog_win32.h"
#include "ui/win32/option_dialogs.h"
#include "ui/win32/printing.h"
#include "ui/win32/window_base.h"
#include "ui/win32/workbench_view.h"
#include "ui/window_logic.h"

namespace quillon::win32 {

// The menu identifier of a command: 100 and up.
inline int IdCommande(Commande commande) { return 100 + static_cast<int>(commande); }

// Posted by Reveiller: the workbench has something to take on this thread.
inline constexpr UINT kMessageReveil = WM_APP + 1;
// Posted by DeposerAuDemarrage: the files named on the command line.
inline constexpr UINT kMessageDepot = WM_APP + 2;

class FenetreQuillonWin32 : public FenetreWin32, private VueQuillon {
 public:
  FenetreQuillonWin32(ReglagesExecution& reglages, Services& services);
  ~FenetreQuillonWin32() override;

  // Creates the window, hidden; false when Windows refuses.
  bool Creer();
  LogiqueQuillon& Logique() { return logique_; }
  // The dialogs, once shown (null before).
  DialogueOptionsWin32* VueDialogue(quillon::Dialogue genre) const;
  AProposWin32* APropos() const { return aPropos_.get(); }
  // The batch dialog while it shows (null otherwise), and the workbench.
  DialogueLotWin32* DialogueLot() const { return dialogueLot_; }
  const PanneauAtelier& Panneau() const { return panneau_; }
  // Files and folders named on the command line: taken as a drop once the
  // window's messages run.
  void DeposerAuDemarrage(std::vector<std::string> chemins);
  // The pages of the file shown, on `feuilles` in `zone`; false when no
  // file shows or a sheet is refused.
  bool ImprimerSur(Feuilles& feuilles, const ZoneMm& zone);

 protected:
  LRESULT Traiter(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  Parent Fenetre() override { return Handle(); }
  void ActiverMenusFichier(bool actifs) override;
  void MontrerDialogue(LogiqueOptions& dialogue) override;
  void MontrerAPropos() override;
  bool MontrerDialogueLot(LogiqueDialogueLot& dialogue) override;
  void Rafraichir(unsigned parties) override;
  void Reveiller() override;
  void Dimensionner(UINT dpi);
  void Deposer(HDROP depot);
  LRESULT CommandeRecue(WPARAM wparam, LPARAM lparam);
  void MettreEnPage();
  void Imprimer();
  void CocherLangue();

  Services& services_;
  LogiqueQuillon logique_;
  std::unique_ptr<DialogueOptionsWin32> valPrecFiab_;
  std::unique_ptr<DialogueOptionsWin32> dcVal_;
  std::unique_ptr<AProposWin32> aPropos_;
  PanneauAtelier panneau_;
  DialogueLotWin32* dialogueLot_ = nullptr;
  std::vector<std::string> depotDemarrage_;
  // The printer and paper chosen, shared by both dialogs (null: the
  // default printer's), and the margins in hundredths of a millimetre.
  HGLOBAL modeImprimante_ = nullptr, nomsImprimante_ = nullptr;
  RECT marges_{1000, 1000, 1000, 1000};
};

}  // namespace quillon::win32
