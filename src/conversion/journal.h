// The conversion log: header, one line per rejected field or unconverted
// line, and the four-count summary. Every reader and writer reports through
// EcrireLog.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "conversion/display.h"
#include "conversion/text_file.h"

namespace quillon {

enum class RaisonFatale { Ouverture, Creation, Lecture, Ecriture };

// "Le fichier <nom> ne peut pas être ouvert, l'application va s'arrêter" and
// its siblings for "créé", "lu" and "écrit".
std::string MessageFatal(const std::string& nom, RaisonFatale raison);

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
  // Writes one log line, creating the log file first if it is not open:
  //   [prefix]["ligne " N ": "]message
  // prefix "LECTURE: " (Lecture) or "ECRITURE: " when AvecPrefixe; the
  // matching counter grows when CompterErreur.
  void EcrireLog(bool Lecture, bool AvecLigne, bool AvecPrefixe, bool CompterErreur,
                 std::string_view Message);
  // The same with a message in pieces, written one after the other: a
  // rejected field's message needs no text of its own.
  void EcrireLog(bool Lecture, bool AvecLigne, bool AvecPrefixe, bool CompterErreur,
                 std::initializer_list<std::string_view> Message);
  bool FermerLog();
  // Writes out what the log holds so far, so that a full disk shows before
  // the summary does; false (and the log failed) on error.
  bool Vider();
  void InitialiserLog();
  // Shows the summary, then writes it into the log.
  void EcrireBilan(Affichage& affichage);

  // The four summary lines.
  std::array<std::string, 4> Bilan() const;
  int64_t NumeroLigne() const { return compteur_ != nullptr ? *compteur_ - 1 : 0; }

  // A log that could not be created or written: the fatal message to show.
  // Once failed, the log writes nothing more.
  bool EnEchec() const { return !echec_.empty(); }
  const std::string& MessageEchec() const { return echec_; }

 private:
  SystemeFichiers* systeme_ = nullptr;
  const FluxTexte* source_ = nullptr;
  const FluxTexte* cible_ = nullptr;
  const int64_t* compteur_ = nullptr;
  std::string echec_;
};

}  // namespace quillon
