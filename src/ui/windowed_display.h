// Windowed mode's way of showing a run's summary and fatal errors: message
// boxes, over the main window.
#pragma once

#include <array>
#include <string>

#include <QPointer>
#include <QWidget>

#include "io/display.h"
#include "ui/seams.h"

namespace quillon {

class AffichageFenetre : public Affichage {
 public:
  explicit AffichageFenetre(BoitesMessages& messages) : messages_(messages) {}

  // The window the boxes belong to (the main window, once it exists).
  void DefinirParent(QWidget* parent) { parent_ = parent; }

  // The four lines joined by "\r\n", captioned with the application's title.
  void MontrerBilan(const std::array<std::string, 4>& lignes) override;
  // "Erreur fatale" with the error icon; whoever started the run then ends
  // the program.
  void MontrerErreurFatale(const std::string& message) override;

 private:
  BoitesMessages& messages_;
  QPointer<QWidget> parent_;
};

// A Windows-1252 text of the conversions, for Qt.
QString TexteQt(const std::string& texte);

}  // namespace quillon
