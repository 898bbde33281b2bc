#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <clocale>
#include <cmath>

#include "export/record.h"
#include "formats/numbers.h"

namespace quillon {
namespace {

// The formatted text, or "<none>" when the formatter refuses the number.
std::string Decimal(double valeur, int decimales) {
  TamponNombre tampon;
  std::string_view texte;
  if (!FormaterDecimal(valeur, decimales, tampon, texte)) return "<none>";
  return std::string(texte);
}

struct CasDecimal {
  const char* texte;
  bool valide;
  double valeur;
};

TEST(Nombres, ConversionDecimale) {
  const CasDecimal cas[] = {
      {"12.", true, 12},       {".5", true, 0.5},        {"-3", true, -3},         {"+3", true, 3},
      {"  538000.500", true, 538000.5}, {"8.2  ", true, 8.2}, {"-.25", true, -0.25}, {"0", true, 0},
      {"1e5", false, 0},       {"1,5", false, 0},        {"- 5", false, 0},        {"", false, 0},
      {"     ", false, 0},     {".", false, 0},          {"1.2.3", false, 0},      {"12a", false, 0},
      {"\t1", false, 0},       {"--1", false, 0},        {"1 2", false, 0},        {"0x10", false, 0},
      // A point number's column, and more digits than a mantissa holds.
      {"  004711  ", true, 4711}, {"000000000000000000000012.5", true, 12.5}, {"4711 0", false, 0},
  };
  for (const CasDecimal& c : cas) {
    double v = 99;
    EXPECT_EQ(ConvertirDecimal(c.texte, v), c.valide) << c.texte;
    EXPECT_EQ(EstNumerique(c.texte), c.valide) << c.texte;
    if (c.valide) {
      EXPECT_EQ(v, c.valeur) << c.texte;
    }
    if (!c.valide) {
      EXPECT_EQ(v, 99) << "a failed conversion stores nothing: " << c.texte;
    }
  }
}

TEST(Nombres, ConversionDecimaleIgnoreLaLocale) {
  const char* avant = std::setlocale(LC_NUMERIC, nullptr);
  const std::string sauve = avant != nullptr ? avant : "C";
  // POSIX's name, then Windows'.
  if (std::setlocale(LC_NUMERIC, "fr_FR.UTF-8") == nullptr && std::setlocale(LC_NUMERIC, "French_France.1252") == nullptr) {
    GTEST_SKIP() << "no French locale installed";
  }
  double v = 0;
  EXPECT_TRUE(ConvertirDecimal("8.2", v));
  EXPECT_EQ(v, 8.2);
  EXPECT_FALSE(ConvertirDecimal("8,2", v));
  EXPECT_EQ(Decimal(8.25, 3), "8.250");
  std::setlocale(LC_NUMERIC, sauve.c_str());
}

struct CasEntier {
  const char* texte;
  bool valide;
  int valeur;
};

TEST(Nombres, ConversionEntiereArrondiAuPair) {
  const CasEntier cas[] = {
      {"  12", true, 12},     {" 400", true, 400},     {"12.5", true, 12},      {"13.5", true, 14},
      {"12.51", true, 13},    {"12.500001", true, 13}, {"-2.5", true, -2},      {"-3.5", true, -4},
      {"0.5", true, 0},       {"1.49999", true, 1},    {"32767", true, 32767},  {"-32768", true, -32768},
      {"32767.5", false, 0},  {"32768", false, 0},     {"-32769", false, 0},    {"99999999999", false, 0},
      {"32767.4", true, 32767}, {"", false, 0},        {"    ", false, 0},      {"1e2", false, 0},
      {"0000000000000000000012", true, 12},              {"12345678901234567890", false, 0},
      // 2^32 + 12: 12 if a 32-bit integer wrapped
      {"4294967308", false, 0}, {"-4294967308", false, 0},
  };
  for (const CasEntier& c : cas) {
    int16_t v = 7;
    EXPECT_EQ(ConvertirEntier(c.texte, v), c.valide) << c.texte;
    if (c.valide) {
      EXPECT_EQ(v, c.valeur) << c.texte;
    }
  }
}

struct CasFormat {
  double valeur;
  int decimales;
  const char* attendu;
};

TEST(Nombres, MotifsDecimaux) {
  const CasFormat cas[] = {
      {0.5, 1, ".5"},          {0, 1, ".0"},           {0, 3, ".000"},          {3.5, 1, "3.5"},
      {538123.45, 3, "538123.450"}, {2538123.456, 3, "2538123.456"}, {0.0004, 3, ".000"},
      {-0.5, 1, "-.5"},        {-12.25, 1, "-12.2"},   {0.05, 1, ".1"},          {-0.04, 1, ".0"},
      {999.95, 1, "1000.0"},   {230.9, 1, "230.9"},    {8.2, 1, "8.2"},          {-0.0, 3, ".000"},
  };
  for (const CasFormat& c : cas) EXPECT_EQ(Decimal(c.valeur, c.decimales), c.attendu) << c.valeur;
  EXPECT_EQ(Decimal(std::nan(""), 1), "<none>");
  EXPECT_EQ(Decimal(INFINITY, 3), "<none>");
  EXPECT_EQ(Decimal(-1e300, 3).size(), 306u);  // long, but a number: 301 digits, sign, point, decimals
}

// A number written straight into a field: right-aligned, or all blanks when
// it does not fit or is not a number.
TEST(Nombres, PlacementDansUnChamp) {
  const struct {
    double valeur;
    int decimales;  // 0: the integer pattern "#"
    std::size_t largeur;
    bool ok;
    const char* attendu;
  } cas[] = {
      {2538123.456, 3, 11, true, "2538123.456"}, {2538123.456, 3, 10, false, "          "},
      {-538123.45, 3, 11, true, "-538123.450"},  {-538123.45, 3, 10, false, "          "},
      {0.25, 1, 5, true, "   .2"},               {999.95, 1, 5, false, "     "},
      {-0.04, 1, 3, true, " .0"},                {0.0, 3, 3, false, "   "},
      {std::nan(""), 3, 4, false, "    "},      {1e300, 3, 11, false, "           "},
      {400, 0, 4, true, " 400"},                 {0, 0, 4, true, "    "},
      {-12, 0, 3, true, "-12"},                  {-123, 0, 3, false, "   "},
      {12345, 0, 4, false, "    "},
  };
  for (const auto& c : cas) {
    char champ[16] = "##############";
    const bool ok = c.decimales == 0 ? PlacerEntierDiese(static_cast<long long>(c.valeur), champ, c.largeur)
                                     : PlacerDecimal(c.valeur, c.decimales, champ, c.largeur);
    EXPECT_EQ(ok, c.ok) << c.valeur;
    EXPECT_EQ(std::string_view(champ, c.largeur), c.attendu) << c.valeur;
    EXPECT_EQ(champ[c.largeur], '#') << "written past the field: " << c.valeur;
  }
}

// Every short decimal converts to exactly the double that the general
// conversion gives.
TEST(Nombres, ConversionRapideIdentiqueALaConversionGenerale) {
  const char* textes[] = {"0.1", "0.3", "8.2", "230.9", "2600000.123", "1200000.001", "999999999.999",
                          "123456789012345", "1234567890.12345", "0.000000000000001", "9007199254740993",
                          "-538000.5", "4503599627370497.5", "0.30000000000000004"};
  for (const char* t : textes) {
    double rapide = 0, general = 0;
    ASSERT_TRUE(ConvertirDecimal(t, rapide));
    const std::string_view v(t);
    const bool negatif = v[0] == '-';
    std::from_chars(t + negatif, t + v.size(), general);
    if (negatif) general = -general;
    EXPECT_EQ(rapide, general) << t;
  }
}

// The short formatting path agrees with the general one on ties, near-ties
// and ordinary values.
TEST(Nombres, FormatRapideIdentiqueAuFormatGeneral) {
  std::vector<double> valeurs = {0.0005, 0.0015, 0.0025, 1.0005, 2.675, 0.125, 0.375, 1e14 + 0.5, -0.0005,
                                 -2.5e-4, 999.95, 0.05, 0.15, 0.25, 0.35, 538000.5, 2538123.4565};
  for (int i = 1; i < 20000; ++i) valeurs.push_back(i * 0.0005 + 1000.0);
  for (int i = 1; i < 2000; ++i) valeurs.push_back(i / 8.0);
  // Around the half-thousandths of coordinates of every size the files hold,
  // and one unit in the last place either side of each.
  for (double base : {2600000.0, 1200000.0, 99999999.0, -538000.0}) {
    for (int i = 1; i < 2000; i += 2) {
      const double v = base + i * 0.0005;
      valeurs.insert(valeurs.end(), {v, std::nextafter(v, -1e300), std::nextafter(v, 1e300)});
    }
  }
  for (double v : valeurs) {
    for (int decimales : {1, 3}) {
      const std::string rapide = Decimal(v, decimales);
      char tampon[64];
      const auto r = std::to_chars(tampon, tampon + sizeof tampon, v, std::chars_format::fixed, decimales);
      std::string general(tampon, r.ptr);
      if (general.rfind("-0.", 0) == 0) general.erase(1, 1);
      if (general.rfind("0.", 0) == 0) general.erase(0, 1);
      if (general.find_first_not_of("-0.") == std::string::npos && general[0] == '-') general.erase(0, 1);
      EXPECT_EQ(rapide, general) << v << " with " << decimales;
      char champ[24];
      ASSERT_TRUE(PlacerDecimal(v, decimales, champ, sizeof champ));
      EXPECT_EQ(Rogner(std::string_view(champ, sizeof champ)), general) << v << " placed with " << decimales;
    }
  }
}

// The exports write whole thousandths in their shortest fixed form, as
// std::to_chars's fixed form does (never "1e+06"), and any other value as
// std::to_chars writes it: on chosen values (signs, zeros, round numbers,
// the edge of the range) and on a sweep of thousandths and of bit patterns.
TEST(Nombres, TexteReelCommeToChars) {
  std::vector<double> valeurs = {0.0, -0.0, 0.001, 0.005, -0.5, 12, 1e5, 1e6, 2.6e6, -1.2e6, 2600000.125,
                                 999999999999.999, 1e12, 1e15, 0.1 + 0.2, 1e-7, 123456789012.0, NAN};
  uint64_t graine = 12345;
  for (int i = 0; i < 200000; ++i) {
    graine = graine * 6364136223846793005u + 1442695040888963407u;
    const auto milliemes = static_cast<int64_t>(graine >> 14) - (int64_t{1} << 49);
    valeurs.push_back(static_cast<double>(milliemes >> (i % 40)) / 1000);
    valeurs.push_back(std::bit_cast<double>(graine));
  }
  for (double v : valeurs) {
    char attendu[400];
    const bool milliemes = std::fabs(v) < 1e12 && !(v == 0 && std::signbit(v)) && std::round(v * 1000) / 1000 == v;
    char* fin = milliemes ? std::to_chars(attendu, attendu + sizeof attendu, v, std::chars_format::fixed).ptr
                          : std::to_chars(attendu, attendu + sizeof attendu, v).ptr;
    EXPECT_EQ(TexteReel(v), std::string(attendu, fin)) << v;
  }
}

}  // namespace
}  // namespace quillon
