// The argument text of a Windows command line; the splitting into words is
// checked through the executable's cases (tests/e2e).
#include <gtest/gtest.h>

#include "app/quillon/command_line.h"

namespace quillon {
namespace {

TEST(LigneDeCommande, TexteApresLeNomDuProgramme) {
  const struct {
    const char* ligne;
    const char* texte;
  } cas[] = {
      {"quillon.exe", ""},
      {"quillon.exe ", ""},
      {"\"C:\\Program Files\\Quillon\\quillon.exe\"", ""},
      {"\"C:\\Program Files\\Quillon\\quillon.exe\" a.ptv b.ptp", "a.ptv b.ptp"},
      {"\"C:\\Program Files\\Quillon\\quillon.exe\"a.ptv b.ptp", "a.ptv b.ptp"},
      {"quillon.exe \"a b.ptv\" c.ptp", "\"a b.ptv\" c.ptp"},
      {"quillon.exe\ta.ptv\tb.ptp", "a.ptv\tb.ptp"},
      {"quillon.exe  ", " "},  // blanks only: console mode with no word
      {"quillon.exe   a.ptv  b.ptp  ", "  a.ptv  b.ptp  "},
      {"\"quillon.exe", ""},  // a quote never closed
      {"", ""},
  };
  for (const auto& c : cas) EXPECT_EQ(TexteApresNomProgramme(c.ligne), c.texte) << c.ligne;
}

}  // namespace
}  // namespace quillon
