// What the windows ask of the platform, each behind a small interface: the
// standard file dialogs, message boxes, ending the program, testing for a
// file, starting another program and opening a document. No toolkit here:
// texts are UTF-8, paths are as the file services take them, and the window
// a dialog or box belongs to is an opaque `Parent`. Each front end hands
// the windows its real services; the tests hand them fakes.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillon {

class Registre;

// The toolkit's window that a dialog or a message box belongs to (a
// QWidget*, an HWND), or null. The window logic only passes it on.
using Parent = void*;

// A file confirmed in an open or save dialog.
struct FichierChoisi {
  std::string nom;      // the path as the file services take it
  int indexFiltre = 0;  // 1-based: the filter selected when the user confirmed
};

// The standard open and save dialogs. The filter is given as pairs of a
// description and a pattern, all separated by "|"
// ("Points avec valeur (*.ptv)|*.ptv|..."), and the filter index is 1-based.
// No value means the user cancelled.
class DialoguesFichiers {
 public:
  virtual ~DialoguesFichiers() = default;
  virtual std::optional<FichierChoisi> Ouvrir(Parent parent, const std::string& titre, const std::string& filtre,
                                              int indexFiltre) = 0;
  virtual std::optional<FichierChoisi> EnregistrerSous(Parent parent, const std::string& titre,
                                                       const std::string& filtre, int indexFiltre) = 0;
  // An open dialog that takes several files: those confirmed, none when
  // the user cancelled.
  virtual std::vector<std::string> OuvrirPlusieurs(Parent parent, const std::string& titre,
                                                   const std::string& filtre) = 0;
  // A folder picker, starting at `depart` when not empty.
  virtual std::optional<std::string> ChoisirDossier(Parent parent, const std::string& titre,
                                                    const std::string& depart) = 0;
};

// Message boxes with an OK button; each waits until it is dismissed.
class BoitesMessages {
 public:
  virtual ~BoitesMessages() = default;
  // No icon; the text is shown as given, "\r\n" separating its lines.
  virtual void Message(Parent parent, const std::string& titre, const std::string& texte) = 0;
  // The same box with more buttons after OK, captioned `boutons`: the
  // 1-based rank of the one the user picked, 0 for OK or the box closed
  // otherwise.
  virtual int MessageAvecBoutons(Parent parent, const std::string& titre, const std::string& texte,
                                 const std::vector<std::string>& boutons) = 0;
  // Captioned "Erreur fatale", with the error icon.
  virtual void ErreurFatale(Parent parent, const std::string& texte) = 0;
  // A question with the buttons Oui and Non: true for Oui.
  virtual bool Question(Parent parent, const std::string& titre, const std::string& texte) = 0;
};

// Ends the program: every window goes, and the event loop stops once the
// handler that asked has returned. Nothing is asked of the user.
class FinProgramme {
 public:
  virtual ~FinProgramme() = default;
  virtual void Terminer() = 0;
};

// Files and programs of the machine, by path.
class Programmes {
 public:
  virtual ~Programmes() = default;
  virtual bool FichierExiste(const std::string& chemin) = 0;
  // Starts the program without waiting for it; false when it cannot start.
  virtual bool Demarrer(const std::string& chemin) = 0;
};

// Documents the user looks at in the programs of the system.
class Documents {
 public:
  virtual ~Documents() = default;
  // The user's temporary folder, as the file services take it, ending with
  // its separator.
  virtual std::string DossierTemporaire() = 0;
  // Opens the file in the program the system gives its kind (the browser
  // for a .html file), without waiting; false when none opens it.
  virtual bool Ouvrir(const std::string& chemin) = 0;
  // Shows a folder in the system's file manager; false when it cannot.
  virtual bool OuvrirDossier(const std::string& chemin) = 0;
};

// The user's own choices, kept from one start to the next: under
// HKEY_CURRENT_USER on Windows, in the user's configuration folder
// elsewhere. Keys and values are UTF-8.
class Preferences {
 public:
  virtual ~Preferences() = default;
  // Empty when the choice was never made.
  virtual std::string Lire(const std::string& cle) = 0;
  virtual void Ecrire(const std::string& cle, const std::string& valeur) = 0;
};

// Everything the windows reach the platform through.
struct Services {
  DialoguesFichiers& dialogues;
  BoitesMessages& messages;
  FinProgramme& fin;
  Registre& registre;
  Programmes& programmes;
  Documents& documents;
  Preferences& preferences;
};

}  // namespace quillon
