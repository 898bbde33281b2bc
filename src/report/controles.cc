#include "report/controles.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <string_view>
#include <unordered_map>

namespace quillon {
namespace {

using Lignes = std::vector<LigneCollectee>;

bool MemeIdentite(const Collecte& c, const LigneCollectee& a, const LigneCollectee& b) {
  return a.Identite() && b.Identite() && a.theme == b.theme && a.commune == b.commune && a.plan == b.plan &&
         c.NumeroPoint(a) == c.NumeroPoint(b);
}

// The lines sorted by a hash of their identity, which packs in 16 bytes
// where the identity itself would take the line and its number; lines of
// one hash are then split by their identities.
void Doublons(const Collecte& c, Controles& r) {
  const Lignes& l = c.Lignes();
  struct Cle {
    uint64_t hache;
    uint32_t i;
  };
  std::vector<Cle> ordre;
  for (uint32_t i = 0; i < l.size(); ++i) {
    if (!l[i].Identite()) continue;
    const LigneCollectee& p = l[i];
    const uint64_t code = (uint64_t{p.theme} << 32) | (uint64_t{static_cast<uint16_t>(p.commune)} << 16) |
                          static_cast<uint16_t>(p.plan);
    ordre.push_back({std::hash<std::string_view>{}(c.NumeroPoint(p)) ^ (code * 0x9E3779B97F4A7C15ull), i});
  }
  std::sort(ordre.begin(), ordre.end(),
            [](const Cle& a, const Cle& b) { return std::tie(a.hache, a.i) < std::tie(b.hache, b.i); });
  std::vector<uint32_t> groupe, reste;
  for (std::size_t i = 0; i < ordre.size();) {
    std::size_t j = i + 1;
    while (j < ordre.size() && ordre[j].hache == ordre[i].hache) ++j;
    reste.clear();
    for (std::size_t k = i; k < j && j - i > 1; ++k) reste.push_back(ordre[k].i);
    while (reste.size() > 1) {
      groupe.clear();
      std::erase_if(reste, [&](uint32_t m) {
        const bool membre = groupe.empty() || MemeIdentite(c, l[groupe.front()], l[m]);
        if (membre) groupe.push_back(m);
        return membre;
      });
      if (groupe.size() < 2) continue;
      Doublon d;
      d.debut = static_cast<uint32_t>(r.membresDoublons.size());
      d.nombre = static_cast<uint32_t>(groupe.size());
      double yMin = INFINITY, yMax = -INFINITY, xMin = INFINITY, xMax = -INFINITY, hMin = INFINITY, hMax = -INFINITY;
      int altitudes = 0;
      for (uint32_t m : groupe) {
        const LigneCollectee& p = l[m];
        r.membresDoublons.push_back(m);
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
    i = j;
  }
  // By first line, as a reader goes through the file.
  std::sort(r.doublons.begin(), r.doublons.end(), [&](const Doublon& a, const Doublon& b) {
    return r.membresDoublons[a.debut] < r.membresDoublons[b.debut];
  });
}

// Points on a grid of cells at least as wide as the tolerance: two close
// points lie in the same cell or in neighbouring ones.
void Proches(const Collecte& c, Controles& r) {
  const Lignes& l = c.Lignes();
  const double cellule = std::max(r.tolerance, 0.001);
  constexpr double kBorne = 1e15;
  auto case_ = [&](double v) { return static_cast<int64_t>(std::floor(std::clamp(v / cellule, -kBorne, kBorne))); };
  struct Entree {
    int64_t cy, cx;
    uint32_t i;
  };
  std::vector<Entree> grille;
  for (uint32_t i = 0; i < l.size(); ++i) {
    if (l[i].Coordonnees()) grille.push_back({case_(l[i].y), case_(l[i].x), i});
  }
  auto avant = [](const Entree& a, const Entree& b) { return std::tie(a.cy, a.cx, a.i) < std::tie(b.cy, b.cx, b.i); };
  std::sort(grille.begin(), grille.end(), avant);
  const double seuil = r.tolerance + 1e-7;  // coordinates are decimal: 0.01 apart may compute as 0.0100000001
  auto comparer = [&](uint32_t a, uint32_t b) {
    const LigneCollectee &p = l[a], &q = l[b];
    const double d = std::hypot(p.y - q.y, p.x - q.x);
    if (d > seuil || MemeIdentite(c, p, q)) return;
    if (r.proches.size() >= kProchesMax) {
      r.prochesTronques = true;
      return;
    }
    r.proches.push_back({std::min(a, b), std::max(a, b), Arrondi(d)});
  };
  // Each cell against itself, the cell after it in its row, and the three
  // below it, found from where the cell before looked: the cells go in
  // order, and so do the places they look for.
  std::size_t dessous = 0;
  for (std::size_t debut = 0; debut < grille.size();) {
    std::size_t fin = debut + 1;
    while (fin < grille.size() && grille[fin].cy == grille[debut].cy && grille[fin].cx == grille[debut].cx) ++fin;
    for (std::size_t a = debut; a < fin; ++a) {
      for (std::size_t b = a + 1; b < fin; ++b) comparer(grille[a].i, grille[b].i);
    }
    const int64_t cy = grille[debut].cy, cx = grille[debut].cx;
    for (std::size_t v = fin; v < grille.size() && grille[v].cy == cy && grille[v].cx == cx + 1; ++v) {
      for (std::size_t a = debut; a < fin; ++a) comparer(grille[a].i, grille[v].i);
    }
    const Entree coin{cy + 1, cx - 1, 0};
    while (dessous < grille.size() && avant(grille[dessous], coin)) ++dessous;
    for (std::size_t v = dessous; v < grille.size() && grille[v].cy == cy + 1 && grille[v].cx <= cx + 1; ++v) {
      for (std::size_t a = debut; a < fin; ++a) comparer(grille[a].i, grille[v].i);
    }
    debut = fin;
  }
  std::sort(r.proches.begin(), r.proches.end(),
            [](const PointsProches& a, const PointsProches& b) { return std::tie(a.a, a.b) < std::tie(b.a, b.b); });
}

// The first and third quartiles and the median, interpolated: each from
// the value of its rank and the smallest above it, without sorting.
std::array<double, 3> Quartiles(std::vector<double>& v) {
  auto rang = [&](double q) {
    const double pos = q * static_cast<double>(v.size() - 1);
    const auto bas = static_cast<std::size_t>(pos);
    const double reste = pos - static_cast<double>(bas);
    const auto n = v.begin() + static_cast<std::ptrdiff_t>(bas);
    std::nth_element(v.begin(), n, v.end());
    return bas + 1 < v.size() ? *n + reste * (*std::min_element(n + 1, v.end()) - *n) : *n;
  };
  return {rang(0.25), rang(0.5), rang(0.75)};
}

void Eloignes(const Collecte& c, Controles& r) {
  const Lignes& l = c.Lignes();
  std::vector<double> ys, xs;
  for (const LigneCollectee& p : l) {
    if (p.Issue() == IssueLigne::Convertie && p.Coordonnees()) ys.push_back(p.y), xs.push_back(p.x);
  }
  if (ys.empty()) return;
  const auto qy = Quartiles(ys), qx = Quartiles(xs);
  ys = {}, xs = {};
  // At least a metre: points on one line (all the same X) must not make
  // every other X far.
  const double ecartY = std::max(10 * (qy[2] - qy[0]), 1.0), ecartX = std::max(10 * (qx[2] - qx[0]), 1.0);
  for (uint32_t i = 0; i < l.size(); ++i) {
    const LigneCollectee& p = l[i];
    if (p.Issue() != IssueLigne::Convertie || !p.Coordonnees()) continue;
    if (std::abs(p.y - qy[1]) > ecartY || std::abs(p.x - qx[1]) > ecartX) r.eloignes.push_back(i);
  }
}

void Etendre(std::optional<Etendue>& e, const LigneCollectee& p) {
  if (!e) e = Etendue{p.y, p.y, p.x, p.x, {}, {}};
  e->yMin = std::min(e->yMin, p.y), e->yMax = std::max(e->yMax, p.y);
  e->xMin = std::min(e->xMin, p.x), e->xMax = std::max(e->xMax, p.x);
  if (p.altitude != 0) {
    e->altitudeMin = std::min(e->altitudeMin.value_or(p.altitude), p.altitude);
    e->altitudeMax = std::max(e->altitudeMax.value_or(p.altitude), p.altitude);
  }
}

void Comptes(const Collecte& c, Controles& r) {
  const Lignes& l = c.Lignes();
  std::map<int, std::array<int64_t, 3>> themes;
  std::unordered_map<std::string_view, std::size_t> champs;
  for (uint32_t i = 0; i < l.size(); ++i) {
    const LigneCollectee& p = l[i];
    const auto issue = static_cast<std::size_t>(p.Issue());
    ++r.nombres[issue];
    ++themes[p.Identite() ? p.theme : -1][issue];
    if (!p.Coordonnees()) {
      r.sansCoordonnees.push_back(i);
    } else {
      Etendre(r.etendueDessin, p);
      if (p.Issue() == IssueLigne::Convertie) Etendre(r.etendue, p);
    }
    std::size_t dernier = SIZE_MAX;  // a field named twice on one line counts once
    for (std::size_t m = p.premierMessage; m < c.FinMessages(i); ++m) {
      const std::string_view champ = c.Champ(c.Messages()[m]);
      auto [it, nouveau] = champs.try_emplace(champ, r.parChamp.size());
      if (nouveau) r.parChamp.push_back({std::string(champ), 0, {}});
      if (it->second == dernier) continue;
      ParChamp& pc = r.parChamp[it->second];
      ++pc.lignes;
      if (pc.premieres.size() < kPremieresLignes && (pc.premieres.empty() || pc.premieres.back() != i)) {
        pc.premieres.push_back(i);
      }
      dernier = it->second;
    }
  }
  for (const auto& [theme, nombres] : themes) r.parTheme.push_back({theme, nombres});
}

}  // namespace

double Arrondi(double metres) { return std::round(metres * 1e4) / 1e4; }

Controles Controler(const Collecte& collecte, double tolerance) {
  Controles r;
  r.tolerance = tolerance;
  Comptes(collecte, r);
  Doublons(collecte, r);
  Proches(collecte, r);
  Eloignes(collecte, r);
  return r;
}

}  // namespace quillon
