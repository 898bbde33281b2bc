// What the reports' pages are made of: one self-contained HTML file each,
// whose style and script are inline and whose Content-Security-Policy
// allows that one script by its hash and forbids every load. Every text
// from a file goes through EchapperHtml, or AjouterTexteJson inside the
// data block.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "io/translation.h"
#include "model/extent.h"
#include "report/texts.h"

namespace quillon {

// Up to kPointsTous points a map draws every point; above, fewer, and the
// pages say so. A table shows at most kParSorte rows.
inline constexpr std::size_t kPointsTous = 100'000;
inline constexpr std::size_t kParSorte = 10'000;

// Text as HTML: & < > " ' escaped; UTF-8 in, control characters as U+FFFD.
std::string EchapperHtml(std::string_view utf8);
// A Windows-1252 text, and a path as the file services take it, as HTML.
std::string HtmlCp1252(std::string_view cp1252);
std::string HtmlNom(std::string_view nom);
// A JSON string for the data block: no '<', '>' or '&' as themselves.
void AjouterTexteJson(std::string& s, std::string_view utf8);

// A page's script (the map's and the page's own, joined) and the hash its
// policy allows it by ("sha256-...").
struct ScriptPage {
  std::string_view texte;
  std::string_view hash;
};

// The page's head (`titre` is HTML), the shared style and `style`, and the
// policy, which allows `script` alone (no script when null); then <body>.
std::string DebutPage(std::string_view titre, const ScriptPage* script, std::string_view style = {});
// The data block `donnees` (a JSON object; none when empty), the scripts'
// texts in the chosen language unless it is French, the script and the end
// of the page.
void FinirPage(std::string& s, std::string_view donnees, const ScriptPage* script);

// The verdict in its colour: `classe` is "ok", "rejets" or "echec".
void AjouterVerdict(std::string& s, std::string_view classe, std::string_view html);
// A table of class "entete": a heading and a value (HTML) a row.
void AjouterEntete(std::string& s, std::initializer_list<std::pair<std::string_view, std::string>> lignes);
void AjouterNote(std::string& s, std::string_view html);
std::string Cellule(std::string_view html, bool nombre = false);
// Column headings, each translated: "<th>...</th>"...
std::string Entetes(std::initializer_list<const char*> titres);

// The table `id`: its column headings, then the rows that `rangee(k)`
// writes for k below nombre. Past kRangeesParBloc rows, the rows go in
// blocks that follow the headings' table, each a table of its own in a
// div.bloc[data-de=id], which the browser lays out only when in sight: a
// page of thousands of rows shows at once. The pages' script aligns the
// blocks' columns and gathers the rows under the headings to print.
inline constexpr std::size_t kRangeesParBloc = 100;
template <typename Rangee>
void AjouterRangees(std::string& s, std::string_view id, std::string_view entetes, std::size_t nombre,
                    Rangee rangee) {
  s.append("<table id=\"").append(id).append("\"><thead><tr>").append(entetes).append("</tr></thead><tbody>\n");
  const bool enBlocs = nombre > kRangeesParBloc;
  for (std::size_t k = 0; k < nombre; ++k) {
    if (enBlocs && k % kRangeesParBloc == 0) {
      s += k == 0 ? "</tbody></table>\n" : "</tbody></table></div>\n";
      s.append("<div class=\"bloc\" data-de=\"").append(id).append("\"><table><tbody>\n");
    }
    rangee(k);
  }
  s += enBlocs ? "</tbody></table></div>\n" : "</tbody></table>\n";
}

// One table under its heading `titre (nombre)`: its rows for k below
// nombre and kParSorte, and a note for the rest. Nothing below the heading
// when there is no row.
template <typename Rangee>
void AjouterTable(std::string& s, std::string_view id, std::string_view titre, std::string_view entetes,
                  std::size_t nombre, Rangee rangee) {
  s.append("<h2>").append(titre).append(" (").append(std::to_string(nombre)).append(")</h2>\n");
  if (nombre == 0) return;
  AjouterRangees(s, id, entetes, nombre < kParSorte ? nombre : kParSorte, rangee);
  if (nombre > kParSorte) AjouterNote(s, Formater("%s de plus non montrés.", {std::to_string(nombre - kParSorte)}));
}

// The map: its heading, the button that shows everything again, the
// legend the script fills, the canvas and its tooltip.
void AjouterToile(std::string& s);

// Where a map's points lie: the whole metres below the smallest Y and X of
// their extent, and the extent's width and height in millimetres from
// there. Points go in the data block in millimetres from that origin.
struct RepereCarte {
  double oy = 0, ox = 0;
  int64_t largeur = 0, hauteur = 0;

  explicit RepereCarte(const Emprise& e);
  int64_t Y(double y) const { return Millimetres(y - oy); }
  int64_t X(double x) const { return Millimetres(x - ox); }
  // "o":[oy,ox],"e":[largeur,hauteur]
  void AjouterJson(std::string& s) const;
};

}  // namespace quillon
