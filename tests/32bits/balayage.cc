// quillon_balayage: what the value lookups and the number conversions answer
// over a sweep of their inputs, one line each, on standard output. Two
// builds that compute alike print the same bytes: make test-32bits compares
// the 32-bit build's lines with the 64-bit build's.
//
// - every theme, value code and scale class through the code-to-precision
//   lookup (EcrirePrecFiabPlan);
// - around every tenth from 0 to 232, the precision texts and doubles on and
//   beside it and beside its half (the tables' rounding to tenths), read and
//   looked up in each table with each reliability (EcrireValeur);
// - numbers read (decimals and integers, their halves and long texts) and
//   written (one and three decimals, in their fields, the exports' texts)
//   around halves, units in the last place and random bit patterns.
// Doubles are printed by their bits, so that the printing itself cannot hide
// a difference.
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "export/record.h"
#include "formats/numbers.h"
#include "formats/value_lookups.h"
#include "model/point.h"

namespace quillon {
namespace {

void Ecrire(const std::string& ligne) {
  std::fwrite(ligne.data(), 1, ligne.size(), stdout);
  std::fputc('\n', stdout);
}

// The messages that a lookup logs, kept for its line by their numbers: each
// message is numbered and printed in a line of its own when first met.
class Messages : public EcouteurJournal {
 public:
  void Message(const MessageJournal& m) override {
    Ajouter(!m.erreur ? "N" : m.lecture ? "L" : "E", m.morceaux);
  }
  std::string texte;

