// Windowed mode on Windows: the main window over the Win32 API, and the
// message loop, which lets the modeless dialogs take Tab, Enter and Escape.
#include <windows.h>
#include <commctrl.h>

#include "ui/registry.h"
#include "ui/win32/main_window.h"
#include "ui/win32/seams_win32.h"
#include "ui/windowed_mode.h"

namespace quillon {

int ModeFenetre(int, char**, ReglagesExecution& reglages) {
  INITCOMMONCONTROLSEX controles{sizeof controles, ICC_STANDARD_CLASSES};
  ::InitCommonControlsEx(&controles);

  win32::DialoguesFichiersWin32 dialogues;
  win32::BoitesMessagesWin32 messages;
  win32::FinProgrammeWin32 fin;
  win32::ProgrammesWin32 programmes;
  win32::DocumentsWin32 documents;
  Services services{dialogues, messages, fin, RegistreSysteme(), programmes, documents};
  AffichageFenetre affichage(messages);
  reglages.affichage = &affichage;

  win32::FenetreQuillonWin32 fenetre(reglages, services);
  if (!fenetre.Creer()) return 1;
  affichage.DefinirParent(fenetre.Handle());
  ::ShowWindow(fenetre.Handle(), SW_SHOWNORMAL);
  ::UpdateWindow(fenetre.Handle());

  win32::BoucleMessages(fenetre.Handle());
  reglages.affichage = nullptr;
  // The program ends the same way whatever happened.
  return 0;
}

}  // namespace quillon
