// Windows: the windows live in quillon-fenetres.exe, beside this program,
// built for the windows subsystem. Started without arguments, quillon.exe
// starts it and ends at once: the console it was typed in stays usable.
#include <windows.h>

#include <string>

#include "app/quillon/windowed_launch.h"
#include "io/console.h"
#include "io/encoding.h"
#include "io/wide_text.h"

namespace quillon {
namespace {

std::wstring DossierExecutable() {
  std::wstring chemin(32768, L'\0');
  const DWORD n = ::GetModuleFileNameW(nullptr, chemin.data(), static_cast<DWORD>(chemin.size()));
  chemin.resize(n);
  const std::size_t barre = chemin.find_last_of(L"\\/");
  return barre == std::wstring::npos ? std::wstring(L".") : chemin.substr(0, barre);
}

}  // namespace

int LancerModeFenetre(char**) {
  const std::wstring programme = DossierExecutable() + L"\\quillon-fenetres.exe";
  std::wstring ligne = L"\"" + programme + L"\"";
  STARTUPINFOW demarrage{};
  demarrage.cb = sizeof demarrage;
  PROCESS_INFORMATION processus{};
  if (::CreateProcessW(programme.c_str(), ligne.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &demarrage,
                       &processus)) {
    ::CloseHandle(processus.hThread);
    ::CloseHandle(processus.hProcess);
    return 0;
  }
  EcrireErreur(Utf8VersCp1252("quillon: la fenêtre principale n'est pas disponible (" + Utf8(programme) +
                              " introuvable); pour convertir en console: quillon SOURCE CIBLE [ECHELLE THEME]\r\n"));
  return 1;
}

}  // namespace quillon
