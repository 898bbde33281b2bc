// quillon_generer: large point files for the benchmarks and the fuzzers.
//
//   quillon_generer KIND LINES SEED [--faulty] [--places N] [OUTPUT]
//
// KIND is ptv, ptp or pts. Writes LINES point lines in the fixed columns of
// that kind, each ended by CR LF, in Windows-1252, to OUTPUT or to standard
// output. The same KIND, LINES, SEED and flag always give the same bytes.
//
// Valid files convert without a single log message:
//   .ptv -> .ptp  when the run names a scale and a theme group (value codes
//                 from 62 on depend on the scale, blank themes of nature 5
//                 and 6 take the theme group);
//   .ptp -> .ptv  the precisions and reliabilities are those of the value
//                 tables, so every one finds its value code;
//   .ptp -> .ptm  points of the themes 7x and 8x are skipped (counted as
//                 ignored lines), every other one is written;
//   .pts -> .ptv  always.
//
// With --faulty every line has from two to five fields that the reader
// rejects, and the same length as a valid line (87 bytes for .ptv and .ptp,
// 73 for .pts).
//
// With --places N the points lie on N places only, 5 m apart on a grid a
// hundred places wide: a file whose points sit on few spots, with millions
// of close pairs.
//
// The generator stands alone: it knows the layouts and the value tables by
// itself, so that a file it calls valid is a check on the converter, not a
// copy of it.
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace {

// splitmix64: small, fast, and the same sequence on every platform (the
// standard distributions are not).
class Hasard {
 public:
  explicit Hasard(uint64_t graine) : etat_(graine) {}

  uint64_t Suivant() {
    uint64_t z = (etat_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  // 0 to n - 1.
  uint32_t Moins(uint32_t n) { return static_cast<uint32_t>(((Suivant() >> 32) * n) >> 32); }
  // lo to hi, both included.
  int64_t Entre(int64_t lo, int64_t hi) {
    return lo + static_cast<int64_t>(Suivant() % static_cast<uint64_t>(hi - lo + 1));
  }
  bool Pourcent(uint32_t p) { return Moins(100) < p; }
  template <typename T>
  const T& Parmi(const std::vector<T>& choix) {
    return choix[Moins(static_cast<uint32_t>(choix.size()))];
  }
  std::string_view Un(std::initializer_list<std::string_view> choix) {
    return choix.begin()[Moins(static_cast<uint32_t>(choix.size()))];
  }

 private:
  uint64_t etat_;
};

// One line being built: blanks, then texts put at 1-based columns.
class Ligne {
 public:
  void Vider(std::size_t longueur) {
    longueur_ = longueur;
    std::memset(octets_, ' ', longueur);
  }
  // `texte` from column `premiere` on, left-aligned, cut to `largeur`.
  void AGauche(std::size_t premiere, std::size_t largeur, std::string_view texte) {
    std::memcpy(octets_ + premiere - 1, texte.data(), texte.size() < largeur ? texte.size() : largeur);
  }
  // `texte` right-aligned in the columns premiere .. premiere + largeur - 1.
  void ADroite(std::size_t premiere, std::size_t largeur, std::string_view texte) {
    if (texte.size() > largeur) texte = texte.substr(texte.size() - largeur);
    std::memcpy(octets_ + premiere - 1 + largeur - texte.size(), texte.data(), texte.size());
  }
  std::string_view Texte() const { return {octets_, longueur_}; }

 private:
  char octets_[128];
  std::size_t longueur_ = 0;
};

// Integers and fixed-point numbers as the files write them.
class Nombre {
 public:
  std::string_view Entier(int64_t n) {
    const auto r = std::to_chars(tampon_, tampon_ + sizeof tampon_, n);
    return {tampon_, static_cast<std::size_t>(r.ptr - tampon_)};
  }
  // `unites` in 10^-decimales: the integer part (nothing when it is 0, as
  // the files write it), the point and `decimales` digits.
  std::string_view Fixe(int64_t unites, int decimales) {
    int64_t diviseur = 1;
    for (int i = 0; i < decimales; ++i) diviseur *= 10;
    char* p = tampon_;
    if (unites < 0) {
      *p++ = '-';
      unites = -unites;
    }
    if (unites / diviseur != 0) p = std::to_chars(p, tampon_ + sizeof tampon_, unites / diviseur).ptr;
    *p++ = '.';
    int64_t reste = unites % diviseur;
    for (int64_t d = diviseur / 10; d > 0; d /= 10) {
      *p++ = static_cast<char>('0' + reste / d);
      reste %= d;
    }
    return {tampon_, static_cast<std::size_t>(p - tampon_)};
  }

 private:
  char tampon_[32];
};

// The value tables, as far as a valid file needs them: for each table, the
// value codes it defines, the precision in tenths of each (per scale class
// for the codes from 62 on) and their reliability.
enum class Table { PF, BF, CSOD };

struct Definition {
  int valeur;
  int precPlanDixiemes;  // column 0 (codes below 59) or the chosen scale class
  bool fiabPlan;
  int precAltDixiemes;  // 0 when the code has no altimetric part
};

class Tables {
 public:
  // A code that `table` defines, with its precisions; the scale class
  // (1 to 6) picks the column of the codes from 62 on.
  Definition Choisir(Table table, Hasard& h) const {
    const std::vector<int>& codes = table == Table::PF ? codesPF_ : codesBFCSOD_;
    const int v = h.Parmi(codes);
    const int chiffre = v % 10;
    Definition d{v, 0, Fiable(table, chiffre), 0};
    if (v < 59) {
      if (table == Table::PF) {
        for (const auto& f : kFixesPF) {
          if (f[0] == v) {
            d.precPlanDixiemes = f[1];
            d.precAltDixiemes = f[2];
          }
        }
      } else {
        d.precPlanDixiemes = kEntierBFCSOD[v / 10 - 1][chiffre - 3] * 10 + chiffre;
      }
    } else {
      const int classe = static_cast<int>(h.Moins(6));
      d.precPlanDixiemes = kBaseParEchelle[v / 10 - 6][classe] * 10 + chiffre;
    }
    return d;
  }

  // The valid value codes (the readers' rule), defined or not.
  const std::vector<int>& CodesValides() const { return valides_; }

  Tables() {
    for (const auto& f : kFixesPF) codesPF_.push_back(f[0]);
    for (int dizaine = 6; dizaine <= 8; ++dizaine) {
      for (int chiffre : {2, 6, 7, 8, 9}) codesPF_.push_back(dizaine * 10 + chiffre);
    }
    for (int dizaine = 1; dizaine <= 5; ++dizaine) {
      for (int chiffre = 3; chiffre <= 7; ++chiffre) codesBFCSOD_.push_back(dizaine * 10 + chiffre);
    }
    for (int dizaine = 6; dizaine <= 8; ++dizaine) {
      for (int chiffre = 2; chiffre <= 9; ++chiffre) codesBFCSOD_.push_back(dizaine * 10 + chiffre);
    }
    for (int v = 11; v <= 89; ++v) {
      const int chiffre = v % 10;
      if ((v <= 57 && chiffre >= 1 && chiffre <= 7) || (v >= 58 && chiffre >= 2)) valides_.push_back(v);
    }
  }

 private:
  static bool Fiable(Table table, int chiffre) {
    switch (chiffre) {
      case 1: case 2: case 3: case 4: case 6: return true;
      case 7: return table != Table::CSOD;
      default: return false;  // 5, 8, 9
    }
  }

  // Codes below 59 of the fixed points: code, PrecPlan and PrecAlt in tenths.
  static constexpr int kFixesPF[10][3] = {
      {11, 21, 31}, {12, 32, 41}, {21, 31, 41}, {22, 42, 82},   {31, 41, 41},
      {32, 52, 82}, {41, 51, 61}, {42, 102, 162}, {51, 61, 61}, {52, 122, 162},
  };
  // Codes 13 to 57 of the boundary and situation points: integer part by
  // tens digit and last digit 3 to 7.
  static constexpr int kEntierBFCSOD[5][5] = {
      {3, 3, 3, 13, 13}, {4, 4, 4, 24, 24}, {7, 7, 7, 47, 47}, {16, 16, 16, 116, 116}, {35, 35, 35, 135, 135},
  };
  // Codes 62 to 89: integer part by tens digit and scale class 1 to 6.
  static constexpr int kBaseParEchelle[3][6] = {
      {8, 11, 20, 40, 80, 100}, {9, 14, 30, 60, 120, 150}, {18, 25, 50, 90, 180, 230}};

  std::vector<int> codesPF_, codesBFCSOD_, valides_;
};

// Themes with their share of the points: boundary points and situation
// points first, fixed points fewer, the 7x and 8x themes rare.
struct ThemeTire {
  int theme;
  Table table;
};

ThemeTire TirerTheme(Hasard& h) {
  const uint32_t t = h.Moins(100);
  if (t < 10) return {1, Table::PF};
  if (t < 40) return {2, Table::CSOD};
  if (t < 55) return {3, Table::CSOD};
  if (t < 90) return {6, Table::BF};
  static const std::vector<ThemeTire> rares = {
      {71, Table::PF}, {72, Table::CSOD}, {73, Table::CSOD}, {76, Table::BF},
      {81, Table::PF}, {82, Table::CSOD}, {83, Table::CSOD}, {86, Table::BF}};
  return h.Parmi(rares);
}

// Comments of at most 12 bytes, some with Windows-1252 accents.
const std::vector<std::string_view> kCommentaires = {
    "",          "borne",        "cheville",     "pieu",       "croix grav\xE9" "e", "rep\xE8re",
    "clou",      "angle b\xE2t.", "pierre",       "tube fer",   "PFP3 n\xB0 12",     "mur",
    "b\xE9ton",  "piquet bois",  "ancienne ",    "  d\xE9" "cal\xE9"};
const std::vector<std::string_view> kTypes = {"  ", "  ", "  ", "01", "02", "10", "AB", "Z "};
const std::vector<std::string_view> kCommentairesDC = {"", "borne", "chev.", "pieu", "rep\xE8r", "clou ", "  12"};

// Fields of the value and precision lines, and their wrong versions.
enum Champ { Theme, Commune, Plan, Numero, Nature, FichePFP3, Fiab, ValeurOuPrec, CoordY, CoordX, Altitude,
             kNbChamps };

class Generateur {
 public:
  Generateur(uint64_t graine, bool fautif, uint32_t places) : h_(graine), fautif_(fautif), places_(places) {}

  // A value (.ptv) line, 87 bytes.
  std::string_view LignePtVal() {
    l_.Vider(87);
    const ThemeTire t = TirerTheme(h_);
    int nature = static_cast<int>(h_.Entre(1, 6));
    // Now and then a blank theme: a situation point whose theme the run's
    // theme group gives (only natures 5 and 6 take it).
    const bool blanc = t.table == Table::CSOD && h_.Pourcent(2);
    if (blanc) nature = h_.Pourcent(50) ? 5 : 6;
    if (!blanc) EcrireTheme(t.theme);
    Communs(nature);
    l_.AGauche(26, 1, h_.Pourcent(2) ? "r" : "R");
    const Definition d = tables_.Choisir(t.table, h_);
    l_.ADroite(28, 2, n_.Entier(d.valeur));
    l_.AGauche(30, 2, ". ");
    Coordonnees();
    if (h_.Pourcent(70)) l_.ADroite(57, 8, n_.Fixe(h_.Entre(193000, 4600000), 3));
    Fin();
    if (fautif_) Abimer(false);
    return l_.Texte();
  }

  // A precision (.ptp) line, 87 bytes.
  std::string_view LignePtPrecFiab() {
    l_.Vider(87);
    const ThemeTire t = TirerTheme(h_);
    EcrireTheme(t.theme);
    Communs(static_cast<int>(h_.Entre(1, 6)));
    const Definition d = tables_.Choisir(t.table, h_);
    l_.AGauche(26, 1, d.fiabPlan ? "O" : "N");
    l_.ADroite(27, 5, n_.Fixe(d.precPlanDixiemes, 1));
    Coordonnees();
    if (h_.Pourcent(70)) {
      l_.ADroite(57, 8, n_.Fixe(h_.Entre(193000, 4600000), 3));
      if (d.precAltDixiemes != 0) {
        l_.AGauche(66, 1, "O");
        l_.ADroite(67, 5, n_.Fixe(d.precAltDixiemes, 1));
      } else {
        static const std::vector<int> precisions = {30, 50, 100, 200, 500};
        l_.AGauche(66, 1, h_.Pourcent(50) ? "O" : "N");
        l_.ADroite(67, 5, n_.Fixe(h_.Parmi(precisions), 1));
      }
    }
    Fin();
    if (fautif_) Abimer(true);
    return l_.Texte();
  }

  // A DC (.pts) line, 73 bytes.
  std::string_view LignePtDC() {
    l_.Vider(73);
    l_.ADroite(1, 3, n_.Entier(h_.Entre(1, 400)));
    l_.ADroite(4, 4, n_.Entier(h_.Entre(0, 2999)));
    l_.ADroite(8, 6, n_.Entier(h_.Entre(0, 999999)));  // not read
    l_.ADroite(14, 4, n_.Entier(h_.Entre(1, 9999)));
    l_.ADroite(19, 2, n_.Entier(h_.Entre(1, 6)));
    l_.ADroite(22, 2, n_.Entier(h_.Parmi(tables_.CodesValides())));
    // "Au millimètre": six integer digits, the point, three decimals.
    l_.AGauche(25, 10, n_.Fixe(h_.Entre(480000000, 839999999), 3));
    l_.AGauche(35, 10, n_.Fixe(h_.Entre(100000000, 299999999), 3));
    if (h_.Pourcent(70)) l_.ADroite(45, 8, n_.Fixe(h_.Entre(193000, 4600000), 3));
    l_.ADroite(53, 16, n_.Entier(h_.Entre(0, 99999999)));  // not read
    l_.AGauche(69, 5, h_.Parmi(kCommentairesDC));
    if (fautif_) AbimerDC();
    return l_.Texte();
  }

 private:
  void EcrireTheme(int theme) {
    if (theme < 10 && h_.Pourcent(5)) {
      l_.ADroite(1, 2, n_.Entier(theme));  // " 6" reads as 6 as well
    } else {
      const char texte[2] = {static_cast<char>('0' + theme / 10), static_cast<char>('0' + theme % 10)};
      l_.AGauche(1, 2, {texte, 2});
    }
  }

  // Commune, plan, point number, nature and PFP3 sheet.
  void Communs(int nature) {
    l_.ADroite(3, 4, n_.Entier(h_.Entre(1, 400)));
    l_.ADroite(7, 4, n_.Entier(h_.Entre(1, 2999)));
    l_.ADroite(11, 12, n_.Entier(h_.Pourcent(80) ? h_.Entre(1, 99999) : h_.Entre(100000, 999999999999)));
    l_.ADroite(23, 2, n_.Entier(nature));
    static const std::vector<std::string_view> fiches = {" ", " ", "O", "N"};
    l_.AGauche(25, 1, h_.Parmi(fiches));
  }

  // Y and X: national grid coordinates of either frame, in millimetres.
  void Coordonnees() {
    if (places_ > 0) {
      const int64_t k = h_.Moins(places_);
      l_.ADroite(33, 11, n_.Fixe(2600000000 + k % 100 * 5000, 3));
      l_.ADroite(45, 11, n_.Fixe(1200000000 + k / 100 * 5000, 3));
    } else if (h_.Pourcent(75)) {
      l_.ADroite(33, 11, n_.Fixe(h_.Entre(2480000000, 2839999999), 3));
      l_.ADroite(45, 11, n_.Fixe(h_.Entre(1070000000, 1299999999), 3));
    } else {
      l_.ADroite(33, 11, n_.Fixe(h_.Entre(480000000, 839999999), 3));
      l_.ADroite(45, 11, n_.Fixe(h_.Entre(70000000, 299999999), 3));
    }
  }

  void Fin() {
    l_.AGauche(73, 12, h_.Parmi(kCommentaires));
    l_.AGauche(86, 2, h_.Parmi(kTypes));
  }

  // From two to five distinct fields of a value or precision line made
  // wrong, each in a way that its reader rejects whatever the rest holds.
  void Abimer(bool precision) {
    PourChampsDistincts(kNbChamps, [&](int champ) {
      switch (static_cast<Champ>(champ)) {
        case Theme: l_.AGauche(1, 2, h_.Un({"5 ", "08", "99", "1a", "70"})); break;
        case Commune: l_.AGauche(3, 4, h_.Un({"   0", " 401", "    ", "12a4"})); break;
        case Plan: l_.AGauche(7, 4, h_.Un({"3000", "  -1", "x12 "})); break;
        case Numero: l_.AGauche(11, 12, h_.Un({"      12345A", "            ", "  12 34     "})); break;
        case Nature: l_.AGauche(23, 2, h_.Un({" 0", " 7", "  ", "a "})); break;
        case FichePFP3: l_.AGauche(25, 1, h_.Un({"o", "X", "1"})); break;
        case Fiab: l_.AGauche(26, 1, precision ? "X" : " "); break;
        case ValeurOuPrec:
          if (precision) {
            l_.AGauche(27, 5, h_.Un({"     ", "2,1  ", " abc "}));
          } else {
            l_.AGauche(28, 2, h_.Un({"60", "18", "10", "9x", "  "}));
          }
          break;
        case CoordY: l_.AGauche(33, 11, h_.Un({"2600000,123", "  26000e0.1", "           "})); break;
        case CoordX: l_.AGauche(45, 11, h_.Un({"1200000,123", "1.200.000.1", "     --1.0 "})); break;
        case Altitude: l_.AGauche(57, 8, h_.Un({" 450,123", "  12a.00", "   - 1.0"})); break;
        case kNbChamps: break;
      }
    });
  }

  void AbimerDC() {
    enum { Commune, Plan, Numero, Nature, Valeur, Y, X, Altitude, kNb };
    PourChampsDistincts(kNb, [&](int champ) {
      switch (champ) {
        case Commune: l_.AGauche(1, 3, h_.Un({"  0", "401", "a12", "   "})); break;
        case Plan: l_.AGauche(4, 4, h_.Un({"3000", "  -1", "    "})); break;
        case Numero: l_.AGauche(14, 4, h_.Un({"12ab", "    ", "1 2 "})); break;
        case Nature: l_.AGauche(19, 2, h_.Un({" 7", " 0", "  ", "6a"})); break;
        case Valeur: l_.AGauche(22, 2, h_.Un({"60", "61", "18", "90"})); break;
        // Nine characters after trimming: not "au millimètre".
        case Y: l_.AGauche(25, 10, h_.Un({" 38000.500", "538000.5  ", "53800x.500"})); break;
        case X: l_.AGauche(35, 10, h_.Un({" 52000.250", "152000,250", "          "})); break;
        case Altitude: l_.AGauche(45, 8, h_.Un({" 450,123", "  12a.00"})); break;
      }
    });
  }

  // Calls `abimer` on two to five distinct fields among `nbChamps`.
  template <typename F>
  void PourChampsDistincts(int nbChamps, F abimer) {
    std::vector<bool> choisis(static_cast<std::size_t>(nbChamps));
    const int n = static_cast<int>(h_.Entre(2, 5));
    for (int k = 0; k < n;) {
      const int c = static_cast<int>(h_.Moins(static_cast<uint32_t>(nbChamps)));
      if (choisis[static_cast<std::size_t>(c)]) continue;
      choisis[static_cast<std::size_t>(c)] = true;
      ++k;
      abimer(c);
    }
  }

  Hasard h_;
  bool fautif_;
  uint32_t places_;
  Tables tables_;
  Ligne l_;
  Nombre n_;
};

int Usage() {
  std::fputs("usage: quillon_generer ptv|ptp|pts LINES SEED [--faulty] [--places N] [OUTPUT]\n", stderr);
  return 2;
}

bool LireNombre(const char* texte, uint64_t& n) {
  const char* fin = texte + std::strlen(texte);
  const auto r = std::from_chars(texte, fin, n);
  return r.ec == std::errc() && r.ptr == fin && fin != texte;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string_view> positionnels;
  bool fautif = false;
  uint64_t places = 0;
  for (int i = 1; i < argc; ++i) {
    const std::string_view a = argv[i];
    if (a == "--faulty") {
      fautif = true;
    } else if (a == "--places") {
      if (++i == argc || !LireNombre(argv[i], places) || places == 0 || places > 1'000'000) return Usage();
    } else if (a.size() > 1 && a[0] == '-') {
      return Usage();
    } else {
      positionnels.push_back(a);
    }
  }
  if (positionnels.size() != 3 && positionnels.size() != 4) return Usage();
  const std::string_view sorte = positionnels[0];
  uint64_t lignes = 0, graine = 0;
  if (!LireNombre(std::string(positionnels[1]).c_str(), lignes) ||
      !LireNombre(std::string(positionnels[2]).c_str(), graine)) {
    return Usage();
  }
  if (sorte != "ptv" && sorte != "ptp" && sorte != "pts") return Usage();

  std::FILE* sortie = stdout;
  if (positionnels.size() == 4) {
    sortie = std::fopen(std::string(positionnels[3]).c_str(), "wb");
    if (sortie == nullptr) {
      std::perror(std::string(positionnels[3]).c_str());
      return 1;
    }
  }
  static char tampon[1 << 20];
  std::setvbuf(sortie, tampon, _IOFBF, sizeof tampon);

  Generateur g(graine, fautif, static_cast<uint32_t>(places));
  for (uint64_t i = 0; i < lignes; ++i) {
    const std::string_view ligne = sorte == "ptv" ? g.LignePtVal() : sorte == "ptp" ? g.LignePtPrecFiab() : g.LignePtDC();
    std::fwrite(ligne.data(), 1, ligne.size(), sortie);
    std::fwrite("\r\n", 1, 2, sortie);
    if (std::ferror(sortie)) break;  // a closed pipe, a full disk
  }
  const bool ok = std::fflush(sortie) == 0 && !std::ferror(sortie);
  if (sortie != stdout) std::fclose(sortie);
  if (!ok) {
    std::fputs("quillon_generer: write error\n", stderr);
    return 1;
  }
  return 0;
}
