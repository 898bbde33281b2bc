// The platform behind the windows' interfaces, through Qt.
#pragma once

#include <QStringList>

#include "ui/seams.h"

namespace quillon {

// "Desc (*.a)|*.a|Desc 2|*.b" becomes {"Desc (*.a)", "Desc 2 (*.b)"}: Qt's
// name filters, which carry their pattern between parentheses.
QStringList FiltresQt(const QString& filtre);

class DialoguesFichiersQt : public DialoguesFichiers {
 public:
  std::optional<FichierChoisi> Ouvrir(QWidget* parent, const QString& titre, const QString& filtre,
                                      int indexFiltre) override;
  std::optional<FichierChoisi> EnregistrerSous(QWidget* parent, const QString& titre, const QString& filtre,
                                               int indexFiltre) override;
};

class BoitesMessagesQt : public BoitesMessages {
 public:
  void Message(QWidget* parent, const QString& titre, const QString& texte) override;
  void ErreurFatale(QWidget* parent, const QString& texte) override;
};

// Hides every window and leaves the event loop.
class FinProgrammeQt : public FinProgramme {
 public:
  void Terminer() override;
};

class ProgrammesQt : public Programmes {
 public:
  bool FichierExiste(const std::string& chemin) override;
  bool Demarrer(const std::string& chemin) override;
};

}  // namespace quillon
