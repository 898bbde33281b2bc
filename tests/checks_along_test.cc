// The checks across lines made along the run, on a second thread, give what
// the same checks give over the whole collect once the run is over, on
// generated files with duplicates, close and far points, lines without
// coordinates and rejected lines, in amounts that span several blocks.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "conversion/conversions.h"
#include "conversion/run_settings.h"
#include "report/checked_collect.h"
#include "report/checks.h"
#include "report/html.h"
#include "support/file_system_memory.h"

namespace quillon {
namespace {

constexpr std::string_view kModele =
    "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";

// `n` lines from a seed: most points in a 2 km square, one in 50 a copy of
// an earlier number (a duplicate), one in 40 a centimetre from the one
// before, one in 500 ten kilometres away, one in 60 with unreadable
// coordinates or commune.
std::string Genere(int n, unsigned graine) {
  std::mt19937 hasard(graine);
  std::string texte;
  char champ[16];
  double y = 2600000, x = 1200000;
  for (int i = 0; i < n; ++i) {
    std::string l(kModele);
    const unsigned tirage = hasard() % 1000;
    const int numero = tirage < 20 && i > 0 ? static_cast<int>(hasard() % static_cast<unsigned>(i)) : i;
    std::snprintf(champ, sizeof champ, "%06d", numero);
    l.replace(16, 6, champ);
    if (tirage >= 20 && tirage < 45) {
      y += 0.004, x += 0.003;
    } else {
      y = 2600000 + (hasard() % 2000000) / 1000.0, x = 1200000 + (hasard() % 2000000) / 1000.0;
      if (tirage == 999 || tirage == 998) y += 10000;
    }
    std::snprintf(champ, sizeof champ, "%11.3f", y);
    l.replace(32, 11, champ);
    std::snprintf(champ, sizeof champ, "%11.3f", x);
    l.replace(44, 11, champ);
    if (tirage >= 900 && tirage < 908) l.replace(44, 3, "1x0");
    if (tirage >= 950 && tirage < 958) l.replace(3, 3, "999");
    texte += l;
  }
  return texte;
}

void Executer(const std::string& source, ObservateurExecution& observateur) {
  SystemeFichiersMemoire fs;
  fs.fichiers["s.ptv"] = source;
  AffichageRetenu affichage;
  ReglagesExecution r;
  InitialiserTables(r);
  r.affichage = &affichage;
  r.systeme = &fs;
  r.observateur = &observateur;
  r.DefinirSource("s.ptv");
  r.FichierCible.Nom = "s.ptp";
  EXPECT_TRUE(Convertir(r, Conversion::ValEnPrecFiab, {3, 2}));
}

TEST(ControlesAuFil, MemesResultatsQuApres) {
  for (const auto& [lignes, graine] : {std::pair{10, 1u}, {5000, 2u}, {20000, 3u}, {70000, 4u}}) {
    SCOPED_TRACE(lignes);
    const std::string source = Genere(lignes, graine);
    CollecteControlee auFil(kToleranceDefaut, static_cast<std::size_t>(lignes) / 2);
    Executer(source, auFil);
    const Controles a = auFil.Terminer();
    Collecte collecte;
    Executer(source, collecte);
    const Controles b = Controler(collecte, kToleranceDefaut);

    EXPECT_EQ(a.nombres, b.nombres);
    ASSERT_EQ(a.doublons.size(), b.doublons.size());
    for (std::size_t k = 0; k < a.doublons.size(); ++k) {
      EXPECT_EQ(a.doublons[k].nombre, b.doublons[k].nombre);
      EXPECT_EQ(a.doublons[k].dy, b.doublons[k].dy);
      EXPECT_EQ(a.doublons[k].dh, b.doublons[k].dh);
    }
    EXPECT_EQ(a.membresDoublons, b.membresDoublons);
    ASSERT_EQ(a.proches.size(), b.proches.size());
    for (std::size_t k = 0; k < a.proches.size(); ++k) {
      EXPECT_EQ(a.proches[k].a, b.proches[k].a);
      EXPECT_EQ(a.proches[k].b, b.proches[k].b);
      EXPECT_EQ(a.proches[k].distance, b.proches[k].distance);
    }
    EXPECT_EQ(a.prochesTronques, b.prochesTronques);
    EXPECT_EQ(a.eloignes, b.eloignes);
    EXPECT_EQ(a.sansCoordonnees, b.sansCoordonnees);
    ASSERT_EQ(a.parChamp.size(), b.parChamp.size());
    for (std::size_t k = 0; k < a.parChamp.size(); ++k) EXPECT_EQ(a.parChamp[k].premieres, b.parChamp[k].premieres);
    if (lignes >= 5000) {  // the file holds what it is meant to
      EXPECT_GT(a.doublons.size(), 0u);
      EXPECT_GT(a.proches.size(), 0u);
      EXPECT_GT(a.eloignes.size(), 0u);
      EXPECT_GT(a.sansCoordonnees.size(), 0u);
      EXPECT_GT(a.nombres[static_cast<std::size_t>(IssueLigne::Rejetee)], 0);
    }
  }
}

}  // namespace
}  // namespace quillon

namespace quillon {
namespace {

// A rejected line longer than the report keeps is cut, and the report says
// how many texts it cut; a file without such lines gets no such note.
TEST(ControlesAuFil, RapportDitCeQuiEstTronque) {
  const std::string source = std::string(kModele) + std::string(kModele) + std::string(kModele);
  for (const bool longue : {false, true}) {
    std::string texte = source;
    const std::size_t fin = texte.find("\r\n");
    texte.replace(44, 3, "1x0");
    if (longue) texte.insert(fin, std::string(600, 'a'));
    Collecte collecte;
    Executer(texte, collecte);
    const std::string page = RapportHtml({}, collecte, Controler(collecte, kToleranceDefaut));
    EXPECT_EQ(page.find("textes raccourcis : 1") != std::string::npos, longue) << longue;
    EXPECT_EQ(page.find("pas tout gardé") != std::string::npos, longue);
  }
}

}  // namespace
}  // namespace quillon
