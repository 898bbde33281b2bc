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

// Who hears of each rejected field as it is logged (a run's report): the
// message in the pieces the log writes, after "LECTURE: ligne N: " or
// "ECRITURE: ligne N: ".
class EcouteurJournal {
 public:
  virtual ~EcouteurJournal() = default;
  virtual void ChampRejete(bool lecture, std::initializer_list<std::string_view> message) = 0;
  // A note the log writes after a message, uncounted, in the same form.
  virtual void Note(bool /*lecture*/, std::initializer_list<std::string_view> /*message*/) {}
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

  void CompterLigneIgnoree() { ++NbLignesIgnorees; }
  // The listener of rejected fields, or null.
  void Ecouter(EcouteurJournal* ecouteur) { ecouteur_ = ecouteur; }
  // A log that counts and tells its listener but never writes a file: a
  // reading that leaves nothing beside its source (the comparison).
  void SansFichier() { sansFichier_ = true; }

  // What the readers, the writers and the runs write, each a named call over
  // EcrireLog:
  // a rejected field of the source line, "LECTURE: ligne N: " and the
  // message's pieces one after the other; one more reading error;
  void ErreurLecture(std::initializer_list<std::string_view> message) { EcrireLog(true, true, true, true, message); }
  // a field that cannot be written, "ECRITURE: ligne N: " and the message;
  // one more writing error;
  void ErreurEcriture(std::string_view message) { EcrireLog(false, true, true, true, {message}); }
  // a note after a writing error, in the same form, not counted;
  void NoteEcriture(std::string_view message) { EcrireLog(false, true, true, false, {message}); }
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

  // The four summary lines.
  std::array<std::string, 4> Bilan() const;
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
  bool sansFichier_ = false;
  std::optional<ErreurFatale> echec_;
};

}  // namespace quillon
