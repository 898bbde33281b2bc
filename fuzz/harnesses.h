// The bodies of the fuzz targets in this folder, shared with the test that
// replays the inputs they found (tests/fuzz_regression_test.cc). Plain C++:
// builds with any compiler, without libFuzzer.
//
// Each harness takes one input and returns the empty string when every
// property it checks held, or a description of the first one that did not.
// Crashes, leaks and undefined behaviour are left to the sanitizers.
//
//   LignesPtVal       value lines (.ptv): the reader, the precision writer
//                     and the value writer on each accepted point
//   LignesPtPrecFiab  precision lines (.ptp): the reader, the value writer
//                     and the MD01 writer
//   LignesPtDC        DC lines (.pts): the reader and the value writer
//   Conversion        a whole run on an in-memory file; the first byte
//                     chooses the run, its scale class and theme group, the
//                     second a file that fails, the rest is the source
//   Rapport           a whole run watched for its check report, then the
//                     checks across lines and the HTML of the report and
//                     of an index; the first byte as for Conversion, the
//                     second the tolerance, the rest is the source
//
// The line harnesses read the input line by line into one point record, as
// a run does, so that fields left over from an earlier line play their part.
// The scale class and theme group of line i cycle with i.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "conversion/conversions.h"
#include "io/display.h"
#include "support/file_system_memory.h"
#include "io/journal.h"
#include "conversion/run_settings.h"
#include "formats/ptm_format.h"
#include "formats/ptp_format.h"
#include "formats/pts_format.h"
#include "formats/ptv_format.h"
#include "model/point.h"
#include "report/collect.h"
#include "report/checks.h"
#include "report/html.h"

namespace quillon::fuzz {
namespace detail {

// A log in memory, outside any run, numbering its messages as line 1.
struct JournalIsole {
  SystemeFichiersMemoire fichiers;
  Journal journal;
  int64_t compteur = 2;

  JournalIsole() {
    journal.FichierLog.Nom = "log";
    journal.UtiliserSysteme(fichiers);
    journal.SuivreLignes(&compteur);
  }
};

// Shows nothing; counts what it was asked to show.
class AffichageMuet : public Affichage {
 public:
  int bilans = 0;
  int fatales = 0;
  std::array<std::string, 4> bilan;

