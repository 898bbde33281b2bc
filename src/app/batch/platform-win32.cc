// quillon-lot on Windows: the wide command line split as Windows programs
// split it, file names in UTF-8.
#include <windows.h>
#include <shellapi.h>

#include "app/batch/platform.h"
#include "io/wide_text.h"

namespace quillon::lot {

std::vector<std::string> MotsProgramme(int, char**) {
  std::vector<std::string> mots;
  int n = 0;
  wchar_t** arguments = ::CommandLineToArgvW(::GetCommandLineW(), &n);
  if (arguments == nullptr) return mots;
  for (int i = 1; i < n; ++i) mots.push_back(Utf8(arguments[i]));
  ::LocalFree(arguments);
  return mots;
}

std::filesystem::path CheminNatif(const std::string& texte) {
  return std::filesystem::path(Large(texte));
}

std::string TexteChemin(const std::filesystem::path& chemin) {
  return Utf8(chemin.native());
}

bool BarreInverseDansLesNoms() { return false; }

// A console, not merely a character device: NUL is one too.
bool ErreurEstTerminal() {
  DWORD mode = 0;
  return ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

void EcrireSortieBrute(std::string_view octets) {
  const HANDLE sortie = ::GetStdHandle(STD_OUTPUT_HANDLE);
  while (!octets.empty()) {
    DWORD ecrits = 0;
    if (!::WriteFile(sortie, octets.data(), static_cast<DWORD>(octets.size()), &ecrits, nullptr) || ecrits == 0) return;
    octets.remove_prefix(ecrits);
  }
}

std::string_view FinLigne() { return "\r\n"; }

}  // namespace quillon::lot
