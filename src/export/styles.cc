#include "export/styles.h"

#include <vector>

#include "export/record.h"

namespace quillon {

// Colours 1 to 9 fixed; from 10 to 249, 24 hues 15 degrees apart, each at
// five values (255, 165, 127, 76, 38), full then half saturated; from 250
// to 255, greys.
const std::array<Rgb, 256> kCouleursAci = {{
    {0, 0, 0}, {255, 0, 0}, {255, 255, 0}, {0, 255, 0}, {0, 255, 255}, {0, 0, 255}, {255, 0, 255}, {255, 255, 255},  // 0
    {128, 128, 128}, {192, 192, 192}, {255, 0, 0}, {255, 127, 127}, {165, 0, 0}, {165, 82, 82}, {127, 0, 0}, {127, 63, 63},  // 8
    {76, 0, 0}, {76, 38, 38}, {38, 0, 0}, {38, 19, 19}, {255, 63, 0}, {255, 159, 127}, {165, 41, 0}, {165, 103, 82},  // 16
    {127, 31, 0}, {127, 79, 63}, {76, 19, 0}, {76, 47, 38}, {38, 9, 0}, {38, 24, 19}, {255, 127, 0}, {255, 191, 127},  // 24
    {165, 82, 0}, {165, 124, 82}, {127, 63, 0}, {127, 95, 63}, {76, 38, 0}, {76, 57, 38}, {38, 19, 0}, {38, 28, 19},  // 32
    {255, 191, 0}, {255, 223, 127}, {165, 124, 0}, {165, 144, 82}, {127, 95, 0}, {127, 111, 63}, {76, 57, 0}, {76, 66, 38},  // 40
    {38, 28, 0}, {38, 33, 19}, {255, 255, 0}, {255, 255, 127}, {165, 165, 0}, {165, 165, 82}, {127, 127, 0}, {127, 127, 63},  // 48
    {76, 76, 0}, {76, 76, 38}, {38, 38, 0}, {38, 38, 19}, {191, 255, 0}, {223, 255, 127}, {124, 165, 0}, {144, 165, 82},  // 56
    {95, 127, 0}, {111, 127, 63}, {57, 76, 0}, {66, 76, 38}, {28, 38, 0}, {33, 38, 19}, {127, 255, 0}, {191, 255, 127},  // 64
    {82, 165, 0}, {124, 165, 82}, {63, 127, 0}, {95, 127, 63}, {38, 76, 0}, {57, 76, 38}, {19, 38, 0}, {28, 38, 19},  // 72
    {63, 255, 0}, {159, 255, 127}, {41, 165, 0}, {103, 165, 82}, {31, 127, 0}, {79, 127, 63}, {19, 76, 0}, {47, 76, 38},  // 80
    {9, 38, 0}, {24, 38, 19}, {0, 255, 0}, {127, 255, 127}, {0, 165, 0}, {82, 165, 82}, {0, 127, 0}, {63, 127, 63},  // 88
    {0, 76, 0}, {38, 76, 38}, {0, 38, 0}, {19, 38, 19}, {0, 255, 63}, {127, 255, 159}, {0, 165, 41}, {82, 165, 103},  // 96
    {0, 127, 31}, {63, 127, 79}, {0, 76, 19}, {38, 76, 47}, {0, 38, 9}, {19, 38, 24}, {0, 255, 127}, {127, 255, 191},  // 104
    {0, 165, 82}, {82, 165, 124}, {0, 127, 63}, {63, 127, 95}, {0, 76, 38}, {38, 76, 57}, {0, 38, 19}, {19, 38, 28},  // 112
    {0, 255, 191}, {127, 255, 223}, {0, 165, 124}, {82, 165, 144}, {0, 127, 95}, {63, 127, 111}, {0, 76, 57}, {38, 76, 66},  // 120
    {0, 38, 28}, {19, 38, 33}, {0, 255, 255}, {127, 255, 255}, {0, 165, 165}, {82, 165, 165}, {0, 127, 127}, {63, 127, 127},  // 128
    {0, 76, 76}, {38, 76, 76}, {0, 38, 38}, {19, 38, 38}, {0, 191, 255}, {127, 223, 255}, {0, 124, 165}, {82, 144, 165},  // 136
    {0, 95, 127}, {63, 111, 127}, {0, 57, 76}, {38, 66, 76}, {0, 28, 38}, {19, 33, 38}, {0, 127, 255}, {127, 191, 255},  // 144
    {0, 82, 165}, {82, 124, 165}, {0, 63, 127}, {63, 95, 127}, {0, 38, 76}, {38, 57, 76}, {0, 19, 38}, {19, 28, 38},  // 152
    {0, 63, 255}, {127, 159, 255}, {0, 41, 165}, {82, 103, 165}, {0, 31, 127}, {63, 79, 127}, {0, 19, 76}, {38, 47, 76},  // 160
    {0, 9, 38}, {19, 24, 38}, {0, 0, 255}, {127, 127, 255}, {0, 0, 165}, {82, 82, 165}, {0, 0, 127}, {63, 63, 127},  // 168
    {0, 0, 76}, {38, 38, 76}, {0, 0, 38}, {19, 19, 38}, {63, 0, 255}, {159, 127, 255}, {41, 0, 165}, {103, 82, 165},  // 176
    {31, 0, 127}, {79, 63, 127}, {19, 0, 76}, {47, 38, 76}, {9, 0, 38}, {24, 19, 38}, {127, 0, 255}, {191, 127, 255},  // 184
    {82, 0, 165}, {124, 82, 165}, {63, 0, 127}, {95, 63, 127}, {38, 0, 76}, {57, 38, 76}, {19, 0, 38}, {28, 19, 38},  // 192
    {191, 0, 255}, {223, 127, 255}, {124, 0, 165}, {144, 82, 165}, {95, 0, 127}, {111, 63, 127}, {57, 0, 76}, {66, 38, 76},  // 200
    {28, 0, 38}, {33, 19, 38}, {255, 0, 255}, {255, 127, 255}, {165, 0, 165}, {165, 82, 165}, {127, 0, 127}, {127, 63, 127},  // 208
    {76, 0, 76}, {76, 38, 76}, {38, 0, 38}, {38, 19, 38}, {255, 0, 191}, {255, 127, 223}, {165, 0, 124}, {165, 82, 144},  // 216
    {127, 0, 95}, {127, 63, 111}, {76, 0, 57}, {76, 38, 66}, {38, 0, 28}, {38, 19, 33}, {255, 0, 127}, {255, 127, 191},  // 224
    {165, 0, 82}, {165, 82, 124}, {127, 0, 63}, {127, 63, 95}, {76, 0, 38}, {76, 38, 57}, {38, 0, 19}, {38, 19, 28},  // 232
    {255, 0, 63}, {255, 127, 159}, {165, 0, 41}, {165, 82, 103}, {127, 0, 31}, {127, 63, 79}, {76, 0, 19}, {76, 38, 47},  // 240
    {38, 0, 9}, {38, 19, 24}, {51, 51, 51}, {80, 80, 80}, {105, 105, 105}, {130, 130, 130}, {190, 190, 190}, {255, 255, 255},  // 248
}};

int CouleurAci(Rgb c) {
  int meilleur = 1;
  int distance = -1;
  for (int i = 1; i < 256; ++i) {
    const Rgb& a = kCouleursAci[static_cast<std::size_t>(i)];
    const int dr = a.r - c.r, dg = a.g - c.g, db = a.b - c.b;
    const int d = dr * dr + dg * dg + db * db;
    if (distance < 0 || d < distance) meilleur = i, distance = d;
  }
  return meilleur;
}

namespace {

// "r,g,b,255", as QGIS writes a colour.
std::string Couleur(Rgb c) {
  return TexteEntier(c.r) + "," + TexteEntier(c.g) + "," + TexteEntier(c.b) + ",255";
}

void Propriete(std::string& xml, std::string_view nom, std::string_view valeur) {
  xml += "<prop k=\"";
  xml += nom;
  xml += "\" v=\"";
  AjouterTexteXml(xml, valeur);
  xml += "\"/>";
}

// A marker symbol of one simple marker: `forme` (QGIS's name), its size
// and its stroke's width in millimetres.
void Symbole(std::string& xml, std::string_view nom, std::string_view forme, Rgb fond, Rgb trait,
             std::string_view taille, std::string_view largeur) {
  xml += "<symbol type=\"marker\" name=\"";
  xml += nom;
  xml += "\" alpha=\"1\" clip_to_extent=\"1\" force_rhr=\"0\"><layer class=\"SimpleMarker\" "
         "enabled=\"1\" pass=\"0\" locked=\"0\">";
  Propriete(xml, "name", forme);
  Propriete(xml, "color", Couleur(fond));
  Propriete(xml, "outline_color", Couleur(trait));
  Propriete(xml, "outline_style", largeur == "0" ? "no" : "solid");
  Propriete(xml, "outline_width", largeur);
  Propriete(xml, "outline_width_unit", "MM");
  Propriete(xml, "size", taille);
  Propriete(xml, "size_unit", "MM");
  Propriete(xml, "scale_method", "diameter");
  xml += "</layer></symbol>";
}

constexpr std::string_view kDebut =
    "<!DOCTYPE qgis PUBLIC 'http://mrcc.com/qgis.dtd' 'SYSTEM'>\n"
    "<qgis version=\"3.22.0\" styleCategories=\"Symbology|Labeling|MapTips\" labelsEnabled=\"";

// The point numbers, from kEchelleEtiquettes on, in the report's grey on a
// white halo.
void Etiquettes(std::string& xml) {
  xml += "<labeling type=\"simple\"><settings calloutType=\"simple\"><text-style fieldName=\"numero\" "
         "isExpression=\"0\" fontSize=\"8\" fontSizeUnit=\"Point\" textColor=\"" +
         Couleur(kCouleurTexte) +
         "\" textOpacity=\"1\" namedStyle=\"\" fontWeight=\"50\" fontItalic=\"0\" multilineHeight=\"1\">"
         "<text-buffer bufferDraw=\"1\" bufferSize=\"0.7\" bufferSizeUnits=\"MM\" "
         "bufferColor=\"255,255,255,255\" bufferOpacity=\"0.8\"/></text-style>"
         "<placement placement=\"0\" dist=\"1\" distUnits=\"MM\" priority=\"5\"/>"
         "<rendering scaleVisibility=\"1\" scaleMin=\"0\" scaleMax=\"" +  // QGIS's names, the wrong way round
         TexteEntier(kEchelleEtiquettes) + "\" obstacle=\"1\" displayAll=\"0\"/></settings></labeling>";
}

}  // namespace

std::string StylePoints(const ThemesTrouves& themesDesPoints, const ThemesTrouves& trouves) {
  std::string xml(kDebut);
  xml += "1\"><renderer-v2 type=\"categorizedSymbol\" attr=\"theme\" symbollevels=\"0\" "
         "enableorderby=\"0\" forceraster=\"0\"><categories>";
  const std::vector<int> themes = themesDesPoints.Liste();
  for (std::size_t k = 0; k < themes.size(); ++k) {
    const std::string t = TexteEntier(themes[k]);
    xml += "<category render=\"true\" symbol=\"" + TexteEntier(static_cast<int64_t>(k)) + "\" value=\"" + t +
           "\" label=\"thème " + t + "\"/>";
  }
  xml += "</categories><symbols>";
  for (std::size_t k = 0; k < themes.size(); ++k) {
    const Rgb c = trouves.Couleur(themes[k]);
    Symbole(xml, TexteEntier(static_cast<int64_t>(k)), "circle", c, c, "1.8", "0");
  }
  xml += "</symbols></renderer-v2>";
  Etiquettes(xml);
  return xml + "<layerGeometryType>0</layerGeometryType></qgis>\n";
}

std::string StyleRejets() {
  std::string xml(kDebut);
  xml += "0\"><renderer-v2 type=\"singleSymbol\" symbollevels=\"0\" enableorderby=\"0\" "
         "forceraster=\"0\"><symbols>";
  Symbole(xml, "0", "cross2", kCouleurRejet, kCouleurRejet, "3.5", "0.6");
  xml += "</symbols></renderer-v2><mapTip>";
  AjouterTexteXml(xml, "<b>ligne [% \"ligne\" %]</b><br>[% replace(\"messages\", ' | ', '<br>') %]");
  return xml + "</mapTip><layerGeometryType>0</layerGeometryType></qgis>\n";
}

void AjouterTexteXml(std::string& xml, std::string_view texte) {
  for (char c : texte) {
    switch (c) {
      case '&': xml += "&amp;"; break;
      case '<': xml += "&lt;"; break;
      case '>': xml += "&gt;"; break;
      case '"': xml += "&quot;"; break;
      case '\'': xml += "&apos;"; break;
      default: xml += c;
    }
  }
}

}  // namespace quillon
