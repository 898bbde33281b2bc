// The platform behind the windows' interfaces, through the Win32 API: the
// common file dialogs, message boxes, the end of the message loop, files
// and programs.
#pragma once

#include "ui/seams.h"

namespace quillon::win32 {

class DialoguesFichiersWin32 : public DialoguesFichiers {
 public:
  std::optional<FichierChoisi> Ouvrir(Parent parent, const std::string& titre, const std::string& filtre,
                                      int indexFiltre) override;
  std::optional<FichierChoisi> EnregistrerSous(Parent parent, const std::string& titre, const std::string& filtre,
                                               int indexFiltre) override;
  std::vector<std::string> OuvrirPlusieurs(Parent parent, const std::string& titre, const std::string& filtre) override;
  // The shell's folder browser.
  std::optional<std::string> ChoisirDossier(Parent parent, const std::string& titre,
                                            const std::string& depart) override;
};

class BoitesMessagesWin32 : public BoitesMessages {
 public:
  void Message(Parent parent, const std::string& titre, const std::string& texte) override;
  // A task dialog: a message box has no button of a caption of its own.
  int MessageAvecBoutons(Parent parent, const std::string& titre, const std::string& texte,
                         const std::vector<std::string>& boutons) override;
  void ErreurFatale(Parent parent, const std::string& texte) override;
  bool Question(Parent parent, const std::string& titre, const std::string& texte) override;
};

// Destroys every window of the program's thread and leaves the message loop.
class FinProgrammeWin32 : public FinProgramme {
 public:
  void Terminer() override;
};

class ProgrammesWin32 : public Programmes {
 public:
  bool FichierExiste(const std::string& chemin) override;
  bool Demarrer(const std::string& chemin) override;
};

// Values of the key HKEY_CURRENT_USER\Software\Quillon.
class PreferencesWin32 : public Preferences {
 public:
  std::string Lire(const std::string& cle) override;
  void Ecrire(const std::string& cle, const std::string& valeur) override;
};

class DocumentsWin32 : public Documents {
 public:
  std::string DossierTemporaire() override;
  bool Ouvrir(const std::string& chemin) override;
  bool OuvrirDossier(const std::string& chemin) override;
};

}  // namespace quillon::win32
