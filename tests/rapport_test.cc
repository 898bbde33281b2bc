// What the reports compute and write on their own: the quartiles of the
// far points, the texts of metres and identities, and what escapes a file's
// text in a page, and the order and verdict of a batch's index.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "report/checks.h"
#include "report/html.h"
#include "report/page.h"

namespace quillon {
namespace {

// The quartiles as a sort would give them: the values of the ranks around
// each position, taken by std::nth_element, interpolated.
std::array<double, 3> QuartilesDeReference(std::vector<double> v) {
  std::array<double, 3> q{};
  auto rang = [&](std::size_t k) {
    std::nth_element(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(k), v.end());
    return v[k];
  };
  for (std::size_t k = 0; k < 3; ++k) {
    const double position = 0.25 * static_cast<double>(k + 1) * static_cast<double>(v.size() - 1);
    const auto bas = static_cast<std::size_t>(position);
    const double reste = position - static_cast<double>(bas);
    q[k] = bas + 1 < v.size() ? rang(bas) + reste * (rang(bas + 1) - rang(bas)) : rang(bas);
  }
  return q;
}

struct CasQuartiles {
  const char* nom;
  std::size_t n;
  double (*valeur)(std::size_t i, std::mt19937_64& hasard);
};

const CasQuartiles kCasQuartiles[] = {
    {"one value", 1, [](std::size_t, std::mt19937_64&) { return 2600000.0; }},
    {"two values", 2, [](std::size_t i, std::mt19937_64&) { return 10.0 - static_cast<double>(i); }},
    {"five, reversed", 5, [](std::size_t i, std::mt19937_64&) { return -static_cast<double>(i); }},
    {"all equal", 1000, [](std::size_t, std::mt19937_64&) { return 1200000.125; }},
    {"two values many times", 999, [](std::size_t i, std::mt19937_64&) { return i % 2 ? 1.0 : 3.0; }},
    {"uniform", 100'001,
     [](std::size_t, std::mt19937_64& h) { return 2600000 + std::uniform_real_distribution<>(0, 5000)(h); }},
    {"a cluster and a wrong leading digit", 200'000,
     [](std::size_t i, std::mt19937_64& h) {
       return (i % 50'000 == 7 ? 1600000.0 : 2600000.0) + std::uniform_int_distribution<>(0, 99'999)(h) / 1000.0;
     }},
    {"millimetres on a wide range", 50'000,
     [](std::size_t i, std::mt19937_64&) { return static_cast<double>(i * i % 1'000'003) / 1000.0 - 500; }},
};

TEST(Quartiles, CeuxDeNthElement) {
  for (const CasQuartiles& cas : kCasQuartiles) {
    std::mt19937_64 hasard(7);
    std::vector<double> v(cas.n);
    for (std::size_t i = 0; i < cas.n; ++i) v[i] = cas.valeur(i, hasard);
    const auto [min, max] = std::minmax_element(v.begin(), v.end());
    EXPECT_EQ(Quartiles(v, *min, *max), QuartilesDeReference(v)) << cas.nom;
  }
}

TEST(TextesRapport, Metres) {
  struct {
    double metres;
    int decimales;
    const char* fixe;
    const char* court;
  } const cas[] = {
      {0.1, 3, "0.100", "0.1"},
      {2.5, 4, "2.5000", "2.5"},
      {100, 3, "100.000", "100"},
      {2600000, 0, "2600000", "2600000"},
      {-0.0004, 3, "0.000", "0"},
      {-0.0006, 3, "-0.001", "-0.001"},
      {-12.5, 1, "-12.5", "-12.5"},
      {0.00005, 4, "0.0001", "0.0001"},
      {1e15, 0, "1000000000000000", "1000000000000000"},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(TexteMetres(c.metres, c.decimales), c.fixe) << c.metres;
    EXPECT_EQ(TexteMetresCourt(c.metres, c.decimales), c.court) << c.metres;
  }
  EXPECT_EQ(Millimetres(2.0005), 2001);
  EXPECT_EQ(Millimetres(-1e300), -1'000'000'000'000'000);
}

TEST(TextesRapport, Identite) {
  struct {
    int theme, commune, plan;
    const char* numero;
    const char* texte;
  } const cas[] = {
      {6, 236, 1502, "          91", "6/236/1502/91"},
      {10, 1, 2, "A 7   ", "blanc/1/2/A 7"},
      {1, 0, 0, "            ", "1/0/0/"},
      {-1, 3, 4, "x", "illisible/3/4/x"},
  };
  for (const auto& c : cas) EXPECT_EQ(TexteIdentite(c.theme, c.commune, c.plan, c.numero), c.texte);
}

// A file's text shows as it is and makes no tag, in the page and in its
// data block.
TEST(PageRapport, TexteEchappe) {
  struct {
    std::string_view texte, html, json;
  } const cas[] = {
      {"</script><b>", "&lt;/script&gt;&lt;b&gt;", "\"\\u003c/script\\u003e\\u003cb\\u003e\""},
      {"a&b \"c\" 'd'", "a&amp;b &quot;c&quot; &#39;d&#39;", "\"a\\u0026b \\\"c\\\" 'd'\""},
      {"\\ \x01\t\xC3\xA9", "\\ \xEF\xBF\xBD\t\xC3\xA9", "\"\\\\ \\u0001\\u0009\xC3\xA9\""},
  };
  for (const auto& c : cas) {
    EXPECT_EQ(EchapperHtml(c.texte), c.html);
    std::string json;
    AjouterTexteJson(json, c.texte);
    EXPECT_EQ(json, c.json);
  }
}

// The index lists the failures, then the files with rejects, then those
// whose checks found something, the rest last, names in natural order
// within each; its verdict takes the worst colour and counts each kind.
// A long table's rows, in order, all of them: under the headings up to a
// block, past it in blocks of a block's size after an empty heading table.
TEST(PageRapport, RangeesEnBlocs) {
  for (const std::size_t nombre : {std::size_t{0}, kRangeesParBloc, kRangeesParBloc + 1, 3 * kRangeesParBloc + 7}) {
    std::string s;
    AjouterRangees(s, "t", "<th>N</th>", nombre, [&](std::size_t k) { s += "<tr><td>" + std::to_string(k) + "</td></tr>\n"; });
    std::size_t blocs = 0, ici = 0, rangees = 0;
    for (; (ici = s.find("<div class=\"bloc\" data-de=\"t\">", ici)) != std::string::npos; ++ici) ++blocs;
    EXPECT_EQ(blocs, nombre > kRangeesParBloc ? (nombre + kRangeesParBloc - 1) / kRangeesParBloc : 0) << nombre;
    for (ici = 0; (ici = s.find("<tr><td>", ici)) != std::string::npos; ++ici, ++rangees) {
      EXPECT_EQ(s.compare(ici + 8, std::to_string(rangees).size() + 5, std::to_string(rangees) + "</td>"), 0);
    }
    EXPECT_EQ(rangees, nombre);
    const bool enBlocs = nombre > kRangeesParBloc;
    EXPECT_EQ(s.starts_with("<table id=\"t\"><thead><tr><th>N</th></tr></thead><tbody>\n" +
                            std::string(enBlocs ? "</tbody></table>\n<div" : "")), true) << nombre;
    EXPECT_TRUE(s.ends_with(enBlocs ? "</tbody></table></div>\n" : "</tbody></table>\n")) << nombre;
    // As many tags closed as opened.
    EXPECT_EQ(std::count(s.begin(), s.end(), '<') - std::count(s.begin(), s.end(), '/') * 2, 0) << s;
  }
}

TEST(IndexLot, OrdreEtVerdict) {
  Controles avecProches, sansRien;
  avecProches.proches.push_back({0, 1, 0.001});
  struct Fichier {
    std::string source, issue;
    const Controles* controles;
  };
  struct {
    std::vector<Fichier> fichiers;
    std::vector<std::string> ordre;
    std::string verdict;
  } const cas[] = {
      {{{"f10", "converti", &sansRien}, {"f2", "converti", &sansRien}, {"F1", "converti", nullptr}},
       {"F1", "f2", "f10"},
       "<p class=\"verdict ok\">Tous les fichiers convertis sans rejet</p>"},
      {{{"f10", "converti", &sansRien},
        {"f9", "converti", &avecProches},
        {"f11", "rejets", &sansRien},
        {"f3", "echec", nullptr},
        {"f1", "interrompu", nullptr},
        {"f20", "rejets", &sansRien}},
       {"f3", "f11", "f20", "f9", "f1", "f10"},
       "<p class=\"verdict echec\">1 fichier(s) en échec, 2 fichier(s) avec rejets, 1 fichier(s) avec des points à "
       "vérifier, 1 fichier(s) interrompu(s)</p>"},
      {{{"b", "converti", &avecProches}, {"a", "non-traite", nullptr}},
       {"b", "a"},
       "<p class=\"verdict rejets\">1 fichier(s) avec des points à vérifier, 1 fichier(s) non traité(s)</p>"},
  };
  for (const auto& c : cas) {
    std::vector<LigneIndex> lignes;
    for (const Fichier& f : c.fichiers) lignes.push_back({f.source, "", f.issue, {}, f.controles});
    const std::string page = IndexHtml("quillon-lot", "", lignes);
    EXPECT_NE(page.find(c.verdict), std::string::npos) << c.verdict;
    std::size_t avant = 0;
    for (const std::string& nom : c.ordre) {
      const std::size_t ici = page.find("<td class=\"nom\">" + nom + "</td>");
      EXPECT_TRUE(ici != std::string::npos && ici > avant) << nom;
      avant = ici;
    }
  }
}

}  // namespace
}  // namespace quillon
