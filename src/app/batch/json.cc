#include "app/batch/json.h"

#include <nlohmann/json.hpp>

#include "io/encoding.h"
#include "report/checks_json.h"
#include "version.h"

namespace quillon::lot {

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
    if (r.controles) objet["controles"] = JsonControles(*r.controles);
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
