// What a run tells whoever watches it line by line (the check report, the
// exports): each line once its step is done, as one record: its outcome,
// the fields its reader rejected and its writer could not write, and its
// messages as the log words them, for display. Whoever draws or exports a
// line reads its fields and flags, never the texts of its messages.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "io/journal.h"
#include "model/point.h"

namespace quillon {

enum class IssueLigne : uint8_t { Convertie, Ignoree, Rejetee };

// One message of a line, in the pieces the log writes after "ligne N: ":
// a reader's head, the text of its field and its end; a writer's whole
// message in the first piece.
struct MessageLigne {
  bool lecture = true;  // about the source ("LECTURE: "), or the target ("ECRITURE: ")
  bool erreur = true;   // counted; false for the note the log writes after one
  ChampPoint champ = ChampPoint::Theme;
  std::array<std::string_view, 3> morceaux{};
  uint8_t nombre = 0;  // pieces used
};

// The messages of a line joined by `separateur`, each as the log words it
// after its line number, with its "LECTURE: " or "ECRITURE: " when
// `prefixe`: the one way every output lists a line's messages (the exports
// with " | ", the comparison with "; ", the report with line breaks).
void AjouterMessages(std::string& sortie, std::span<const MessageLigne> messages, std::string_view separateur,
                     bool prefixe);

struct LigneObservee {
  int64_t numero = 0;        // 1 for the first line of the source
  std::string_view texte;    // the source line as read
  std::string_view cible;    // the target line written, or empty
  const Point* point = nullptr;
  IssueLigne issue = IssueLigne::Convertie;
  ChampsPoint illisibles = 0;  // the fields its reader rejected: the point holds nothing of them
  ChampsPoint nonEcrits = 0;   // the fields its writer could not write
  std::span<const MessageLigne> messages;

  // Y and X read.
  bool Coordonnees() const { return (illisibles & kCoordonneesPoint) == 0; }
  // Theme, commune, plan and point number read.
  bool Identite() const { return (illisibles & kIdentitePoint) == 0; }
};

// Hears the log while a line is run, and keeps what it says of that line:
// its messages (their pieces copied), the fields rejected, whether it was
// left out. The runs and the comparison's reading use it.
class RecueilLigne : public EcouteurJournal {
 public:
  void Message(const MessageJournal& message) override;
  void LigneIgnoree() override { ignoree_ = true; }

  // Forgets the line before.
  void Effacer();
  // The line's messages; valid until the next Effacer.
  std::span<const MessageLigne> Messages();
  ChampsPoint Illisibles() const { return illisibles_; }
  ChampsPoint NonEcrits() const { return nonEcrits_; }
  bool Erreurs() const { return erreurs_; }
  bool Ignoree() const { return ignoree_; }

 private:
  struct Place {
    MessageLigne message;
    std::array<uint32_t, 3> debuts{};
  };
  std::string textes_;  // every piece, one after the other
  std::vector<Place> places_;
  std::vector<MessageLigne> messages_;
  ChampsPoint illisibles_ = 0, nonEcrits_ = 0;
  bool erreurs_ = false, ignoree_ = false;
};

class ObservateurExecution {
 public:
  virtual ~ObservateurExecution() = default;
  // Called before the first line of a run.
  virtual void Debut() {}
  // Called after each line.
  virtual void Ligne(const LigneObservee& ligne) = 0;
};

// Several observers of one run (a check report and exports), each told
// everything in the order given.
class Observateurs : public ObservateurExecution {
 public:
  explicit Observateurs(std::vector<ObservateurExecution*> tous) : tous_(std::move(tous)) {}
  void Debut() override {
    for (ObservateurExecution* o : tous_) o->Debut();
  }
  void Ligne(const LigneObservee& ligne) override {
    for (ObservateurExecution* o : tous_) o->Ligne(ligne);
  }

 private:
  std::vector<ObservateurExecution*> tous_;
};

}  // namespace quillon
