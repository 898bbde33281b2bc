#include <algorithm>
#include <cmath>

#include "comparaison_js.h"
#include "io/encoding.h"
#include "report/comparaison_rapports.h"
#include "report/html.h"
#include "version.h"

namespace quillon {
namespace {

// The kinds of drawn points, as the script reads them.
enum : int { kIdentique, kNouveau, kSupprime, kDeplace, kModifie, kDoublon };

std::string Entier(int64_t n) { return std::to_string(n); }
std::string Html(std::string_view cp1252) { return EchapperHtml(Cp1252VersUtf8(cp1252)); }

std::string Case(std::string_view texte, bool nombre = false) {
  return std::string(nombre ? "<td class=\"n\">" : "<td>") + std::string(texte) + "</td>";
}

// 1, 2 or 5 times a power of ten, at most v and at least 1.
double Facteur(double v) {
  if (!(v > 1)) return 1;
  const double p = std::pow(10, std::floor(std::log10(v)));
  const double r = v / p;
  return (r >= 5 ? 5 : r >= 2 ? 2 : 1) * p;
}

struct Dessin {
  std::string points, ids;
  std::size_t nombre = 0;
};

}  // namespace

std::string RapportComparaisonHtml(const Comparaison& c, const std::string& programme, const std::string& date) {
  const auto& A = c.ancien.points;
  const auto& B = c.nouveau.points;
  // The extent of both files, and the largest move, for the arrows' factor.
  double yMin = INFINITY, yMax = -INFINITY, xMin = INFINITY, xMax = -INFINITY, plusGrand = 0;
  for (const auto* v : {&A, &B}) {
    for (const PointCompare& p : *v) {
      yMin = std::min(yMin, p.y), yMax = std::max(yMax, p.y), xMin = std::min(xMin, p.x), xMax = std::max(xMax, p.x);
    }
  }
  if (!(yMin <= yMax)) yMin = yMax = xMin = xMax = 0;
  for (const Difference& d : c.differences) {
    if (d.categorie == Categorie::Deplace) {
      plusGrand = std::max(plusGrand, std::hypot(B[d.nouveau].y - A[d.ancien].y, B[d.nouveau].x - A[d.ancien].x));
    }
  }
  // The largest arrow about a fiftieth of the picture.
  const double facteur = plusGrand > 0 ? Facteur(std::hypot(yMax - yMin, xMax - xMin) / 50 / plusGrand) : 1;
  const double oy = std::floor(yMin), ox = std::floor(xMin);
  auto mm = [](double v) { return Entier(std::llround(std::clamp(v * 1000, -1e15, 1e15))); };

  // Every difference with a place, then the unchanged points of the new
  // file, thinned above kPointsTous.
  Dessin dessin;
  auto ajouter = [&](const PointCompare& p, int sorte, const PointCompare* vers) {
    if (dessin.nombre++ > 0) dessin.points += ',', dessin.ids += ',';
    const PointCompare& q = vers != nullptr ? *vers : p;
    dessin.points += mm(p.y - oy) + ',' + mm(p.x - ox) + ',' + Entier(sorte) + ',' + mm(q.y - oy) + ',' + mm(q.x - ox);
    AjouterTexteJson(dessin.ids, Cp1252VersUtf8(TexteIdentite(p)));
  };
  std::vector<int64_t> rang(c.differences.size(), -1);  // the drawn point of each row
  std::array<std::size_t, kNombreCategories> parCategorie{};
  for (std::size_t k = 0; k < c.differences.size(); ++k) {
    const Difference& d = c.differences[k];
    if (parCategorie[static_cast<std::size_t>(d.categorie)]++ >= kParSorte) continue;
    const PointCompare* a = d.ancien != kAucun ? &A[d.ancien] : nullptr;
    const PointCompare* b = d.nouveau != kAucun ? &B[d.nouveau] : nullptr;
    rang[k] = static_cast<int64_t>(dessin.nombre);
    switch (d.categorie) {
      case Categorie::Nouveau:
        ajouter(*b, kNouveau, nullptr);
        break;
      case Categorie::Supprime:
        ajouter(*a, kSupprime, nullptr);
        break;
      case Categorie::Deplace:
        ajouter(*a, kDeplace, b);
        break;
      case Categorie::Modifie:
        ajouter(*b, kModifie, nullptr);
        break;
      case Categorie::Doublon:
        ajouter(a != nullptr ? *a : *b, kDoublon, nullptr);
        break;
      default:
        rang[k] = -1;
    }
  }
  const int64_t identiques = c.totaux[static_cast<std::size_t>(Categorie::Identique)];
  const int64_t pas =
      std::max<int64_t>(1, (identiques + static_cast<int64_t>(kPointsTous) - 1) / static_cast<int64_t>(kPointsTous));
  {
    // The unchanged points are those of the new file matched and not listed:
    // walk the merge again through the differences' new points.
    std::vector<bool> liste(B.size());
    for (const Difference& d : c.differences) {
      if (d.nouveau != kAucun && d.categorie != Categorie::Rejete) {
        for (uint32_t m = 0; m < std::max<uint32_t>(1, d.nombreNouveau); ++m) liste[d.nouveau + m] = true;
      }
    }
    int64_t vu = 0;
    for (std::size_t i = 0; i < B.size(); ++i) {
      if (!liste[i] && vu++ % pas == 0) ajouter(B[i], kIdentique, nullptr);
    }
  }

  const std::string titre =
      "Comparaison – " + EchapperHtml(NomEnUtf8(c.ancien.chemin)) + " → " + EchapperHtml(NomEnUtf8(c.nouveau.chemin));
  std::string s = DebutHtml(titre, std::string("'") + kHashScriptComparaison + "'");
  s += "<style>tr[data-p]{cursor:pointer}tr[data-p]:hover{background:#f4f8ff}.totaux "
       "td{font-size:16px;font-weight:bold}.leg.fleche::before{height:2px;margin-bottom:3px}"
       "</style>\n<h1>Comparaison de deux fichiers</h1>\n<p class=\"verdict ";
  s += c.Differe() ? "rejets\">Les fichiers diffèrent" : "ok\">Aucune différence";
  s += "</p>\n<table class=\"totaux\" id=\"totaux\"><tr>";
  static constexpr Categorie kOrdre[] = {Categorie::Nouveau,  Categorie::Supprime, Categorie::Deplace,
                                         Categorie::Modifie,  Categorie::Doublon,  Categorie::Rejete,
                                         Categorie::Identique};
  for (const Categorie k : kOrdre) s += std::string("<th>") + MotCategorie(k) + "</th>";
  s += "</tr><tr>";
  for (const Categorie k : kOrdre) s += Case(Entier(c.totaux[static_cast<std::size_t>(k)]), true);
  s += "</tr></table>\n<table class=\"entete\">";
  auto entete = [&](std::string_view cle, const std::string& valeur) {
    s += "<tr><th>" + std::string(cle) + "</th><td>" + valeur + "</td></tr>";
  };
  auto fichier = [&](const FichierCompare& f) {
    return EchapperHtml(NomEnUtf8(f.chemin)) + " (" + MotSorte(f.sorte) + ", " + Entier(f.lignes) + " lignes, " +
           Entier(static_cast<int64_t>(f.points.size())) + " points)";
  };
  entete("Programme", EchapperHtml(programme) + " " + kTexteVersion);
  entete("Date", Html(date));
  entete("Ancien", fichier(c.ancien));
  entete("Nouveau", fichier(c.nouveau));
  entete("Tolérances", TexteMetres(c.reglages.tolerance, 3) + " m à plat, " +
                           TexteMetres(c.reglages.toleranceAltitude, 3) + " m en altitude");
  std::string champs = NomsChamps(c.champsCompares);
  if (c.valeursEnPrecisions != 0) {
    champs += c.valeursEnPrecisions == 1 ? " (précisions de l'ancien par sa valeur)"
                                         : " (précisions du nouveau par sa valeur)";
  }
  entete("Champs comparés", EchapperHtml(champs));
  s += "</table>\n";

  s += "<h2>Dessin des points</h2><div class=\"outils\"><button id=\"tout\" type=\"button\">Vue d'ensemble</button> "
       "<span id=\"legende\"></span></div>\n<div class=\"cadre\"><canvas id=\"dessin\"></canvas>"
       "<div id=\"bulle\" hidden></div></div>\n";
  if (pas > 1) {
    s += "<p class=\"note\">Plus de " + Entier(static_cast<int64_t>(kPointsTous)) + " points identiques : un sur " +
         Entier(pas) + " est dessiné.</p>\n";
  }

  // A table per category, its rows selecting their points.
  auto table = [&](Categorie k, std::string_view titreTable, std::string_view entetes, auto rangee) {
    const int64_t n = c.totaux[static_cast<std::size_t>(k)];
    s += "<h2>" + std::string(titreTable) + " (" + Entier(n) + ")</h2>\n";
    if (n == 0) return;
    s += std::string("<table id=\"") + MotCategorie(k) + "\"><thead><tr>" + std::string(entetes) +
         "</tr></thead><tbody>\n";
    std::size_t montres = 0;
    for (std::size_t r = 0; r < c.differences.size(); ++r) {
      if (c.differences[r].categorie != k || montres++ >= kParSorte) continue;
      s += rang[r] >= 0 ? "<tr data-p=\"" + Entier(rang[r]) + "\">" : std::string("<tr>");
      rangee(c.differences[r]);
      s += "</tr>\n";
    }
    s += "</tbody></table>\n";
    if (montres > kParSorte) {
      s += "<p class=\"note\">" + Entier(static_cast<int64_t>(montres - kParSorte)) + " de plus non montrés.</p>\n";
    }
  };
  auto identite = [&](const Difference& d) {
    return Case(Html(TexteIdentite(d.ancien != kAucun ? A[d.ancien] : B[d.nouveau])));
  };
  auto ecarts = [&](const Difference& d) {
    const PointCompare &a = A[d.ancien], &b = B[d.nouveau];
    s += identite(d) + Case(Entier(a.ligne), true) + Case(Entier(b.ligne), true) +
         Case(TexteMetres(b.y - a.y, 3), true) + Case(TexteMetres(b.x - a.x, 3), true) +
         Case(a.altitude != 0 && b.altitude != 0 ? TexteMetres(b.altitude - a.altitude, 3) : "", true) +
         Case(TexteMetres(std::hypot(b.y - a.y, b.x - a.x), 4), true) + Case(NomsChamps(d.champs));
  };
  constexpr std::string_view kEcarts =
      "<th>Identité</th><th>Ligne ancienne</th><th>Ligne nouvelle</th><th>ΔY</th><th>ΔX</th><th>ΔH</th>"
      "<th>Distance</th><th>Champs changés</th>";
  auto seul = [&](const PointCompare& p) {
    s += Case(Html(TexteIdentite(p))) + Case(Entier(p.ligne), true) + Case(TexteMetres(p.y, 3), true) +
         Case(TexteMetres(p.x, 3), true) + Case(p.altitude != 0 ? TexteMetres(p.altitude, 3) : "", true);
  };
  constexpr std::string_view kSeul = "<th>Identité</th><th>Ligne</th><th>Y</th><th>X</th><th>Altitude</th>";
  table(Categorie::Nouveau, "Points nouveaux", kSeul, [&](const Difference& d) { seul(B[d.nouveau]); });
  table(Categorie::Supprime, "Points supprimés", kSeul, [&](const Difference& d) { seul(A[d.ancien]); });
  table(Categorie::Deplace, "Points déplacés", kEcarts, ecarts);
  table(Categorie::Modifie, "Points modifiés", kEcarts, ecarts);
  table(Categorie::Doublon, "Numéros en double", "<th>Identité</th><th>Lignes anciennes</th><th>Lignes nouvelles</th>",
        [&](const Difference& d) {
          std::string la, ln;
          for (uint32_t m = 0; m < d.nombreAncien; ++m) {
            if (m) la += ", ";
            la += Entier(A[d.ancien + m].ligne);
          }
          for (uint32_t m = 0; m < d.nombreNouveau; ++m) {
            if (m) ln += ", ";
            ln += Entier(B[d.nouveau + m].ligne);
          }
          s += identite(d) + Case(la) + Case(ln);
        });
  table(Categorie::Rejete, "Lignes rejetées", "<th>Fichier</th><th>Ligne</th><th>Messages</th><th>Ligne source</th>",
        [&](const Difference& d) {
          const bool ancien = d.ancien != kAucun;
          const LigneRejetee& r = ancien ? c.ancien.rejets[d.ancien] : c.nouveau.rejets[d.nouveau];
          s += Case(ancien ? "ancien" : "nouveau") + Case(Entier(r.ligne), true) + Case(Html(r.messages)) +
               "<td><pre>" + Html(r.texte) + "</pre></td>";
        });

  s += "<script type=\"application/json\" id=\"donnees\">{\"o\":[" + TexteMetres(oy, 0) + "," + TexteMetres(ox, 0) +
       "],\"e\":[" + mm(yMax - oy) + "," + mm(xMax - ox) + "],\"f\":" + TexteMetres(facteur, 0) + ",\"p\":[" +
       dessin.points + "],\"id\":[" + dessin.ids + "]}</script>\n<script>";
  s += kScriptComparaison;
  s += "</script>\n</body></html>\n";
  return s;
}

}  // namespace quillon
