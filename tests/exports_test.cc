// The exports through the in-memory file service: one pass over the
// source, the system guessed the same way whichever format asks, the
// drawing's tables made from its entities, and every writer failing at
// each step of its files without leaving anything behind.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <atomic>
#include <charconv>
#include <map>
#include <set>

#include "export/exports.h"
#include "export/styles.h"
#include "support/file_system_memory.h"
#include "test_support.h"

namespace quillon {
namespace {

constexpr int64_t kSansPanne = -1;  // a step of a file that does not fail

std::string Fixe(double v, int largeur) {
  char texte[32];
  const auto fin = std::to_chars(texte, texte + sizeof texte, v, std::chars_format::fixed, 3).ptr;
  std::string s(texte, fin);
  return std::string(static_cast<std::size_t>(std::max(0, largeur - static_cast<int>(s.size()))), ' ') + s;
}

// A value line of theme `theme` (two characters, blank for none) and
// commune `commune` (four), its point number `numero`, at (y, x).
std::string Ligne(int numero, double y, double x, std::string_view commune = " 236", std::string_view theme = "06",
                  std::string_view nature = " 2") {
  const std::string n = std::to_string(numero);
  return std::string(theme) + std::string(commune) + "1502" + std::string(12 - n.size(), ' ') + n +
         std::string(nature) + "OR 77.  " + Fixe(y, 11) + " " + Fixe(x, 11) +
         " 2541.360        commentaire   AB\r\n";
}
// Rejected, its coordinates read: the commune is 0.
std::string Rejet(int numero, double y, double x) { return Ligne(numero, y, x, "   0"); }
// Rejected, its Y unread.
std::string SansY(int numero) {
  std::string l = Ligne(numero, 2600000, 1200000);
  l.replace(32, 11, "   abc     ");
  return l;
}

struct Essai {
  SystemeFichiersMemoire fichiers;
  DemandeExport demande;

