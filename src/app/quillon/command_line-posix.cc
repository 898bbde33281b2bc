// The argument text on POSIX: the system has split the words already.
#include "app/quillon/command_line.h"

namespace quillon {

std::optional<std::string> TexteArgumentsProgramme(int argc, const char* const* argv) {
  if (argc <= 1) return std::nullopt;
  return JoindreMots(argc, argv);
}

}  // namespace quillon
