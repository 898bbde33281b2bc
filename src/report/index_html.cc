// The index of a batch's reports: the verdict and the totals over every
// file, then the files, those with problems first, and each file's extent.
#include <algorithm>
#include <numeric>

#include "index_js.h"
#include "model/natural_order.h"
#include "report/html.h"
#include "version.h"

namespace quillon {
namespace {

constexpr ScriptPage kScript{kScriptIndex, kHashScriptIndex};

constexpr std::string_view kStyle =
    "#fichiers th{cursor:pointer;user-select:none}#fichiers th[aria-sort=ascending]::after{content:\" \\25B2\"}"
    "#fichiers th[aria-sort=descending]::after{content:\" \\25BC\"}.gris{background:#e4e4e4}"
    "#totaux td{font-weight:bold}#filtre{width:20em}";

std::string Nombre(int64_t n) { return std::to_string(n); }

// An outcome as the batch names it ("echec"...): its rank among the
// problems (0 first), its words and its colour's class.
struct Issue {
  int rang;
  std::string_view mot, classe;
};
constexpr int kSansProbleme = 5;

bool PointsAVoir(const LigneIndex& l) {
  const Controles* k = l.controles;
  return k != nullptr && (!k->doublons.empty() || !k->proches.empty() || !k->eloignes.empty());
}

Issue IssueDe(const LigneIndex& l) {
  if (l.issue == "echec") return {0, Traduire("échec"), "echec"};
  if (l.issue == "rejets") return {1, Traduire("avec rejets"), "rejets"};
  if (l.issue == "interrompu") return {3, Traduire("interrompu"), "gris"};
  if (l.issue == "non-traite") return {4, Traduire("non traité"), "gris"};
  if (l.issue == "converti") return {PointsAVoir(l) ? 2 : kSansProbleme, Traduire("converti"), "ok"};
  return {PointsAVoir(l) ? 2 : kSansProbleme, l.issue, ""};
}

// Over every file: the files by rank of outcome, the four line counts,
// duplicates, close and far points.
struct Totaux {
  std::array<int64_t, kSansProbleme + 1> parRang{};
  std::array<int64_t, 4> comptes{};
  std::array<int64_t, 3> points{};
  bool controles = false;
};

Totaux TotauxDe(const std::vector<LigneIndex>& lignes) {
  Totaux t;
  for (const LigneIndex& l : lignes) {
    ++t.parRang[static_cast<std::size_t>(IssueDe(l).rang)];
    for (std::size_t k = 0; k < 4; ++k) t.comptes[k] += l.comptes[k];
    if (l.controles == nullptr) continue;
    t.controles = true;
    t.points[0] += static_cast<int64_t>(l.controles->doublons.size());
    t.points[1] += static_cast<int64_t>(l.controles->proches.size());
    t.points[2] += static_cast<int64_t>(l.controles->eloignes.size());
  }
  return t;
}

// The verdict: red with a failure, amber with rejected lines, a file not
// converted or points to look at, green otherwise; then the totals.
void AjouterBilan(std::string& s, const Totaux& t, std::size_t fichiers) {
  constexpr const char* kMots[] = {N_("%s fichier(s) en échec"), N_("%s fichier(s) avec rejets"),
                                   N_("%s fichier(s) avec des points à vérifier"), N_("%s fichier(s) interrompu(s)"),
                                   N_("%s fichier(s) non traité(s)")};
  std::string texte;
  for (std::size_t r = 0; r < kSansProbleme; ++r) {
    if (t.parRang[r] == 0) continue;
    texte.append(texte.empty() ? "" : ", ").append(Formater(kMots[r], {Nombre(t.parRang[r])}));
  }
  if (texte.empty()) {
    texte = Traduire(fichiers == 0 ? N_("Aucun fichier") : N_("Tous les fichiers convertis sans rejet"));
  }
  const bool aVoir = std::any_of(t.parRang.begin() + 1, t.parRang.end() - 1, [](int64_t n) { return n > 0; });
  AjouterVerdict(s, t.parRang[0] > 0 ? "echec" : aVoir ? "rejets" : "ok", texte);
  s += "<table id=\"totaux\"><tr>" +
       Entetes({N_("Fichiers"), N_("Sans rejet"), N_("Avec rejets"), N_("En échec"), N_("Interrompus ou non traités"),
                N_("Lues"), N_("Ignorées"), N_("Erreurs de lecture"), N_("Erreurs d'écriture"), N_("Doublons"),
                N_("Proches"), N_("Éloignés")}) +
       "</tr><tr>";
  const int64_t convertis = t.parRang[2] + t.parRang[kSansProbleme];
  for (int64_t v : {static_cast<int64_t>(fichiers), convertis, t.parRang[1], t.parRang[0], t.parRang[3] + t.parRang[4]}) {
    s += Cellule(Nombre(v), true);
  }
  for (int64_t v : t.comptes) s += Cellule(Nombre(v), true);
  for (int64_t v : t.points) s += Cellule(t.controles ? Nombre(v) : "", true);
  s += "</tr></table>\n";
}

// Indices of the files, problems first, then by name in natural order;
// and by file, its rank by name alone.
std::vector<std::size_t> Ordre(const std::vector<LigneIndex>& lignes, std::vector<std::size_t>& parNom) {
  std::vector<std::size_t> ordre(lignes.size());
  std::iota(ordre.begin(), ordre.end(), std::size_t{0});
  std::stable_sort(ordre.begin(), ordre.end(),
                   [&](std::size_t a, std::size_t b) { return AvantNaturel(lignes[a].source, lignes[b].source); });
  parNom.assign(lignes.size(), 0);
  for (std::size_t k = 0; k < ordre.size(); ++k) parNom[ordre[k]] = k;
  std::stable_sort(ordre.begin(), ordre.end(),
                   [&](std::size_t a, std::size_t b) { return IssueDe(lignes[a]).rang < IssueDe(lignes[b]).rang; });
  return ordre;
}

void AjouterRangee(std::string& s, const LigneIndex& l, std::size_t numero, std::size_t parNom) {
  std::string nom = HtmlNom(l.source);
  if (!l.lien.empty()) nom = "<a href=\"" + HtmlNom(l.lien) + "\">" + nom + "</a>";
  const Issue issue = IssueDe(l);
  s += "<tr data-o=\"" + Nombre(static_cast<int64_t>(parNom)) + "\">" +
       Cellule(Nombre(static_cast<int64_t>(numero)), true) + "<td class=\"nom\">" + nom + "</td><td class=\"" +
       std::string(issue.classe) + "\" data-v=\"" + Nombre(issue.rang) + "\">" + EchapperHtml(issue.mot) + "</td>";
  for (int64_t v : l.comptes) s += Cellule(Nombre(v), true);
  if (l.controles != nullptr) {
    const Controles& k = *l.controles;
    for (std::size_t v : {k.doublons.size(), k.proches.size(), k.eloignes.size(), k.sansCoordonnees.size()}) {
      s += Cellule(Nombre(static_cast<int64_t>(v)), true);
    }
  } else {
    s += "<td class=\"n\"></td><td class=\"n\"></td><td class=\"n\"></td><td class=\"n\"></td>";
  }
  s += "</tr>\n";
}

// Every file's extent, numbered as in the table, north up.
void AjouterApercu(std::string& s, const std::vector<LigneIndex>& lignes, const std::vector<std::size_t>& ordre) {
  Emprise tout;
  for (const LigneIndex& l : lignes) {
    if (l.controles != nullptr && l.controles->etendue) tout.Ajouter(*l.controles->etendue);
  }
  if (tout.vide) return;
  constexpr double kL = 760, kH = 460, kMarge = 20;
  const double w = std::max(tout.Largeur(), 1e-3), h = std::max(tout.Hauteur(), 1e-3);
  const double e = std::min((kL - 2 * kMarge) / w, (kH - 2 * kMarge) / h);
  s.append("<h2>").append(Traduire("Étendue de chaque fichier")).append("</h2>\n");
  s += "<svg id=\"apercu\" xmlns=\"http://www.w3.org/2000/svg\" width=\"760\" "
       "height=\"460\" style=\"border:1px solid #aaa\">\n";
  for (std::size_t n = 0; n < ordre.size(); ++n) {
    const LigneIndex& l = lignes[ordre[n]];
    if (l.controles == nullptr || !l.controles->etendue) continue;
    const Etendue& f = *l.controles->etendue;
    const double x = kMarge + (f.yMin - tout.yMin) * e, y = kH - kMarge - (f.xMax - tout.xMin) * e;
    s += "<rect x=\"" + TexteMetresCourt(x, 1) + "\" y=\"" + TexteMetresCourt(y, 1) + "\" width=\"" +
         TexteMetresCourt(std::max(2.0, f.Largeur() * e), 1) + "\" height=\"" +
         TexteMetresCourt(std::max(2.0, f.Hauteur() * e), 1) +
         "\" fill=\"rgba(31,119,180,0.15)\" stroke=\"#1f77b4\"/><text x=\"" + TexteMetresCourt(x + 3, 1) + "\" y=\"" +
         TexteMetresCourt(y + 14, 1) + "\" font-size=\"12\">" + Nombre(static_cast<int64_t>(n) + 1) + "</text>\n";
  }
  s += "<text x=\"20\" y=\"14\" font-size=\"11\" fill=\"#666\">Y " + TexteMetresCourt(tout.yMin, 3) + " – " +
       TexteMetresCourt(tout.yMax, 3) + ", X " + TexteMetresCourt(tout.xMin, 3) + " – " +
       TexteMetresCourt(tout.xMax, 3) + "</text>\n</svg>\n";
}

}  // namespace

std::string IndexHtml(const std::string& programme, const std::string& date, const std::vector<LigneIndex>& lignes) {
  const std::string_view titre = Traduire("Rapports de contrôle");
  std::string s = DebutPage(titre, &kScript, kStyle);
  s.append("<h1>").append(titre).append("</h1>\n");
  s += "<p>" + EchapperHtml(programme) + " " + kTexteVersion + ", " + HtmlCp1252(date) + "</p>\n";
  AjouterBilan(s, TotauxDe(lignes), lignes.size());
  const std::string filtre = EchapperHtml(Traduire("Filtrer par nom"));
  s.append("<h2>").append(Traduire("Fichiers")).append("</h2><div class=\"outils\">");
  s += "<input id=\"filtre\" type=\"search\" placeholder=\"" + filtre + "\" aria-label=\"" + filtre +
       "\"> <span id=\"montres\"></span></div>\n";
  std::vector<std::size_t> parNom;
  const std::vector<std::size_t> ordre = Ordre(lignes, parNom);
  AjouterRangees(s, "fichiers",
                 Entetes({N_("N°"), N_("Source"), N_("Issue"), N_("Lues"), N_("Ignorées"), N_("Erreurs de lecture"),
                          N_("Erreurs d'écriture"), N_("Doublons"), N_("Proches"), N_("Éloignés"),
                          N_("Sans coordonnées")}),
                 ordre.size(), [&](std::size_t n) { AjouterRangee(s, lignes[ordre[n]], n + 1, parNom[ordre[n]]); });
  AjouterApercu(s, lignes, ordre);
  FinirPage(s, "", &kScript);
  return s;
}

}  // namespace quillon
