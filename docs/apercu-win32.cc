// Shows one window of the Win32 front end by name, for taking its picture
// under wine: quillon_apercu principale|val-prec|dc-val|a-propos|atelier
// Prints the window's rectangle on screen ("X Y W H") once it shows, then
// runs until it is closed. The dialogs are reached through the main window
// as a user reaches them, with file dialogs that answer at once; nothing is
// converted. "atelier": a delivery of five files written into the temporary
// folder is dropped on the window and checked, the batch dialog answered
// at once; the rectangle is printed once the file with rejected lines is
// shown.
#include <windows.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "ui/registry.h"
#include "ui/win32/main_window.h"
#include "ui/win32/seams_win32.h"
#include "ui/win32/win32_util.h"

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

quillon::win32::FenetreQuillonWin32* principale = nullptr;

// Six-figure fixed decimals, as the files hold them.
std::string Coordonnee(double v) {
  char texte[32];
  const auto fin = std::to_chars(texte, texte + sizeof texte, v, std::chars_format::fixed, 3);
  return std::string(texte, fin.ptr);
}

// A file of `n` points on a gently curved grid; every `rejet`-th line with
// a number that cannot be read.
void EcrireLivraison(const std::filesystem::path& dossier) {
  std::filesystem::create_directories(dossier);
  const struct {
    const char* nom;
    int n, rejet;
    double y, x;
  } fichiers[] = {{"parcelle-02.ptv", 90, 0, 2600000, 1200000},
                  {"parcelle-07.ptv", 240, 37, 2600300, 1200150},
                  {"parcelle-10.ptv", 120, 0, 2600600, 1200000},
                  {"parcelle-11.ptv", 60, 0, 2600100, 1200400},
                  {"parcelle-12.ptv", 150, 0, 2600450, 1200380}};
  for (const auto& f : fichiers) {
    std::ofstream sortie(dossier / f.nom, std::ios::binary);
    for (int i = 0; i < f.n; ++i) {
      const double y = f.y + (i % 20) * 8.5 + (i / 20) * 1.5, x = f.x + (i / 20) * 9.0 + (i % 20) * (i % 20) * 0.08;
      std::string numero = std::to_string(100000 + i);
      if (f.rejet != 0 && i % f.rejet == 5) numero.back() = 'x';
      sortie << "01  12  34      " << numero << " 1OR 11.  " << Coordonnee(y) << ' ' << Coordonnee(x)
             << "  450.120        borne        BO\r\n";
    }
  }
}

// The batch dialog answered at once: Contrôler.
void CALLBACK Controler(HWND, UINT, UINT_PTR id, DWORD) {
  if (principale->DialogueLot() == nullptr) return;
  ::KillTimer(nullptr, id);
  ::SendMessageW(principale->DialogueLot()->Controle("btnControler"), BM_CLICK, 0, 0);
}

// Once the batch has ended and its file with problems is shown: the
// window's rectangle.
void CALLBACK Pret(HWND, UINT, UINT_PTR id, DWORD) {
  quillon::Atelier& atelier = principale->Logique().Travail();
  if (atelier.EtatAvancement().enCours || atelier.Montre() == nullptr) return;
  ::KillTimer(nullptr, id);
  ::UpdateWindow(principale->Handle());
  RECT rect{};
  ::GetWindowRect(principale->Handle(), &rect);
  std::printf("%ld %ld %ld %ld\n", rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
  std::fflush(stdout);
}

// Choices that last while the picture is taken: the user's are left alone.
struct PreferencesDApercu : quillon::Preferences {
  std::string Lire(const std::string&) override { return {}; }
  void Ecrire(const std::string&, const std::string&) override {}
};

}  // namespace

int main(int argc, char** argv) {
  const char* nom = argc > 1 ? argv[1] : "";
  DialoguesDApercu dialogues;
  quillon::win32::BoitesMessagesWin32 messages;
  quillon::win32::FinProgrammeWin32 fin;
  quillon::win32::ProgrammesWin32 programmes;
  quillon::win32::DocumentsWin32 documents;
  PreferencesDApercu preferences;
  quillon::Services services{dialogues, messages, fin, quillon::RegistreSysteme(), programmes, documents,
                             preferences};
  // In the user's interface language, or APERCU_LANGUE's (de, it): wine
  // gives the interface the host's locale only when it is installed.
  const char* langue = std::getenv("APERCU_LANGUE");
  quillon::ChoisirLangue(quillon::LangueDuCode(langue != nullptr ? langue : "").value_or(quillon::LangueDuSysteme()));
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
  } else if (std::strcmp(nom, "atelier") == 0) {
    wchar_t temporaire[MAX_PATH + 1] = {};
    ::GetTempPathW(MAX_PATH + 1, temporaire);
    const std::filesystem::path livraison = std::filesystem::path(temporaire) / "quillon-apercu" / "livraison";
    EcrireLivraison(livraison);
    principale = &fenetre;
    ::SetTimer(nullptr, 0, 50, Controler);
    ::SetTimer(nullptr, 0, 100, Pret);
    fenetre.DeposerAuDemarrage({quillon::Utf8(livraison.wstring())});
    quillon::win32::BoucleMessages(fenetre.Handle());
    return 0;
  } else if (std::strcmp(nom, "principale") != 0) {
    std::fputs("usage: quillon_apercu principale|val-prec|dc-val|a-propos|atelier\n", stderr);
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
