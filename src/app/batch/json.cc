#include "app/batch/json.h"

#include <nlohmann/json.hpp>

#include "io/encoding.h"
#include "version.h"

namespace quillon::lot {
namespace {

// Strict UTF-8: no overlong form, no surrogate, nothing past U+10FFFF.
bool EstUtf8(std::string_view texte) {
  std::size_t i = 0;
  while (i < texte.size()) {
    const auto c = static_cast<unsigned char>(texte[i]);
    std::size_t suite;
    char32_t point;
    if (c < 0x80) {
      ++i;
      continue;
    } else if (c >= 0xC2 && c <= 0xDF) {
      suite = 1, point = c & 0x1F;
    } else if (c >= 0xE0 && c <= 0xEF) {
      suite = 2, point = c & 0x0F;
    } else if (c >= 0xF0 && c <= 0xF4) {
      suite = 3, point = c & 0x07;
    } else {
      return false;
    }
    if (i + suite >= texte.size()) return false;
    for (std::size_t k = 1; k <= suite; ++k) {
      const auto s = static_cast<unsigned char>(texte[i + k]);
      if ((s & 0xC0) != 0x80) return false;
      point = (point << 6) | (s & 0x3F);
    }
    if ((suite == 2 && (point < 0x800 || (point >= 0xD800 && point <= 0xDFFF))) ||
        (suite == 3 && (point < 0x10000 || point > 0x10FFFF))) {
      return false;
    }
    i += suite + 1;
  }
  return true;
}

}  // namespace

std::string NomEnUtf8(const std::string& nom) { return EstUtf8(nom) ? nom : Cp1252VersUtf8(nom); }

std::string RapportJson(const std::vector<FichierLot>& fichiers, const std::vector<ResultatFichier>& resultats,
                        bool verification, int codeSortie) {
  using json = nlohmann::ordered_json;
  json liste = json::array();
  for (std::size_t i = 0; i < fichiers.size() && i < resultats.size(); ++i) {
    const FichierLot& f = fichiers[i];
    const ResultatFichier& r = resultats[i];
    json objet = {
        {"source", NomEnUtf8(f.source)},
        {"cible", NomEnUtf8(f.cible)},
        {"journal", NomEnUtf8(f.log)},
        {"conversion", NomConversion(f.conversion)},
        {"lues", r.lues},
        {"ignorees", r.ignorees},
        {"erreurs_lecture", r.erreursLecture},
        {"erreurs_ecriture", r.erreursEcriture},
        {"issue", MotIssue(r.issue)},
    };
    if (r.echec) objet["message"] = Cp1252VersUtf8(TexteEchec(*r.echec));
    if (r.exporte) {
      json exports = json::array();
      for (const std::string& e : f.exports) exports.push_back(NomEnUtf8(e));
      objet["exports"] = std::move(exports);
      objet["srs"] = r.epsg != 0 ? json("EPSG:" + std::to_string(r.epsg)) : json(nullptr);
    }
    liste.push_back(std::move(objet));
  }
  const Totaux t = Additionner(resultats);
  json totaux = {
      {"fichiers", t.fichiers},
      {"lues", t.lues},
      {"ignorees", t.ignorees},
      {"erreurs_lecture", t.erreursLecture},
      {"erreurs_ecriture", t.erreursEcriture},
  };
  for (Issue issue : {Issue::Converti, Issue::Rejets, Issue::Echec, Issue::Interrompu, Issue::NonTraite}) {
    totaux[MotIssue(issue)] = t.Nombre(issue);
  }
  const json rapport = {
      {"programme", "quillon-lot"},
      {"version", kTexteVersion},
      {"verification", verification},
      {"fichiers", std::move(liste)},
      {"totaux", std::move(totaux)},
      {"code_sortie", codeSortie},
  };
  // Whatever slipped through as bad UTF-8 becomes U+FFFD rather than an
  // exception.
  return rapport.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

}  // namespace quillon::lot
