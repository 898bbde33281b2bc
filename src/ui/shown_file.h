// The file the main window shows: what a check report keeps of it (a
// record per line, its checks), read again when it is selected (checked,
// nothing written), its picture's plan and view, and the lists beside the
// picture: its rejected lines and what the checks found.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "report/checked_collect.h"
#include "ui/checked_files.h"
#include "ui/map_plan.h"

namespace quillon {

// A row of the lists beside the picture: the line it is about (its
// index), and its text (UTF-8).
struct EntreeListe {
  uint32_t ligne = 0;
  std::string texte;
};

class FichierMontre {
 public:
  // Reads the file as its row's run did, writing nothing: false when the
  // source could not be read (`erreur` tells why, UTF-8).
  // Once `arret` is true the reading stops, false.
  bool Lire(const LigneFichier& fichier, SystemeFichiers& systeme, std::string& erreur,
            const std::atomic<bool>* arret = nullptr);

  const Collecte& Lignes() const { return collecte_->Lignes(); }
  const Controles& Verifications() const { return controles_; }
  const PlanCarte& Plan() const { return plan_; }
  const std::vector<EntreeListe>& Rejets() const { return rejets_; }
  const std::vector<EntreeListe>& Constats() const { return constats_; }

  // The line's number, identity and messages, as the tooltip shows them.
  std::string TexteDeLaLigne(uint32_t ligne) const;

  static constexpr std::size_t kEntreesMax = 10'000;  // a list's rows at most, as the report's tables

 private:
  void Lister();

  std::unique_ptr<CollecteControlee> collecte_;
  Controles controles_;
  PlanCarte plan_;
  std::vector<EntreeListe> rejets_, constats_;
};

// A list's title as the window and the printed pages show it, in the
// chosen language: "Lignes rejetées (3)", "Contrôles (0)"; the title alone
// while no file is shown.
std::string TitreListe(bool rejets, const FichierMontre* montre);

// "1/12/34/100101": theme, commune, plan and point number; "?" when a part
// of it could not be read.
std::string TexteIdentite(const Collecte& collecte, uint32_t ligne);

}  // namespace quillon
