#include "app/quillon/command_line.h"

#include "io/encoding.h"
#include "model/point.h"

namespace quillon {

std::vector<std::string> DecouperLigneCommande(std::string_view texte, int16_t nbMotsMax) {
  std::vector<std::string> mots(1);
  bool dansMot = false;
  for (char c : texte) {
    if (c == ' ' || c == '\t') {
      dansMot = false;
      continue;
    }
    if (!dansMot) {
      if (static_cast<int>(mots.size()) - 1 == nbMotsMax) break;
      mots.emplace_back();
      dansMot = true;
    }
    mots.back() += c;
  }
  return mots;
}

bool LireArguments(std::string_view texte, std::string& Source, std::string& Cible, int16_t& ClasseEchelle,
                   int32_t& GroupeTheme) {
  const std::vector<std::string> mots = DecouperLigneCommande(texte, 4);
  const std::size_t n = mots.size() - 1;
  if (n != 2 && n != 4) return false;
  Source = mots[1];
  Cible = mots[2];
  if (n == 4) {
    const int16_t classe = ClasseEchellePourMot(mots[3]);
    if (classe == 0) return false;
    ClasseEchelle = classe;
    const int32_t groupe = GroupeThemePourMot(mots[4]);
    if (groupe == 0) return false;
    GroupeTheme = groupe;
  }
  return true;
}

std::string JoindreMots(int argc, const char* const* argv) {
  std::string texte;
  for (int i = 1; i < argc; ++i) {
    if (i > 1) texte += ' ';
    texte += argv[i];
  }
  return texte;
}

std::string TexteApresNomProgramme(std::string_view ligne) {
  std::size_t fin;
  if (!ligne.empty() && ligne.front() == '"') {
    fin = ligne.find('"', 1);
    fin = fin == std::string_view::npos ? ligne.size() : fin + 1;
  } else {
    fin = ligne.find_first_of(" \t");
    if (fin == std::string_view::npos) fin = ligne.size();
  }
  if (fin < ligne.size() && (ligne[fin] == ' ' || ligne[fin] == '\t')) ++fin;
  return std::string(ligne.substr(fin));
}

}  // namespace quillon
