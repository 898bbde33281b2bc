// The conversion log: header, one line per rejected field or unconverted
// line, and the four-count summary. Every reader and writer reports through
// its named calls, all written by the one line writer EcrireLog.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "io/display.h"
#include "io/text_file.h"

namespace quillon {

// A message as the log writes it after "LECTURE: ligne N: " or
// "ECRITURE: ligne N: ", in the pieces the log writes one after the other:
// whether it is about the source or the target, whether it is counted as an
// error (the note after one is not), and the field it is about, by the
// number its reader or writer gives it (ChampPoint, model/point.h).
struct MessageJournal {
  bool lecture = true;
  bool erreur = true;
  uint8_t champ = 0;
  std::initializer_list<std::string_view> morceaux;
};

// Who hears of each message as it is logged (a run's observers), and of a
// line left out.
class EcouteurJournal {
 public:
  virtual ~EcouteurJournal() = default;
  virtual void Message(const MessageJournal& message) = 0;
  virtual void LigneIgnoree() {}
};

class Journal {
 public:
  FichierTexte FichierLog;  // Nom: the source path followed by ".log"
  bool LogOuvert = false;
  // Counters of the current run; wide, they never stop counting.
  int64_t NbErreursLecture = 0;
  int64_t NbErreursEcriture = 0;
  int64_t NbLignesIgnorees = 0;

  // What a run hands the log before its first line: the file service, the
  // source (whose line counter numbers the messages) and the target (which
  // the log must never be created over).
  void Attacher(SystemeFichiers& systeme, const FluxTexte& source, const FluxTexte* cible);
  // Line numbers from a bare counter (the number of the next line), and the
  // file service alone: for a log used outside a run.
  void SuivreLignes(const int64_t* compteur) { compteur_ = compteur; }
  void UtiliserSysteme(SystemeFichiers& systeme) { systeme_ = &systeme; }

  void CompterLigneIgnoree() {
    ++NbLignesIgnorees;
    if (ecouteur_ != nullptr) ecouteur_->LigneIgnoree();
  }
  // The listener of rejected fields, or null.
  void Ecouter(EcouteurJournal* ecouteur) { ecouteur_ = ecouteur; }
  // A log that counts and tells its listener but never writes a file: a
  // reading that leaves nothing beside its source (the comparison).
  void SansFichier() { sansFichier_ = true; }

  // What the readers, the writers and the runs write, each a named call over
  // EcrireLog:
  // a rejected field of the source line (`champ`: the field's number),
  // "LECTURE: ligne N: " and the message's pieces one after the other; one
  // more reading error;
  void ErreurLecture(uint8_t champ, std::initializer_list<std::string_view> message) {
    champ_ = champ;
    EcrireLog(true, true, true, true, message);
  }
  // a field that cannot be written, "ECRITURE: ligne N: " and the message;
  // one more writing error;
  void ErreurEcriture(uint8_t champ, std::string_view message) {
    champ_ = champ;
    EcrireLog(false, true, true, true, {message});
  }
  // a note after a writing error, in the same form, not counted;
  void NoteEcriture(uint8_t champ, std::string_view message) {
    champ_ = champ;
    EcrireLog(false, true, true, false, {message});
  }
  // the source line that a line reader rejected or a line writer could not
  // convert, exactly as read;
  void LigneSource(std::string_view ligne) { EcrireLog(true, false, false, false, {ligne}); }
  // a line of the header, as it is.
  void LigneEntete(std::string_view texte) { EcrireLog(false, false, false, false, {texte}); }

  // Closes the log: the log file is then in place, replacing the previous
  // one. False when it could not be written or put in place.
  bool FermerLog();
  // Closes the log without putting it in place: the previous log stays.
  void Abandonner();
  // Writes out what the log holds so far, so that a full disk shows before
  // the summary does; false (and the log failed) on error.
  bool Vider();
  void InitialiserLog();
  // Shows the summary, then writes it into the log.
  void EcrireBilan(Affichage& affichage);

  // The summary's four counts.
  ComptesBilan Bilan() const;
  int64_t NumeroLigne() const { return compteur_ != nullptr ? *compteur_ - 1 : 0; }

  // A log that could not be created or written: the fatal error to show.
  // Once failed, the log writes nothing more.
  bool EnEchec() const { return echec_.has_value(); }
  const ErreurFatale& Echec() const { return *echec_; }

 private:
  // The one writer underneath the named calls, creating the log file first
  // if it is not open: [prefix]["ligne " N ": "]message, the message given
  // in pieces; prefix "LECTURE: " (Lecture) or "ECRITURE: " when
  // AvecPrefixe; the matching counter grows when CompterErreur.
  void EcrireLog(bool Lecture, bool AvecLigne, bool AvecPrefixe, bool CompterErreur,
                 std::initializer_list<std::string_view> Message);
  // Tells the listener of a message with its prefix: a counted one as a
  // rejected field, another as a note.
  void Prevenir(bool Lecture, bool AvecPrefixe, bool CompterErreur, std::initializer_list<std::string_view> Message);

  SystemeFichiers* systeme_ = nullptr;
  const FluxTexte* source_ = nullptr;
  const FluxTexte* cible_ = nullptr;
  const int64_t* compteur_ = nullptr;
  EcouteurJournal* ecouteur_ = nullptr;
  uint8_t champ_ = 0;  // the field of the message being written
  bool sansFichier_ = false;
  std::optional<ErreurFatale> echec_;
};

// The four summary lines of these counts (Windows-1252), as a run shows
// them and writes them at the end of its log.
std::array<std::string, 4> TexteBilan(int64_t lues, int64_t ignorees, int64_t lecture, int64_t ecriture);
std::array<std::string, 4> TexteBilan(const ComptesBilan& comptes);

}  // namespace quillon
