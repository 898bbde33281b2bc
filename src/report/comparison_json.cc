#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "io/encoding.h"
#include "report/comparison_reports.h"
#include "version.h"

namespace quillon {
namespace {

using json = nlohmann::ordered_json;

// As the text output says it: to the millimetre, a tenth of it for a
// distance.
double Arrondi(double v, int decimales) {
  const std::string texte = TexteMetres(v, decimales);
  double arrondi = 0;
  std::from_chars(texte.data(), texte.data() + texte.size(), arrondi);
  return arrondi;
}

json Champs(uint16_t champs) {
  json liste = json::array();
  const std::string noms = NomsChamps(champs);
  for (std::size_t debut = 0; debut < noms.size();) {
    const std::size_t fin = std::min(noms.find(',', debut), noms.size());
    liste.push_back(noms.substr(debut, fin - debut));
    debut = fin + 1;
  }
  return liste;
}

json Fichier(const FichierCompare& f) {
  return {{"source", NomEnUtf8(f.chemin)},
          {"sorte", MotSorte(f.sorte)},
          {"lignes", f.lignes},
          {"points", f.points.size()},
          {"rejetees", f.rejets.size()}};
}

json Lignes(const std::vector<PointCompare>& p, uint32_t debut, uint32_t nombre) {
  json lignes = json::array();
  for (uint32_t k = 0; k < nombre; ++k) lignes.push_back(p[debut + k].ligne);
  return lignes;
}

}  // namespace

std::string JsonComparaison(const Comparaison& c, int codeSortie) {
  json differences = json::array();
  for (const Difference& d : c.differences) {
    json o = {{"categorie", MotCategorie(d.categorie)}};
    if (d.categorie == Categorie::Rejete) {
      const bool ancien = d.ancien != kAucun;
      const LigneRejetee& r = ancien ? c.ancien.rejets[d.ancien] : c.nouveau.rejets[d.nouveau];
      o["fichier"] = ancien ? "ancien" : "nouveau";
      o["ligne"] = r.ligne;
      o["messages"] = Cp1252VersUtf8(r.messages);
      o["texte"] = Cp1252VersUtf8(r.texte);
      differences.push_back(std::move(o));
      continue;
    }
    const PointCompare* a = d.ancien != kAucun ? &c.ancien.points[d.ancien] : nullptr;
    const PointCompare* b = d.nouveau != kAucun ? &c.nouveau.points[d.nouveau] : nullptr;
    o["identite"] = Cp1252VersUtf8(TexteIdentite(a != nullptr ? *a : *b));
    if (d.categorie == Categorie::Doublon) {
      o["lignes_anciennes"] = Lignes(c.ancien.points, d.ancien, d.nombreAncien);
      o["lignes_nouvelles"] = Lignes(c.nouveau.points, d.nouveau, d.nombreNouveau);
    } else {
      o["ligne_ancienne"] = a != nullptr ? json(a->ligne) : json(nullptr);
      o["ligne_nouvelle"] = b != nullptr ? json(b->ligne) : json(nullptr);
      if (a != nullptr && b != nullptr) {
        o["dy"] = Arrondi(b->y - a->y, 3);
        o["dx"] = Arrondi(b->x - a->x, 3);
        o["dh"] = a->altitude != 0 && b->altitude != 0 ? json(Arrondi(b->altitude - a->altitude, 3)) : json(nullptr);
        o["distance"] = Arrondi(std::hypot(b->y - a->y, b->x - a->x), 4);
        o["champs"] = Champs(d.champs);
      }
    }
    differences.push_back(std::move(o));
  }
  json totaux = json::object();
  for (int k = 0; k < kNombreCategories; ++k) {
    totaux[MotCategorie(static_cast<Categorie>(k))] = c.totaux[static_cast<std::size_t>(k)];
  }
  const json o = {
      {"programme", "quillon-lot"},
      {"version", kTexteVersion},
      {"ancien", Fichier(c.ancien)},
      {"nouveau", Fichier(c.nouveau)},
      {"tolerance", c.reglages.tolerance},
      {"tolerance_altitude", c.reglages.toleranceAltitude},
      {"champs_compares", Champs(c.champsCompares)},
      {"precisions_par_valeur", c.valeursEnPrecisions == 1   ? json("ancien")
                                : c.valeursEnPrecisions == 2 ? json("nouveau")
                                                             : json(nullptr)},
      {"sans_precision", c.sansPrecision},
      {"totaux", totaux},
      {"differences", differences},
      {"code_sortie", codeSortie},
  };
  return o.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

}  // namespace quillon
