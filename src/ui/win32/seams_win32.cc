#include "ui/win32/seams_win32.h"

#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cwchar>
#include <vector>

#include "io/translation.h"
#include "ui/win32/win32_util.h"

namespace quillon::win32 {
namespace {

// "Desc|*.a|Desc 2|*.b" as the common dialogs take it: each piece ended by
// a NUL, the whole by a second one.
std::wstring FiltreWin32(const std::string& filtre) {
  std::wstring texte = Large(filtre);
  for (wchar_t& c : texte) {
    if (c == L'|') c = L'\0';
  }
  texte.push_back(L'\0');
  texte.push_back(L'\0');
  return texte;
}

std::optional<FichierChoisi> Choisir(bool ouvrir, Parent parent, const std::string& titre,
                                     const std::string& filtre, int indexFiltre) {
  const std::wstring filtres = FiltreWin32(filtre);
  const std::wstring legende = Large(titre);
  std::vector<wchar_t> nom(32768, L'\0');
  OPENFILENAMEW dialogue{};
  dialogue.lStructSize = sizeof dialogue;
  dialogue.hwndOwner = static_cast<HWND>(parent);
  dialogue.lpstrFilter = filtres.c_str();
  dialogue.nFilterIndex = static_cast<DWORD>(indexFiltre);
  dialogue.lpstrFile = nom.data();
  dialogue.nMaxFile = static_cast<DWORD>(nom.size());
  dialogue.lpstrTitle = legende.c_str();
  // Beyond the title, the filter and its index, the dialogs ask nothing of
  // the file: an existing target is replaced by the run, a missing source is
  // the run's fatal error.
  dialogue.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  const BOOL confirme = ouvrir ? ::GetOpenFileNameW(&dialogue) : ::GetSaveFileNameW(&dialogue);
  if (!confirme) return std::nullopt;
  return FichierChoisi{Utf8(nom.data()), static_cast<int>(dialogue.nFilterIndex)};
}

}  // namespace

std::optional<FichierChoisi> DialoguesFichiersWin32::Ouvrir(Parent parent, const std::string& titre,
                                                            const std::string& filtre, int indexFiltre) {
  return Choisir(true, parent, titre, filtre, indexFiltre);
}

std::optional<FichierChoisi> DialoguesFichiersWin32::EnregistrerSous(Parent parent, const std::string& titre,
                                                                     const std::string& filtre, int indexFiltre) {
  return Choisir(false, parent, titre, filtre, indexFiltre);
}

// Several files: the folder, then each name, NUL-separated, or one full
// path when one file was picked.
std::vector<std::string> DialoguesFichiersWin32::OuvrirPlusieurs(Parent parent, const std::string& titre,
                                                                 const std::string& filtre) {
  const std::wstring filtres = FiltreWin32(filtre);
  const std::wstring legende = Large(titre);
  std::vector<wchar_t> noms(1 << 20, L'\0');
  OPENFILENAMEW dialogue{};
  dialogue.lStructSize = sizeof dialogue;
  dialogue.hwndOwner = static_cast<HWND>(parent);
  dialogue.lpstrFilter = filtres.c_str();
  dialogue.nFilterIndex = 1;
  dialogue.lpstrFile = noms.data();
  dialogue.nMaxFile = static_cast<DWORD>(noms.size());
  dialogue.lpstrTitle = legende.c_str();
  dialogue.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_ALLOWMULTISELECT | OFN_FILEMUSTEXIST;
  if (!::GetOpenFileNameW(&dialogue)) return {};
  const std::wstring dossier = noms.data();
  std::vector<std::string> fichiers;
  for (const wchar_t* nom = noms.data() + dossier.size() + 1; *nom != L'\0'; nom += std::wcslen(nom) + 1) {
    fichiers.push_back(Utf8(dossier + (dossier.ends_with(L'\\') ? L"" : L"\\") + nom));
  }
  if (fichiers.empty()) fichiers.push_back(Utf8(dossier));
  return fichiers;
}

std::optional<std::string> DialoguesFichiersWin32::ChoisirDossier(Parent parent, const std::string& titre,
                                                                  const std::string&) {
  const std::wstring legende = Large(titre);
  BROWSEINFOW infos{};
  infos.hwndOwner = static_cast<HWND>(parent);
  infos.lpszTitle = legende.c_str();
  infos.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  PIDLIST_ABSOLUTE liste = ::SHBrowseForFolderW(&infos);
  if (liste == nullptr) return std::nullopt;
  wchar_t chemin[MAX_PATH] = {};
  const bool lu = ::SHGetPathFromIDListW(liste, chemin);
  ::CoTaskMemFree(liste);
  if (!lu) return std::nullopt;
  return Utf8(chemin);
}

void BoitesMessagesWin32::Message(Parent parent, const std::string& titre, const std::string& texte) {
  ::MessageBoxW(static_cast<HWND>(parent), Large(texte).c_str(), Large(titre).c_str(), MB_OK);
}

int BoitesMessagesWin32::MessageAvecBoutons(Parent parent, const std::string& titre, const std::string& texte,
                                            const std::vector<std::string>& boutons) {
  // Task dialogs come with common controls 6, which the manifest asks for;
  // without them, the box has its OK button alone.
  using TaskDialog = HRESULT(WINAPI*)(const TASKDIALOGCONFIG*, int*, int*, BOOL*);
  const auto dialogue = reinterpret_cast<TaskDialog>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"comctl32.dll"), "TaskDialogIndirect")));
  if (dialogue == nullptr) {
    Message(parent, titre, texte);
    return 0;
  }
  constexpr int kIdPremier = 100;
  const std::wstring legende = Large(titre), contenu = Large(texte);
  std::vector<std::wstring> textes;
  for (const std::string& bouton : boutons) textes.push_back(Large(bouton));
  std::vector<TASKDIALOG_BUTTON> autres;
  for (std::size_t k = 0; k < textes.size(); ++k) autres.push_back({kIdPremier + static_cast<int>(k), textes[k].c_str()});
  TASKDIALOGCONFIG config{};
  config.cbSize = sizeof config;
  config.hwndParent = static_cast<HWND>(parent);
  config.dwFlags = TDF_ALLOW_DIALOG_CANCELLATION | TDF_POSITION_RELATIVE_TO_WINDOW;
  config.dwCommonButtons = TDCBF_OK_BUTTON;
  config.pszWindowTitle = legende.c_str();
  config.pszContent = contenu.c_str();
  config.cButtons = static_cast<UINT>(autres.size());
  config.pButtons = autres.data();
  config.nDefaultButton = IDOK;
  int choisi = 0;
  if (FAILED(dialogue(&config, &choisi, nullptr, nullptr))) {
    Message(parent, titre, texte);
    return 0;
  }
  const int rang = choisi - kIdPremier + 1;
  return rang >= 1 && rang <= static_cast<int>(boutons.size()) ? rang : 0;
}

