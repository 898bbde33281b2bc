// Helpers shared by the tests: a log held in memory, and fixed-column lines.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "conversion/file_system.h"
#include "conversion/journal.h"
#include "model/ansi.h"

namespace quillon::test {

// A log that writes into memory, numbering its messages as line `ligne`.
class JournalMemoire {
 public:
  explicit JournalMemoire(int64_t ligne = 1) : compteur_(ligne + 1) {
    journal.FichierLog.Nom = "journal";
    journal.UtiliserSysteme(fichiers);
    journal.SuivreLignes(&compteur_);
  }
  void Ligne(int64_t ligne) { compteur_ = ligne + 1; }

  // The log lines written so far, without their CR LF.
  std::vector<std::string> Lignes() {
    journal.FichierLog.Flux.Vider();
    std::vector<std::string> lignes;
    const std::string& texte = fichiers.fichiers["journal"];
    std::size_t debut = 0;
    for (std::size_t fin; (fin = texte.find("\r\n", debut)) != std::string::npos; debut = fin + 2) {
      lignes.push_back(texte.substr(debut, fin - debut));
    }
    return lignes;
  }

  SystemeFichiersMemoire fichiers;
  Journal journal;

 private:
  int64_t compteur_;
};

// A line built by columns: Colonne(premiere, texte) puts `texte` at the
// 1-based column `premiere`, blanks filling any gap.
class LigneFixe {
 public:
  LigneFixe& Colonne(std::size_t premiere, std::string_view texte) {
    if (texte.empty()) return *this;
    if (texte_.size() < premiere - 1 + texte.size()) texte_.resize(premiere - 1 + texte.size(), ' ');
    texte_.replace(premiere - 1, texte.size(), texte);
    return *this;
  }
  LigneFixe& Longueur(std::size_t n) {
    texte_.resize(n, ' ');
    return *this;
  }
  const std::string& str() const { return texte_; }
  operator std::string_view() const { return texte_; }

 private:
  std::string texte_;
};

// A readable UTF-8 literal as the Windows-1252 bytes the system writes.
std::string W(std::string_view utf8);

}  // namespace quillon::test
