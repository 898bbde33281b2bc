#include "export/rtree.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <span>

namespace quillon {
namespace {

// The module's nodes: a blob of the size of the root's, holding the depth
// of the tree (in the root only) and the number of cells, two bytes each,
// then the cells: the row's id or the child's node number on eight bytes,
// and the four bounds on four bytes each, all big-endian.
constexpr std::size_t kEnTete = 4, kCellule = 8 + 4 * 4;

void Ecrire16(unsigned char* p, uint16_t v) {
  p[0] = static_cast<unsigned char>(v >> 8);
  p[1] = static_cast<unsigned char>(v);
}
void Ecrire32(unsigned char* p, uint32_t v) {
  for (int k = 0; k < 4; ++k) p[k] = static_cast<unsigned char>(v >> (24 - 8 * k));
}
void Ecrire64(unsigned char* p, uint64_t v) {
  for (int k = 0; k < 8; ++k) p[k] = static_cast<unsigned char>(v >> (56 - 8 * k));
}

float VersLeBas(double v) {
  float f = static_cast<float>(v);
  if (static_cast<double>(f) > v) f = std::nextafter(f, -INFINITY);
  return f;
}
float VersLeHaut(double v) {
  float f = static_cast<float>(v);
  if (static_cast<double>(f) < v) f = std::nextafter(f, INFINITY);
  return f;
}

class Instruction {
 public:
  Instruction(sqlite3* base, const std::string& sql) { sqlite3_prepare_v2(base, sql.c_str(), -1, &s_, nullptr); }
  ~Instruction() { sqlite3_finalize(s_); }
  bool Pret() const { return s_ != nullptr; }
  // The first column of the first row, or 0.
  int64_t Entier() {
    const int64_t v = s_ != nullptr && sqlite3_step(s_) == SQLITE_ROW ? sqlite3_column_int64(s_, 0) : 0;
    sqlite3_reset(s_);
    return v;
  }
  bool Executer(int64_t a, int64_t b) {
    sqlite3_bind_int64(s_, 1, a);
    sqlite3_bind_int64(s_, 2, b);
    return Pas();
  }
  bool Executer(int64_t a, const std::vector<unsigned char>& blob) {
    sqlite3_bind_int64(s_, 1, a);
    sqlite3_bind_blob(s_, 2, blob.data(), static_cast<int>(blob.size()), SQLITE_STATIC);
    return Pas();
  }

 private:
  bool Pas() {
    const bool ok = sqlite3_step(s_) == SQLITE_DONE;
    sqlite3_reset(s_);
    return ok;
  }
  sqlite3_stmt* s_ = nullptr;
};

double CentreY(const BoiteIndex& b) { return (static_cast<double>(b.yMin) + b.yMax) / 2; }
double CentreX(const BoiteIndex& b) { return (static_cast<double>(b.xMin) + b.xMax) / 2; }

// The entries of one level in the order of their nodes, `parNoeud` a node:
// sorted by Y in vertical slices of as many nodes as there are slices, each
// slice sorted by X.
void Tuiler(std::vector<BoiteIndex>& entrees, std::size_t parNoeud) {
  const std::size_t noeuds = (entrees.size() + parNoeud - 1) / parNoeud;
  const auto tranches = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(noeuds))));
  const std::size_t parTranche = tranches * parNoeud;
  std::sort(entrees.begin(), entrees.end(),
            [](const BoiteIndex& a, const BoiteIndex& b) { return CentreY(a) < CentreY(b); });
  for (std::size_t debut = 0; debut < entrees.size(); debut += parTranche) {
    const auto fin = entrees.begin() + static_cast<std::ptrdiff_t>(std::min(entrees.size(), debut + parTranche));
    std::sort(entrees.begin() + static_cast<std::ptrdiff_t>(debut), fin,
              [](const BoiteIndex& a, const BoiteIndex& b) { return CentreX(a) < CentreX(b); });
  }
}

