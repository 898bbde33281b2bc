#include "formats/value_lookups.h"

#include "formats/field_writers.h"
#include "formats/numbers.h"
#include "io/ansi.h"
#include "model/point.h"
#include "model/value_tables.h"

namespace quillon {
namespace {

constexpr auto kThemePrecNonSupporteTexte = Ansi(u8"Problème lors de l'écriture des champs PrecPlan et FiabPlan: thème non supporté");
constexpr MessageChamp kThemePrecNonSupporte{ChampPoint::PrecPlan, kThemePrecNonSupporteTexte};
constexpr auto kRienPFTexte = Ansi(u8"Aucunes PrecPlan, FiabPlan, PrecAlt, FiabAlt définies pour cette valeur");
constexpr MessageChamp kRienPF{ChampPoint::PrecPlan, kRienPFTexte};
constexpr auto kRienPlanTexte = Ansi(u8"Aucunes PrecPlan, FiabPlan définies pour cette valeur");
constexpr MessageChamp kRienPlan{ChampPoint::PrecPlan, kRienPlanTexte};
constexpr auto kThemeValeurNonSupporteTexte = Ansi(u8"Problème lors de l'écriture du champ Valeur: thème non supporté");
constexpr MessageChamp kThemeValeurNonSupporte{ChampPoint::Valeur, kThemeValeurNonSupporteTexte};
constexpr auto kMsgValeurTexte = Ansi(u8"Problème lors de l'écriture du champ Valeur");
constexpr MessageChamp kMsgValeur{ChampPoint::Valeur, kMsgValeurTexte};
constexpr auto kAucuneValeurTexte = Ansi(u8"Aucune Valeur ne correspond à ces PrecPlan FiabPlan");
constexpr MessageChamp kAucuneValeur{ChampPoint::Valeur, kAucuneValeurTexte};
constexpr auto kNotePF = Ansi(
    u8"Comme il s'agit vraisemblablement d'un PFP1 ou PFP2, la ligne a cependant été transférée avec une valeur = 11");
constexpr auto kNote99 = Ansi(u8"La ligne a cependant été transférée avec une valeur = 99");
constexpr auto kIncoherentTexte = Ansi(u8"Le couple PrecPlan-FiabPlan n'est pas cohérent");
constexpr MessageChamp kIncoherent{ChampPoint::FiabPlan, kIncoherentTexte};
constexpr auto kTransferee = Ansi(u8"La ligne a cependant été transférée");


// The row's planimetric cell at the scale column, or null when nothing is
// defined there.
const PrecFiabValeur* Ligne(const TableValeurs& table, int16_t valeur, int16_t echelle, double& precision) {
  const int colonne = valeur < 59 ? 0 : echelle;
  if (valeur < 0 || valeur > 100 || colonne < 0 || colonne > 7) return nullptr;
  const PrecFiabValeur& ligne = table[valeur];
  precision = ligne.PrecPlan[colonne];
  return precision == kNonDefini ? nullptr : &ligne;
}

bool PrecFiabPlan(const TableValeurs& table, TextesPrecFiab& textes, int16_t valeur, int16_t echelle,
                  const MessageChamp& rien, Journal& journal) {
  double precision;
  const PrecFiabValeur* ligne = Ligne(table, valeur, echelle, precision);
  if (ligne == nullptr) return EchecEcriture(journal, rien);
  FormaterPrecision(textes.PrecPlan, precision);
  textes.FiabPlan = ligne->FiabPlan ? 'O' : 'N';
  return true;
}

// The code whose cell holds the precision, in the rows 1 to 100 and columns
// 0 to 6. The not-defined marker cells are not searched: a precision of -1
// takes the table's fallback code like any other miss.
bool Valeur(const TableValeurs& table, TexteValeur& texte, double precPlan, int32_t fiabPlan,
            std::string_view repli, std::string_view note, Journal& journal) {
  const int16_t code = table.CodeDePrecision(precPlan);
  if (code == 0) {
    texte.Placer(repli);
    EchecEcriture(journal, kAucuneValeur);
    journal.NoteEcriture(Numero(ChampPoint::Valeur), note);
    return false;
  }
  PlacerEntierDiese(code, texte.octets, sizeof texte.octets);  // a found code is never 0
  const bool fiable = fiabPlan == kOui;
  if (fiable != table[code].FiabPlan) {
    EchecEcriture(journal, kIncoherent);
    journal.NoteEcriture(Numero(ChampPoint::FiabPlan), kTransferee);
    return false;
  }
  return true;
}

}  // namespace

bool EcrirePrecFiabPF(TextesPrecFiab& textes, int16_t Valeur, int16_t Echelle, Journal& journal) {
  const TableValeurs& table = Tables().PF;
  if (!PrecFiabPlan(table, textes, Valeur, Echelle, kRienPF, journal)) return false;
  const PrecFiabValeur& ligne = table[Valeur];
  if (ligne.PrecAlt == kNonDefini) {
    textes.PrecAlt.Effacer();
    textes.FiabAlt = ' ';
  } else {
    FormaterPrecision(textes.PrecAlt, ligne.PrecAlt);
    textes.FiabAlt = ligne.FiabAlt ? 'O' : 'N';
  }
  return true;
}

bool EcrirePrecFiabBF(TextesPrecFiab& textes, int16_t Valeur, int16_t Echelle, Journal& journal) {
  return PrecFiabPlan(Tables().BF, textes, Valeur, Echelle, kRienPlan, journal);
}

bool EcrirePrecFiabCSOD(TextesPrecFiab& textes, int16_t Valeur, int16_t Echelle, Journal& journal) {
  return PrecFiabPlan(Tables().CSOD, textes, Valeur, Echelle, kRienPlan, journal);
}

bool EcrirePrecFiabPlan(TextesPrecFiab& textes, int32_t Theme, int16_t Valeur, int16_t Echelle, Journal& journal) {
  bool ok;
  switch (Theme) {
    case 1: case 71: case 81:
      return EcrirePrecFiabPF(textes, Valeur, Echelle, journal);
    case 6: case 76: case 86:
      ok = EcrirePrecFiabBF(textes, Valeur, Echelle, journal);
      break;
    case 2: case 3: case 10: case 72: case 73: case 82: case 83:
      ok = EcrirePrecFiabCSOD(textes, Valeur, Echelle, journal);
      break;
    default:
      return EchecEcriture(journal, kThemePrecNonSupporte);
  }
  textes.PrecAlt.Effacer();
  textes.FiabAlt = ' ';
  return ok;
}

bool EcrireValeurPF(TexteValeur& texte, double PrecPlan, int32_t FiabPlan, Journal& journal) {
  return Valeur(Tables().PF, texte, PrecPlan, FiabPlan, "11", kNotePF, journal);
}

bool EcrireValeurBF(TexteValeur& texte, double PrecPlan, int32_t FiabPlan, Journal& journal) {
  return Valeur(Tables().BF, texte, PrecPlan, FiabPlan, "99", kNote99, journal);
}

bool EcrireValeurCSOD(TexteValeur& texte, double PrecPlan, int32_t FiabPlan, Journal& journal) {
  return Valeur(Tables().CSOD, texte, PrecPlan, FiabPlan, "99", kNote99, journal);
}

bool EcrireValeur(TexteValeur& texte, int32_t Theme, double PrecPlan, int32_t FiabPlan, Journal& journal) {
  switch (Theme) {
    case 1: case 71: case 81:
      return EcrireValeurPF(texte, PrecPlan, FiabPlan, journal);
    case 6: case 76: case 86:
      return EcrireValeurBF(texte, PrecPlan, FiabPlan, journal);
    case 2: case 3: case 72: case 73: case 82: case 83:
      return EcrireValeurCSOD(texte, PrecPlan, FiabPlan, journal);
    default:
      return EchecEcriture(journal, kThemeValeurNonSupporte);
  }
}

bool EcrireValeurConnue(TexteValeur& texte, int16_t Valeur, Journal& journal) {
  TamponNombre tampon;
  if (!texte.Placer(FormaterEntierZeros(Valeur, 1, tampon))) return EchecEcriture(journal, kMsgValeur);
  return true;
}

}  // namespace quillon
