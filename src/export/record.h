// What the exports write: two layers of records, each a point geometry and
// a row of typed fields, the same columns in every format.
//
//  points  every converted point, its fields as its target line gives them
//  rejets  every rejected line whose coordinates could be read: its line
//          number, what could be read of its identity, the messages of its
//          rejected fields and the source line
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quillon {

enum class Couche { Points, Rejets };

// "points", "rejets".
const char* NomCouche(Couche couche);

enum class TypeChamp { Entier, Reel, Texte };

struct Colonne {
  std::string_view nom;
  TypeChamp type;
};

std::span<const Colonne> ColonnesDe(Couche couche);

// One field: absent (empty), or its value. Texts are UTF-8.
struct Valeur {
  bool present = false;
  int64_t entier = 0;
  double reel = 0;
  std::string texte;
};

// The columns of each layer by name: their indices in a record's values,
// in the order of ColonnesDe (records.cc checks each against its table).
enum class ColonnePoint : std::size_t {
  Theme, Commune, Plan, Numero, Nature, Y, X, Altitude, PrecPlan, FiabPlan, PrecAlt, FiabAlt, Valeur, FichePFP3,
  Commentaire, Type, Ligne, Nombre
};
enum class ColonneRejet : std::size_t { Ligne, Theme, Commune, Plan, Numero, Y, X, Messages, Source, Nombre };

inline constexpr std::size_t kColonnesMax = static_cast<std::size_t>(ColonnePoint::Nombre);
static_assert(static_cast<std::size_t>(ColonneRejet::Nombre) <= kColonnesMax);

// One record. The geometry is the point (Y, X), Y the easting; the altitude,
// 0 when the point has none, is the Z of the CAD drawing. A record is reused
// from one line to the next: its texts keep their room.
struct Enregistrement {
  Couche couche = Couche::Points;
  double y = 0;
  double x = 0;
  double altitude = 0;
  int32_t theme = -1;           // -1: unknown (the CAD layer)
  std::string numero;           // the point number, trimmed, UTF-8
  std::array<Valeur, kColonnesMax> valeurs;  // in the order of ColonnesDe(couche)

  Valeur& operator[](ColonnePoint c) { return valeurs[static_cast<std::size_t>(c)]; }
  Valeur& operator[](ColonneRejet c) { return valeurs[static_cast<std::size_t>(c)]; }
};

// The shortest decimal text that reads back as `v` ("2600000.125", "0.5",
// "12"), whatever the locale. A whole number of thousandths, which every
// value of a point file is, is written in fixed form ("2600000", never
// std::to_chars's "2.6e+06", which a spreadsheet or a drawing shows as it
// is); any other value as std::to_chars writes it.
std::string TexteReel(double v);
std::string TexteEntier(int64_t v);
// When `v` is a whole number of thousandths below 10^12 in magnitude, its
// shortest decimal text in fixed form, written at `p` (20 bytes at most);
// its end, or null for any other value. That decimal reads back as `v`
// (division and reading round the same fraction correctly), and no shorter
// one does: below 10^12 a double's spacing is under a thousandth.
char* TexteMilliemes(char* p, double v);
// The same texts added at the end of `texte`, which keeps its room.
void AjouterReel(std::string& texte, double v);
void AjouterEntier(std::string& texte, int64_t v);

// A field's value as text: empty when absent.
std::string TexteDuChamp(const Valeur& v, TypeChamp type);

}  // namespace quillon
