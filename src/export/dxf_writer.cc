// DXF, ASCII R12, which every CAD program reads: one layer per theme
// ("THEME_nn") and a layer "REJETS"; for each point a POINT, its altitude
// as Z, and a TEXT with its point number. Texts are Windows-1252, as the
// header's code page says, their line breaks made blanks.
#include "export/writers.h"
#include "io/encoding.h"
#include "io/text_file.h"

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

  bool Commencer(const EnteteExport& entete) override {
    if (!CreerFichierEcriture(flux_, nom_, systeme_)) return Echouer(nom_, RaisonFatale::Creation);
    Groupe(0, "SECTION");
    Groupe(2, "HEADER");
    Groupe(9, "$ACADVER");
    Groupe(1, "AC1009");
    Groupe(9, "$DWGCODEPAGE");
    Groupe(3, "ANSI_1252");
    if (entete.emprise) {
      Groupe(9, "$EXTMIN");
      Coordonnees(entete.yMin, entete.xMin, 0);
      Groupe(9, "$EXTMAX");
      Coordonnees(entete.yMax, entete.xMax, 0);
    }
    Groupe(0, "ENDSEC");
    Groupe(0, "SECTION");
    Groupe(2, "TABLES");
    Groupe(0, "TABLE");
    Groupe(2, "LTYPE");
    Groupe(70, "1");
    Groupe(0, "LTYPE");
    Groupe(2, "CONTINUOUS");
    Groupe(70, "0");
    Groupe(3, "Solid line");
    Groupe(72, "65");
    Groupe(73, "0");
    Groupe(40, "0.0");
    Groupe(0, "ENDTAB");
    Groupe(0, "TABLE");
    Groupe(2, "LAYER");
    Groupe(70, TexteEntier(static_cast<int64_t>(entete.themes.size()) + 1));
    for (int32_t theme : entete.themes) Calque(NomCalque(theme));
    Calque(NomCalque(-1));
    Groupe(0, "ENDTAB");
    Groupe(0, "ENDSEC");
    Groupe(0, "SECTION");
    Groupe(2, "ENTITIES");
    return !flux_.EnErreur() || Echouer(nom_, RaisonFatale::Ecriture);
  }

  bool Ecrire(const Enregistrement& e) override {
    const int32_t theme = e.couche == Couche::Points ? e.theme : -1;
    if (theme >= 100 || theme < -1) autreCalque_ = NomCalque(theme);
    const std::string& calque = theme >= 0 && theme < 100 ? calques_[theme] : theme == -1 ? rejets_ : autreCalque_;
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
    flux_.Write(ligne_);
    return !flux_.EnErreur() || Echouer(nom_, RaisonFatale::Ecriture);
  }

  bool Terminer() override {
    Groupe(0, "ENDSEC");
    Groupe(0, "EOF");
    return FermerFichier(flux_) || Echouer(nom_, RaisonFatale::Ecriture);
  }

  void Abandonner() override { AbandonnerFichier(flux_); }

 private:
  void Groupe(int code, std::string_view valeur) {
    flux_.WriteLine(TexteEntier(code));
    flux_.WriteLine(valeur);
  }

  // The same groups, added to the text of one entity, written at once.
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

  void Coordonnees(double y, double x, double z) {
    Groupe(10, TexteReel(y));
    Groupe(20, TexteReel(x));
    Groupe(30, TexteReel(z));
  }

  void Calque(const std::string& nom) {
    Groupe(0, "LAYER");
    Groupe(2, nom);
    Groupe(70, "0");
    Groupe(62, "7");
    Groupe(6, "CONTINUOUS");
  }

  SystemeFichiers& systeme_;
  std::string nom_;
  FluxTexte flux_;
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
