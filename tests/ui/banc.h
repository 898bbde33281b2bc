// What the window tests share: fakes behind the platform interfaces, and a
// main window wired to them over real files in a temporary folder.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include <QTemporaryDir>

#include "conversion/run_settings.h"
#include "ui/qt/main_window.h"
#include "ui/registry.h"
#include "ui/seams.h"
#include "ui/window_logic.h"
#include "window_fakes.h"

namespace quillon::test {

// A main window over the fakes, set up as windowed mode sets it up.
struct Banc : FauxServices {
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;
  QTemporaryDir dossier;
  std::unique_ptr<frmQuillon> fenetre;

  Banc();
  std::string Chemin(const char* nom) const;  // in the temporary folder
  void Ouvrir(const char* nom, int indexFiltre);
  void EnregistrerSous(const char* nom, int indexFiltre);
};

void EcrireFichier(const std::string& chemin, const std::string& octets);
std::optional<std::string> LireFichier(const std::string& chemin);  // nullopt: no such file

}  // namespace quillon::test