  explicit Essai(const std::string& source, std::vector<FormatExport> formats, int epsg = 0) {
    fichiers.fichiers["s.ptv"] = source;
    demande.source = "s.ptv";
    demande.conversion = Conversion::ValEnPrecFiab;
    demande.options = {3, kGroupeCS};
    demande.base = "x";
    demande.formats = std::move(formats);
    demande.epsg = epsg;
    demande.systeme = &fichiers;
  }
  BilanExport Exporter() { return quillon::Exporter(demande); }
};

std::string Lignes(int nombre, int rejetTous = 0) {
  std::string texte;
  for (int n = 1; n <= nombre; ++n) {
    const double y = 2600000 + n * 0.25, x = 1200000 + n * 0.5;
    texte += rejetTous != 0 && n % rejetTous == 0 ? Rejet(n, y, x) : Ligne(n, y, x);
  }
  return texte;
}

// The system is guessed from every line whose coordinates read, converted
// or rejected: by the GeoPackage's first pass over the coordinates alone,
// and at the end of the run for the other formats, which read the source
// once. Each guess gives the same system.
TEST(Exports, SystemeDevineEnUnePasse) {
  const struct {
    const char* nom;
    std::string source;
    int epsg;
    int64_t points;
    int16_t echelle = 3;  // 0: value 77 cannot be written
  } kCas[] = {
      {"LV95", Ligne(1, 2600000, 1200000) + Ligne(2, 2750000.5, 1070000), 2056, 2},
      {"LV03", Ligne(1, 600000, 200000) + Ligne(2, 480000, 300000), 21781, 2},
      {"LV95 et LV03", Ligne(1, 2600000, 1200000) + Ligne(2, 600000, 200000), 0, 2},
      {"un rejet hors de Suisse", Ligne(1, 2600000, 1200000) + Rejet(2, 100, 100), 0, 1},
      {"un rejet sans Y", Ligne(1, 2600000, 1200000) + SansY(2), 2056, 1},
      {"des rejets du lecteur seuls", Rejet(1, 600000, 200000), 21781, 0},
      {"des rejets de l'écrivain seuls", Ligne(1, 600000, 200000), 21781, 0, 0},
      {"vide", "", 0, 0},
  };
  for (const auto& cas : kCas) {
    SCOPED_TRACE(cas.nom);
    for (const auto& formats : std::vector<std::vector<FormatExport>>{
             {FormatExport::GeoPackage, FormatExport::GeoJson}, {FormatExport::Csv, FormatExport::GeoJson},
             {FormatExport::Dxf}}) {
      Essai essai(cas.source, formats);
      essai.demande.options.classeEchelle = cas.echelle;
      const BilanExport bilan = essai.Exporter();
      ASSERT_TRUE(bilan.complet);
      EXPECT_EQ(bilan.epsg, cas.epsg);
      EXPECT_EQ(bilan.points, cas.points);
      const bool premierePasse = formats.front() == FormatExport::GeoPackage;
      EXPECT_EQ(essai.fichiers.lectures["s.ptv"], premierePasse ? 2 : 1);
    }
    // Given, it is taken as it is, in one pass.
    Essai donne(cas.source, {FormatExport::GeoPackage}, 2056);
    EXPECT_EQ(donne.Exporter().epsg, 2056);
    EXPECT_EQ(donne.fichiers.lectures["s.ptv"], 1);
  }
}

// The MD01 conversion skips the lines of other themes: their coordinates
// count in neither guess.
TEST(Exports, SystemeDevineSansLesLignesSautees) {
  SystemeFichiersMemoire memoire;
  memoire.fichiers["v.ptv"] = Ligne(1, 2600000, 1200000) + Ligne(2, 600000, 200000, " 236", "71");
  AffichageRetenu affichage;
  ReglagesExecution r;
  r.affichage = &affichage;
  r.systeme = &memoire;
  r.DefinirSource("v.ptv");
  r.FichierCible.Nom = "s.ptv";
  r.journal.FichierLog.Nom = "v.log";
  ASSERT_TRUE(Convertir(r, Conversion::ValEnPrecFiab, {3, kGroupeCS}));
  ASSERT_EQ(r.journal.NbErreursLecture + r.journal.NbErreursEcriture, 0);
  std::string precisions;  // the same lines with an altimetric reliability and precision
  for (std::string l : test::LignesCRLF(memoire.fichiers["s.ptv"])) precisions += l.replace(65, 6, "O 10.0") + "\r\n";
  for (FormatExport format : {FormatExport::GeoPackage, FormatExport::Csv}) {
    Essai essai(precisions, {format});
    essai.demande.conversion = Conversion::PrecFiabEnMD01;
    const BilanExport bilan = essai.Exporter();
    ASSERT_TRUE(bilan.complet);
    EXPECT_EQ(bilan.points, 1);
    EXPECT_EQ(bilan.rejets, 0);
    EXPECT_EQ(bilan.epsg, 2056);
  }
}

// A GeoJSON whose system is told at the end has it in the room left before
// its features: the same JSON as when it was known at the start (the
// GeoPackage's first pass), and for EPSG:2056 the same bytes.
TEST(Exports, GeoJsonSystemeALaFin) {
  const struct {
    double y, x;
    int epsg;
  } kCas[] = {
      {2600000, 1200000, 2056},
      {600000, 200000, 21781},
      {100, 100, 0},
  };
  for (const auto& cas : kCas) {
    SCOPED_TRACE(cas.epsg);
    const std::string source = Ligne(1, cas.y, cas.x) + Rejet(2, cas.y + 1, cas.x + 1);
    Essai fin(source, {FormatExport::GeoJson});
    Essai debut(source, {FormatExport::GeoPackage, FormatExport::GeoJson});
    ASSERT_EQ(fin.Exporter().epsg, cas.epsg);
    ASSERT_EQ(debut.Exporter().epsg, cas.epsg);
    for (const char* nom : {"x.geojson", "x-rejets.geojson"}) {
      const std::string& octets = fin.fichiers.fichiers[nom];
      const auto json = nlohmann::json::parse(octets);
      EXPECT_EQ(json, nlohmann::json::parse(debut.fichiers.fichiers[nom]));
      EXPECT_EQ(json.contains("crs"), cas.epsg != 0);
      if (cas.epsg == 2056) {
        EXPECT_EQ(octets, debut.fichiers.fichiers[nom]);
      }
      if (cas.epsg != 0) {
        EXPECT_LT(octets.find("crs"), octets.find("features"));
      }
    }
  }
}

// The DXF's groups, as (code, value) pairs.
std::vector<std::pair<std::string, std::string>> Groupes(const std::string& dxf) {
  const std::vector<std::string> lignes = test::LignesCRLF(dxf);
  std::vector<std::pair<std::string, std::string>> groupes;
  for (std::size_t k = 0; k + 1 < lignes.size(); k += 2) groupes.emplace_back(lignes[k], lignes[k + 1]);
  return groupes;
}

// The drawing's layer table holds the layer of each entity and none other
// (a blank theme taking the theme group included), and its extent is the
// points': a rejected line elsewhere does not widen it. Each theme's layer
// has the colour of the check report's for its rank among the themes of
// every line placed (a rejected line's 03 included, and the blank theme's
// group as the target gives it), the rejected lines red.
TEST(Exports, DxfTablesDeSesEntites) {
  Essai essai(Ligne(1, 2600000, 1200000) + Ligne(2, 2600010, 1200020, " 236", "  ", " 5") +
                  Ligne(3, 2600005, 1200001, " 236", "01") + Rejet(4, 2500000, 1100000) +
                  Ligne(5, 2600001, 1200001, "   0", "03"),
              {FormatExport::Dxf});
  ASSERT_TRUE(essai.Exporter().complet);
  const auto groupes = Groupes(essai.fichiers.fichiers["x.dxf"]);
  std::set<std::string> table, entites;
  std::string section, extmin, extmax;
  std::map<std::string, std::string> couleurs;  // group 62 of each layer
  for (std::size_t k = 0; k < groupes.size(); ++k) {
    const auto& [code, valeur] = groupes[k];
    if (code == "2" && k > 0 && groupes[k - 1].second == "SECTION") section = valeur;
    if (section == "TABLES" && code == "2" && groupes[k - 1].second == "LAYER" && valeur != "LAYER") {
      table.insert(valeur);
      couleurs[valeur] = groupes[k + 2].second;
    }
    if (section == "ENTITIES" && code == "8") entites.insert(valeur);
    if (valeur == "$EXTMIN") extmin = groupes[k + 1].second + " " + groupes[k + 2].second;
    if (valeur == "$EXTMAX") extmax = groupes[k + 1].second + " " + groupes[k + 2].second;
  }
  EXPECT_EQ(entites, (std::set<std::string>{"THEME_01", "THEME_02", "THEME_06", "REJETS"}));
  EXPECT_EQ(table, entites);
  const auto aci = [](std::size_t rang) { return std::to_string(CouleurAci(kCouleursThemes[rang])); };
  EXPECT_EQ(couleurs, (std::map<std::string, std::string>{
                          {"THEME_01", aci(0)}, {"THEME_02", aci(1)}, {"THEME_06", aci(3)}, {"REJETS", "1"}}));
  EXPECT_EQ(extmin, "2600000 1200000");
  EXPECT_EQ(extmax, "2600010 1200020");
  EXPECT_EQ(groupes.back(), (std::pair<std::string, std::string>{"0", "EOF"}));
}

// The AutoCAD colours: the table's own (AutoCAD's values), the first of
// two alike (red is 1, not 10), the nearest otherwise; the report's theme
// colours each within a shade of theirs (the index has few).
TEST(Exports, CouleursAci) {
  const struct {
    Rgb couleur;
    int aci;
  } kCas[] = {{{255, 0, 0}, 1},       {{0, 255, 0}, 3},       {{255, 255, 255}, 7},    {{255, 127, 127}, 11},
              {{165, 103, 82}, 23},   {{0, 127, 255}, 150},   {{51, 51, 51}, 250},     {{190, 190, 190}, 254},
              {{250, 10, 5}, 1},      {{0, 0, 120}, 174},     {{200, 200, 200}, 9}};
  for (const auto& c : kCas) {
    EXPECT_EQ(CouleurAci(c.couleur), c.aci) << int(c.couleur.r) << "," << int(c.couleur.g) << "," << int(c.couleur.b);
  }
  for (const Rgb& c : kCouleursThemes) {
    const Rgb& a = kCouleursAci[static_cast<std::size_t>(CouleurAci(c))];
    EXPECT_LE(std::abs(a.r - c.r) + std::abs(a.g - c.g) + std::abs(a.b - c.b), 90) << CouleurAci(c);
  }
}

// When a writer fails: before its first record, at a record, or once all
// are written.
enum class Moment { Debut, Lignes, Fin };

// Every writer failing at each step of each of its files: its creation,
// its first write, a write among the rows, a full disk, its closing. The
// export fails naming that file, the previous exports of those names stay
// as they were, and nothing else is left: no file being written, no
// other. The records written tell when it failed.
TEST(Exports, PannesDesEcrivains) {
  using Panne = SystemeFichiersMemoire::Panne;
  const Panne creation{true}, fermeture{false, kSansPanne, kSansPanne, true};
  const auto ecritures = [](int64_t n) { return Panne{false, n}; };
  const auto disque = [](int64_t octets) { return Panne{false, kSansPanne, octets}; };
  using F = FormatExport;
  using M = Moment;
  constexpr RaisonFatale kCree = RaisonFatale::Creation, kEcrit = RaisonFatale::Ecriture;
  const struct {
    FormatExport format;
    const char* fichier;  // that fails
    const char* nomme;    // in the error
    Panne panne;
    RaisonFatale raison;
    Moment moment;
  } kCas[] = {
      {F::Csv, "x.csv", "x.csv", creation, kCree, M::Debut},
      {F::Csv, "x-rejets.csvt", "x-rejets.csvt", creation, kCree, M::Debut},
      {F::Csv, "x.csv", "x.csv", ecritures(2), kEcrit, M::Lignes},
      {F::Csv, "x-rejets.csv", "x-rejets.csv", disque(50000), kEcrit, M::Lignes},
      {F::Csv, "x.csvt", "x.csvt", ecritures(0), kEcrit, M::Fin},
      {F::Csv, "x.csv", "x.csv", fermeture, kEcrit, M::Fin},
      {F::GeoJson, "x-rejets.geojson", "x-rejets.geojson", creation, kCree, M::Debut},
      {F::GeoJson, "x.geojson", "x.geojson", ecritures(1), kEcrit, M::Lignes},
      {F::GeoJson, "x-rejets.geojson", "x-rejets.geojson", ecritures(0), kEcrit, M::Lignes},
      {F::GeoJson, "x.geojson", "x.geojson", disque(100000), kEcrit, M::Lignes},
      {F::GeoJson, "x.geojson", "x.geojson", fermeture, kEcrit, M::Fin},
      {F::Dxf, "x.dxf", "x.dxf", creation, kCree, M::Debut},
      {F::Dxf, "x.dxf.entites", "x.dxf", creation, kCree, M::Debut},
      {F::Dxf, "x.dxf.entites", "x.dxf", ecritures(1), kEcrit, M::Lignes},
      {F::Dxf, "x.dxf", "x.dxf", ecritures(0), kEcrit, M::Fin},
      {F::Dxf, "x.dxf", "x.dxf", disque(100000), kEcrit, M::Fin},
      {F::Dxf, "x.dxf", "x.dxf", fermeture, kEcrit, M::Fin},
      {F::GeoPackage, "x.gpkg", "x.gpkg", creation, kCree, M::Debut},
      {F::GeoPackage, "x.gpkg", "x.gpkg", ecritures(0), kEcrit, M::Debut},
      {F::GeoPackage, "x.gpkg", "x.gpkg", disque(200000), kEcrit, M::Fin},
      {F::GeoPackage, "x.gpkg", "x.gpkg", fermeture, kEcrit, M::Fin},
  };
  const std::string source = Lignes(9000, 7);
  for (const auto& cas : kCas) {
    SCOPED_TRACE(std::string(MotFormat(cas.format)) + " " + cas.fichier);
    Essai essai(source, {cas.format});
    for (const std::string& nom : FichiersExport(cas.format, "x")) essai.fichiers.fichiers[nom] = "avant " + nom;
    const auto avant = essai.fichiers.fichiers;
    essai.fichiers.pannes[cas.fichier] = cas.panne;
    const BilanExport bilan = essai.Exporter();
    EXPECT_FALSE(bilan.complet);
    EXPECT_EQ(bilan.erreur.fichier, cas.nomme);
    EXPECT_EQ(bilan.erreur.raison, cas.raison);
    const int64_t ecrits = bilan.points + bilan.rejets;
    EXPECT_EQ(ecrits == 0, cas.moment == Moment::Debut) << ecrits;
    EXPECT_EQ(ecrits == 9000, cas.moment == Moment::Fin) << ecrits;
    EXPECT_EQ(essai.fichiers.fichiers, avant);
    EXPECT_TRUE(essai.fichiers.enCours.empty());
  }
}

// A GeoPackage that fills the disk fails with SQLite's own words after
// Quillon's.
TEST(Exports, RaisonDeSqlite) {
  Essai essai(Lignes(3000), {FormatExport::GeoPackage}, 2056);
  essai.fichiers.pannes["x.gpkg"].octets = 100000;
  const BilanExport bilan = essai.Exporter();
  ASSERT_FALSE(bilan.complet);
  EXPECT_EQ(bilan.erreur.detail, "disk I/O error");
  EXPECT_EQ(CauseFatale(bilan.erreur), test::W("Le fichier x.gpkg ne peut pas être écrit (disk I/O error)"));
}

// Stops a run at a given line, as Ctrl-C would, passing every line to the
// exports.
class ArretALaLigne : public ObservateurExecution {
 public:
  ArretALaLigne(ObservateurExecution& suite, int64_t ligne, std::atomic<bool>& arret)
      : suite_(suite), ligne_(ligne), arret_(arret) {}
  void Debut() override { suite_.Debut(); }
  void Ligne(const LigneObservee& l) override {
    suite_.Ligne(l);
    if (l.numero == ligne_) arret_ = true;
  }

