// Windowed mode on Windows: the main window over the Win32 API, and the
// message loop, which lets the modeless dialogs take Tab, Enter and Escape.
// Files and folders named on the command line (Explorer's "Ouvrir avec", a
// file dropped on the program's icon) are taken as a drop on the window.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "app/batch/platform.h"
#include "io/translation.h"
#include "ui/registry.h"
#include "ui/win32/main_window.h"
#include "ui/win32/seams_win32.h"
#include "ui/win32/win32_util.h"
#include "ui/windowed_mode.h"

namespace quillon {

int ModeFenetre(int argc, char** argv, ReglagesExecution& reglages) {
  // The windows speak the language chosen in ? > Langue, else the user's
  // interface language when it is German or Italian, French otherwise; the
  // system's own dialogs speak the system's.
  win32::PreferencesWin32 preferences;
  ChoisirLangue(LangueAuDemarrage(preferences));
  win32::DialoguesFichiersWin32 dialogues;
  win32::BoitesMessagesWin32 messages;
  win32::FinProgrammeWin32 fin;
  win32::ProgrammesWin32 programmes;
  win32::DocumentsWin32 documents;
  Services services{dialogues, messages, fin, RegistreSysteme(), programmes, documents, preferences};
  AffichageFenetre affichage(messages);
  reglages.affichage = &affichage;

  win32::FenetreQuillonWin32 fenetre(reglages, services);
  if (!fenetre.Creer()) return 1;
  affichage.DefinirParent(fenetre.Handle());
  ::ShowWindow(fenetre.Handle(), SW_SHOWNORMAL);
  ::UpdateWindow(fenetre.Handle());
  // In UTF-8 from the system's wide command line, as quillon-lot reads its
  // own: the C runtime's argv cannot name every file.
  fenetre.DeposerAuDemarrage(lot::MotsProgramme(argc, argv));

  win32::BoucleMessages(fenetre.Handle());
  reglages.affichage = nullptr;
  // The program ends the same way whatever happened.
  return 0;
}

}  // namespace quillon
