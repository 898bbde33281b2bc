// The styles the exports carry, so that a GIS or CAD program shows the
// points as the check report draws them: each theme in its colour, the
// rejected lines as red crosses.
//
//  CouleurAci    the AutoCAD Colour Index (1 to 255) nearest to a colour,
//                for the drawing's layers;
//  StylePoints   the QGIS style (QML) of the GeoPackage's points: a
//  StyleRejets   renderer by category on `theme`, the point numbers as
//                labels from a large scale on; and of its rejected lines:
//                red crosses, their messages as map tips.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "model/colors.h"

namespace quillon {

// The colours of the AutoCAD Colour Index, by index (0, BYBLOCK, black).
extern const std::array<Rgb, 256> kCouleursAci;

// The index of the nearest colour (by the distance in RGB), 1 to 255; the
// lowest of those as near.
int CouleurAci(Rgb couleur);

// Below this scale (1:2500), the points' numbers show.
inline constexpr int kEchelleEtiquettes = 2500;

// `themesDesPoints`: the themes of the layer's points, each a category;
// `trouves`: the themes found in the source, whose ranks give the colours.
std::string StylePoints(const ThemesTrouves& themesDesPoints, const ThemesTrouves& trouves);
std::string StyleRejets();

// `texte` added to `xml`, its markup characters escaped.
void AjouterTexteXml(std::string& xml, std::string_view texte);

}  // namespace quillon