// The blob of node `numero`: the tree's depth when it is the root (0 or
// more), the count of its entries, then each one's id and box; and the box
// of them all, under the node's number.
BoiteIndex RemplirNoeud(std::vector<unsigned char>& blob, std::span<const BoiteIndex> entrees, int profondeurRacine,
                        int64_t numero) {
  std::fill(blob.begin(), blob.end(), 0);
  if (profondeurRacine >= 0) Ecrire16(blob.data(), static_cast<uint16_t>(profondeurRacine));
  Ecrire16(blob.data() + 2, static_cast<uint16_t>(entrees.size()));
  BoiteIndex boite = entrees.front();
  for (std::size_t k = 0; k < entrees.size(); ++k) {
    const BoiteIndex& e = entrees[k];
    unsigned char* c = blob.data() + kEnTete + k * kCellule;
    Ecrire64(c, static_cast<uint64_t>(e.id));
    Ecrire32(c + 8, std::bit_cast<uint32_t>(e.yMin));
    Ecrire32(c + 12, std::bit_cast<uint32_t>(e.yMax));
    Ecrire32(c + 16, std::bit_cast<uint32_t>(e.xMin));
    Ecrire32(c + 20, std::bit_cast<uint32_t>(e.xMax));
    boite.yMin = std::min(boite.yMin, e.yMin), boite.yMax = std::max(boite.yMax, e.yMax);
    boite.xMin = std::min(boite.xMin, e.xMin), boite.xMax = std::max(boite.xMax, e.xMax);
  }
  boite.id = numero;
  return boite;
}

}  // namespace

BoiteIndex BoiteDuPoint(int64_t id, double y, double x) {
  return {VersLeBas(y), VersLeHaut(y), VersLeBas(x), VersLeHaut(x), id};
}

bool RemplirArbreR(sqlite3* base, const std::string& table, std::vector<BoiteIndex>& boites) {
  if (boites.empty()) return true;
  const std::string q = "\"" + table;
  // The size of a node is the root's, as the module made it.
  Instruction taille(base, "SELECT length(data) FROM " + q + "_node\" WHERE nodeno = 1");
  const auto octets = static_cast<std::size_t>(taille.Entier());
  if (octets < kEnTete + 2 * kCellule) return false;
  const std::size_t parNoeud = std::min<std::size_t>((octets - kEnTete) / kCellule, 0xFFFF);

  Instruction noeud(base, "INSERT OR REPLACE INTO " + q + "_node\" VALUES (?, ?)");
  Instruction ligne(base, "INSERT INTO " + q + "_rowid\" VALUES (?, ?)");
  Instruction parent(base, "INSERT INTO " + q + "_parent\" VALUES (?, ?)");
  if (!noeud.Pret() || !ligne.Pret() || !parent.Pret()) return false;

  // Level after level from the leaves: each level's entries packed into
  // nodes numbered from 2, whose boxes are the entries of the level above,
  // until they fit in the root, node 1.
  std::vector<BoiteIndex> entrees;
  entrees.swap(boites);
  // Each row's leaf, written in the order of the rows once the leaves are
  // made: rows appended at the end of their table go fastest.
  std::vector<std::pair<int64_t, int64_t>> feuilles;
  feuilles.reserve(entrees.size());
  std::vector<unsigned char> blob(octets);
  int64_t suivant = 2;
  for (uint16_t profondeur = 0;; ++profondeur) {
    const bool racine = entrees.size() <= parNoeud;
    if (!racine) Tuiler(entrees, parNoeud);
    std::vector<BoiteIndex> dessus;
    for (std::size_t debut = 0; debut < entrees.size(); debut += parNoeud) {
      const std::size_t nombre = std::min(parNoeud, entrees.size() - debut);
      const int64_t numero = racine ? 1 : suivant++;
      const auto contenu = std::span<const BoiteIndex>(entrees).subspan(debut, nombre);
      dessus.push_back(RemplirNoeud(blob, contenu, racine ? profondeur : -1, numero));
      for (const BoiteIndex& e : contenu) {
        if (profondeur == 0) feuilles.emplace_back(e.id, numero);
        else if (!parent.Executer(e.id, numero)) return false;
      }
      if (!noeud.Executer(numero, blob)) return false;
    }
    if (profondeur == 0) {
      std::sort(feuilles.begin(), feuilles.end());
      for (const auto& [id, feuille] : feuilles) {
        if (!ligne.Executer(id, feuille)) return false;
      }
    }
    if (racine) return true;
    entrees.swap(dessus);
  }
}

}  // namespace quillon
