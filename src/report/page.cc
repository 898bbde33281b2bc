#include "report/page.h"

#include <cmath>
#include <cstdio>

#include "io/encoding.h"
#include "textes_scripts.h"

namespace quillon {
namespace {

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
.bloc{content-visibility:auto;contain-intrinsic-size:auto 2200px}.bloc td{border-top:0}
@page{size:A4;margin:12mm 10mm}
@media print{body{margin:0;font-size:11px}button,input,#montres,#bulle{display:none!important}
.verdict,.ok,.rejets,.echec,.gris,th{-webkit-print-color-adjust:exact;print-color-adjust:exact}
canvas{height:auto;cursor:auto}.cadre{break-inside:avoid}h2{break-after:avoid}
table{width:100%}thead{display:table-header-group}tr,pre{break-inside:avoid}
pre{white-space:pre-wrap;word-break:break-all;font-size:10px}a{color:inherit;text-decoration:none}
.bloc{content-visibility:visible}}
</style>)";

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

std::string HtmlCp1252(std::string_view cp1252) { return EchapperHtml(Cp1252VersUtf8(cp1252)); }
std::string HtmlNom(std::string_view nom) { return EchapperHtml(NomEnUtf8(nom)); }

void AjouterTexteJson(std::string& s, std::string_view utf8) {
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

std::string DebutPage(std::string_view titre, const ScriptPage* script, std::string_view style) {
  std::string s = "<!DOCTYPE html>\n<html lang=\"";
  s.append(CodeLangue(LangueChoisie()));
  s += "\"><head><meta charset=\"utf-8\">\n"
       "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src ";
  if (script != nullptr) s.append("'").append(script->hash).append("'");
  else s += "'none'";
  s += "; style-src 'unsafe-inline'; img-src data:; base-uri 'none'; form-action 'none'\">\n"
       "<meta name=\"viewport\" content=\"width=device-width\"><title>";
  s.append(titre).append("</title>\n").append(kStyle);
  if (!style.empty()) s.append("<style>").append(style).append("</style>");
  s += "</head><body>\n";
  return s;
}

void FinirPage(std::string& s, std::string_view donnees, const ScriptPage* script) {
  if (!donnees.empty()) {
    s.append("<script type=\"application/json\" id=\"donnees\">").append(donnees).append("</script>\n");
  }
  if (script != nullptr && LangueChoisie() != Langue::Francais) {
    s += "<script type=\"application/json\" id=\"textes\">{";
    for (const char* texte : kTextesScripts) {
      if (texte != kTextesScripts[0]) s += ',';
      AjouterTexteJson(s, texte);
      s += ':';
      AjouterTexteJson(s, Traduire(texte));
    }
    s += "}</script>\n";
  }
  if (script != nullptr) s.append("<script>").append(script->texte).append("</script>\n");
  s += "</body></html>\n";
}

void AjouterVerdict(std::string& s, std::string_view classe, std::string_view html) {
  s.append("<p class=\"verdict ").append(classe).append("\">").append(html).append("</p>\n");
}

void AjouterEntete(std::string& s, std::initializer_list<std::pair<std::string_view, std::string>> lignes) {
  s += "<table class=\"entete\">";
  for (const auto& [cle, valeur] : lignes) {
    s.append("<tr><th>").append(cle).append("</th><td>").append(valeur).append("</td></tr>");
  }
  s += "</table>\n";
}

void AjouterNote(std::string& s, std::string_view html) {
  s.append("<p class=\"note\">").append(html).append("</p>\n");
}

std::string Cellule(std::string_view html, bool nombre) {
  return std::string(nombre ? "<td class=\"n\">" : "<td>").append(html).append("</td>");
}

std::string Entetes(std::initializer_list<const char*> titres) {
  std::string s;
  for (const char* titre : titres) s.append("<th>").append(Traduire(titre)).append("</th>");
  return s;
}

void AjouterToile(std::string& s) {
  s.append("<h2>").append(Traduire("Dessin des points")).append("</h2><div class=\"outils\">");
  s.append("<button id=\"tout\" type=\"button\">").append(Traduire("Vue d'ensemble")).append("</button> ");
  s += "<span id=\"legende\"></span></div>\n<div class=\"cadre\"><canvas id=\"dessin\"></canvas>"
       "<div id=\"bulle\" hidden></div></div>\n";
}

RepereCarte::RepereCarte(const Emprise& e)
    : oy(std::floor(e.yMin)),
      ox(std::floor(e.xMin)),
      largeur(Millimetres(e.yMax - oy)),
      hauteur(Millimetres(e.xMax - ox)) {}

void RepereCarte::AjouterJson(std::string& s) const {
  s.append("\"o\":[").append(TexteMetresCourt(oy)).append(",").append(TexteMetresCourt(ox)).append("],\"e\":[");
  s.append(std::to_string(largeur)).append(",").append(std::to_string(hauteur)).append("]");
}

}  // namespace quillon
