// DXF, ASCII R12, which every CAD program reads: one layer per theme
// ("THEME_nn", the colour of the AutoCAD Colour Index nearest to its
// theme's in the check report) and a layer "REJETS" (red); for each point
// a POINT, its altitude as Z, and a TEXT with its point number. Texts are Windows-1252, as the
// header's code page says, their line breaks made blanks.
//
// The header holds the drawing's extent and the layer table its layers,
// both known once every point is: the entities go to a second file of the
// file services, created beside the drawing and never put in place, and
// at the end the header and the tables are written, then the entities
// copied back after them. Memory stays the same whatever the source, and a
// single pass over it is enough.
#include "export/output_file.h"
#include "export/export_writer.h"
#include "export/styles.h"
#include "io/encoding.h"

namespace quillon {
namespace {

constexpr double kHauteurTexte = 0.5;   // metres
constexpr double kDecalageTexte = 0.2;  // the text to the upper right of its point

std::string NomCalque(int32_t theme) {
  if (theme < 0) return "REJETS";
  std::string nom = TexteEntier(theme);
  return nom.size() < 2 ? "THEME_0" + nom : "THEME_" + nom;
}

class Dxf : public EcrivainExport {
 public:
  Dxf(const std::string& base, SystemeFichiers& systeme) : systeme_(systeme), nom_(base + ".dxf") {
    for (int32_t theme = 0; theme < 100; ++theme) calques_[theme] = NomCalque(theme);
  }
  ~Dxf() override { Abandonner(); }

  bool Commencer(const EnteteExport&) override {
    if (!dessin_.Creer(systeme_, nom_) || !entites_.Creer(systeme_, nom_ + ".entites")) {
      return Echouer(nom_, RaisonFatale::Creation);
    }
    return true;
  }

  bool Ecrire(const Enregistrement& e) override {
    const int32_t theme = e.couche == Couche::Points ? e.theme : -1;
    if (theme >= 100 || theme < -1) autreCalque_ = NomCalque(theme);
    const std::string& calque = theme >= 0 && theme < 100 ? calques_[theme] : theme == -1 ? rejets_ : autreCalque_;
    if (e.couche == Couche::Points) {
      emprise_.Ajouter(e.y, e.x);
      if (theme >= 0 && theme < 100) themes_[theme] = true;
    }
    ligne_.clear();
    Ajouter(0, "POINT");
    Ajouter(8, calque);
    AjouterCoordonnees(e.y, e.x, e.altitude);
    if (!e.numero.empty()) {
      Ajouter(0, "TEXT");
      Ajouter(8, calque);
      AjouterCoordonnees(e.y + kDecalageTexte, e.x + kDecalageTexte, e.altitude);
      Ajouter(40, hauteur_);
      ligne_ += "1\r\n";
      const std::size_t debut = ligne_.size();
      ligne_ += Utf8VersCp1252(e.numero);
      for (std::size_t k = debut; k < ligne_.size(); ++k) {
        if (ligne_[k] == '\r' || ligne_[k] == '\n') ligne_[k] = ' ';
      }
      ligne_ += "\r\n";
    }
    entites_.Ecrire(ligne_);
    return !entites_.EnErreur() || Echouer(nom_, RaisonFatale::Ecriture);
  }

  bool Terminer(const FinExport& fin) override {
    ligne_.clear();
    Entete();
    Tables(fin.themes);
    Ajouter(0, "SECTION");
    Ajouter(2, "ENTITIES");
    dessin_.Ecrire(ligne_);
    if (!entites_.CopierVers(dessin_)) return Echouer(nom_, RaisonFatale::Ecriture);
    entites_.Abandonner();
    ligne_.clear();
    Ajouter(0, "ENDSEC");
    Ajouter(0, "EOF");
    dessin_.Ecrire(ligne_);
    return dessin_.Vider() || Echouer(nom_, RaisonFatale::Ecriture);
  }

  bool Placer() override { return dessin_.Fermer() || Echouer(nom_, RaisonFatale::Ecriture); }

  void Abandonner() override {
    dessin_.Abandonner();
    entites_.Abandonner();
  }

 private:
  // The header: the version, the code page, and the extent of the points.
  void Entete() {
    Ajouter(0, "SECTION");
    Ajouter(2, "HEADER");
    Ajouter(9, "$ACADVER");
    Ajouter(1, "AC1009");
    Ajouter(9, "$DWGCODEPAGE");
    Ajouter(3, "ANSI_1252");
    if (!emprise_.vide) {
      Ajouter(9, "$EXTMIN");
      AjouterCoordonnees(emprise_.yMin, emprise_.xMin, 0);
      Ajouter(9, "$EXTMAX");
      AjouterCoordonnees(emprise_.yMax, emprise_.xMax, 0);
    }
    Ajouter(0, "ENDSEC");
  }

  // The line type, and a layer per theme of the points and one for the
  // rejected lines.
  void Tables(const ThemesTrouves& trouves) {
    Ajouter(0, "SECTION");
    Ajouter(2, "TABLES");
    Ajouter(0, "TABLE");
    Ajouter(2, "LTYPE");
    Ajouter(70, "1");
    Ajouter(0, "LTYPE");
    Ajouter(2, "CONTINUOUS");
    Ajouter(70, "0");
    Ajouter(3, "Solid line");
    Ajouter(72, "65");
    Ajouter(73, "0");
    Ajouter(40, "0.0");
    Ajouter(0, "ENDTAB");
    Ajouter(0, "TABLE");
    Ajouter(2, "LAYER");
    int64_t calques = 1;
    for (bool present : themes_) calques += present ? 1 : 0;
    Ajouter(70, TexteEntier(calques));
    for (int32_t theme = 0; theme < 100; ++theme) {
      if (themes_[theme]) Calque(calques_[theme], CouleurAci(trouves.Couleur(theme)));
    }
    Calque(rejets_, CouleurAci(kCouleurRejet));
    Ajouter(0, "ENDTAB");
    Ajouter(0, "ENDSEC");
  }

  void Calque(const std::string& nom, int aci) {
    Ajouter(0, "LAYER");
    Ajouter(2, nom);
    Ajouter(70, "0");
    Ajouter(62, TexteEntier(aci));
    Ajouter(6, "CONTINUOUS");
  }

  // A group: its code and its value, each on a line, added to `ligne_`.
  void Ajouter(int code, std::string_view valeur) {
    AjouterEntier(ligne_, code);
    ligne_ += "\r\n";
    ligne_ += valeur;
    ligne_ += "\r\n";
  }

  void AjouterCoordonnees(double y, double x, double z) {
    ligne_ += "10\r\n";
    AjouterReel(ligne_, y);
    ligne_ += "\r\n20\r\n";
    AjouterReel(ligne_, x);
    ligne_ += "\r\n30\r\n";
    AjouterReel(ligne_, z);
    ligne_ += "\r\n";
  }

  SystemeFichiers& systeme_;
  std::string nom_;
  FichierSortie dessin_;
  FichierSortie entites_;  // never put in place
  Emprise emprise_;        // of the points
  bool themes_[100] = {};  // the themes of the points
  // The names of the layers, and the text of one entity, made once.
  std::string calques_[100];
  const std::string rejets_ = NomCalque(-1);
  std::string autreCalque_;
  const std::string hauteur_ = TexteReel(kHauteurTexte);
  std::string ligne_;
};

}  // namespace

std::unique_ptr<EcrivainExport> EcrivainDxf(const std::string& base, SystemeFichiers& systeme) {
  return std::make_unique<Dxf>(base, systeme);
}

}  // namespace quillon
