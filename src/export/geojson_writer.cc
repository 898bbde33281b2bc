// GeoJSON: one FeatureCollection per layer, one feature a line, in the
// JSON library's compact form. A feature is written as text straight into
// the line, the library serving the texts and numbers that need escaping
// or an unusual form: building a JSON object per point cost several times
// the conversion. The coordinates stay in the file's own system, named by a
// "crs" member as GDAL writes it for projected data: not the longitude and
// latitude of RFC 7946.
#include <nlohmann/json.hpp>

#include <algorithm>

#include "export/writers.h"
#include "io/text_file.h"

namespace quillon {
namespace {

using json = nlohmann::ordered_json;

void AjouterJson(std::string& ligne, const json& valeur) {
  ligne += valeur.dump(-1, ' ', false, json::error_handler_t::replace);
}

// A number as the library writes it: a whole number of thousandths with
// ".0" after a whole value ("2600000.0"); any other through the library.
void AjouterNombre(std::string& ligne, double v) {
  char tampon[32];
  char* fin = TexteMilliemes(tampon, v);
  if (fin == nullptr) return AjouterJson(ligne, v);
  ligne.append(tampon, fin);
  if (std::find(tampon, fin, '.') == fin) ligne += ".0";
}

// A text as the library writes it: without a control character, quote or
// backslash, as it is between quotes (the records' texts are valid UTF-8,
// which the library writes unchanged); any other through the library.
void AjouterTexte(std::string& ligne, std::string_view texte) {
  for (char c : texte) {
    if (static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\') return AjouterJson(ligne, std::string(texte));
  }
  ligne += '"';
  ligne += texte;
  ligne += '"';
}

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
    const int i = static_cast<int>(e.couche);
    ligne_ = premier_[i] ? "\n" : ",\n";
    premier_[i] = false;
    ligne_ += "{\"type\":\"Feature\",\"properties\":{";
    const auto colonnes = ColonnesDe(e.couche);
    for (std::size_t k = 0; k < colonnes.size(); ++k) {
      if (k > 0) ligne_ += ',';
      ligne_ += '"';
      ligne_ += colonnes[k].nom;
      ligne_ += "\":";
      const Valeur& v = e.valeurs[k];
      if (!v.present) {
        ligne_ += "null";
        continue;
      }
      switch (colonnes[k].type) {
        case TypeChamp::Entier: AjouterEntier(ligne_, v.entier); break;
        case TypeChamp::Reel: AjouterNombre(ligne_, v.reel); break;
        case TypeChamp::Texte: AjouterTexte(ligne_, v.texte); break;
      }
    }
    ligne_ += "},\"geometry\":{\"type\":\"Point\",\"coordinates\":[";
    AjouterNombre(ligne_, e.y);
    ligne_ += ',';
    AjouterNombre(ligne_, e.x);
    ligne_ += "]}}";
    flux_[i].Write(ligne_);
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
  std::string ligne_;
};

}  // namespace

std::unique_ptr<EcrivainExport> EcrivainGeoJson(const std::string& base, SystemeFichiers& systeme) {
  return std::make_unique<GeoJson>(base, systeme);
}

}  // namespace quillon
