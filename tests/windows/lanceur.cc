// Starts a program with the exact command line held by the variable
// QUILLON_LIGNE_COMMANDE, standard handles inherited, and ends with its exit
// status. wine builds a Windows command line from Unix arguments by quoting
// them; the Windows e2e cases need the text as a user would type it. With
// QUILLON_TERMINER_APRES (milliseconds), a program still running then is
// ended by TerminateProcess, as Task Manager's "End task" does.
#include <windows.h>

#include <cstdlib>
#include <cwchar>
#include <vector>

int main() {
  const wchar_t* ligne = _wgetenv(L"QUILLON_LIGNE_COMMANDE");
  if (ligne == nullptr) return 120;
  std::vector<wchar_t> modifiable(ligne, ligne + std::wcslen(ligne) + 1);
  STARTUPINFOW demarrage{};
  demarrage.cb = sizeof demarrage;
  demarrage.dwFlags = STARTF_USESTDHANDLES;
  demarrage.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  demarrage.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
  demarrage.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION processus{};
  if (!CreateProcessW(nullptr, modifiable.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &demarrage,
                      &processus)) {
    return 121;
  }
  const wchar_t* delai = _wgetenv(L"QUILLON_TERMINER_APRES");
  const DWORD attente = delai != nullptr ? static_cast<DWORD>(_wtoi(delai)) : INFINITE;
  if (WaitForSingleObject(processus.hProcess, attente) == WAIT_TIMEOUT) {
    TerminateProcess(processus.hProcess, 137);
    WaitForSingleObject(processus.hProcess, INFINITE);
  }
  DWORD statut = 0;
  GetExitCodeProcess(processus.hProcess, &statut);
  CloseHandle(processus.hProcess);
  CloseHandle(processus.hThread);
  return static_cast<int>(statut);
}
