#include "report/checks.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string_view>
#include <thread>
#include <unordered_map>

namespace quillon {
namespace {

using Lignes = Blocs<LigneCollectee>;

bool MemeIdentite(const Collecte& c, const LigneCollectee& a, const LigneCollectee& b) {
  return a.Identite() && b.Identite() && a.theme == b.theme && a.commune == b.commune && a.plan == b.plan &&
         c.NumeroPoint(a) == c.NumeroPoint(b);
}

uint64_t Melanger(uint64_t z) {
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

// An open-addressing table of lines by a 32-bit fingerprint: each entry
// holds the fingerprint in its high half and the line's index plus one in
// its low half (0 is an empty slot). A fingerprint's slot is its top bits,
// so that the table can double without knowing more; it doubles when half
// full. Equal fingerprints are told apart by a test on the lines.
class TableEmpreintes {
 public:
  // Room for `nombre` entries before the first doubling.
  void Reserver(std::size_t nombre) {
    int bits = 10;
    while (bits < 31 && (std::size_t{1} << bits) < 2 * nombre) ++bits;
    if (bits > bits_) Refaire(bits);
  }
  // The entry of `empreinte` whose line `egal` accepts, or null.
  template <typename Egal>
  uint64_t* Chercher(uint32_t empreinte, Egal egal) {
    if (cases_.empty()) return nullptr;
    const std::size_t masque = cases_.size() - 1;
    for (std::size_t k = Place(empreinte, bits_);; k = (k + 1) & masque) {
      uint64_t& entree = cases_[k];
      if (entree == 0) return nullptr;
      if (static_cast<uint32_t>(entree >> 32) == empreinte && egal(Ligne(entree))) return &entree;
    }
  }
  void Inserer(uint32_t empreinte, uint32_t ligne) {
    if (2 * (nombre_ + 1) > cases_.size()) Refaire(bits_ == 0 ? 10 : bits_ + 1);
    Placer(cases_, bits_, (uint64_t{empreinte} << 32) | (uint64_t{ligne} + 1));
    ++nombre_;
  }
  // Asks the processor for the fingerprint's slot ahead of its search.
  void Anticiper(uint32_t empreinte) const {
    if (!cases_.empty()) __builtin_prefetch(&cases_[Place(empreinte, bits_)]);
  }
  static uint32_t Ligne(uint64_t entree) { return static_cast<uint32_t>(entree) - 1; }
  static void Remplacer(uint64_t& entree, uint32_t ligne) {
    entree = (entree & ~0xFFFFFFFFull) | (uint64_t{ligne} + 1);
  }

 private:
  static std::size_t Place(uint32_t empreinte, int bits) { return empreinte >> (32 - bits); }
  static void Placer(std::vector<uint64_t>& cases, int bits, uint64_t entree) {
    const std::size_t masque = cases.size() - 1;
    std::size_t k = Place(static_cast<uint32_t>(entree >> 32), bits);
    while (cases[k] != 0) k = (k + 1) & masque;
    cases[k] = entree;
  }
  void Refaire(int bits) {
    std::vector<uint64_t> cases(std::size_t{1} << bits);
    for (const uint64_t entree : cases_) {
      if (entree != 0) Placer(cases, bits, entree);
    }
    cases_.swap(cases);
    bits_ = bits;
  }

  std::vector<uint64_t> cases_;
  int bits_ = 0;
  std::size_t nombre_ = 0;
};

// The values of the given ranks (sorted, distinct) among v, whose values
// lie in [min, max]: a count of the values in buckets of that range tells
// which bucket each rank falls in, and only those buckets' values are then
// selected among. Two passes over v, whatever its size.
std::vector<double> ValeursDeRangs(const std::vector<double>& v, double min, double max,
                                   const std::vector<std::size_t>& rangs) {
  std::vector<double> valeurs(rangs.size(), min);
  if (!(max > min)) return valeurs;
  const std::size_t nombre = std::clamp<std::size_t>(v.size() / 8, 1, 1 << 16);
  const double echelle = static_cast<double>(nombre) / (max - min);
  auto seau = [&](double x) {
    const double t = (x - min) * echelle;
    return t >= static_cast<double>(nombre - 1) ? nombre - 1 : t > 0 ? static_cast<std::size_t>(t) : 0;
  };
  std::vector<uint32_t> comptes(nombre);
  for (const double x : v) ++comptes[seau(x)];
  // Each rank's bucket, and its rank among that bucket's values.
  std::vector<std::size_t> seaux(rangs.size()), dedans(rangs.size());
  std::vector<int> liste(nombre, -1);
  std::vector<std::vector<double>> contenus;
  std::size_t avant = 0, b = 0;
  for (std::size_t k = 0; k < rangs.size(); ++k) {
    while (avant + comptes[b] <= rangs[k]) avant += comptes[b++];
    seaux[k] = b, dedans[k] = rangs[k] - avant;
    if (liste[b] < 0) liste[b] = static_cast<int>(contenus.size()), contenus.emplace_back();
  }
  for (std::size_t k = 0; k < contenus.size(); ++k) contenus[k].reserve(comptes[seaux[k]]);
  for (const double x : v) {
    if (const int l = liste[seau(x)]; l >= 0) contenus[static_cast<std::size_t>(l)].push_back(x);
  }
  for (std::size_t k = 0; k < rangs.size(); ++k) {
    std::vector<double>& c = contenus[static_cast<std::size_t>(liste[seaux[k]])];
    std::nth_element(c.begin(), c.begin() + static_cast<std::ptrdiff_t>(dedans[k]), c.end());
    valeurs[k] = c[dedans[k]];
  }
  return valeurs;
}

}  // namespace

std::array<double, 3> Quartiles(const std::vector<double>& v, double min, double max) {
  const std::size_t n = v.size();
  std::array<double, 3> positions{};
  std::vector<std::size_t> rangs;
  for (std::size_t q = 0; q < 3; ++q) {
    positions[q] = 0.25 * static_cast<double>(q + 1) * static_cast<double>(n - 1);
    const auto bas = static_cast<std::size_t>(positions[q]);
    rangs.push_back(bas);
    if (bas + 1 < n) rangs.push_back(bas + 1);
  }
  std::sort(rangs.begin(), rangs.end());
  rangs.erase(std::unique(rangs.begin(), rangs.end()), rangs.end());
  const std::vector<double> valeurs = ValeursDeRangs(v, min, max, rangs);
  auto valeur = [&](std::size_t rang) {
    return valeurs[static_cast<std::size_t>(std::lower_bound(rangs.begin(), rangs.end(), rang) - rangs.begin())];
  };
  std::array<double, 3> q{};
  for (std::size_t k = 0; k < 3; ++k) {
    const auto bas = static_cast<std::size_t>(positions[k]);
    const double reste = positions[k] - static_cast<double>(bas);
    q[k] = bas + 1 < n ? valeur(bas) + reste * (valeur(bas + 1) - valeur(bas)) : valeur(bas);
  }
  return q;
}

namespace {

void Etendre(std::optional<Etendue>& e, const LigneCollectee& p) {
  if (!e) e.emplace();
  e->Ajouter(p.y, p.x);
  if (p.altitude != 0) {
    e->altitudeMin = std::min(e->altitudeMin.value_or(p.altitude), p.altitude);
    e->altitudeMax = std::max(e->altitudeMax.value_or(p.altitude), p.altitude);
  }
}

constexpr uint32_t kFinChaine = 0xFFFFFFFF;

}  // namespace

double Arrondi(double metres) { return std::round(metres * 1e4) / 1e4; }

struct Controleur::Etat {
  Etat(const Collecte& collecte, double tolerance, std::size_t lignesAttendues)
      : c(collecte),
        // Cells four tolerances wide: a point's close neighbours lie in at
        // most two rows and two columns of cells, and most points need
        // only their own.
        cellule(4 * std::max(tolerance, 0.001)),
        // Coordinates are decimal: 0.01 apart may compute as 0.0100000001.
        seuil(tolerance + 1e-7) {
    r.tolerance = tolerance;
    identites.Reserver(lignesAttendues);
    cellules.Reserver(lignesAttendues);
    precedent.reserve(lignesAttendues);
    ys.reserve(lignesAttendues);
    xs.reserve(lignesAttendues);
    convertis.reserve(lignesAttendues);
  }

