// Shows one window of the Win32 front end by name, for taking its picture
// under wine: quillon_apercu principale|val-prec|dc-val|a-propos
// Prints the window's rectangle on screen ("X Y W H") once it shows, then
// runs until it is closed. The dialogs are reached through the main window
// as a user reaches them, with file dialogs that answer at once; nothing is
// converted.
#include <windows.h>

#include <cstdio>
#include <cstring>

#include "ui/registry.h"
#include "ui/win32/main_window.h"
#include "ui/win32/seams_win32.h"

namespace {

struct DialoguesDApercu : quillon::DialoguesFichiers {
  int index = 1;
  std::optional<quillon::FichierChoisi> Ouvrir(quillon::Parent, const std::string&, const std::string&,
                                               int) override {
    return quillon::FichierChoisi{"lot12", index};
  }
  std::optional<quillon::FichierChoisi> EnregistrerSous(quillon::Parent, const std::string&, const std::string&,
                                                        int) override {
    return quillon::FichierChoisi{"lot12", 1};
  }
  std::vector<std::string> OuvrirPlusieurs(quillon::Parent, const std::string&, const std::string&) override {
    return {};
  }
  std::optional<std::string> ChoisirDossier(quillon::Parent, const std::string&, const std::string&) override {
    return std::nullopt;
  }
};

}  // namespace

int main(int argc, char** argv) {
  const char* nom = argc > 1 ? argv[1] : "";
  DialoguesDApercu dialogues;
  quillon::win32::BoitesMessagesWin32 messages;
  quillon::win32::FinProgrammeWin32 fin;
  quillon::win32::ProgrammesWin32 programmes;
  quillon::win32::DocumentsWin32 documents;
  quillon::Services services{dialogues, messages, fin, quillon::RegistreSysteme(), programmes, documents};
  quillon::ReglagesExecution reglages;
  quillon::InitialiserTables(reglages);
  quillon::win32::FenetreQuillonWin32 fenetre(reglages, services);
  if (!fenetre.Creer()) return 1;
  ::SetWindowPos(fenetre.Handle(), nullptr, 40, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ::ShowWindow(fenetre.Handle(), SW_SHOWNORMAL);

  HWND montree = fenetre.Handle();
  quillon::LogiqueQuillon& logique = fenetre.Logique();
  if (std::strcmp(nom, "val-prec") == 0 || std::strcmp(nom, "dc-val") == 0) {
    const bool valeur = std::strcmp(nom, "val-prec") == 0;
    dialogues.index = valeur ? 1 : 3;
    logique.Commander(quillon::Commande::Ouvrir);
    logique.Commander(quillon::Commande::EnregistrerSous);
    montree = fenetre.VueDialogue(valeur ? quillon::Dialogue::ValPrecFiab : quillon::Dialogue::DCVal)->Handle();
  } else if (std::strcmp(nom, "a-propos") == 0) {
    logique.Commander(quillon::Commande::APropos);
    montree = fenetre.APropos()->Handle();
  } else if (std::strcmp(nom, "principale") != 0) {
    std::fputs("usage: quillon_apercu principale|val-prec|dc-val|a-propos\n", stderr);
    return 2;
  }
  if (montree != fenetre.Handle()) {
    ::SetWindowPos(montree, HWND_TOP, 80, 120, 0, 0, SWP_NOSIZE);
  }
  ::UpdateWindow(montree);
  RECT rect{};
  ::GetWindowRect(montree, &rect);
  std::printf("%ld %ld %ld %ld\n", rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
  std::fflush(stdout);

  quillon::win32::BoucleMessages(fenetre.Handle());
  return 0;
}
