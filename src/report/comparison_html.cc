#include <algorithm>
#include <cmath>

#include "comparaison_js.h"
#include "io/encoding.h"
#include "report/comparison_reports.h"
#include "report/page.h"
#include "version.h"

namespace quillon {
namespace {

constexpr ScriptPage kScript{kScriptComparaison, kHashScriptComparaison};

// The kinds of drawn points, named in the data block in this order: the
// unchanged first, drawn below the rest.
enum : int { kIdentique, kNouveau, kSupprime, kDeplace, kModifie, kDoublon };
constexpr std::string_view kSortes[] = {"identique", "nouveau", "supprime", "deplace", "modifie", "doublon"};

constexpr std::string_view kStyle =
    "tr[data-p]{cursor:pointer}tr[data-p]:hover{background:#f4f8ff}.totaux td{font-size:16px;font-weight:bold}"
    ".leg.fleche::before{height:2px;margin-bottom:3px}";

std::string Entier(int64_t n) { return std::to_string(n); }

// The points drawn and, by difference, the index of its point (-1: none);
// one unchanged point in `pas` is drawn.
struct Dessin {
  std::string points, ids;
  std::size_t nombre = 0;
  std::vector<int64_t> rang;
  int64_t pas = 1;
};

Emprise EmpriseDe(const Comparaison& c) {
  Emprise e;
  for (const auto* v : {&c.ancien.points, &c.nouveau.points}) {
    for (const PointCompare& p : *v) e.Ajouter(p.y, p.x);
  }
  return e;
}

// The arrows' factor: the largest about a fiftieth of the picture, 1, 2
// or 5 times a power of ten, at least 1.
double FacteurFleches(const Comparaison& c, const Emprise& e) {
  double plusGrand = 0;
  for (const Difference& d : c.differences) {
    if (d.categorie != Categorie::Deplace) continue;
    const PointCompare &a = c.ancien.points[d.ancien], &b = c.nouveau.points[d.nouveau];
    plusGrand = std::max(plusGrand, std::hypot(b.y - a.y, b.x - a.x));
  }
  if (!(plusGrand > 0)) return 1;
  const double v = std::hypot(e.Largeur(), e.Hauteur()) / 50 / plusGrand;
  return v > 1 ? PasRond(v) : 1;
}

void Ajouter(Dessin& d, const RepereCarte& r, const PointCompare& p, int sorte, const PointCompare* vers) {
  if (d.nombre++ > 0) d.points += ',', d.ids += ',';
  const PointCompare& q = vers != nullptr ? *vers : p;
  d.points += Entier(r.Y(p.y)) + ',' + Entier(r.X(p.x)) + ',' + Entier(sorte) + ',' + Entier(r.Y(q.y)) + ',' +
              Entier(r.X(q.x));
  AjouterTexteJson(d.ids, Cp1252VersUtf8(TexteIdentite(p)));
}

// Every difference with a place, at most kParSorte of each category.
void AjouterDifferences(Dessin& dessin, const Comparaison& c, const RepereCarte& r) {
  const auto& A = c.ancien.points;
  const auto& B = c.nouveau.points;
  dessin.rang.assign(c.differences.size(), -1);
  std::array<std::size_t, kNombreCategories> parCategorie{};
  for (std::size_t k = 0; k < c.differences.size(); ++k) {
    const Difference& d = c.differences[k];
    if (parCategorie[static_cast<std::size_t>(d.categorie)]++ >= kParSorte) continue;
    const int64_t rang = static_cast<int64_t>(dessin.nombre);
    switch (d.categorie) {
      case Categorie::Nouveau: Ajouter(dessin, r, B[d.nouveau], kNouveau, nullptr); break;
      case Categorie::Supprime: Ajouter(dessin, r, A[d.ancien], kSupprime, nullptr); break;
      case Categorie::Deplace: Ajouter(dessin, r, A[d.ancien], kDeplace, &B[d.nouveau]); break;
      case Categorie::Modifie: Ajouter(dessin, r, B[d.nouveau], kModifie, nullptr); break;
      case Categorie::Doublon:
        Ajouter(dessin, r, d.ancien != kAucun ? A[d.ancien] : B[d.nouveau], kDoublon, nullptr);
        break;
      default: continue;
    }
    dessin.rang[k] = rang;
  }
}

// The unchanged points: those of the new file matched and not listed,
// thinned above kPointsTous.
void AjouterIdentiques(Dessin& dessin, const Comparaison& c, const RepereCarte& r) {
  const auto& B = c.nouveau.points;
  const int64_t identiques = c.totaux[static_cast<std::size_t>(Categorie::Identique)];
  const auto tous = static_cast<int64_t>(kPointsTous);
  dessin.pas = std::max<int64_t>(1, (identiques + tous - 1) / tous);
  std::vector<bool> liste(B.size());
  for (const Difference& d : c.differences) {
    if (d.nouveau != kAucun && d.categorie != Categorie::Rejete) {
      for (uint32_t m = 0; m < std::max<uint32_t>(1, d.nombreNouveau); ++m) liste[d.nouveau + m] = true;
    }
  }
  int64_t vu = 0;
  for (std::size_t i = 0; i < B.size(); ++i) {
    if (!liste[i] && vu++ % dessin.pas == 0) Ajouter(dessin, r, B[i], kIdentique, nullptr);
  }
}

// The data block: the frame, the kinds' names, the arrows' factor, the
// points and their identities.
std::string Donnees(const Comparaison& c, Dessin& dessin) {
  const Emprise emprise = EmpriseDe(c);
  const RepereCarte repere(emprise);
  AjouterDifferences(dessin, c, repere);
  AjouterIdentiques(dessin, c, repere);
  std::string s = "{";
  repere.AjouterJson(s);
  s += ",\"sortes\":[";
  for (const std::string_view sorte : kSortes) {
    if (sorte != kSortes[0]) s += ',';
    AjouterTexteJson(s, sorte);
  }
  s += "],\"f\":" + TexteMetres(FacteurFleches(c, emprise), 0) + ",\"p\":[" + dessin.points + "],\"id\":[" +
       dessin.ids + "]}";
  return s;
}

// A category's heading, in words.
std::string_view NomCategorie(Categorie k) {
  switch (k) {
    case Categorie::Nouveau: return Traduire("Nouveaux");
    case Categorie::Supprime: return Traduire("Supprimés");
    case Categorie::Deplace: return Traduire("Déplacés");
    case Categorie::Modifie: return Traduire("Modifiés");
    case Categorie::Doublon: return Traduire("En double");
    case Categorie::Rejete: return Traduire("Rejetés");
    case Categorie::Identique: break;
  }
  return Traduire("Identiques");
}

constexpr Categorie kOrdre[] = {Categorie::Nouveau, Categorie::Supprime, Categorie::Deplace, Categorie::Modifie,
                                Categorie::Doublon, Categorie::Rejete,   Categorie::Identique};

// The verdict, the totals, the files and how they were compared.
void AjouterTete(std::string& s, const Comparaison& c, const std::string& programme, const std::string& date) {
  s.append("<h1>").append(Traduire("Comparaison de deux fichiers")).append("</h1>\n");
  AjouterVerdict(s, c.Differe() ? "rejets" : "ok",
                 Traduire(c.Differe() ? N_("Les fichiers diffèrent") : N_("Aucune différence")));
  s += "<table class=\"totaux\" id=\"totaux\"><tr>";
  for (const Categorie k : kOrdre) s.append("<th>").append(NomCategorie(k)).append("</th>");
  s += "</tr><tr>";
  for (const Categorie k : kOrdre) s += Cellule(Entier(c.totaux[static_cast<std::size_t>(k)]), true);
  s += "</tr></table>\n";
  auto fichier = [&](const FichierCompare& f) {
    return Formater("%1$s (%2$s, %3$s lignes, %4$s points)", {HtmlNom(f.chemin), MotSorte(f.sorte), Entier(f.lignes),
                                                               Entier(static_cast<int64_t>(f.points.size()))});
  };
  std::string champs = NomsChamps(c.champsCompares);
  if (c.valeursEnPrecisions != 0) {
    champs += Traduire(c.valeursEnPrecisions == 1 ? N_(" (précisions de l'ancien par sa valeur)")
                                                  : N_(" (précisions du nouveau par sa valeur)"));
  }
  AjouterEntete(s, {{Traduire("Programme"), EchapperHtml(programme) + " " + kTexteVersion},
                    {Traduire("Date"), HtmlCp1252(date)},
                    {Traduire("Ancien"), fichier(c.ancien)},
                    {Traduire("Nouveau"), fichier(c.nouveau)},
                    {Traduire("Tolérances"), Formater("%1$s m à plat, %2$s m en altitude",
                                                      {TexteMetres(c.reglages.tolerance, 3),
                                                       TexteMetres(c.reglages.toleranceAltitude, 3)})},
                    {Traduire("Champs comparés"), EchapperHtml(champs)}});
}

// The table of a category: the differences of that category, which lie
// together in the order of the output, each row selecting its point.
template <typename Rangee>
void TableCategorie(std::string& s, const Comparaison& c, const Dessin& dessin, Categorie k, std::string_view titre,
                    std::string_view entetes, Rangee rangee) {
  const auto debut = std::find_if(c.differences.begin(), c.differences.end(),
                                  [&](const Difference& d) { return d.categorie == k; });
  const auto fin = std::find_if(debut, c.differences.end(), [&](const Difference& d) { return d.categorie != k; });
  AjouterTable(s, MotCategorie(k), titre, entetes, static_cast<std::size_t>(fin - debut), [&](std::size_t n) {
    const auto r = static_cast<std::size_t>(debut - c.differences.begin()) + n;
    s += dessin.rang[r] >= 0 ? "<tr data-p=\"" + Entier(dessin.rang[r]) + "\">" : std::string("<tr>");
    rangee(c.differences[r]);
    s += "</tr>\n";
  });
}

std::string CaseIdentite(const Comparaison& c, const Difference& d) {
  return Cellule(
      HtmlCp1252(TexteIdentite(d.ancien != kAucun ? c.ancien.points[d.ancien] : c.nouveau.points[d.nouveau])));
}

// New, gone, moved and modified points.
void TablesPoints(std::string& s, const Comparaison& c, const Dessin& dessin) {
  auto seul = [&](const PointCompare& p) {
    s += Cellule(HtmlCp1252(TexteIdentite(p))) + Cellule(Entier(p.ligne), true) + Cellule(TexteMetres(p.y, 3), true) +
         Cellule(TexteMetres(p.x, 3), true) + Cellule(p.altitude != 0 ? TexteMetres(p.altitude, 3) : "", true);
  };
  const std::string kSeul = Entetes({N_("Identité"), N_("Ligne"), "Y", "X", N_("Altitude")});
  TableCategorie(s, c, dessin, Categorie::Nouveau, Traduire("Points nouveaux"), kSeul,
                 [&](const Difference& d) { seul(c.nouveau.points[d.nouveau]); });
  TableCategorie(s, c, dessin, Categorie::Supprime, Traduire("Points supprimés"), kSeul,
                 [&](const Difference& d) { seul(c.ancien.points[d.ancien]); });
  auto ecarts = [&](const Difference& d) {
    const PointCompare &a = c.ancien.points[d.ancien], &b = c.nouveau.points[d.nouveau];
    s += CaseIdentite(c, d) + Cellule(Entier(a.ligne), true) + Cellule(Entier(b.ligne), true) +
         Cellule(TexteMetres(b.y - a.y, 3), true) + Cellule(TexteMetres(b.x - a.x, 3), true) +
         Cellule(a.altitude != 0 && b.altitude != 0 ? TexteMetres(b.altitude - a.altitude, 3) : "", true) +
         Cellule(TexteMetres(std::hypot(b.y - a.y, b.x - a.x), 4), true) + Cellule(NomsChamps(d.champs));
  };
  const std::string kEcarts = Entetes({N_("Identité"), N_("Ligne ancienne"), N_("Ligne nouvelle"), "ΔY", "ΔX", "ΔH",
                                       N_("Distance"), N_("Champs changés")});
  TableCategorie(s, c, dessin, Categorie::Deplace, Traduire("Points déplacés"), kEcarts, ecarts);
  TableCategorie(s, c, dessin, Categorie::Modifie, Traduire("Points modifiés"), kEcarts, ecarts);
}

// Duplicate numbers and rejected lines.
void TablesLignes(std::string& s, const Comparaison& c, const Dessin& dessin) {
  auto lignes = [](const std::vector<PointCompare>& p, uint32_t debut, uint32_t nombre) {
    std::string t;
    for (uint32_t m = 0; m < nombre; ++m) t.append(m ? ", " : "").append(Entier(p[debut + m].ligne));
    return t;
  };
  TableCategorie(s, c, dessin, Categorie::Doublon, Traduire("Numéros en double"),
                 Entetes({N_("Identité"), N_("Lignes anciennes"), N_("Lignes nouvelles")}), [&](const Difference& d) {
                   s += CaseIdentite(c, d) + Cellule(lignes(c.ancien.points, d.ancien, d.nombreAncien)) +
                        Cellule(lignes(c.nouveau.points, d.nouveau, d.nombreNouveau));
                 });
  TableCategorie(s, c, dessin, Categorie::Rejete, Traduire("Lignes rejetées"),
                 Entetes({N_("Fichier"), N_("Ligne"), N_("Messages"), N_("Ligne source")}), [&](const Difference& d) {
                   const bool ancien = d.ancien != kAucun;
                   const LigneRejetee& r = ancien ? c.ancien.rejets[d.ancien] : c.nouveau.rejets[d.nouveau];
                   s += Cellule(Traduire(ancien ? N_("ancien") : N_("nouveau"))) + Cellule(Entier(r.ligne), true) +
                        Cellule(HtmlCp1252(r.messages)) + "<td><pre>" + HtmlCp1252(r.texte) + "</pre></td>";
                 });
}

}  // namespace

std::string RapportComparaisonHtml(const Comparaison& c, const std::string& programme, const std::string& date) {
  Dessin dessin;
  const std::string donnees = Donnees(c, dessin);
  std::string s =
      DebutPage(Formater("Comparaison – %1$s → %2$s", {HtmlNom(c.ancien.chemin), HtmlNom(c.nouveau.chemin)}), &kScript,
                kStyle);
  AjouterTete(s, c, programme, date);
  AjouterToile(s);
  if (dessin.pas > 1) {
    AjouterNote(s, Formater("Plus de %1$s points identiques : un sur %2$s est dessiné.",
                            {Entier(static_cast<int64_t>(kPointsTous)), Entier(dessin.pas)}));
  }
  TablesPoints(s, c, dessin);
  TablesLignes(s, c, dessin);
  FinirPage(s, donnees, &kScript);
  return s;
}

}  // namespace quillon
