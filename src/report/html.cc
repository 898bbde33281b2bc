#include "report/html.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <thread>

#include "io/encoding.h"
#include "rapport_js.h"
#include "version.h"

namespace quillon {
namespace {

// Flags of a drawn point, as the script reads them.
enum : uint8_t { kRejete = 1, kDoublon = 2, kProche = 4, kEloigne = 8, kIgnore = 16 };

std::string Nombre(int64_t n) { return std::to_string(n); }

std::string Metres(double v, int decimales = 4) {
  char texte[64];
  const auto r = std::to_chars(texte, texte + sizeof texte, v, std::chars_format::fixed, decimales);
  std::string s(texte, r.ptr);
  if (s.find('.') != std::string::npos) {
    while (s.back() == '0') s.pop_back();
    if (s.back() == '.') s.pop_back();
  }
  return s;
}

std::string Html(std::string_view cp1252) { return EchapperHtml(Cp1252VersUtf8(cp1252)); }
std::string Nom(std::string_view nom) { return EchapperHtml(NomEnUtf8(nom)); }

// A JSON string inside <script>: no '<', '>' or '&' as themselves.
void AjouterJson(std::string& s, std::string_view utf8) {
  s += '"';
  for (const char c : utf8) {
    const auto u = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      s += '\\', s += c;
    } else if (u < 0x20 || c == '<' || c == '>' || c == '&') {
      char t[8];
      std::snprintf(t, sizeof t, "\\u%04x", u);
      s += t;
    } else {
      s += c;
    }
  }
  s += '"';
}

std::string TexteTheme(int theme) {
  if (theme < 0) return "illisible";
  if (theme == 10) return "blanc";
  return Nombre(theme);
}

std::string Identite(const Collecte& c, const LigneCollectee& l) {
  if (!l.Identite()) return "?";
  std::string_view numero = c.NumeroPoint(l);
  while (!numero.empty() && numero.front() == ' ') numero.remove_prefix(1);
  while (!numero.empty() && numero.back() == ' ') numero.remove_suffix(1);
  return TexteTheme(l.theme) + "/" + Nombre(l.commune) + "/" + Nombre(l.plan) + "/" + Cp1252VersUtf8(numero);
}

constexpr std::string_view kStyle = R"(<style>
body{font:14px/1.4 system-ui,sans-serif;margin:16px;color:#222}
h1{font-size:20px;margin:0 0 6px}h2{font-size:16px;margin:22px 0 6px}
.verdict{font-size:18px;font-weight:bold;padding:6px 10px;display:inline-block;border-radius:4px}
.ok{background:#d8f0d8}.rejets{background:#fde7c8}.echec{background:#f6cfd4}
table{border-collapse:collapse}td,th{border:1px solid #ccc;padding:2px 6px;text-align:left;vertical-align:top}
th{background:#f2f2f2}td.n{text-align:right}pre{margin:0;font:12px monospace;white-space:pre}
tr[data-l]{cursor:pointer}tr[data-l]:hover{background:#f4f8ff}tr.sel{background:#fff3a0}
.cadre{position:relative;border:1px solid #aaa}canvas{display:block;width:100%;height:520px;cursor:grab}
#bulle{position:absolute;background:#fffbe0;border:1px solid #999;padding:3px 6px;white-space:pre;pointer-events:none;font-size:12px}
.outils{margin:6px 0}.leg{margin-right:12px;white-space:nowrap}.leg::before{content:"";display:inline-block;width:9px;height:9px;margin-right:4px;background:var(--c)}
.leg.anneau::before{background:none;border:2px solid var(--c);border-radius:50%}.leg.croix::before{content:"\00d7";color:var(--c);background:none;width:auto;height:auto;font-weight:bold}
.note{color:#555;font-style:italic}.avertissement{color:#8a4b00;font-weight:bold}
</style>)";

std::string Debut(std::string_view titre, std::string_view script) {
  std::string s = "<!DOCTYPE html>\n<html lang=\"fr\"><head><meta charset=\"utf-8\">\n"
                  "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src ";
  s += script.empty() ? "'none'" : script;
  s += "; style-src 'unsafe-inline'; img-src data:; base-uri 'none'; form-action 'none'\">\n"
       "<meta name=\"viewport\" content=\"width=device-width\"><title>";
  s += titre;
  s += "</title>\n";
  s += kStyle;
  s += "</head><body>\n";
  return s;
}

// One table: its header, then rows written by `rangee`, at most kParSorte,
// with a note for the rest.
template <typename Rangee>
void Table(std::string& s, std::string_view id, std::string_view titre, std::string_view entetes, std::size_t nombre,
           Rangee rangee) {
  s += "<h2>" + std::string(titre) + " (" + Nombre(static_cast<int64_t>(nombre)) + ")</h2>\n";
  if (nombre == 0) return;
  s += "<table id=\"" + std::string(id) + "\"><thead><tr>" + std::string(entetes) + "</tr></thead><tbody>\n";
  for (std::size_t k = 0; k < nombre && k < kParSorte; ++k) rangee(k);
  s += "</tbody></table>\n";
  if (nombre > kParSorte) {
    s += "<p class=\"note\">" + Nombre(static_cast<int64_t>(nombre - kParSorte)) + " de plus non montrés.</p>\n";
  }
}

std::string Case(std::string_view texte, bool nombre = false) {
  return std::string(nombre ? "<td class=\"n\">" : "<td>") + std::string(texte) + "</td>";
}

// Where the points are drawn: their origin, in whole metres, and their
// width and height in millimetres; above kPointsTous, the cells of the
// density picture.
struct Cadre {
  double oy = 0, ox = 0;
  int64_t w = 0, h = 0;
  bool tous = true;
  int64_t nx = 0, ny = 0;
};

int64_t Millimetres(double v) { return static_cast<int64_t>(std::llround(std::clamp(v * 1000, -1e15, 1e15))); }

Cadre CadreDe(const Collecte& c, const Controles& k) {
  Cadre d;
  const Etendue e = k.etendueDessin.value_or(Etendue{});
  d.oy = std::floor(e.yMin), d.ox = std::floor(e.xMin);
  d.w = Millimetres(e.yMax - d.oy), d.h = Millimetres(e.xMax - d.ox);
  d.tous = c.Lignes().size() - k.sansCoordonnees.size() <= kPointsTous;
  if (!d.tous) {
    // 512 cells along the longer side, square cells.
    const int64_t w = d.w, h = d.h;
    d.nx = w >= h ? 512 : std::max<int64_t>(1, std::min<int64_t>(512, (512 * w + h - 1) / std::max<int64_t>(h, 1)));
    d.ny = w >= h ? std::max<int64_t>(1, std::min<int64_t>(512, (512 * h + w - 1) / std::max<int64_t>(w, 1))) : 512;
  }
  return d;
}

// What the report takes from every line, in one pass (two halves at once
// for a large file): each line's flags, the rejected lines, and the
// density of the points above kPointsTous.
struct Passage {
  std::vector<uint8_t> drapeaux;
  std::vector<uint32_t> rejetees;
  std::vector<uint32_t> densite;  // by cell, row after row
};

void Parcourir(const Collecte& c, const Cadre& d, std::size_t debut, std::size_t fin, std::vector<uint8_t>& drapeaux,
               Passage& p) {
  auto cellule = [](double v, int64_t mm, int64_t n) {
    const double t = mm > 0 ? v * 1000 * static_cast<double>(n) / static_cast<double>(mm) : 0;
    return t >= static_cast<double>(n - 1) ? n - 1 : t > 0 ? static_cast<int64_t>(t) : 0;
  };
  if (!d.tous) p.densite.assign(static_cast<std::size_t>(d.nx * d.ny), 0);
  for (std::size_t i = debut; i < fin; ++i) {
    const LigneCollectee& l = c.Lignes()[i];
    if (l.Issue() == IssueLigne::Rejetee) drapeaux[i] |= kRejete, p.rejetees.push_back(static_cast<uint32_t>(i));
    if (l.Issue() == IssueLigne::Ignoree) drapeaux[i] |= kIgnore;
    if (!d.tous && l.Coordonnees()) {
      ++p.densite[static_cast<std::size_t>(cellule(l.x - d.ox, d.h, d.ny) * d.nx + cellule(l.y - d.oy, d.w, d.nx))];
    }
  }
}

Passage Parcourir(const Collecte& c, const Controles& k, const Cadre& d) {
  const std::size_t n = c.Lignes().size();
  Passage p;
  p.drapeaux.resize(n);
  if (n < 200'000) {
    Parcourir(c, d, 0, n, p.drapeaux, p);
  } else {
    // Each half writes its own flags of the one array.
    Passage second;
    std::thread apres([&] { Parcourir(c, d, n / 2, n, p.drapeaux, second); });
    Parcourir(c, d, 0, n / 2, p.drapeaux, p);
    apres.join();
    p.rejetees.insert(p.rejetees.end(), second.rejetees.begin(), second.rejetees.end());
    for (std::size_t i = 0; i < p.densite.size(); ++i) p.densite[i] += second.densite[i];
  }
  for (uint32_t i : k.membresDoublons) p.drapeaux[i] |= kDoublon;
  for (const PointsProches& q : k.proches) p.drapeaux[q.a] |= kProche, p.drapeaux[q.b] |= kProche;
  for (uint32_t i : k.eloignes) p.drapeaux[i] |= kEloigne;
  return p;
}

// The points to draw: every one up to kPointsTous, and above only those
// with a flag, with the density of all of them.
void Donnees(std::string& s, const Collecte& c, const Cadre& d, const Passage& passage, std::string& notes) {
  const auto& lignes = c.Lignes();
  const std::vector<uint8_t>& drapeaux = passage.drapeaux;
  const bool tous = d.tous;
  // In order of line; above kPointsTous, the flags tell which first.
  auto dessines = [&](auto&& f) {
    for (std::size_t i = 0; i < lignes.size(); ++i) {
      if ((tous || drapeaux[i] != 0) && lignes[i].Coordonnees()) f(i, lignes[i]);
    }
  };

  std::array<int, 256> themes{};  // by theme: its rank in the legend, plus one
  dessines([&](std::size_t, const LigneCollectee& l) { themes[l.theme] = 1; });
  s += "<script type=\"application/json\" id=\"donnees\">{\"o\":[" + Metres(d.oy) + "," + Metres(d.ox) +
       "],\"e\":[" + Nombre(d.w) + "," + Nombre(d.h) + "],\"t\":[";
  int rang = 0;
  for (std::size_t t = 0; t < themes.size(); ++t) {
    if (themes[t] == 0) continue;
    if (rang > 0) s += ',';
    themes[t] = ++rang;
    AjouterJson(s, TexteTheme(static_cast<int>(t)));
  }
  s += "],\"p\":[";
  std::string ids;
  std::array<std::size_t, 4> pris{}, laisses{};
  bool premier = true;
  dessines([&](std::size_t i, const LigneCollectee& l) {
    if (!tous) {
      bool garde = false;
      for (int b = 0; b < 4; ++b) {
        if ((drapeaux[i] & (1 << b)) == 0) continue;
        if (pris[b] < kParSorte) garde = true, ++pris[b];
        else ++laisses[b];
      }
      if (!garde) return;
    }
    if (!premier) s += ',', ids += ',';
    premier = false;
    s += Nombre(Millimetres(l.y - d.oy)) + ',' + Nombre(Millimetres(l.x - d.ox)) + ',' +
         Nombre(static_cast<int64_t>(i) + 1) + ',' + Nombre(themes[l.theme] - 1) + ',' + Nombre(drapeaux[i]);
    AjouterJson(ids, Identite(c, l));
  });
  s += "],\"id\":[" + ids + "]";
  if (!tous) {
    // Every point in a grid of cells, counted.
    const std::vector<uint32_t>& cellules = passage.densite;
    s += ",\"d\":{\"n\":[" + Nombre(d.nx) + "," + Nombre(d.ny) + "],\"c\":[";
    premier = true;
    for (std::size_t i = 0; i < cellules.size(); ++i) {
      if (cellules[i] == 0) continue;
      if (!premier) s += ',';
      premier = false;
      s += Nombre(static_cast<int64_t>(i)) + ',' + Nombre(cellules[i]);
    }
    s += "]}";
    notes = "Plus de " + Nombre(kPointsTous) +
            " points : leur densité est dessinée, et chaque point rejeté, en double, proche ou éloigné exactement.";
    static constexpr const char* kSortes[] = {"rejetés", "en double", "proches", "éloignés"};
    for (int b = 0; b < 4; ++b) {
      if (laisses[b] > 0) notes += " " + Nombre(static_cast<int64_t>(laisses[b])) + " points " + kSortes[b] + " non dessinés.";
    }
  }
  s += "}</script>\n";
}

}  // namespace

std::string EchapperHtml(std::string_view utf8) {
  std::string s;
  s.reserve(utf8.size());
  for (const char c : utf8) {
    switch (c) {
      case '&': s += "&amp;"; break;
      case '<': s += "&lt;"; break;
      case '>': s += "&gt;"; break;
      case '"': s += "&quot;"; break;
      case '\'': s += "&#39;"; break;
      default:
        if (static_cast<unsigned char>(c) < 0x20 && c != '\t') s += "\xEF\xBF\xBD";
        else s += c;
    }
  }
  return s;
}

std::string RapportHtml(const EnteteRapport& t, const Collecte& c, const Controles& k) {
  const auto& lignes = c.Lignes();
  const Cadre cadre = CadreDe(c, k);
  const Passage passage = Parcourir(c, k, cadre);
  const std::vector<uint32_t>& rejetees = passage.rejetees;

  std::string s = Debut("Rapport de contrôle – " + Nom(t.source), std::string("'") + kHashScriptRapport + "'");
  s += "<h1>Rapport de contrôle</h1>\n<p class=\"verdict ";
  switch (t.verdict) {
    case Verdict::SansRejet: s += "ok\">Aucune ligne rejetée"; break;
    case Verdict::Rejets: s += "rejets\">" + Nombre(t.lignesRejetees) + " ligne(s) rejetée(s)"; break;
    case Verdict::Echec: s += "echec\">Échec : " + Html(t.message); break;
  }
  s += "</p>\n";
  for (const std::string& a : t.avertissements) s += "<p class=\"avertissement\">" + EchapperHtml(a) + "</p>\n";
  s += "<table class=\"entete\">";
  auto entete = [&](std::string_view cle, const std::string& valeur) {
    s += "<tr><th>" + std::string(cle) + "</th><td>" + valeur + "</td></tr>";
  };
  entete("Programme", EchapperHtml(t.programme) + " " + kTexteVersion);
  entete("Date", Html(t.date));
  entete("Source", Nom(t.source));
  entete("Cible", Nom(t.cible));
  entete("Journal", Nom(t.journal));
  entete("Conversion", EchapperHtml(t.conversion) + (t.options.empty() ? "" : " " + EchapperHtml(t.options)));
  s += "</table>\n<pre id=\"bilan\">";
  for (const std::string& ligne : t.bilan) s += Html(ligne) + "\n";
  s += "</pre>\n";

  std::string notes;
  s += "<h2>Dessin des points</h2><div class=\"outils\"><button id=\"tout\" type=\"button\">Vue d'ensemble</button> "
       "<span id=\"legende\"></span></div>\n<div class=\"cadre\"><canvas id=\"dessin\"></canvas>"
       "<div id=\"bulle\" hidden></div></div>\n";
  std::string donnees;
  Donnees(donnees, c, cadre, passage, notes);
  if (!notes.empty()) s += "<p class=\"note\">" + EchapperHtml(notes) + "</p>\n";

  std::size_t source = 0;
  Table(s, "rejets", "Lignes rejetées",
        "<th>Ligne</th><th>Identité</th><th>Champ</th><th>Message</th><th>Ligne source</th>", rejetees.size(),
        [&](std::size_t r) {
          const uint32_t i = rejetees[r];
          std::string champs, messages;
          for (std::size_t m = lignes[i].premierMessage; m < c.FinMessages(i); ++m) {
            const MessageCollecte& msg = c.Messages()[m];
            if (!champs.empty()) champs += "<br>", messages += "\n";
            champs += Html(c.Champ(msg));
            messages += Html(c.TexteMessage(msg));
          }
          while (source < c.Sources().size() && c.Sources()[source].ligne < i) ++source;
          std::string texte;
          if (source < c.Sources().size() && c.Sources()[source].ligne == i) texte = Html(c.TexteSource(c.Sources()[source]));
          s += "<tr data-l=\"" + Nombre(i + 1) + "\">" + Case(Nombre(i + 1), true) +
               Case(EchapperHtml(Identite(c, lignes[i]))) + Case(champs) + "<td><pre>" + messages +
               "</pre></td><td><pre>" + texte + "</pre></td></tr>\n";
        });
  Table(s, "doublons", "Points en double", "<th>Lignes</th><th>Identité</th><th>ΔY</th><th>ΔX</th><th>ΔH</th>",
        k.doublons.size(), [&](std::size_t r) {
          const Doublon& d = k.doublons[r];
          std::string liste;
          for (uint32_t m = 0; m < d.nombre; ++m) {
            if (m) liste += ", ";
            liste += Nombre(k.membresDoublons[d.debut + m] + 1);
          }
          const uint32_t premier = k.membresDoublons[d.debut];
          s += "<tr data-l=\"" + Nombre(premier + 1) + "\">" + Case(liste) +
               Case(EchapperHtml(Identite(c, lignes[premier]))) + Case(Metres(d.dy), true) + Case(Metres(d.dx), true) +
               Case(d.dh ? Metres(*d.dh) : "", true) + "</tr>\n";
        });
  Table(s, "proches", "Points proches (" + Metres(k.tolerance) + " m au plus)",
        "<th>Ligne</th><th>Identité</th><th>Ligne</th><th>Identité</th><th>Distance</th>", k.proches.size(),
        [&](std::size_t r) {
          const PointsProches& p = k.proches[r];
          s += "<tr data-l=\"" + Nombre(p.a + 1) + "\">" + Case(Nombre(p.a + 1), true) +
               Case(EchapperHtml(Identite(c, lignes[p.a]))) + Case(Nombre(p.b + 1), true) +
               Case(EchapperHtml(Identite(c, lignes[p.b]))) + Case(Metres(p.distance), true) + "</tr>\n";
        });
  Table(s, "eloignes", "Points éloignés", "<th>Ligne</th><th>Identité</th><th>Y</th><th>X</th>", k.eloignes.size(),
        [&](std::size_t r) {
          const uint32_t i = k.eloignes[r];
          s += "<tr data-l=\"" + Nombre(i + 1) + "\">" + Case(Nombre(i + 1), true) +
               Case(EchapperHtml(Identite(c, lignes[i]))) + Case(Metres(lignes[i].y, 3), true) +
               Case(Metres(lignes[i].x, 3), true) + "</tr>\n";
        });
  Table(s, "sans", "Lignes sans coordonnées lisibles", "<th>Ligne</th>", k.sansCoordonnees.size(), [&](std::size_t r) {
    s += "<tr>" + Case(Nombre(k.sansCoordonnees[r] + 1), true) + "</tr>\n";
  });
  Table(s, "themes", "Par thème", "<th>Thème</th><th>Converties</th><th>Ignorées</th><th>Rejetées</th>",
        k.parTheme.size(), [&](std::size_t r) {
          const ParTheme& p = k.parTheme[r];
          s += "<tr>" + Case(TexteTheme(p.theme)) + Case(Nombre(p.nombres[0]), true) + Case(Nombre(p.nombres[1]), true) +
               Case(Nombre(p.nombres[2]), true) + "</tr>\n";
        });
  Table(s, "champs", "Par champ rejeté", "<th>Champ</th><th>Lignes</th><th>Premières lignes</th>", k.parChamp.size(),
        [&](std::size_t r) {
          const ParChamp& p = k.parChamp[r];
          std::string premieres;
          for (uint32_t i : p.premieres) {
            if (!premieres.empty()) premieres += ", ";
            premieres += Nombre(i + 1);
          }
          s += "<tr>" + Case(Html(p.champ)) + Case(Nombre(p.lignes), true) + Case(premieres) + "</tr>\n";
        });
  if (k.etendue) {
    const Etendue& e = *k.etendue;
    s += "<h2>Étendue des points convertis</h2>\n<table id=\"etendue\"><tr><th></th><th>min</th><th>max</th></tr>"
         "<tr><th>Y</th>" + Case(Metres(e.yMin, 3), true) + Case(Metres(e.yMax, 3), true) + "</tr><tr><th>X</th>" +
         Case(Metres(e.xMin, 3), true) + Case(Metres(e.xMax, 3), true) + "</tr><tr><th>Altitude</th>" +
         Case(e.altitudeMin ? Metres(*e.altitudeMin, 3) : "", true) +
         Case(e.altitudeMax ? Metres(*e.altitudeMax, 3) : "", true) + "</tr></table>\n";
  }
  s += donnees;
  s += "<script>";
  s += kScriptRapport;
  s += "</script>\n</body></html>\n";
  return s;
}

std::string IndexHtml(const std::string& programme, const std::string& date, const std::vector<LigneIndex>& lignes) {
  std::string s = Debut("Rapports de contrôle", "");
  s += "<h1>Rapports de contrôle</h1>\n<p>" + EchapperHtml(programme) + " " + kTexteVersion + ", " + Html(date) +
       "</p>\n<table id=\"fichiers\"><thead><tr><th>N°</th><th>Source</th><th>Issue</th><th>Lues</th><th>Ignorées</th>"
       "<th>Erreurs de lecture</th><th>Erreurs d'écriture</th><th>Doublons</th><th>Proches</th><th>Éloignés</th>"
       "<th>Sans coordonnées</th></tr></thead><tbody>\n";
  std::optional<Etendue> tout;
  for (std::size_t n = 0; n < lignes.size(); ++n) {
    const LigneIndex& l = lignes[n];
    std::string nom = Nom(l.source);
    if (!l.lien.empty()) nom = "<a href=\"" + EchapperHtml(NomEnUtf8(l.lien)) + "\">" + nom + "</a>";
    s += "<tr>" + Case(Nombre(static_cast<int64_t>(n) + 1), true) + Case(nom) + Case(EchapperHtml(l.issue));
    for (int64_t v : l.comptes) s += Case(Nombre(v), true);
    if (l.controles != nullptr) {
      const Controles& k = *l.controles;
      for (std::size_t v : {k.doublons.size(), k.proches.size(), k.eloignes.size(), k.sansCoordonnees.size()}) {
        s += Case(Nombre(static_cast<int64_t>(v)), true);
      }
      if (const auto& e = k.etendue) {
        if (!tout) tout = *e;
        tout->yMin = std::min(tout->yMin, e->yMin), tout->yMax = std::max(tout->yMax, e->yMax);
        tout->xMin = std::min(tout->xMin, e->xMin), tout->xMax = std::max(tout->xMax, e->xMax);
      }
    } else {
      s += "<td></td><td></td><td></td><td></td>";
    }
    s += "</tr>\n";
  }
  s += "</tbody></table>\n";
  if (tout) {
    // Every file's extent, numbered as in the table, north up.
    constexpr double kL = 760, kH = 460, kMarge = 20;
    const double w = std::max(tout->yMax - tout->yMin, 1e-3), h = std::max(tout->xMax - tout->xMin, 1e-3);
    const double e = std::min((kL - 2 * kMarge) / w, (kH - 2 * kMarge) / h);
    s += "<h2>Étendue de chaque fichier</h2>\n<svg id=\"apercu\" xmlns=\"http://www.w3.org/2000/svg\" width=\"760\" "
         "height=\"460\" style=\"border:1px solid #aaa\">\n";
    for (std::size_t n = 0; n < lignes.size(); ++n) {
      if (lignes[n].controles == nullptr || !lignes[n].controles->etendue) continue;
      const Etendue& f = *lignes[n].controles->etendue;
      const double x = kMarge + (f.yMin - tout->yMin) * e, y = kH - kMarge - (f.xMax - tout->xMin) * e;
      s += "<rect x=\"" + Metres(x, 1) + "\" y=\"" + Metres(y, 1) + "\" width=\"" +
           Metres(std::max(2.0, (f.yMax - f.yMin) * e), 1) + "\" height=\"" +
           Metres(std::max(2.0, (f.xMax - f.xMin) * e), 1) +
           "\" fill=\"rgba(31,119,180,0.15)\" stroke=\"#1f77b4\"/><text x=\"" + Metres(x + 3, 1) + "\" y=\"" +
           Metres(y + 14, 1) + "\" font-size=\"12\">" + Nombre(static_cast<int64_t>(n) + 1) + "</text>\n";
    }
    s += "<text x=\"20\" y=\"14\" font-size=\"11\" fill=\"#666\">Y " + Metres(tout->yMin, 3) + " – " +
         Metres(tout->yMax, 3) + ", X " + Metres(tout->xMin, 3) + " – " + Metres(tout->xMax, 3) + "</text>\n</svg>\n";
  }
  s += "</body></html>\n";
  return s;
}

std::string DebutHtml(std::string_view titre, std::string_view script) { return Debut(titre, script); }
void AjouterTexteJson(std::string& s, std::string_view utf8) { AjouterJson(s, utf8); }

}  // namespace quillon
