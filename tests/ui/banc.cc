#include "banc.h"

#include <fstream>
#include <iterator>

#include <QApplication>
#include <gtest/gtest.h>

namespace quillon::test {

Banc::Banc() {
  InitialiserTables(reglages);
  reglages.affichage = &affichage;
  fenetre = std::make_unique<frmQuillon>(reglages, services);
  affichage.DefinirParent(static_cast<QWidget*>(fenetre.get()));
  fenetre->show();
}

std::string Banc::Chemin(const char* nom) const { return dossier.filePath(QString::fromUtf8(nom)).toStdString(); }

void Banc::Ouvrir(const char* nom, int indexFiltre) {
  dialogues.reponses.push_back({Chemin(nom), indexFiltre});
  fenetre->mnuOuvrir_Click();
}

void Banc::EnregistrerSous(const char* nom, int indexFiltre) {
  dialogues.reponses.push_back({Chemin(nom), indexFiltre});
  fenetre->mnuEnregistrerSous_Click();
}

void EcrireFichier(const std::string& chemin, const std::string& octets) {
  std::ofstream(chemin, std::ios::binary) << octets;
}

std::optional<std::string> LireFichier(const std::string& chemin) {
  std::ifstream flux(chemin, std::ios::binary);
  if (!flux) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(flux), std::istreambuf_iterator<char>());
}

}  // namespace quillon::test

int main(int argc, char** argv) {
  // Headless unless told otherwise, listing the tests included.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
