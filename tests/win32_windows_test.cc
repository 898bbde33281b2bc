// The Win32 windows themselves, with fake services: created for real and
// driven through window messages, as a user's clicks reach them. Runs under
// wine (make test-windows).
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "conversion/run_settings.h"
#include "test_support.h"
#include "ui/win32/main_window.h"
#include "ui/win32/win32_util.h"
#include "window_fakes.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

std::string Lire(const fs::path& chemin) {
  std::ifstream flux(chemin, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(flux), std::istreambuf_iterator<char>());
}

// The main window over fakes, in a folder of its own that is the current
// folder: the paths the fake dialogs give are relative.
struct BancWin32 : FauxServices {
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;
  fs::path dossier;
  fs::path avant = fs::current_path();
  win32::FenetreQuillonWin32 fenetre{reglages, services};

  BancWin32() {
    dossier = fs::temp_directory_path() / ("quillon-fenetres-" + std::to_string(::GetCurrentProcessId()) + "-" +
                                           std::to_string(::GetTickCount()));
    fs::create_directories(dossier);
    fs::current_path(dossier);
    InitialiserTables(reglages);
    reglages.affichage = &affichage;
    EXPECT_TRUE(fenetre.Creer());
    affichage.DefinirParent(fenetre.Handle());
    ::ShowWindow(fenetre.Handle(), SW_SHOWNORMAL);
  }
  ~BancWin32() {
    fs::current_path(avant);
    std::error_code ec;
    fs::remove_all(dossier, ec);
  }