 private:
  void Ajouter(std::string_view tete, std::initializer_list<std::string_view> message) {
    static std::map<std::string, int> numeros;
    std::string complet;
    for (std::string_view morceau : message) complet += morceau;
    const auto [it, nouveau] = numeros.emplace(complet, static_cast<int>(numeros.size()));
    if (nouveau) Ecrire("message " + std::to_string(it->second) + " " + complet);
    texte += std::string(tete) + std::to_string(it->second);
  }
};

// A log that writes nothing and hands its messages to `messages`.
struct JournalMuet {
  JournalMuet() {
    journal.SansFichier();
    journal.Ecouter(&messages);
  }
  Messages messages;
  Journal journal;
};

std::string Bits(double v) {
  char texte[24];
  std::snprintf(texte, sizeof texte, "%016llx", static_cast<unsigned long long>(std::bit_cast<uint64_t>(v)));
  return texte;
}

// The double nearest to a decimal text: the sweep's own inputs are read, not
// computed, so that they do not depend on the arithmetic under test.
double Lu(const std::string& texte) {
  double v = 0;
  std::from_chars(texte.data(), texte.data() + texte.size(), v);
  return v;
}

// The text of a whole number `n` of `unite`-ths (unite 10, 100, 1000...).
std::string Fraction(int64_t n, uint64_t unite) {
  const uint64_t a = n < 0 ? 0 - static_cast<uint64_t>(n) : static_cast<uint64_t>(n);
  std::string texte(n < 0 ? "-" : "");
  texte += std::to_string(a / unite);
  texte += '.';
  texte += std::to_string(unite + a % unite).substr(1);  // its leading 1 kept the zeros
  return texte;
}

// splitmix64: the same sequence on every platform.
uint64_t Suivant(uint64_t& etat) {
  uint64_t z = (etat += 0x9E3779B97F4A7C15ull);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

// Code to precision: every theme, value code and scale class.
void BalayerCodes() {
  std::vector<int> valeurs = {-32768, 32767};
  std::vector<int> echelles = {-32768, 32767};
  for (int v = -1; v <= 101; ++v) valeurs.push_back(v);
  for (int e = -1; e <= 8; ++e) echelles.push_back(e);
  for (int theme = -1; theme <= 100; ++theme) {
    for (int valeur : valeurs) {
      for (int echelle : echelles) {
        JournalMuet j;
        TextesPrecFiab t;
        const bool ok = EcrirePrecFiabPlan(t, theme, static_cast<int16_t>(valeur), static_cast<int16_t>(echelle),
                                           j.journal);
        Ecrire("code " + std::to_string(theme) + " " + std::to_string(valeur) + " " + std::to_string(echelle) +
               (ok ? " '" : " !'") + std::string(t.PrecPlan.Vue()) + t.FiabPlan + std::string(t.PrecAlt.Vue()) +
               t.FiabAlt + "'" + j.messages.texte);
      }
    }
  }
}

// Precision to code: the precision in each table (themes 1, 6, 2, and 10,
// which this direction does not support) with each reliability.
void ChercherValeur(const std::string& origine, double precision) {
  std::string ligne = "valeur " + origine + " " + Bits(precision);
  for (int theme : {1, 6, 2, 10}) {
    for (int fiab : {kOui, kNon, 0}) {
      JournalMuet j;
      TexteValeur t;
      const bool ok = EcrireValeur(t, theme, precision, fiab, j.journal);
      ligne += " " + std::to_string(theme) + "/" + std::to_string(fiab) + (ok ? "'" : "!'") + std::string(t.Vue()) +
               "'" + j.messages.texte;
    }
  }
  Ecrire(ligne);
}

void ChercherTexte(const std::string& texte) {
  double precision = 0;
  if (ConvertirDecimal(texte, precision)) ChercherValeur("'" + texte + "'", precision);
}

// Around every tenth: its texts, short and long (the general conversion
// reads those past 15 digits), the doubles beside it, and its half to the
// next tenth, where the tables round a precision to its tenths.
void BalayerPrecisions() {
  for (int dixiemes = 0; dixiemes <= 2320; ++dixiemes) {
    const std::string e = std::to_string(dixiemes / 10);
    const std::string d(1, static_cast<char>('0' + dixiemes % 10));
    for (const std::string& suite : {std::string(), std::string("0000"), std::string("00000000000001"),
                                     std::string("5"), std::string("49999999999999"), std::string("50000000000001")}) {
      ChercherTexte(e + "." + d + suite);
    }
    if (dixiemes > 0) {  // just below the tenth
      ChercherTexte(std::to_string((dixiemes - 1) / 10) + "." + static_cast<char>('0' + (dixiemes - 1) % 10) +
                    "99999999999999");
    }
    for (double v : {Lu(e + "." + d), Lu(e + "." + d + "5")}) {
      double bas = v, haut = v;
      for (int pas = 1; pas <= 2; ++pas) {
        bas = std::nextafter(bas, -1.0);
        haut = std::nextafter(haut, 1e9);
        ChercherValeur("-" + std::to_string(pas), bas);
        ChercherValeur("+" + std::to_string(pas), haut);
      }
      ChercherValeur("=", v);
    }
  }
  const double inf = std::numeric_limits<double>::infinity();
  for (double v : {-1.0, -0.0, -0.1, std::nan(""), inf, -inf, 1e300, 230.9, 230.95, 231.0, 1e-300, 4.9e-324}) {
    ChercherValeur("special", v);
  }
}

// Decimal texts: the grammar's edges, long texts, and random ones of the
// widths the files hold.
void BalayerLectureDecimale() {
  std::vector<std::string> textes = {"12.", ".5", "-3", "+3", "  538000.500", "8.2  ", "-.25", "0", "1e5", "1,5",
                                     "- 5", "", ".", "1.2.3", "9007199254740993", "4503599627370497.5",
                                     "0.30000000000000004", "999999999.999", "123456789012345", "1234567890123456",
                                     "0.000000000000001", "2600000.0005", "99999999999.99999"};
  uint64_t etat = 31;
  for (int i = 0; i < 60000; ++i) {
    const uint64_t h = Suivant(etat);
    const int chiffres = 1 + static_cast<int>(h % 18);
    const int decimales = static_cast<int>((h >> 8) % static_cast<uint64_t>(chiffres + 1));
    std::string t = (h >> 16) % 4 == 0 ? "-" : "";
    uint64_t source = Suivant(etat);
    for (int c = 0; c < chiffres; ++c, source /= 10) {
      if (c == chiffres - decimales) t += '.';
      t += static_cast<char>('0' + source % 10);
    }
    textes.push_back(t);
  }
  for (const std::string& t : textes) {
    double v = 0;
    Ecrire("decimal '" + t + "' " + (ConvertirDecimal(t, v) ? Bits(v) : "non"));
  }
}

// Integer texts: halves and near-halves of small numbers and of the ends of
// the 16-bit range.
void BalayerLectureEntiere() {
  std::vector<int> entiers;
  for (int n = -40; n <= 40; ++n) entiers.push_back(n);
  for (int n : {-32769, -32768, -32767, 32766, 32767, 32768}) entiers.push_back(n);
  for (int n : entiers) {
    for (const char* suite : {"", ".", ".5", ".4999999999", ".5000000001", ".51", ".50", ".0"}) {
      const std::string t = std::to_string(n) + suite;
      int16_t v = 0;
      Ecrire("entier '" + t + "' " + (ConvertirEntier(t, v) ? std::to_string(v) : "non"));
    }
  }
}

// One double written every way the files and exports write it.
void Formater(double v) {
  std::string ligne = "format " + Bits(v);
  for (int decimales : {1, 3}) {
    TamponNombre tampon;
    std::string_view texte;
    ligne += " '" + (FormaterDecimal(v, decimales, tampon, texte) ? std::string(texte) : "<non>") + "'";
  }
  for (auto [decimales, largeur] : {std::pair{1, 5}, {3, 8}, {3, 11}}) {
    char champ[11];
    const bool ok = PlacerDecimal(v, decimales, champ, static_cast<std::size_t>(largeur));
    ligne += " [" + std::string(champ, static_cast<std::size_t>(largeur)) + (ok ? "]" : "]!");
  }
  Ecrire(ligne + " " + TexteReel(v));
}

// Around the halves of tenths and thousandths of numbers of every size the
// files hold, a unit in the last place either side, and random bit patterns.
void BalayerEcriture() {
  for (int64_t base : {0, 8, 230, 1000, 450, 2600000, 1200000, 99999999, -538000}) {
    for (int64_t i = 1; i < 2000; i += 2) {
      const double v = Lu(Fraction(base * 10000 + (base < 0 ? -5 : 5) * i, 10000));
      for (double w : {v, std::nextafter(v, -1e300), std::nextafter(v, 1e300)}) Formater(w);
    }
    for (int64_t i = 1; i < 200; i += 2) Formater(Lu(Fraction(base * 100 + (base < 0 ? -5 : 5) * i, 100)));
  }
  for (int i = 1; i < 4000; ++i) Formater(std::ldexp(i, -3));
  uint64_t etat = 47;
  for (int i = 0; i < 20000; ++i) {
    const uint64_t h = Suivant(etat);
    // Not a NaN: 32-bit x86 returns doubles in an x87 register, which may
    // quieten a signalling NaN on the way whatever the arithmetic.
    if (i % 10 == 0 && !std::isnan(std::bit_cast<double>(h))) Formater(std::bit_cast<double>(h));
    Formater(Lu(Fraction(static_cast<int64_t>(h >> 20) - (int64_t{1} << 43), 1000)));
  }
  for (double v : {std::nan(""), std::numeric_limits<double>::infinity(), -1e300, 999.95, 0.05, -0.04, -0.0}) {
    Formater(v);
  }
}

}  // namespace
}  // namespace quillon

int main() {
  quillon::BalayerCodes();
  quillon::BalayerPrecisions();
  quillon::BalayerLectureDecimale();
  quillon::BalayerLectureEntiere();
  quillon::BalayerEcriture();
  return std::fflush(stdout) == 0 ? 0 : 1;
}