  // What the tables are searched by for one line: computed a few lines
  // ahead, while the processor fetches their slots, so that the searches
  // of one line overlap the work on the lines before it.
  struct Cles {
    uint32_t identite = 0;
    int64_t yDebut = 0, yFin = -1, xDebut = 0, xFin = -1;  // the cells to look in
    int64_t cy = 0, cx = 0;                                // its own
  };
  static constexpr std::size_t kAvance = 8;
  void Preparer(uint32_t i, Cles& cles) const;
  void Ligne(uint32_t i, const Cles& cles);
  void Doublon(uint32_t i, const LigneCollectee& p, uint32_t empreinte);
  void Proche(uint32_t i, const Cles& cles);
  void Comparer(uint32_t avant, uint32_t i);
  int64_t Case(double v) const {
    constexpr double kBorne = 1e15;
    return static_cast<int64_t>(std::floor(std::clamp(v / cellule, -kBorne, kBorne)));
  }
  void Eloignes();
  void Doublons();
  void ParChamp();

  static uint32_t EmpreinteIdentite(const Collecte& c, const LigneCollectee& p);
  static uint32_t EmpreinteCase(int64_t y, int64_t x) {
    return static_cast<uint32_t>(
        Melanger(static_cast<uint64_t>(y) * 0x9E3779B97F4A7C15ull ^ static_cast<uint64_t>(x)) >> 32);
  }

