#include "ui/batch_dialog.h"

#include <algorithm>

#include "model/point.h"
#include "version.h"

namespace quillon {
namespace {

constexpr std::string_view kPtp[] = {N_("Points avec valeur (.ptv)"), N_("Points au format MD01 (.ptm)")};
constexpr std::string_view kAction[] = {N_("Contrôler seulement"), N_("Contrôler et convertir")};
constexpr std::string_view kDestination[] = {N_("À côté des sources"), N_("Dans un dossier")};
constexpr std::string_view kSysteme[] = {N_("Deviné de l'étendue"), "EPSG:2056 (MN95)", "EPSG:21781 (MN03)"};
constexpr int kEpsg[] = {0, 2056, 21781};
constexpr std::string_view kCases[] = {"chkGpkg", "chkCsv", "chkGeoJson", "chkDxf"};

constexpr Controle kControles[] = {
    {"btnControler", GenreControle::Bouton, N_("Contrôler"), 6480, 240, 1215, 375},
    {"btnAbandonner", GenreControle::Bouton, N_("Abandonner"), 6480, 720, 1215, 375},
    {"lblEchelle", GenreControle::Etiquette, N_("Echelle du plan:"), 1320, 240, 1212, 252},
    {"lstEchelle", GenreControle::Liste, "", 2640, 240, 1935, 0},
    {"lblTheme", GenreControle::Etiquette, N_("Thème pour Points de situation:"), 120, 600, 2412, 252},
    {"lstTheme", GenreControle::Liste, "", 2640, 600, 1935, 0},
    {"lblPtp", GenreControle::Etiquette, N_("Fichiers .ptp convertis en:"), 120, 960, 2412, 252},
    {"lstPtp", GenreControle::Liste, "", 2640, 960, 3135, 0},
    {"lblAction", GenreControle::Etiquette, N_("Action:"), 120, 1320, 2412, 252},
    {"lstAction", GenreControle::Liste, "", 2640, 1320, 3135, 0},
    {"chkSousDossiers", GenreControle::Case, N_("Parcourir aussi les sous-dossiers"), 2640, 1680, 3615, 252},
    {"lblDestination", GenreControle::Etiquette, N_("Cibles, journaux et exports:"), 120, 2040, 2412, 252},
    {"lstDestination", GenreControle::Liste, "", 2640, 2040, 3135, 0},
    {"lblDossier", GenreControle::Etiquette, "", 2640, 2400, 3615, 252},
    {"btnDossier", GenreControle::Bouton, N_("Choisir…"), 6480, 2340, 1215, 375},
    {"lblExporter", GenreControle::Etiquette, N_("Exporter:"), 120, 2820, 2412, 252},
    {"chkGpkg", GenreControle::Case, "GeoPackage", 2640, 2820, 1335, 252},
    {"chkCsv", GenreControle::Case, "CSV", 4020, 2820, 735, 252},
    {"chkGeoJson", GenreControle::Case, "GeoJSON", 4800, 2820, 1095, 252},
    {"chkDxf", GenreControle::Case, "DXF", 5940, 2820, 735, 252},
    {"lblSysteme", GenreControle::Etiquette, N_("Système de coordonnées:"), 120, 3180, 2412, 252},
    {"lstSysteme", GenreControle::Liste, "", 2640, 3180, 3135, 0},
};

constexpr Formulaire kLot = {"frmControlerLot", N_("Contrôler des fichiers de points"), 7875, 3660, kControles};

// The rank of `texte` among a list's entries as shown, in the chosen
// language; -1 when none.
int Rang(std::span<const std::string_view> entrees, std::string_view texte) {
  const std::span<const std::string_view> montrees = EnLangue(entrees);
  const auto trouve = std::find(montrees.begin(), montrees.end(), texte);
  return trouve == montrees.end() ? -1 : static_cast<int>(trouve - montrees.begin());
}
std::string_view Montree(std::span<const std::string_view> entrees, std::size_t k) { return EnLangue(entrees)[k]; }

int RangCase(std::string_view nom) {
  const auto trouve = std::find(std::begin(kCases), std::end(kCases), nom);
  return trouve == std::end(kCases) ? -1 : static_cast<int>(trouve - std::begin(kCases));
}

}  // namespace

const Formulaire& FormulaireLot() { return EnLangue(kLot); }

std::span<const std::string_view> EntreesListeLot(std::string_view nom) {
  if (nom == "lstPtp") return EnLangue(kPtp);
  if (nom == "lstAction") return EnLangue(kAction);
  if (nom == "lstDestination") return EnLangue(kDestination);
  if (nom == "lstSysteme") return EnLangue(kSysteme);
  return EntreesListe(nom);
}

lot::OptionsLot OptionsDuChoix(const ChoixLot& choix, const std::vector<std::string>& sources) {
  lot::OptionsLot o;
  o.sources = sources;
  o.recursif = choix.recursif;
  o.ciblePtp = choix.ciblePtp;
  o.classeEchelle = choix.classeEchelle;
  o.groupeTheme = choix.groupeTheme;
  o.verification = !choix.convertir;
  if (choix.dansUnDossier) o.dossierSortie = choix.dossier;
  o.controles = true;
  constexpr FormatExport kFormats[] = {FormatExport::GeoPackage, FormatExport::Csv, FormatExport::GeoJson,
                                       FormatExport::Dxf};
  for (std::size_t k = 0; k < choix.exports.size(); ++k) {
    if (choix.exports[k] && FormatDisponible(kFormats[k])) o.exports.push_back(kFormats[k]);
  }
  o.epsg = choix.epsg;
  return o;
}

std::string_view LogiqueDialogueLot::Selection(std::string_view liste) const {
  if (liste == "lstEchelle") return kMotsEchelle[std::size_t(std::clamp<int>(choix_.classeEchelle, 1, 6) - 1)];
  if (liste == "lstTheme") return kMotsTheme[choix_.groupeTheme == kGroupeOD ? 1 : 0];
  if (liste == "lstPtp") return Montree(kPtp, choix_.ciblePtp == lot::CiblePtp::MD01 ? 1 : 0);
  if (liste == "lstAction") return Montree(kAction, choix_.convertir ? 1 : 0);
  if (liste == "lstDestination") return Montree(kDestination, choix_.dansUnDossier ? 1 : 0);
  if (liste == "lstSysteme") {
    for (std::size_t k = 0; k < std::size(kEpsg); ++k) {
      if (kEpsg[k] == choix_.epsg) return Montree(kSysteme, k);
    }
  }
  return {};
}

std::string LogiqueDialogueLot::TexteDossier() const {
  if (!choix_.dansUnDossier) return "";
  return choix_.dossier.empty() ? std::string(Traduire("(aucun dossier choisi)")) : choix_.dossier;
}

bool LogiqueDialogueLot::Coche(std::string_view nom) const {
  if (nom == "chkSousDossiers") return choix_.recursif;
  const int k = RangCase(nom);
  return k >= 0 && choix_.exports[std::size_t(k)];
}

void LogiqueDialogueLot::Liste_Click(std::string_view liste, std::string_view texte) {
  if (liste == "lstEchelle") {
    if (const int16_t c = ClasseEchellePourMot(texte); c != 0) choix_.classeEchelle = c;
  } else if (liste == "lstTheme") {
    if (const int32_t g = GroupeThemePourMot(texte); g != 0) choix_.groupeTheme = g;
  } else if (const int k = Rang(kPtp, texte); liste == "lstPtp" && k >= 0) {
    choix_.ciblePtp = k == 0 ? lot::CiblePtp::Valeur : lot::CiblePtp::MD01;
  } else if (const int a = Rang(kAction, texte); liste == "lstAction" && a >= 0) {
    choix_.convertir = a == 1;
  } else if (const int d = Rang(kDestination, texte); liste == "lstDestination" && d >= 0) {
    choix_.dansUnDossier = d == 1;
  } else if (const int s = Rang(kSysteme, texte); liste == "lstSysteme" && s >= 0) {
    choix_.epsg = kEpsg[s];
  }
}

void LogiqueDialogueLot::Case_Click(std::string_view nom, bool cochee) {
  if (nom == "chkSousDossiers") choix_.recursif = cochee;
  if (const int k = RangCase(nom); k >= 0) choix_.exports[std::size_t(k)] = cochee;
}

void LogiqueDialogueLot::btnDossier_Click(Parent parent) {
  const std::optional<std::string> dossier =
      dialogues_.ChoisirDossier(parent, Traduire("Dossier des cibles, journaux et exports"), choix_.dossier);
  if (!dossier) return;
  choix_.dossier = *dossier;
  choix_.dansUnDossier = true;
}

bool LogiqueDialogueLot::btnControler_Click(Parent parent) {
  if (choix_.dansUnDossier && choix_.dossier.empty()) {
    messages_.Message(parent, kTitreApplication, Traduire("Choisissez le dossier des cibles, journaux et exports."));
    return false;
  }
  return true;
}

}  // namespace quillon