  void Menu(Commande commande) {
    ::SendMessageW(fenetre.Handle(), WM_COMMAND, MAKEWPARAM(win32::IdCommande(commande), 0), 0);
  }
  void Ouvrir(const char* nom, int index) {
    dialogues.reponses.push_back({nom, index});
    Menu(Commande::Ouvrir);
  }
  void EnregistrerSous(const char* nom, int index) {
    dialogues.reponses.push_back({nom, index});
    Menu(Commande::EnregistrerSous);
  }
  bool Actif(Commande commande) {
    const UINT etat = ::GetMenuState(::GetMenu(fenetre.Handle()), win32::IdCommande(commande), MF_BYCOMMAND);
    return etat != static_cast<UINT>(-1) && (etat & (MF_GRAYED | MF_DISABLED)) == 0;
  }
  win32::DialogueOptionsWin32& DC() { return *fenetre.VueDialogue(Dialogue::DCVal); }
  // What a user's pick in a drop-down list sends.
  void Choisir(HWND liste, int index) {
    ::SendMessageW(liste, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    ::SendMessageW(::GetParent(liste), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(liste), CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(liste));
  }
  int Selection(HWND liste) { return static_cast<int>(::SendMessageW(liste, CB_GETCURSEL, 0, 0)); }
};

std::string Texte(HWND fenetre) {
  wchar_t texte[256] = {};
  ::GetWindowTextW(fenetre, texte, 256);
  return Utf8(texte);
}

// The states themselves are the logic's (window_logic_test.cc): the entries
// follow them, and a disabled entry's command is not taken.
TEST(FenetresWin32, MenusSuiventLaLogique) {
  BancWin32 banc;
  EXPECT_EQ(Texte(banc.fenetre.Handle()), "Convertir fichier de points aux formats KQ");
  banc.Ouvrir("s.ptv", 1);
  EXPECT_TRUE(banc.Actif(Commande::Fermer) && banc.Actif(Commande::EnregistrerSous));
  banc.Menu(Commande::Fermer);
  for (Commande c : {Commande::Fermer, Commande::EnregistrerSous, Commande::MettreEnPage, Commande::Imprimer}) {
    EXPECT_FALSE(banc.Actif(c));
  }
  EXPECT_TRUE(banc.Actif(Commande::Ouvrir) && banc.Actif(Commande::Quitter) && banc.Actif(Commande::APropos));
  banc.Menu(Commande::EnregistrerSous);
  EXPECT_EQ(banc.dialogues.filtres.size(), 1u);
}

// Through the windows: Ouvrir with the DC filter, Enregistrer sous, the
// dialog's choice kept by Abandonner and lost by the title bar, then
// Convertir with OD; target and log compared with those kept as data.
TEST(FenetresWin32, ConversionDCParLeDialogue) {
  BancWin32 banc;
  fs::copy_file(fs::path(QUILLON_SAMPLES_DIR) / "lot12.pts", banc.dossier / "lot12.pts");
  banc.Ouvrir("lot12.pts", 3);
  banc.EnregistrerSous("lot12.ptv", 1);
  win32::DialogueOptionsWin32& dialogue = banc.DC();
  ASSERT_TRUE(::IsWindowVisible(dialogue.Handle()));
  EXPECT_EQ(Texte(dialogue.Handle()), "Convertir fichier de points DC en points Val");
  const HWND theme = dialogue.Controle("lstTheme");
  EXPECT_EQ(banc.Selection(theme), 0);
  EXPECT_EQ(::GetFocus(), dialogue.Controle("btnConvertir"));

  banc.Choisir(theme, 1);
  EXPECT_EQ(dialogue.Logique().GroupeTheme(), 3);
  ::SendMessageW(dialogue.Controle("btnAbandonner"), BM_CLICK, 0, 0);
  EXPECT_FALSE(::IsWindowVisible(dialogue.Handle()));
  banc.EnregistrerSous("lot12.ptv", 1);
  EXPECT_EQ(banc.Selection(dialogue.Controle("lstTheme")), 1) << "kept while hidden";

  ::SendMessageW(dialogue.Handle(), WM_CLOSE, 0, 0);  // the title bar's close button
  EXPECT_EQ(dialogue.Handle(), nullptr);
  banc.EnregistrerSous("lot12.ptv", 1);
  EXPECT_EQ(banc.Selection(dialogue.Controle("lstTheme")), 0) << "loaded anew";
  EXPECT_EQ(dialogue.Logique().GroupeTheme(), 2);
  EXPECT_FALSE(fs::exists(banc.dossier / "lot12.ptv"));

  banc.Choisir(dialogue.Controle("lstTheme"), 1);
  bool visible = true;
  banc.boites.pendantLaBoite = [&] { visible = ::IsWindowVisible(dialogue.Handle()); };
  ::SendMessageW(dialogue.Controle("btnConvertir"), BM_CLICK, 0, 0);
  EXPECT_FALSE(visible) << "hidden before the summary shows";
  ASSERT_EQ(banc.boites.boites.size(), 1u);
  EXPECT_EQ(banc.boites.boites[0].titre, "Quillon");
  const fs::path attendus = fs::path(QUILLON_WINDOWS_DIR) / "fenetres";
  EXPECT_EQ(Lire(banc.dossier / "lot12.ptv"), Lire(attendus / "attendu.ptv"));
  EXPECT_EQ(MasquerDate(Lire(banc.dossier / "lot12.pts.log")), Lire(attendus / "attendu.log"));
  EXPECT_EQ(banc.fin.appels, 0);
}

TEST(FenetresWin32, AProposSeChargeEtSeFerme) {
  for (const WPARAM commande : {IDOK, IDCANCEL}) {
    BancWin32 banc;
    banc.Menu(Commande::APropos);
    win32::AProposWin32* boite = banc.fenetre.APropos();
    ASSERT_NE(boite, nullptr);
    EXPECT_EQ(Texte(boite->Handle()), "A propos de Quillon");
    EXPECT_EQ(Texte(boite->Controle("lblVersion")), "Version 0.5.5");
    EXPECT_EQ(Texte(boite->Controle("cmdSysInfo")), "&System Info...");
    ::SendMessageW(boite->Controle("cmdSysInfo"), BM_CLICK, 0, 0);  // an empty registry
    EXPECT_EQ(banc.boites.boites.size(), 1u);
    ::SendMessageW(boite->Handle(), WM_COMMAND, commande, 0);  // Enter, Escape
    EXPECT_EQ(boite->Handle(), nullptr);
  }
}

TEST(FenetresWin32, FermerLaFenetreTermineLeProgramme) {
  BancWin32 banc;
  banc.Menu(Commande::APropos);
  ::SendMessageW(banc.fenetre.Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(banc.fin.appels, 1);
  banc.Menu(Commande::Quitter);
  EXPECT_EQ(banc.fin.appels, 2);
}

}  // namespace
}  // namespace quillon::test
