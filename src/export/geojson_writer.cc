// GeoJSON: one FeatureCollection per layer, one feature a line, written
// with the JSON library feature by feature. The coordinates stay in the
// file's own system, named by a "crs" member as GDAL writes it for
// projected data: not the longitude and latitude of RFC 7946.
#include <nlohmann/json.hpp>

#include "export/writers.h"
#include "io/text_file.h"

namespace quillon {
namespace {

using json = nlohmann::ordered_json;

class GeoJson : public EcrivainExport {
 public:
  GeoJson(const std::string& base, SystemeFichiers& systeme) : systeme_(systeme) {
    noms_[0] = base + ".geojson";
    noms_[1] = base + "-rejets.geojson";
  }
  ~GeoJson() override { Abandonner(); }

  bool Commencer(const EnteteExport& entete) override {
    for (Couche couche : {Couche::Points, Couche::Rejets}) {
      const int i = static_cast<int>(couche);
      if (!CreerFichierEcriture(flux_[i], noms_[i], systeme_)) return Echouer(noms_[i], RaisonFatale::Creation);
      flux_[i].Write("{\n\"type\": \"FeatureCollection\",\n\"name\": \"");
      flux_[i].Write(NomCouche(couche));
      flux_[i].Write("\",\n");
      if (entete.epsg != 0) {
        flux_[i].Write("\"crs\": { \"type\": \"name\", \"properties\": { \"name\": \"urn:ogc:def:crs:EPSG::");
        flux_[i].Write(TexteEntier(entete.epsg));
        flux_[i].Write("\" } },\n");
      }
      flux_[i].Write("\"features\": [");
    }
    return true;
  }

  bool Ecrire(const Enregistrement& e) override {
    json proprietes = json::object();
    const auto colonnes = ColonnesDe(e.couche);
    for (std::size_t k = 0; k < colonnes.size(); ++k) {
      const Valeur& v = e.valeurs[k];
      json& p = proprietes[colonnes[k].nom];
      if (!v.present) continue;  // null
      switch (colonnes[k].type) {
        case TypeChamp::Entier: p = v.entier; break;
        case TypeChamp::Reel: p = v.reel; break;
        case TypeChamp::Texte: p = v.texte; break;
      }
    }
    const json objet = {{"type", "Feature"},
                        {"properties", std::move(proprietes)},
                        {"geometry", {{"type", "Point"}, {"coordinates", {e.y, e.x}}}}};
    const int i = static_cast<int>(e.couche);
    flux_[i].Write(premier_[i] ? "\n" : ",\n");
    premier_[i] = false;
    flux_[i].Write(objet.dump(-1, ' ', false, json::error_handler_t::replace));
    return !flux_[i].EnErreur() || Echouer(noms_[i], RaisonFatale::Ecriture);
  }

  bool Terminer() override {
    for (int i = 0; i < 2; ++i) {
      flux_[i].Write("\n]\n}\n");
      if (!flux_[i].Vider()) return Echouer(noms_[i], RaisonFatale::Ecriture);
    }
    for (int i = 0; i < 2; ++i) {
      if (!FermerFichier(flux_[i])) return Echouer(noms_[i], RaisonFatale::Ecriture);
    }
    return true;
  }

  void Abandonner() override {
    for (FluxTexte& f : flux_) AbandonnerFichier(f);
  }

 private:
  SystemeFichiers& systeme_;
  std::string noms_[2];
  FluxTexte flux_[2];
  bool premier_[2] = {true, true};
};

}  // namespace

std::unique_ptr<EcrivainExport> EcrivainGeoJson(const std::string& base, SystemeFichiers& systeme) {
  return std::make_unique<GeoJson>(base, systeme);
}

}  // namespace quillon
