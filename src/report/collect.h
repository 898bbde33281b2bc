// What a watched run keeps of each line for the check report: a compact
// record per line (48 bytes), the messages of its rejected fields (their
// fixed parts kept once), and the source lines that were rejected. Records
// and texts are kept in blocks that never move, so that the checks across
// lines may read them on a second thread while the run goes on.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "conversion/observer.h"
#include "report/blocks.h"

namespace quillon {

struct LigneCollectee {
  static constexpr std::size_t kNumeroMax = 12;  // the widest point number column

  double y = 0, x = 0, altitude = 0;  // altitude 0: none
  uint32_t premierMessage = 0;        // its first message in Messages()
  int16_t commune = 0, plan = 0;
  uint8_t theme = 0, nature = 0;
  uint8_t longueurNumero = 0;
  uint8_t drapeaux = 0;  // kCoordonnees, kIdentite, and the outcome in bits 2-3
  char numero[kNumeroMax] = {};  // the point number as read, blanks included

  static constexpr uint8_t kCoordonnees = 1;  // Y and X read
  static constexpr uint8_t kIdentite = 2;     // theme, commune, plan and number read

  bool Coordonnees() const { return (drapeaux & kCoordonnees) != 0; }
  bool Identite() const { return (drapeaux & kIdentite) != 0; }
  IssueLigne Issue() const { return static_cast<IssueLigne>(drapeaux >> 2); }
  std::string_view Numero() const { return {numero, longueurNumero}; }
};

// A rejected field: "ECRITURE"/"LECTURE", its head (the field) and the
// message's end, both kept once, and the text of the field between them.
struct MessageCollecte {
  uint16_t tete = 0, fin = 0;
  uint16_t longueurTexte = 0;
  bool lecture = true;
  uint32_t debutTexte = 0;
  uint32_t ligne = 0;  // its line's index
};

// What could not be kept whole, counted, so that the report can say so: a
// field's text cut to kLongueurTexte bytes or a source line to
// kLongueurSource, rejected lines past kTailleSources, texts that the pool
// could not hold, message heads past the 65,535 kept.
struct Tronques {
  int64_t textes = 0, sources = 0, pool = 0, fixes = 0;
  int64_t Total() const { return textes + sources + pool + fixes; }
};

class Collecte : public ObservateurExecution {
 public:
  void Debut() override;
  void Ligne(const LigneObservee& ligne) override;

  // Makes the next block of records ready, from another thread that knows
  // the first `faites` lines collected.
  void PreparerBlocs(std::size_t faites) { lignes_.Preparer(faites); }

  // Line i is line number i + 1 of the source.
  const Blocs<LigneCollectee>& Lignes() const { return lignes_; }
  std::string_view NumeroPoint(const LigneCollectee& l) const { return l.Numero(); }

  // The messages of line i: Messages()[Lignes()[i].premierMessage ... the
  // next line's first message).
  std::size_t FinMessages(std::size_t i) const;
  const Blocs<MessageCollecte>& Messages() const { return messages_; }
  // The message's pieces as the log writes them after "ligne N: ".
  std::string TexteMessage(const MessageCollecte& m) const;
  // The field a message is about: the head without its ": '", or the
  // writer's whole message. Windows-1252.
  std::string_view Champ(const MessageCollecte& m) const;

  // The rejected source lines kept (each at most kLongueurSource bytes),
  // by line index, in order.
  struct Source {
    uint32_t ligne, debut, longueur;
  };
  const Blocs<Source>& Sources() const { return sources_; }
  std::string_view TexteSource(const Source& s) const { return Texte(s.debut, s.longueur); }

  const Tronques& Tronquages() const { return tronques_; }

  static constexpr std::size_t kLongueurTexte = 200;
  static constexpr std::size_t kLongueurSource = 400;
  static constexpr std::size_t kTailleSources = 32u << 20;  // the rejected lines' texts at most

 private:
  std::string_view Texte(uint32_t debut, std::size_t longueur) const { return textes_.Texte(debut, longueur); }
  uint16_t Interner(std::string_view texte);
  void Retenir(const MessageLigne& message);
  void GarderSource(std::string_view ligne);

  Blocs<LigneCollectee> lignes_;
  Blocs<MessageCollecte> messages_;
  Blocs<Source> sources_;
  PoolTextes textes_;  // fields' texts, source lines
  std::size_t tailleSources_ = 0;
  Tronques tronques_;
  std::vector<std::string> fixes_;  // heads and ends of messages, each once
  std::unordered_map<std::string, uint16_t> indexFixes_;
};

}  // namespace quillon