  void MontrerBilan(const ComptesBilan& comptes) override {
    ++bilans;
    bilan = TexteBilan(comptes);
  }
  void MontrerErreurFatale(const ErreurFatale&) override { ++fatales; }
};

// Calls f(line, index) for each line of `texte`, cut as the text reader cuts
// them: a line feed ends a line, a carriage return just before it is not
// part of it, and a last line without line end is a line too.
template <typename F>
void ParLigne(std::string_view texte, F&& f) {
  int index = 0;
  while (!texte.empty()) {
    const std::size_t lf = texte.find('\n');
    std::string_view ligne = texte.substr(0, lf);
    if (lf != std::string_view::npos && !ligne.empty() && ligne.back() == '\r') ligne.remove_suffix(1);
    f(ligne, index++);
    if (lf == std::string_view::npos) break;
    texte.remove_prefix(lf + 1);
  }
}

inline std::string_view Vue(const uint8_t* donnees, std::size_t taille) {
  return {reinterpret_cast<const char*>(donnees), taille};
}

// Columns premiere .. premiere + largeur - 1 (1-based), the part that exists.
inline std::string_view Colonnes(std::string_view ligne, std::size_t premiere, std::size_t largeur) {
  return premiere > ligne.size() ? std::string_view() : ligne.substr(premiere - 1, largeur);
}

// The themes that a value or precision line can hold, 10 for a blank one.
inline bool ThemeLisible(int32_t t) {
  switch (t) {
    case 1: case 2: case 3: case 4: case 6: case 7: case 9: case 10:
    case 71: case 72: case 73: case 74: case 76: case 77: case 79:
    case 81: case 82: case 83: case 84: case 86: case 87: case 89:
      return true;
    default:
      return false;
  }
}

// 11-17, 21-27, 31-37, 41-47, 51-57, 58, 59, 62-69, 72-79, 82-89.
inline bool ValeurLisible(int v) {
  if (v < 11 || v > 89) return false;
  const int d = v % 10;
  return v <= 57 ? d >= 1 && d <= 7 : v <= 59 || d >= 2;
}

// Coordinates written with three decimals read back within half a
// millimetre (and the rounding of the double itself).
inline bool AuMillimetre(double lu, double ecrit) {
  return std::fabs(lu - ecrit) <= 0.0005 + 1e-9 * std::fabs(lu);
}

// The scale class (0 to 6, and 7, which no command line gives) and the
// theme group (none, CS, OD, and one the dialogs never give) of line i.
inline int16_t ClasseDeLigne(int i) { return static_cast<int16_t>(i % 8); }
inline int32_t GroupeDeLigne(int i) {
  static constexpr int32_t kGroupes[] = {kGroupeCS, kGroupeOD, 0, 7};
  return kGroupes[(i / 8) % 4];
}

// True when x is written within `largeur` characters with `decimales`
// decimals: inside the open range, away from its ends by more than the
// rounding of the double could blur.
inline bool Tient(double x, double bas, double haut) {
  const double marge = 1e-6 * (1 + std::fabs(x));
  return x > bas + marge && x < haut - marge;
}
inline bool CoordonneeTient(double x) { return Tient(x, -999999.9995, 9999999.9995); }
inline bool AltitudeTient(double x) { return x == 0 || Tient(x, -999.9995, 9999.9995); }
inline bool PrecisionTient(double x) { return Tient(x, -99.95, 999.95); }

// Inside a harness body: returns the description when the property fails.
#define QUILLON_EXIGER(condition, texte) \
  do {                                   \
    if (!(condition)) return texte;      \
  } while (0)

// The fields that value and precision lines share, in their ranges once read.
inline std::string ChampsCommunsLus(const Point& point, const std::string& quoi) {
  QUILLON_EXIGER(ThemeLisible(point.Theme), quoi + ": theme out of its codes");
  QUILLON_EXIGER(point.NoCommune >= 1 && point.NoCommune <= 400, quoi + ": commune out of 1..400");
  QUILLON_EXIGER(point.NoPlan >= 0 && point.NoPlan <= 2999, quoi + ": plan out of 0..2999");
  QUILLON_EXIGER(point.Nature >= 1 && point.Nature <= 6, quoi + ": nature out of 1..6");
  QUILLON_EXIGER(point.FichePFP3 >= 1 && point.FichePFP3 <= 3, quoi + ": PFP3 sheet code");
  return "";
}

// Runs `verifier` on each line of the input until one tells what failed.
template <typename Verifier>
std::string PremierEchec(const uint8_t* donnees, std::size_t taille, Verifier verifier) {
  std::string erreur;
  ParLigne(Vue(donnees, taille), [&](std::string_view ligne, int i) {
    if (erreur.empty()) erreur = verifier(ligne, i);
  });
  return erreur;
}

}  // namespace detail

inline std::string LignesPtVal(const uint8_t* donnees, std::size_t taille) {
  using namespace detail;
  JournalIsole j;
  Point point;
  return PremierEchec(donnees, taille, [&](std::string_view ligne, int i) -> std::string {
    const int64_t lecture = j.journal.NbErreursLecture;
    const bool lu = LireLignePtVal(ligne, point, j.journal);
    QUILLON_EXIGER(lu == (j.journal.NbErreursLecture == lecture),
                   "value line: accepted with reading errors, or rejected without");
    if (!lu) return "";
    if (std::string e = ChampsCommunsLus(point, "value line"); !e.empty()) return e;
    QUILLON_EXIGER(point.Fiabilite == 3, "value line: reliability other than R");
    QUILLON_EXIGER(ValeurLisible(point.Valeur), "value line: value code out of the valid ones");
    QUILLON_EXIGER(point.NoPoint == Colonnes(ligne, 11, 12), "value line: point number not as read");
    QUILLON_EXIGER(point.Commentaire == Colonnes(ligne, 73, 12), "value line: comment not as read");
    QUILLON_EXIGER(point.Type == Colonnes(ligne, 86, 2), "value line: type not as read");

    // Value -> precision; then back, which must give the same value code.
    const int16_t classe = ClasseDeLigne(i);
    const int32_t groupe = GroupeDeLigne(i);
    LigneCible ciblePtp;
    const int64_t ecriture = j.journal.NbErreursEcriture;
    const bool ecrit = EcrireLignePtPrecFiab(ligne, point, classe, groupe, ciblePtp, j.journal);
    const std::string_view ptp = ciblePtp.Texte();
    QUILLON_EXIGER(ecrit == (j.journal.NbErreursEcriture == ecriture),
                   "precision writer: result disagrees with its counted messages");
    if (ecrit) {
      QUILLON_EXIGER(ptp.size() == 73 + point.Commentaire.size() + point.Type.size(),
                     "precision writer: columns shifted");
      // A plan 0 is written blank and an altitude without precision leaves
      // its reliability blank: both are refused when read again.
      if (point.NoPlan != 0 && (point.Altitude == 0 || ptp[65] != ' ')) {
        JournalIsole k;
        Point relu;
        QUILLON_EXIGER(LireLignePtPrecFiab(ptp, relu, k.journal), "precision line written is not readable");
        const bool substitue = point.Theme == kThemeBlanc && (point.Nature == 5 || point.Nature == 6) &&
                               (groupe == kGroupeCS || groupe == kGroupeOD);
        QUILLON_EXIGER(relu.Theme == (substitue ? groupe : point.Theme), "precision line: theme changed");
        QUILLON_EXIGER(relu.NoCommune == point.NoCommune && relu.NoPlan == point.NoPlan &&
                           relu.Nature == point.Nature && relu.FichePFP3 == point.FichePFP3,
                       "precision line: a code changed");
        QUILLON_EXIGER(AuMillimetre(relu.CoordY, point.CoordY) && AuMillimetre(relu.CoordX, point.CoordX),
                       "precision line: coordinates moved");
        LigneCible ciblePtv;
        const bool retour = EcrireLignePtVal(ptp, false, relu, ciblePtv, k.journal);
        const std::string_view ptv = ciblePtv.Texte();
        if (retour && k.journal.NbErreursEcriture == 0 && relu.Theme != kThemeBlanc) {
          Point valeur;
          QUILLON_EXIGER(LireLignePtVal(ptv, valeur, k.journal), "value line written back is not readable");
          QUILLON_EXIGER(valeur.Valeur == point.Valeur, "value -> precision -> value changed the value code");
        } else {
          QUILLON_EXIGER(relu.Theme == kThemeBlanc, "precision -> value failed on a precision the tables gave");
        }
      }
    }

    // The value writer with the point's own code (as for a DC point):
    // written again after reading, the line no longer changes once its
    // comment and type are full and its altitude survives the rounding.
    LigneCible ciblePtv;
    const int64_t ecriture2 = j.journal.NbErreursEcriture;
    if (EcrireLignePtVal(ligne, true, point, ciblePtv, j.journal)) {
      const std::string_view ptv = ciblePtv.Texte();
      QUILLON_EXIGER(j.journal.NbErreursEcriture == ecriture2, "value writer: written with an error");
      QUILLON_EXIGER(ptv.size() == 73 + point.Commentaire.size() + point.Type.size(),
                     "value writer: columns shifted");
      if (point.NoPlan != 0 && ligne.size() >= 87) {
        JournalIsole k;
        Point relu;
        QUILLON_EXIGER(LireLignePtVal(ptv, relu, k.journal), "value line rewritten is not readable");
        LigneCible cibleEncore;
        QUILLON_EXIGER(EcrireLignePtVal(ptv, true, relu, cibleEncore, k.journal), "value line rewritten: not writable");
        const std::string_view encore = cibleEncore.Texte();
        const bool altitudeNulle = point.Altitude != 0 && relu.Altitude == 0;
        QUILLON_EXIGER(altitudeNulle || encore == ptv, "value line: writing is not stable");
      }
    } else {
      QUILLON_EXIGER(j.journal.NbErreursEcriture > ecriture2, "value writer: refused without a counted message");
    }
    return "";
  });
}

inline std::string LignesPtPrecFiab(const uint8_t* donnees, std::size_t taille) {
  using namespace detail;
  JournalIsole j;
  Point point;
  return PremierEchec(donnees, taille, [&](std::string_view ligne, int) -> std::string {
    const int64_t lecture = j.journal.NbErreursLecture;
    const bool lu = LireLignePtPrecFiab(ligne, point, j.journal);
    QUILLON_EXIGER(lu == (j.journal.NbErreursLecture == lecture),
                   "precision line: accepted with reading errors, or rejected without");
    if (!lu) return "";
    if (std::string e = ChampsCommunsLus(point, "precision line"); !e.empty()) return e;
    QUILLON_EXIGER(point.FiabPlan == kOui || point.FiabPlan == kNon, "precision line: FiabPlan code");
    QUILLON_EXIGER(point.FiabAlt == kOui || point.FiabAlt == kNon, "precision line: FiabAlt code");
    QUILLON_EXIGER(point.Altitude != 0 || (point.FiabAlt == kNon && point.PrecAlt == 0),
                   "precision line: altimetric fields without altitude");

    // Precision -> value; a clean conversion reads back, and going to a
    // precision again at one of the scales gives the precision read.
    LigneCible ciblePtv;
    const int64_t ecriture = j.journal.NbErreursEcriture;
    const bool ecrit = EcrireLignePtVal(ligne, false, point, ciblePtv, j.journal);
    const std::string_view ptv = ciblePtv.Texte();
    QUILLON_EXIGER(ecrit || j.journal.NbErreursEcriture > ecriture, "value writer: refused without a counted message");
    if (ecrit) {
      QUILLON_EXIGER(ptv.size() == 73 + point.Commentaire.size() + point.Type.size(), "value writer: columns shifted");
      if (j.journal.NbErreursEcriture == ecriture && point.NoPlan != 0) {
        JournalIsole k;
        Point valeur;
        QUILLON_EXIGER(LireLignePtVal(ptv, valeur, k.journal), "value line written is not readable");
        QUILLON_EXIGER(valeur.Theme == point.Theme && valeur.NoCommune == point.NoCommune &&
                           valeur.NoPlan == point.NoPlan && valeur.Nature == point.Nature,
                       "value line: a code changed");
        // The precision columns of the value converted back, at the scale
        // class that defines its code (any class below 59).
        bool retrouvee = false;
        for (int16_t classe = 0; classe <= 6 && !retrouvee; ++classe) {
          LigneCible ciblePtp;
          JournalIsole m;
          if (!EcrireLignePtPrecFiab(ptv, valeur, classe, 0, ciblePtp, m.journal)) continue;
          const std::string_view ptp = ciblePtp.Texte();
          retrouvee = ptp[25] == (point.FiabPlan == kOui ? 'O' : 'N') &&
                      std::strtod(std::string(ptp.substr(26, 5)).c_str(), nullptr) == point.PrecPlan;
        }
        QUILLON_EXIGER(retrouvee, "precision -> value -> precision lost the precision");
      }
    }

    // Precision -> MD01, for the themes that the MD01 run hands over.
    switch (point.Theme) {
      case 1: case 2: case 3: case 4: case 6: case 7: case 9: {
        LigneCible ciblePtm;
        const int64_t avant = j.journal.NbErreursEcriture;
        const bool md01 = EcrireLignePtMD01(ligne, point, ciblePtm, j.journal);
        const std::string_view ptm = ciblePtm.Texte();
        QUILLON_EXIGER(md01 == (j.journal.NbErreursEcriture == avant),
                       "MD01 writer: result disagrees with its counted messages");
        QUILLON_EXIGER(!md01 || ptm.size() == (point.Altitude == 0 ? 64u : 80u), "MD01 writer: line length");
        const bool themeEcrit = point.Theme == 1 || point.Theme == 2 || point.Theme == 3 || point.Theme == 6;
        QUILLON_EXIGER(md01 || !themeEcrit || !CoordonneeTient(point.CoordY) || !CoordonneeTient(point.CoordX) ||
                           !AltitudeTient(point.Altitude) || !PrecisionTient(point.PrecPlan) ||
                           !PrecisionTient(point.PrecAlt),
                       "MD01 writer: refused a point that fits its columns");
        break;
      }
      default:
        break;
    }
    return "";
  });
}

inline std::string LignesPtDC(const uint8_t* donnees, std::size_t taille) {
  using namespace detail;
  JournalIsole j;
  Point point;
  return PremierEchec(donnees, taille, [&](std::string_view ligne, int i) -> std::string {
    static constexpr int32_t kGroupes[] = {kGroupeCS, kGroupeOD, 0};
    const int32_t groupe = kGroupes[i % 3];
    const int64_t lecture = j.journal.NbErreursLecture;
    const bool lu = LireLignePtDC(ligne, groupe, point, j.journal);
    QUILLON_EXIGER(lu == (j.journal.NbErreursLecture == lecture),
                   "DC line: accepted with reading errors, or rejected without");
    if (!lu) return "";
    QUILLON_EXIGER(point.NoCommune >= 1 && point.NoCommune <= 400, "DC line: commune out of 1..400");
    QUILLON_EXIGER(point.NoPlan >= 0 && point.NoPlan <= 2999, "DC line: plan out of 0..2999");
    QUILLON_EXIGER(point.Nature >= 1 && point.Nature <= 5, "DC line: nature out of 1..5");
    QUILLON_EXIGER(ValeurLisible(point.Valeur), "DC line: value code out of the valid ones");
    QUILLON_EXIGER(point.NoPoint == Colonnes(ligne, 14, 4), "DC line: point number not as read");
    QUILLON_EXIGER(point.Commentaire == Colonnes(ligne, 69, 5), "DC line: comment not as read");
    const int32_t attendu = point.NoCommune == 400 ? 1
                            : detail::Colonnes(ligne, 19, 2).find('6') != std::string_view::npos ? groupe
                            : (point.Valeur % 10 == 1 || point.Valeur % 10 == 2) ? 1
                                                                                  : 6;
    QUILLON_EXIGER(point.Theme == attendu, "DC line: theme not derived as it should");

    // DC -> value: the value file must read back with the same point.
    LigneCible ciblePtv;
    const int64_t ecriture = j.journal.NbErreursEcriture;
    const bool ecrit = EcrireLignePtVal(ligne, true, point, ciblePtv, j.journal);
    const std::string_view ptv = ciblePtv.Texte();
    QUILLON_EXIGER(ecrit == (j.journal.NbErreursEcriture == ecriture),
                   "value writer: result disagrees with its counted messages");
    const bool themeEcrit = point.Theme == 1 || point.Theme == 2 || point.Theme == 3 || point.Theme == 6;
    QUILLON_EXIGER(ecrit || !themeEcrit || !CoordonneeTient(point.CoordY) || !CoordonneeTient(point.CoordX) ||
                       !AltitudeTient(point.Altitude),
                   "value writer: refused a DC point that fits its columns");
    if (!ecrit) return "";
    QUILLON_EXIGER(ptv.size() == 73 + point.Commentaire.size() + point.Type.size(), "value writer: columns shifted");
    if (point.NoPlan != 0) {
      JournalIsole k;
      Point relu;
      QUILLON_EXIGER(LireLignePtVal(ptv, relu, k.journal), "value line written from a DC point is not readable");
      QUILLON_EXIGER(relu.Theme == point.Theme && relu.NoCommune == point.NoCommune &&
                         relu.NoPlan == point.NoPlan && relu.Nature == point.Nature && relu.Valeur == point.Valeur,
                     "value line from a DC point: a code changed");
      QUILLON_EXIGER(AuMillimetre(relu.CoordY, point.CoordY) && AuMillimetre(relu.CoordX, point.CoordX) &&
                         (relu.Altitude == 0 || AuMillimetre(relu.Altitude, point.Altitude)),
                     "value line from a DC point: coordinates moved");
    }
    return "";
  });
}

inline std::string Conversion(const uint8_t* donnees, std::size_t taille) {
  using namespace detail;
  if (taille < 2) return "";
  // First byte: the run (bits 0-1), the scale class 0..7 (bits 2-4), the
  // theme group (bits 5-6). Second byte: which file fails, if any.
  const uint8_t choix = donnees[0];
  const int run = choix & 3;
  const auto classe = static_cast<int16_t>((choix >> 2) & 7);
  static constexpr int32_t kGroupes[] = {0, kGroupeCS, kGroupeOD, 7};
  const int32_t groupe = kGroupes[(choix >> 5) & 3];
  static constexpr const char* kSources[] = {"src.ptv", "src.ptp", "src.pts", "src.ptp"};
  static constexpr const char* kCibles[] = {"cible.ptp", "cible.ptv", "cible.ptv", "cible.ptm"};
  const std::string source = kSources[run];
  const std::string cible = kCibles[run];
  const std::string log = source + ".log";
  const std::string_view contenu = Vue(donnees + 2, taille - 2);

  // A target and a log of an earlier run, which only a completed run replaces.
  SystemeFichiersMemoire fichiers;
  fichiers.fichiers[source] = std::string(contenu);
  fichiers.fichiers[cible] = "cible d'avant\r\n";
  fichiers.fichiers[log] = "journal d'avant\r\n";
  const auto avant = fichiers.fichiers;
  enum Panne { Aucune, EcritureCible, EcritureLog, CreationCible, CreationLog };
  const auto panne = static_cast<Panne>(donnees[1] % 8 < 5 ? donnees[1] % 8 : 0);
  switch (panne) {
    case EcritureCible: fichiers.echecEcriture = cible; break;
    case EcritureLog: fichiers.echecEcriture = log; break;
    case CreationCible: fichiers.echecCreation = cible; break;
    case CreationLog: fichiers.echecCreation = log; break;
    case Aucune: break;
  }

  AffichageMuet affichage;
  ReglagesExecution r;
  InitialiserTables(r);
  r.affichage = &affichage;
  r.systeme = &fichiers;
  r.DefinirSource(source);
  r.FichierCible.Nom = cible;

  bool ok = false;
  switch (run) {
    case 0: ok = ConvertirPtValEnPtPrecFiab(r, classe, groupe); break;
    case 1: ok = ConvertirPtPrecFiabEnPtVal(r); break;
    case 2: ok = ConvertirPtDCEnPtVal(r, groupe); break;
    case 3: ok = ConvertirPtPrecFiabEnPtMD01(r); break;
  }

  // A failing log may still have shown the summary before its last write.
  QUILLON_EXIGER(ok == (affichage.fatales == 0), "run: result disagrees with the fatal messages shown");
  QUILLON_EXIGER(affichage.fatales <= 1 && affichage.bilans <= 1, "run: shown more than once");
  QUILLON_EXIGER(!ok || affichage.bilans == 1, "run: no summary after success");
  QUILLON_EXIGER(panne != EcritureLog || !ok, "run: succeeded with a log that cannot be written");
  QUILLON_EXIGER(panne != EcritureCible || !ok || fichiers.fichiers[cible].empty(),
                 "run: succeeded with target lines that could not be written");
  QUILLON_EXIGER(fichiers.fichiers[source] == contenu, "run: the source changed");
  if (panne == Aucune || panne == CreationCible || panne == CreationLog) {
    QUILLON_EXIGER(ok == (panne == Aucune), "run: failed without a failing file, or went on without its file");
  }
  QUILLON_EXIGER(fichiers.enCours.empty(), "run: a file left half-written");
  QUILLON_EXIGER(ok || fichiers.fichiers == avant, "run: failed, and replaced the target or the log");
  if (!ok) return "";

  // The summary: lines read are the line ends of the source.
  std::size_t finsDeLigne = 0;
  for (char c : contenu) finsDeLigne += c == '\n';
  QUILLON_EXIGER(affichage.bilan[0] == std::to_string(finsDeLigne) + " ligne(s) lues dans le fichier source",
                 "run: lines read is not the number of line ends");
  QUILLON_EXIGER(run == 3 || affichage.bilan[1].rfind("0 ", 0) == 0, "run: lines skipped outside the MD01 run");

  // The log: six header lines, the body, the four summary lines.
  std::string_view texteLog = fichiers.fichiers[log];
  QUILLON_EXIGER(texteLog.size() >= 2 && texteLog.substr(texteLog.size() - 2) == "\r\n", "log: last line not ended");
  std::size_t lignesLog = 0;
  for (std::size_t p = 0; (p = texteLog.find("\r\n", p)) != std::string_view::npos; p += 2) ++lignesLog;
  QUILLON_EXIGER(lignesLog >= 10, "log: header or summary missing");
  std::string fin;
  for (const std::string& l : affichage.bilan) fin += l + "\r\n";
  QUILLON_EXIGER(texteLog.size() >= fin.size() && texteLog.substr(texteLog.size() - fin.size()) == fin,
                 "log: does not end with the summary shown");
  static constexpr std::string_view kTitres[] = {
      "Traduction de fichier de point de Valeur en Prec/Fiab\r\n",
      "Traduction de fichier de point de Prec/Fiab en Valeur\r\n",
      "Traduction de fichier de point de DC en Valeur\r\n",
      "Traduction de fichier de point de Prec/Fiab en MD01\r\n"};
  QUILLON_EXIGER(texteLog.rfind(kTitres[run], 0) == 0, "log: wrong title line");

  // The target: CR LF lines of the run's layout, no more than the source.
  const std::string& texteCible = fichiers.fichiers[cible];
  std::size_t lignesCible = 0;
  for (std::size_t debut = 0, p; (p = texteCible.find("\r\n", debut)) != std::string::npos; debut = p + 2) {
    const std::size_t longueur = p - debut;
    ++lignesCible;
    if (run == 3) {
      QUILLON_EXIGER(longueur == 64 || longueur == 80, "MD01 target: line length");
    } else {
      QUILLON_EXIGER(longueur >= 73 && longueur <= 87, "target: line shorter or longer than its layout");
    }
  }
  QUILLON_EXIGER(texteCible.empty() || texteCible.substr(texteCible.size() - 2) == "\r\n",
                 "target: last line not ended");
  const bool derniereSansFin = !contenu.empty() && contenu.back() != '\n';
  QUILLON_EXIGER(lignesCible <= finsDeLigne + derniereSansFin, "target: more lines than the source");
  return "";
}

namespace detail {

inline std::size_t Occurrences(std::string_view texte, std::string_view motif) {
  std::size_t n = 0;
  for (std::size_t p = 0; (p = texte.find(motif, p)) != std::string_view::npos; p += motif.size()) ++n;
  return n;
}

// The tags that only the report's own template may hold: a text from the
// file that made one would run or load something.
inline std::string BalisesDuModele(std::string_view html, std::string_view modele, const std::string& quoi) {
  for (std::string_view balise : {"<script", "</script", "<img", "<iframe", "<object", "<link", "<meta", "<svg"}) {
    QUILLON_EXIGER(Occurrences(html, balise) == Occurrences(modele, balise),
                   quoi + ": a tag that its template does not hold: " + std::string(balise));
  }
  return "";
}

}  // namespace detail

inline std::string Rapport(const uint8_t* donnees, std::size_t taille) {
  using namespace detail;
  if (taille < 2) return "";
  const uint8_t choix = donnees[0];
  const int run = choix & 3;
  const auto classe = static_cast<int16_t>((choix >> 2) & 7);
  static constexpr int32_t kGroupes[] = {0, kGroupeCS, kGroupeOD, 7};
  const int32_t groupe = kGroupes[(choix >> 5) & 3];
  static constexpr double kTolerances[] = {0, 0.001, 0.01, 0.1, 2.5, 1000};
  const double tolerance = kTolerances[donnees[1] % 6];
  const std::string_view contenu = Vue(donnees + 2, taille - 2);

  SystemeFichiersMemoire fichiers;
  fichiers.fichiers["src"] = std::string(contenu);
  AffichageMuet affichage;
  Collecte collecte;
  ReglagesExecution r;
  InitialiserTables(r);
  r.affichage = &affichage;
  r.systeme = &fichiers;
  r.observateur = &collecte;
  r.DefinirSource("src");
  r.FichierCible.Nom = "cible";
  bool ok = false;
  switch (run) {
    case 0: ok = ConvertirPtValEnPtPrecFiab(r, classe, groupe); break;
    case 1: ok = ConvertirPtPrecFiabEnPtVal(r); break;
    case 2: ok = ConvertirPtDCEnPtVal(r, groupe); break;
    case 3: ok = ConvertirPtPrecFiabEnPtMD01(r); break;
  }
  QUILLON_EXIGER(ok, "watched run: failed without a failing file");
  const auto& lignes = collecte.Lignes();
  // A last line without its end is converted but not counted as read.
  const bool derniereSansFin = !contenu.empty() && contenu.back() != '\n';
  QUILLON_EXIGER(static_cast<int64_t>(lignes.size()) == r.journal.NumeroLigne() + derniereSansFin,
                 "collect: not one record per line");

  const Controles c = Controler(collecte, tolerance);
  const auto rejetees = static_cast<std::size_t>(IssueLigne::Rejetee);
  QUILLON_EXIGER(c.nombres[0] + c.nombres[1] + c.nombres[2] == static_cast<int64_t>(lignes.size()),
                 "checks: the outcomes do not add up to the lines");
  QUILLON_EXIGER(c.nombres[static_cast<std::size_t>(IssueLigne::Ignoree)] == r.journal.NbLignesIgnorees,
                 "checks: skipped lines are not the summary's");
  QUILLON_EXIGER((c.nombres[rejetees] == 0) == (r.journal.NbErreursLecture + r.journal.NbErreursEcriture == 0),
                 "checks: rejected lines without errors, or errors without one");
  for (const Doublon& d : c.doublons) {
    QUILLON_EXIGER(d.nombre >= 2 && d.debut + d.nombre <= c.membresDoublons.size(), "duplicates: members");
    const LigneCollectee& premier = lignes[c.membresDoublons[d.debut]];
    for (uint32_t k = d.debut + 1; k < d.debut + d.nombre; ++k) {
      const LigneCollectee& autre = lignes[c.membresDoublons[k]];
      QUILLON_EXIGER(premier.Identite() && autre.Identite() && premier.theme == autre.theme &&
                         premier.commune == autre.commune && premier.plan == autre.plan &&
                         collecte.NumeroPoint(premier) == collecte.NumeroPoint(autre),
                     "duplicates: members of different identities");
    }
  }
  for (const PointsProches& p : c.proches) {
    QUILLON_EXIGER(p.a < p.b && p.b < lignes.size(), "close points: lines out of order");
    const LigneCollectee &a = lignes[p.a], &b = lignes[p.b];
    QUILLON_EXIGER(a.Coordonnees() && b.Coordonnees(), "close points: a point without coordinates");
    QUILLON_EXIGER(std::hypot(a.y - b.y, a.x - b.x) <= tolerance + 1e-6, "close points: farther than the tolerance");
  }
  for (uint32_t i : c.eloignes) {
    QUILLON_EXIGER(i < lignes.size() && lignes[i].Coordonnees() && lignes[i].Issue() == IssueLigne::Convertie,
                   "far points: not a converted point with coordinates");
  }
  for (uint32_t i : c.sansCoordonnees) {
    QUILLON_EXIGER(i < lignes.size() && !lignes[i].Coordonnees(), "no coordinates: a line that has some");
  }
  if (c.proches.empty()) {
    // Brute force over few points: nothing the grid left out.
    std::vector<uint32_t> avec;
    for (uint32_t i = 0; i < lignes.size() && avec.size() < 200; ++i) {
      if (lignes[i].Coordonnees()) avec.push_back(i);
    }
    for (std::size_t i = 0; i < avec.size(); ++i) {
      for (std::size_t j = i + 1; j < avec.size(); ++j) {
        const LigneCollectee &a = lignes[avec[i]], &b = lignes[avec[j]];
        const bool meme = a.Identite() && b.Identite() && a.theme == b.theme && a.commune == b.commune &&
                          a.plan == b.plan && collecte.NumeroPoint(a) == collecte.NumeroPoint(b);
        QUILLON_EXIGER(meme || std::hypot(a.y - b.y, a.x - b.x) > tolerance + 1e-6,
                       "close points: a close pair left out");
      }
    }
  }

  // The report and an index, with texts of the file where paths and
  // options go: whatever they hold, they make no tag.
  const std::string texte(contenu.substr(0, 200));
  EnteteRapport entete;
  entete.programme = "quillon-lot";
  entete.date = "01.01.2024 12:00:00";
  entete.source = entete.cible = entete.journal = entete.options = texte;
  entete.echec = {texte, quillon::RaisonFatale::Lecture, texte};
  static constexpr quillon::Conversion kRuns[] = {quillon::Conversion::ValEnPrecFiab, quillon::Conversion::PrecFiabEnVal,
                                                  quillon::Conversion::DCEnVal, quillon::Conversion::PrecFiabEnMD01};
  entete.conversion = NomConversion(kRuns[run]);
  entete.bilan = r.journal.Bilan();
  entete.verdict = c.nombres[rejetees] != 0 ? Verdict::Rejets : Verdict::SansRejet;
  const std::string html = RapportHtml(entete, collecte, c);
  EnteteRapport neutre = entete;
  neutre.source = neutre.cible = neutre.journal = neutre.options = "x";
  neutre.echec = {"x", quillon::RaisonFatale::Lecture, "x"};
  const Collecte vide;
  const std::string modele = RapportHtml(neutre, vide, Controler(vide, tolerance));
  if (std::string e = BalisesDuModele(html, modele, "report"); !e.empty()) return e;
  const std::string index = IndexHtml("quillon-lot", texte, {{texte, texte, "rejets", {1, 2, 3, 4}, &c}});
  const std::string indexModele = IndexHtml("quillon-lot", "x", {{"x", "x", "rejets", {1, 2, 3, 4}, &c}});
  return BalisesDuModele(index, indexModele, "index");
}

#undef QUILLON_EXIGER

}  // namespace quillon::fuzz