 private:
  ObservateurExecution& suite_;
  int64_t ligne_;
  std::atomic<bool>& arret_;
};

// Exports over many blocks of lines: complete, every record in the order
// of the source; stopped in the middle, or after the last line, nothing
// is left and the previous exports stay.
TEST(Exports, PlusieursLotsAbandonnes) {
  const int kLignes = 9000;
  const std::vector<FormatExport> kTous = {FormatExport::GeoPackage, FormatExport::Csv, FormatExport::GeoJson,
                                           FormatExport::Dxf};
  Essai complet(Lignes(kLignes, 5), kTous, 2056);
  const BilanExport bilan = complet.Exporter();
  ASSERT_TRUE(bilan.complet);
  EXPECT_EQ(bilan.points + bilan.rejets, kLignes);
  EXPECT_EQ(bilan.rejets, kLignes / 5);
  // The line numbers of a CSV layer: the last column of the points, the
  // first after the geometry of the rejected lines.
  const auto numeros = [&](const char* nom, bool dernier) {
    std::vector<int64_t> n;
    const std::vector<std::string> lignes = test::LignesCRLF(complet.fichiers.fichiers[nom]);
    for (std::size_t k = 1; k < lignes.size(); ++k) {
      n.push_back(std::stoll(lignes[k].substr((dernier ? lignes[k].rfind(',') : lignes[k].find(',')) + 1)));
    }
    return n;
  };
  std::vector<int64_t> points = numeros("x.csv", true), rejets = numeros("x-rejets.csv", false);
  EXPECT_TRUE(std::is_sorted(points.begin(), points.end()));
  EXPECT_TRUE(std::is_sorted(rejets.begin(), rejets.end()));
  points.insert(points.end(), rejets.begin(), rejets.end());
  std::sort(points.begin(), points.end());
  ASSERT_EQ(points.size(), static_cast<std::size_t>(kLignes));
  EXPECT_EQ(points.front(), 1);
  EXPECT_EQ(std::adjacent_find(points.begin(), points.end(), [](int64_t a, int64_t b) { return b != a + 1; }),
            points.end());
  for (int64_t arret : {int64_t{1}, int64_t{3000}, int64_t{kLignes}}) {
    SCOPED_TRACE(arret);
    Essai essai(Lignes(kLignes, 5), kTous);
    for (FormatExport f : kTous) {
      for (const std::string& nom : FichiersExport(f, "x")) essai.fichiers.fichiers[nom] = "avant";
    }
    const auto avant = essai.fichiers.fichiers;
    std::atomic<bool> stop{false};
    essai.demande.arret = &stop;
    {
      BilanExport prepare;
      EnteteExport entete;
      ASSERT_TRUE(PreparerExport(essai.demande, entete, prepare));
      ExportsEnCours exports(essai.demande, entete);
      ArretALaLigne observateur(exports, arret, stop);
      SystemeSansEcriture systeme(essai.fichiers);
      AffichageRetenu affichage;
      ReglagesExecution r;
      r.affichage = &affichage;
      r.systeme = &systeme;
      r.arret = &stop;
      r.observateur = &observateur;
      r.DefinirSource("s.ptv");
      r.FichierCible.Nom = "x.ptp";
      EXPECT_FALSE(Convertir(r, essai.demande.conversion, essai.demande.options));
      EXPECT_TRUE(r.Interrompu);
    }
    EXPECT_EQ(essai.fichiers.fichiers, avant);
    EXPECT_TRUE(essai.fichiers.enCours.empty());
  }
}

}  // namespace
}  // namespace quillon