void BoitesMessagesWin32::ErreurFatale(Parent parent, const std::string& texte) {
  ::MessageBoxW(static_cast<HWND>(parent), Large(texte).c_str(), Large(Traduire("Erreur fatale")).c_str(), MB_OK | MB_ICONERROR);
}

bool BoitesMessagesWin32::Question(Parent parent, const std::string& titre, const std::string& texte) {
  return ::MessageBoxW(static_cast<HWND>(parent), Large(texte).c_str(), Large(titre).c_str(),
                       MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

namespace {

BOOL CALLBACK Cacher(HWND fenetre, LPARAM) {
  ::ShowWindow(fenetre, SW_HIDE);
  return TRUE;
}

}  // namespace

void FinProgrammeWin32::Terminer() {
  // Every top-level window of this thread: the main window, its dialogs.
  ::EnumThreadWindows(::GetCurrentThreadId(), Cacher, 0);
  ::PostQuitMessage(0);
}

bool ProgrammesWin32::FichierExiste(const std::string& chemin) {
  const DWORD attributs = ::GetFileAttributesW(Large(chemin).c_str());
  return attributs != INVALID_FILE_ATTRIBUTES && (attributs & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool ProgrammesWin32::Demarrer(const std::string& chemin) {
  if (chemin.empty()) return false;
  // In a normal window with the focus, without waiting for it.
  std::wstring ligne = L"\"" + Large(chemin) + L"\"";
  STARTUPINFOW demarrage{};
  demarrage.cb = sizeof demarrage;
  demarrage.dwFlags = STARTF_USESHOWWINDOW;
  demarrage.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION processus{};
  if (!::CreateProcessW(Large(chemin).c_str(), ligne.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &demarrage, &processus)) {
    return false;
  }
  ::CloseHandle(processus.hThread);
  ::CloseHandle(processus.hProcess);
  return true;
}

constexpr const wchar_t* kClePreferences = L"Software\\Quillon";

std::string PreferencesWin32::Lire(const std::string& cle) {
  wchar_t valeur[512] = {};
  DWORD taille = sizeof valeur;
  const LSTATUS etat = ::RegGetValueW(HKEY_CURRENT_USER, kClePreferences, Large(cle).c_str(), RRF_RT_REG_SZ, nullptr,
                                      valeur, &taille);
  return etat == ERROR_SUCCESS ? Utf8(valeur) : std::string();
}

void PreferencesWin32::Ecrire(const std::string& cle, const std::string& valeur) {
  const std::wstring texte = Large(valeur);
  ::RegSetKeyValueW(HKEY_CURRENT_USER, kClePreferences, Large(cle).c_str(), REG_SZ, texte.c_str(),
                    static_cast<DWORD>((texte.size() + 1) * sizeof(wchar_t)));
}

std::string DocumentsWin32::DossierTemporaire() {
  wchar_t dossier[MAX_PATH + 1] = {};
  const DWORD longueur = ::GetTempPathW(MAX_PATH + 1, dossier);
  return longueur == 0 || longueur > MAX_PATH ? std::string(".\\") : Utf8(dossier);
}

bool DocumentsWin32::Ouvrir(const std::string& chemin) {
  const HINSTANCE resultat =
      ::ShellExecuteW(nullptr, L"open", Large(chemin).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(resultat) > 32;
}

bool DocumentsWin32::OuvrirDossier(const std::string& chemin) {
  const HINSTANCE resultat =
      ::ShellExecuteW(nullptr, L"explore", Large(chemin).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return reinterpret_cast<INT_PTR>(resultat) > 32;
}

}  // namespace quillon::win32