  const Collecte& c;
  Controles r;
  std::size_t faits = 0, preparees = 0;
  std::array<Cles, 2 * kAvance> anneau;
  std::array<std::array<int64_t, 3>, 257> themes{};  // [0]: theme unreadable, [t + 1]: theme t
  std::array<bool, 257> themesVus{};

  // Duplicates: the first line of each identity, and each later line of it
  // with that first line.
  TableEmpreintes identites;
  std::vector<std::pair<uint32_t, uint32_t>> paires;

  // Close points: each cell's last point, and by line the point before it
  // in its cell (kFinChaine for the first, and for lines without
  // coordinates).
  double cellule, seuil;
  TableEmpreintes cellules;
  std::vector<uint32_t> precedent;
  uint64_t comparaisons = 0, avecCoordonnees = 0;

  // The converted points' coordinates, for their quartiles, and their
  // lines.
  std::vector<double> ys, xs;
  std::vector<uint32_t> convertis;
};

uint32_t Controleur::Etat::EmpreinteIdentite(const Collecte& c, const LigneCollectee& p) {
  const uint64_t code = (uint64_t{p.theme} << 32) | (uint64_t{static_cast<uint16_t>(p.commune)} << 16) |
                        static_cast<uint16_t>(p.plan);
  return static_cast<uint32_t>(Melanger(std::hash<std::string_view>{}(c.NumeroPoint(p)) ^ Melanger(code)) >> 32);
}

void Controleur::Etat::Preparer(uint32_t i, Cles& k) const {
  const LigneCollectee& p = c.Lignes()[i];
  if (p.Identite()) {
    k.identite = EmpreinteIdentite(c, p);
    identites.Anticiper(k.identite);
  }
  if (p.Coordonnees()) {
    k.cy = Case(p.y), k.cx = Case(p.x);
    k.yDebut = Case(p.y - seuil), k.yFin = Case(p.y + seuil);
    k.xDebut = Case(p.x - seuil), k.xFin = Case(p.x + seuil);
    for (int64_t y = k.yDebut; y <= k.yFin; ++y) {
      for (int64_t x = k.xDebut; x <= k.xFin; ++x) cellules.Anticiper(EmpreinteCase(y, x));
    }
  }
}

void Controleur::Etat::Ligne(uint32_t i, const Cles& cles) {
  const LigneCollectee& p = c.Lignes()[i];
  const auto issue = static_cast<std::size_t>(p.Issue());
  ++r.nombres[issue];
  const std::size_t theme = p.Identite() ? std::size_t{p.theme} + 1 : 0;
  ++themes[theme][issue];
  themesVus[theme] = true;
  if (!p.Coordonnees()) {
    r.sansCoordonnees.push_back(i);
    precedent.push_back(kFinChaine);
  } else {
    Etendre(r.etendueDessin, p);
    if (p.Issue() == IssueLigne::Convertie) {
      Etendre(r.etendue, p);
      ys.push_back(p.y);
      xs.push_back(p.x);
      convertis.push_back(i);
    }
    Proche(i, cles);
  }
  if (p.Identite()) Doublon(i, p, cles.identite);
}

void Controleur::Etat::Doublon(uint32_t i, const LigneCollectee& p, uint32_t empreinte) {
  const Lignes& l = c.Lignes();
  if (const uint64_t* premier = identites.Chercher(empreinte, [&](uint32_t j) { return MemeIdentite(c, l[j], p); })) {
    paires.emplace_back(TableEmpreintes::Ligne(*premier), i);
  } else {
    identites.Inserer(empreinte, i);
  }
}

// The point against the points before it in the cells that its
// neighbours within the tolerance may lie in, then into its own cell.
void Controleur::Etat::Proche(uint32_t i, const Cles& k) {
  ++avecCoordonnees;
  const Lignes& l = c.Lignes();
  uint64_t* propre = nullptr;
  for (int64_t y = k.yDebut; y <= k.yFin; ++y) {
    for (int64_t x = k.xDebut; x <= k.xFin; ++x) {
      uint64_t* dernier =
          cellules.Chercher(EmpreinteCase(y, x), [&](uint32_t j) { return Case(l[j].y) == y && Case(l[j].x) == x; });
      if (dernier == nullptr) continue;
      if (y == k.cy && x == k.cx) propre = dernier;
      for (uint32_t j = TableEmpreintes::Ligne(*dernier); j != kFinChaine; j = precedent[j]) Comparer(j, i);
    }
  }
  if (propre != nullptr) {
    precedent.push_back(TableEmpreintes::Ligne(*propre));
    TableEmpreintes::Remplacer(*propre, i);
  } else {
    precedent.push_back(kFinChaine);
    cellules.Inserer(EmpreinteCase(k.cy, k.cx), i);
  }
}

void Controleur::Etat::Comparer(uint32_t avant, uint32_t i) {
  if (r.prochesTronques) return;
  // Many points of one identity on one spot compare without end: the
  // search stops past a budget that no real file comes near.
  if (++comparaisons > 64 * avecCoordonnees + 10'000'000) {
    r.prochesTronques = true;
    return;
  }
  const LigneCollectee &p = c.Lignes()[avant], &q = c.Lignes()[i];
  const double dy = p.y - q.y, dx = p.x - q.x;
  if (std::abs(dy) > seuil || std::abs(dx) > seuil) return;
  const double d = std::hypot(dy, dx);
  if (d > seuil || MemeIdentite(c, p, q)) return;
  if (r.proches.size() >= kProchesMax) {
    r.prochesTronques = true;
    return;
  }
  r.proches.push_back({avant, i, Arrondi(d)});
}

// A converted point more than ten interquartile ranges, and more than a
// metre, from the median in Y or X. At least a metre: points on one line
// (all the same X) must not make every other X far.
void Controleur::Etat::Eloignes() {
  if (ys.empty()) return;
  const Etendue& e = *r.etendue;
  std::array<double, 3> qy{}, qx{};
  if (ys.size() >= 100'000) {
    std::thread y([&] { qy = Quartiles(ys, e.yMin, e.yMax); });
    qx = Quartiles(xs, e.xMin, e.xMax);
    y.join();
  } else {
    qy = Quartiles(ys, e.yMin, e.yMax), qx = Quartiles(xs, e.xMin, e.xMax);
  }
  const double ecartY = std::max(10 * (qy[2] - qy[0]), 1.0), ecartX = std::max(10 * (qx[2] - qx[0]), 1.0);
  for (std::size_t k = 0; k < ys.size(); ++k) {
    if (std::abs(ys[k] - qy[1]) > ecartY || std::abs(xs[k] - qx[1]) > ecartX) r.eloignes.push_back(convertis[k]);
  }
}

// The pairs grouped by their first line: a group of duplicates each, in
// the order of its first line.
void Controleur::Etat::Doublons() {
  std::sort(paires.begin(), paires.end());
  const Lignes& l = c.Lignes();
  for (std::size_t k = 0; k < paires.size();) {
    const uint32_t premier = paires[k].first;
    quillon::Doublon d;
    d.debut = static_cast<uint32_t>(r.membresDoublons.size());
    r.membresDoublons.push_back(premier);
    for (; k < paires.size() && paires[k].first == premier; ++k) r.membresDoublons.push_back(paires[k].second);
    d.nombre = static_cast<uint32_t>(r.membresDoublons.size()) - d.debut;
    double yMin = INFINITY, yMax = -INFINITY, xMin = INFINITY, xMax = -INFINITY, hMin = INFINITY, hMax = -INFINITY;
    int altitudes = 0;
    for (uint32_t m = d.debut; m < d.debut + d.nombre; ++m) {
      const LigneCollectee& p = l[r.membresDoublons[m]];
      if (p.Coordonnees()) {
        yMin = std::min(yMin, p.y), yMax = std::max(yMax, p.y);
        xMin = std::min(xMin, p.x), xMax = std::max(xMax, p.x);
      }
      if (p.altitude != 0) ++altitudes, hMin = std::min(hMin, p.altitude), hMax = std::max(hMax, p.altitude);
    }
    d.dy = yMax >= yMin ? Arrondi(yMax - yMin) : 0;
    d.dx = xMax >= xMin ? Arrondi(xMax - xMin) : 0;
    if (altitudes >= 2) d.dh = Arrondi(hMax - hMin);
    r.doublons.push_back(d);
  }
}

// Each rejected field as the log names it: its lines (a field named twice
// on one line counts once) and the first of them.
void Controleur::Etat::ParChamp() {
  std::unordered_map<std::string_view, std::size_t> champs;
  uint32_t ligne = kFinChaine;
  std::size_t dernier = SIZE_MAX;
  for (const MessageCollecte& m : c.Messages()) {
    if (m.ligne >= c.Lignes().size()) break;  // heard after the last line
    if (m.ligne != ligne) ligne = m.ligne, dernier = SIZE_MAX;
    const std::string_view champ = c.Champ(m);
    auto [it, nouveau] = champs.try_emplace(champ, r.parChamp.size());
    if (nouveau) r.parChamp.push_back({std::string(champ), 0, {}});
    if (it->second == dernier) continue;
    quillon::ParChamp& pc = r.parChamp[it->second];
    ++pc.lignes;
    if (pc.premieres.size() < kPremieresLignes && (pc.premieres.empty() || pc.premieres.back() != ligne)) {
      pc.premieres.push_back(ligne);
    }
    dernier = it->second;
  }
}

Controleur::Controleur(const Collecte& collecte, double tolerance, std::size_t lignesAttendues)
    : e_(std::make_unique<Etat>(collecte, tolerance, lignesAttendues)) {}
Controleur::~Controleur() = default;

void Controleur::Ajouter(std::size_t fin) {
  Etat& e = *e_;
  for (; e.faits < fin; ++e.faits) {
    for (; e.preparees < fin && e.preparees <= e.faits + Etat::kAvance; ++e.preparees) {
      e.Preparer(static_cast<uint32_t>(e.preparees), e.anneau[e.preparees % e.anneau.size()]);
    }
    e.Ligne(static_cast<uint32_t>(e.faits), e.anneau[e.faits % e.anneau.size()]);
  }
}

Controles Controleur::Terminer() {
  Etat& e = *e_;
  e.Eloignes();
  e.Doublons();
  std::sort(e.r.proches.begin(), e.r.proches.end(),
            [](const PointsProches& a, const PointsProches& b) { return std::tie(a.a, a.b) < std::tie(b.a, b.b); });
  e.ParChamp();
  for (std::size_t t = 0; t < e.themes.size(); ++t) {
    if (e.themesVus[t]) e.r.parTheme.push_back({static_cast<int>(t) - 1, e.themes[t]});
  }
  return std::move(e.r);
}

Controles Controler(const Collecte& collecte, double tolerance) {
  Controleur controleur(collecte, tolerance, collecte.Lignes().size());
  controleur.Ajouter(collecte.Lignes().size());
  return controleur.Terminer();
}

}  // namespace quillon
