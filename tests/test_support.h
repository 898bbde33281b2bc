// Helpers shared by the tests: a log held in memory, its lines and date, and Windows-1252 text.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support/file_system_memory.h"
#include "io/journal.h"
#include "io/ansi.h"

namespace quillon::test {

std::string LireFichier(const std::filesystem::path& chemin);
void EcrireFichier(const std::filesystem::path& chemin, const std::string& contenu);

// A fresh scratch folder, open to every user (a run without privileges
// writes there too), removed with the object.
class DossierTemporaire {
 public:
  DossierTemporaire();
  ~DossierTemporaire();
  DossierTemporaire(const DossierTemporaire&) = delete;
  DossierTemporaire& operator=(const DossierTemporaire&) = delete;
  const std::string& chemin() const { return chemin_; }
  std::string operator/(const std::string& nom) const { return chemin_ + "/" + nom; }

 private:
  std::string chemin_;
};

// The lines of a text, each ended by CR LF (a last unended piece is dropped).
std::vector<std::string> LignesCRLF(const std::string& texte);

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
    return LignesCRLF(fichiers.enCours.count("journal") ? fichiers.enCours["journal"] : fichiers.fichiers["journal"]);
  }

  SystemeFichiersMemoire fichiers;
  Journal journal;

 private:
  int64_t compteur_;
};

// A log with its second line, the date, replaced by "<date>" once it has
// the shape "dd-mmm-yyyy, hh:mm:ss".
std::string MasquerDate(std::string journal);

// A readable UTF-8 literal as the Windows-1252 bytes the system writes.
std::string W(std::string_view utf8);

}  // namespace quillon::test
