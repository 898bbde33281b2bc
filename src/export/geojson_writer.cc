// GeoJSON: one FeatureCollection per layer, one feature a line, in the
// JSON library's compact form. A feature is written as text straight into
// the line, the library serving the texts and numbers that need escaping
// or an unusual form: building a JSON object per point cost several times
// the conversion. The coordinates stay in the file's own system, named by a
// "crs" member as GDAL writes it for projected data: not the longitude and
// latitude of RFC 7946.
//
// The "crs" member comes before the features, where every reader looks
// for it. When the system is only known at the end (guessed from the
// points written), room is left there, blanks that JSON ignores, and the
// member is written into it at the end; blanks remain when no system could
// be told.
#include <nlohmann/json.hpp>

#include <algorithm>

#include "export/output_file.h"
#include "export/export_writer.h"

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

// The "crs" member naming EPSG:`epsg`, as GDAL writes it.
std::string MembreCrs(int epsg) {
  return "\"crs\": { \"type\": \"name\", \"properties\": { \"name\": \"urn:ogc:def:crs:EPSG::" +
         TexteEntier(epsg) + "\" } },\n";
}

// The room left for a system told at the end: the member of a four-digit
// code, as long as the one of EPSG:2056.
const std::size_t kPlaceCrs = MembreCrs(2056).size();

// What fills the room at the end: the member of `epsg` (the blanks after
// its braces taken out while it is too long, then blanks before its line
// end up to the room's length), or blanks alone for no system; empty when
// it cannot fit.
std::string RemplissageCrs(int epsg) {
  if (epsg == 0) return std::string(kPlaceCrs - 1, ' ') + "\n";
  std::string membre = MembreCrs(epsg);
  for (std::size_t blanc; membre.size() > kPlaceCrs && (blanc = membre.find("{ ")) != std::string::npos;) {
    membre.erase(blanc + 1, 1);
  }
  if (membre.size() > kPlaceCrs) return {};
  membre.insert(membre.size() - 1, kPlaceCrs - membre.size(), ' ');
  return membre;
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
      if (!fichiers_[i].Creer(systeme_, noms_[i])) return Echouer(noms_[i], RaisonFatale::Creation);
      fichiers_[i].Ecrire("{\n\"type\": \"FeatureCollection\",\n\"name\": \"");
      fichiers_[i].Ecrire(NomCouche(couche));
      fichiers_[i].Ecrire("\",\n");
      place_[i] = fichiers_[i].Taille();
      if (!entete.systemeConnu) fichiers_[i].Ecrire(std::string(kPlaceCrs, ' '));
      else if (entete.epsg != 0) fichiers_[i].Ecrire(MembreCrs(entete.epsg));
      fichiers_[i].Ecrire("\"features\": [");
    }
    systemeConnu_ = entete.systemeConnu;
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
    fichiers_[i].Ecrire(ligne_);
    return !fichiers_[i].EnErreur() || Echouer(noms_[i], RaisonFatale::Ecriture);
  }

  bool Terminer(const FinExport& fin) override {
    const std::string crs = systemeConnu_ ? std::string() : RemplissageCrs(fin.epsg);
    for (int i = 0; i < 2; ++i) {
      fichiers_[i].Ecrire("\n]\n}\n");
      if (!fichiers_[i].Vider()) return Echouer(noms_[i], RaisonFatale::Ecriture);
      if (!systemeConnu_ && (crs.empty() || !fichiers_[i].EcrireA(crs, place_[i]))) {
        return Echouer(noms_[i], RaisonFatale::Ecriture);
      }
    }
    return true;
  }

  bool Placer() override {
    for (int i = 0; i < 2; ++i) {
      if (!fichiers_[i].Fermer()) return Echouer(noms_[i], RaisonFatale::Ecriture);
    }
    return true;
  }

  void Abandonner() override {
    for (FichierSortie& f : fichiers_) f.Abandonner();
  }

 private:
  SystemeFichiers& systeme_;
  std::string noms_[2];
  FichierSortie fichiers_[2];
  uint64_t place_[2] = {0, 0};  // where the "crs" member goes
  bool systemeConnu_ = false;
  bool premier_[2] = {true, true};
  std::string ligne_;
};

}  // namespace

std::unique_ptr<EcrivainExport> EcrivainGeoJson(const std::string& base, SystemeFichiers& systeme) {
  return std::make_unique<GeoJson>(base, systeme);
}

}  // namespace quillon
