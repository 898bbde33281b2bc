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
  Dxf(const std::string& base, SystemeFichiers& systeme) : systeme_(systeme), nom_(base + ".dxf") {}
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
    const std::string calque = NomCalque(e.couche == Couche::Points ? e.theme : -1);
    Groupe(0, "POINT");
    Groupe(8, calque);
    Coordonnees(e.y, e.x, e.altitude);
    if (!e.numero.empty()) {
      Groupe(0, "TEXT");
      Groupe(8, calque);
      Coordonnees(e.y + kDecalageTexte, e.x + kDecalageTexte, e.altitude);
      Groupe(40, TexteReel(kHauteurTexte));
      std::string texte = Utf8VersCp1252(e.numero);
      for (char& c : texte) {
        if (c == '\r' || c == '\n') c = ' ';
      }
      Groupe(1, texte);
    }
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
};

}  // namespace

std::unique_ptr<EcrivainExport> EcrivainDxf(const std::string& base, SystemeFichiers& systeme) {
  return std::make_unique<Dxf>(base, systeme);
}

}  // namespace quillon
