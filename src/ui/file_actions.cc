#include "ui/file_actions.h"

#include <cctype>

#include "export/exports.h"
#include "io/locale.h"
#include "io/text_file.h"
#include "report/html.h"
#include "ui/forms.h"
#include "version.h"

namespace quillon {
namespace {

// The name picked without the format's extension (in any case), if it ends
// with it.
std::string SansExtension(std::string nom, std::string_view extension) {
  const std::size_t n = extension.size() + 1;
  if (nom.size() > n && nom[nom.size() - n] == '.') {
    bool meme = true;
    for (std::size_t k = 0; k < extension.size(); ++k) {
      meme = meme && std::tolower(static_cast<unsigned char>(nom[nom.size() - extension.size() + k])) == extension[k];
    }
    if (meme) nom.erase(nom.size() - n);
  }
  return nom;
}

}  // namespace

// The name without its folder.
std::string NomSeul(const std::string& chemin) { return chemin.substr(chemin.find_last_of("/\\") + 1); }

// A report written into the user's temporary folder and opened in the
// browser; a box tells when either cannot be done.
void MontrerRapport(Services& services, SystemeFichiers& systeme, Parent parent, const std::string& chemin,
                    const std::string& html) {
  const char* echec = nullptr;
  if (!EcrireFichier(systeme, chemin, html)) {
    echec = N_("Le rapport %s ne peut pas être écrit");
  } else if (!services.documents.Ouvrir(chemin)) {
    echec = N_("Le rapport %s ne peut pas être ouvert");
  }
  if (echec != nullptr) services.messages.Message(parent, kTitreApplication, Formater(echec, {chemin}));
}

void VoirRapportDuFichier(Services& services, SystemeFichiers& systeme, Parent parent, const FichierRapporte& f,
                          const Collecte& collecte, const Controles& controles) {
  EnteteRapport entete;
  entete.programme = "quillon";
  entete.date = DateHeureJournal();
  entete.source = f.source;
  entete.cible = f.cible;
  entete.journal = f.journal;
  entete.conversion = NomConversion(f.conversion);
  entete.options = TexteOptions(f.conversion, f.options, f.verification);
  entete.bilan = f.bilan;
  entete.verdict = f.rejets ? Verdict::Rejets : Verdict::SansRejet;
  entete.lignesRejetees = controles.nombres[static_cast<std::size_t>(IssueLigne::Rejetee)];
  const std::string chemin = services.documents.DossierTemporaire() + "quillon-" + NomSeul(f.source) + ".html";
  MontrerRapport(services, systeme, parent, chemin, RapportHtml(entete, collecte, controles));
}

void ExporterFichier(Services& services, SystemeFichiers& systeme, Parent parent, const FichierRapporte& f) {
  std::vector<FormatExport> formats;
  std::string filtre;
  for (FormatExport format : {FormatExport::GeoPackage, FormatExport::Csv, FormatExport::GeoJson, FormatExport::Dxf}) {
    if (!FormatDisponible(format)) continue;
    formats.push_back(format);
    const std::string motif = std::string("*.") + MotFormat(format);
    filtre += (filtre.empty() ? "" : "|") + std::string(DescriptionFormat(format)) + " (" + motif + ")|" + motif;
  }
  const std::optional<FichierChoisi> choix =
      services.dialogues.EnregistrerSous(parent, std::string(Traduire(kTitreExporter)), filtre, 1);
  if (!choix || choix->indexFiltre < 1 || choix->indexFiltre > static_cast<int>(formats.size())) return;
  DemandeExport demande;
  demande.source = f.source;
  demande.conversion = f.conversion;
  demande.options = f.options;
  demande.formats = {formats[static_cast<std::size_t>(choix->indexFiltre - 1)]};
  demande.base = SansExtension(choix->nom, MotFormat(demande.formats.front()));
  demande.systeme = &systeme;
  const std::vector<std::string> fichiers = FichiersExport(demande.formats.front(), demande.base);
  for (const std::string& nom : fichiers) {
    if (nom == f.source || nom == f.cible || nom == f.journal) {
      services.messages.Message(
          parent, kTitreApplication,
          Formater("Le fichier %s est la source, la cible ou le journal : rien n'est exporté", {nom}));
      return;
    }
  }
  const BilanExport bilan = quillon::Exporter(demande);
  std::string texte;
  if (bilan.complet) {
    texte = Formater("%1$s point(s) et %2$s ligne(s) rejetée(s) exportés dans %3$s",
                     {std::to_string(bilan.points), std::to_string(bilan.rejets), fichiers.front()});
    texte += "\r\n";
    texte += bilan.epsg != 0 ? Formater("Système de coordonnées : EPSG:%s", {std::to_string(bilan.epsg)})
                             : std::string(Traduire("Système de coordonnées inconnu : l'export n'en nomme aucun"));
  } else {
    texte = CauseTraduite(bilan.erreur);
  }
  services.messages.Message(parent, kTitreApplication, texte);
}

}  // namespace quillon
