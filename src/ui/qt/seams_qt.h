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
  std::optional<FichierChoisi> Ouvrir(Parent parent, const std::string& titre, const std::string& filtre,
                                      int indexFiltre) override;
  std::optional<FichierChoisi> EnregistrerSous(Parent parent, const std::string& titre, const std::string& filtre,
                                               int indexFiltre) override;
  std::vector<std::string> OuvrirPlusieurs(Parent parent, const std::string& titre, const std::string& filtre) override;
  std::optional<std::string> ChoisirDossier(Parent parent, const std::string& titre,
                                            const std::string& depart) override;
};

class BoitesMessagesQt : public BoitesMessages {
 public:
  void Message(Parent parent, const std::string& titre, const std::string& texte) override;
  int MessageAvecBoutons(Parent parent, const std::string& titre, const std::string& texte,
                         const std::vector<std::string>& boutons) override;
  void ErreurFatale(Parent parent, const std::string& texte) override;
  bool Question(Parent parent, const std::string& titre, const std::string& texte) override;
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

// QSettings: ~/.config/Quillon/Quillon.conf on Linux.
class PreferencesQt : public Preferences {
 public:
  std::string Lire(const std::string& cle) override;
  void Ecrire(const std::string& cle, const std::string& valeur) override;
};

class DocumentsQt : public Documents {
 public:
  std::string DossierTemporaire() override;
  bool Ouvrir(const std::string& chemin) override;
  bool OuvrirDossier(const std::string& chemin) override;
};

}  // namespace quillon
