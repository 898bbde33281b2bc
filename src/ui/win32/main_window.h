// frmQuillon on Win32: the main window and its menu bar, drawn from the menu
// table and handed to the window logic; it owns the dialogs it shows.
#pragma once

#include <memory>

#include "conversion/run_settings.h"
#include "ui/win32/about_box.h"
#include "ui/win32/option_dialogs.h"
#include "ui/win32/window_base.h"
#include "ui/window_logic.h"

namespace quillon::win32 {

// The menu identifier of a command: 100 and up.
inline int IdCommande(Commande commande) { return 100 + static_cast<int>(commande); }

// Posted by Reveiller: the workbench has something to take on this thread.
inline constexpr UINT kMessageReveil = WM_APP + 1;

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

  Services& services_;
  LogiqueQuillon logique_;
  std::unique_ptr<DialogueOptionsWin32> valPrecFiab_;
  std::unique_ptr<DialogueOptionsWin32> dcVal_;
  std::unique_ptr<AProposWin32> aPropos_;
};

}  // namespace quillon::win32
