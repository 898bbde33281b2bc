// quillon-lot on POSIX: the words as the system split them, file names as
// bytes.
#include <unistd.h>

#include "app/batch/platform.h"

namespace quillon::lot {

std::vector<std::string> MotsProgramme(int argc, char** argv) {
  return std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc);
}

std::filesystem::path CheminNatif(const std::string& texte) { return std::filesystem::path(texte); }

std::string TexteChemin(const std::filesystem::path& chemin) { return chemin.native(); }

bool BarreInverseDansLesNoms() { return true; }

bool ErreurEstTerminal() { return ::isatty(STDERR_FILENO) == 1; }

void EcrireSortieBrute(std::string_view octets) {
  while (!octets.empty()) {
    const ssize_t n = ::write(STDOUT_FILENO, octets.data(), octets.size());
    if (n <= 0) return;
    octets.remove_prefix(static_cast<std::size_t>(n));
  }
}

std::string_view FinLigne() { return "\n"; }

}  // namespace quillon::lot
