// CSV: UTF-8, comma-separated, CR LF, a header, the geometry first as a
// WKT column (which GDAL and QGIS take it from), every text quoted; and a
// .csvt file beside each, the types of the columns.
//
// A delivery comes from outside: a text that a spreadsheet would take for
// a formula (one that starts with =, +, -, @, a tab or a carriage return)
// is written after an apostrophe, which the spreadsheet shows as text.
// Numbers and the WKT column are written as they are, and the other
// formats keep every text exactly.
#include "export/export_writer.h"
#include "io/text_file.h"

namespace quillon {
namespace {

bool CommeUneFormule(std::string_view texte) {
  return !texte.empty() && std::string_view("=+-@\t\r").find(texte.front()) != std::string_view::npos;
}

void AjouterTexteCsv(std::string& ligne, std::string_view texte) {
  ligne += '"';
  if (CommeUneFormule(texte)) ligne += '\'';
  for (std::size_t guillemet; (guillemet = texte.find('"')) != std::string_view::npos;) {
    ligne.append(texte.substr(0, guillemet + 1));
    ligne += '"';
    texte.remove_prefix(guillemet + 1);
  }
  ligne.append(texte);
  ligne += '"';
}

class Csv : public EcrivainExport {
 public:
  Csv(const std::string& base, SystemeFichiers& systeme) : systeme_(systeme) {
    noms_[0] = base + ".csv";
    noms_[1] = base + "-rejets.csv";
  }
  ~Csv() override { Abandonner(); }

  bool Commencer(const EnteteExport&) override {
    for (Couche couche : {Couche::Points, Couche::Rejets}) {
      const int i = static_cast<int>(couche);
      std::string entete = "WKT";
      std::string types = "\"WKT\"";
      for (const Colonne& c : ColonnesDe(couche)) {
        entete += ',';
        entete += c.nom;
        types += c.type == TypeChamp::Entier ? ",\"Integer\"" : c.type == TypeChamp::Reel ? ",\"Real\"" : ",\"String\"";
      }
      if (!Creer(donnees_[i], noms_[i]) || !Creer(types_[i], noms_[i] + "t")) return false;
      donnees_[i].WriteLine(entete);
      types_[i].WriteLine(types);
    }
    return true;
  }

  bool Ecrire(const Enregistrement& e) override {
    ligne_ = "\"POINT (";
    AjouterReel(ligne_, e.y);
    ligne_ += ' ';
    AjouterReel(ligne_, e.x);
    ligne_ += ")\"";
    const auto colonnes = ColonnesDe(e.couche);
    for (std::size_t k = 0; k < colonnes.size(); ++k) {
      ligne_ += ',';
      const Valeur& v = e.valeurs[k];
      if (!v.present) continue;
      switch (colonnes[k].type) {
        case TypeChamp::Entier: AjouterEntier(ligne_, v.entier); break;
        case TypeChamp::Reel: AjouterReel(ligne_, v.reel); break;
        case TypeChamp::Texte: AjouterTexteCsv(ligne_, v.texte); break;
      }
    }
    const int i = static_cast<int>(e.couche);
    donnees_[i].WriteLine(ligne_);
    return !donnees_[i].EnErreur() || Echouer(noms_[i], RaisonFatale::Ecriture);
  }

  bool Terminer(const FinExport&) override {
    for (int i = 0; i < 2; ++i) {
      if (!donnees_[i].Vider()) return Echouer(noms_[i], RaisonFatale::Ecriture);
      if (!types_[i].Vider()) return Echouer(noms_[i] + "t", RaisonFatale::Ecriture);
    }
    return true;
  }

  bool Placer() override {
    for (int i = 0; i < 2; ++i) {
      if (!FermerFichier(donnees_[i])) return Echouer(noms_[i], RaisonFatale::Ecriture);
      if (!FermerFichier(types_[i])) return Echouer(noms_[i] + "t", RaisonFatale::Ecriture);
    }
    return true;
  }

  void Abandonner() override {
    for (int i = 0; i < 2; ++i) {
      AbandonnerFichier(donnees_[i]);
      AbandonnerFichier(types_[i]);
    }
  }

 private:
  bool Creer(FluxTexte& flux, const std::string& nom) {
    return CreerFichierEcriture(flux, nom, systeme_) || Echouer(nom, RaisonFatale::Creation);
  }

  SystemeFichiers& systeme_;
  std::string noms_[2];
  FluxTexte donnees_[2];
  FluxTexte types_[2];
  std::string ligne_;
};

}  // namespace

std::unique_ptr<EcrivainExport> EcrivainCsv(const std::string& base, SystemeFichiers& systeme) {
  return std::make_unique<Csv>(base, systeme);
}

}  // namespace quillon
