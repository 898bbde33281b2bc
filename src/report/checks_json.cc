#include "report/checks_json.h"

#include "io/encoding.h"

namespace quillon {
namespace {

using json = nlohmann::ordered_json;

json Numeros(const uint32_t* debut, std::size_t nombre) {
  json lignes = json::array();
  for (std::size_t k = 0; k < nombre; ++k) lignes.push_back(int64_t{debut[k]} + 1);
  return lignes;
}

json Optionnel(const std::optional<double>& v) { return v ? json(*v) : json(nullptr); }

}  // namespace

json JsonControles(const Controles& c) {
  json doublons = json::array();
  for (const Doublon& d : c.doublons) {
    doublons.push_back({{"lignes", Numeros(c.membresDoublons.data() + d.debut, d.nombre)},
                        {"dy", d.dy},
                        {"dx", d.dx},
                        {"dh", Optionnel(d.dh)}});
  }
  json proches = json::array();
  for (const PointsProches& p : c.proches) {
    proches.push_back({{"lignes", {int64_t{p.a} + 1, int64_t{p.b} + 1}}, {"distance", p.distance}});
  }
  json eloignes = json::array();
  for (uint32_t i : c.eloignes) eloignes.push_back({{"ligne", int64_t{i} + 1}});
  json etendue = nullptr;
  if (c.etendue) {
    const Etendue& e = *c.etendue;
    etendue = {{"y_min", e.yMin}, {"y_max", e.yMax}, {"x_min", e.xMin}, {"x_max", e.xMax},
               {"altitude_min", Optionnel(e.altitudeMin)}, {"altitude_max", Optionnel(e.altitudeMax)}};
  }
  json themes = json::array();
  for (const ParTheme& t : c.parTheme) {
    themes.push_back({{"theme", t.theme >= 0 ? json(t.theme) : json(nullptr)},
                      {"converties", t.nombres[0]},
                      {"ignorees", t.nombres[1]},
                      {"rejetees", t.nombres[2]}});
  }
  json champs = json::array();
  for (const ParChamp& p : c.parChamp) {
    champs.push_back({{"champ", Cp1252VersUtf8(p.champ)},
                      {"lignes", p.lignes},
                      {"premieres_lignes", Numeros(p.premieres.data(), p.premieres.size())}});
  }
  json objet = {
      {"tolerance", c.tolerance},
      {"doublons", std::move(doublons)},
      {"points_proches", std::move(proches)},
      {"eloignes", std::move(eloignes)},
      {"sans_coordonnees", Numeros(c.sansCoordonnees.data(), c.sansCoordonnees.size())},
      {"etendue", std::move(etendue)},
      {"par_theme", std::move(themes)},
      {"par_champ", std::move(champs)},
  };
  if (c.prochesTronques) objet["points_proches_tronques"] = true;
  return objet;
}

}  // namespace quillon
