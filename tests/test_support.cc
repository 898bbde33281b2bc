#include "test_support.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
#include <regex>

#include "io/encoding.h"

namespace quillon::test {

namespace fs = std::filesystem;

std::string LireFichier(const fs::path& chemin) {
  std::ifstream f(chemin, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
}

void EcrireFichier(const fs::path& chemin, const std::string& contenu) {
  std::ofstream(chemin, std::ios::binary | std::ios::trunc) << contenu;
}

DossierTemporaire::DossierTemporaire() {
  std::random_device hasard;
  fs::path chemin;
  do {
    chemin = fs::temp_directory_path() / ("quillon-test." + std::to_string(hasard()));
  } while (!fs::create_directory(chemin));
  fs::permissions(chemin, fs::perms::all);
  chemin_ = chemin.string();
}

DossierTemporaire::~DossierTemporaire() {
  std::error_code ec;
  fs::permissions(chemin_, fs::perms::all, ec);
  for (const auto& e : fs::recursive_directory_iterator(chemin_, ec)) {
    fs::permissions(e.path(), fs::perms::owner_all, ec);
  }
  fs::remove_all(chemin_, ec);
}

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
