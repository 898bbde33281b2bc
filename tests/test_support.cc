#include "test_support.h"

#include <gtest/gtest.h>

#include <regex>

#include "io/encoding.h"

namespace quillon::test {

std::vector<std::string> LignesCRLF(const std::string& texte) {
  std::vector<std::string> lignes;
  std::size_t debut = 0;
  for (std::size_t fin; (fin = texte.find("\r\n", debut)) != std::string::npos; debut = fin + 2) {
    lignes.push_back(texte.substr(debut, fin - debut));
  }
  return lignes;
}

std::string MasquerDate(std::string journal) {
  const std::size_t debut = journal.find("\r\n") + 2;
  const std::size_t fin = journal.find("\r\n", debut);
  if (debut < 2 || fin == std::string::npos) return journal;
  static const std::regex kDate(R"(\d\d-[^-]{3,5}-\d{4}, \d\d:\d\d:\d\d)");
  EXPECT_TRUE(std::regex_match(journal.substr(debut, fin - debut), kDate)) << journal.substr(debut, fin - debut);
  return journal.replace(debut, fin - debut, "<date>");
}

std::string W(std::string_view utf8) { return Utf8VersCp1252(utf8); }

}  // namespace quillon::test
