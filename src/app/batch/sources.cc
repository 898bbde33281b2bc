#include "app/batch/sources.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include "app/batch/platform.h"
#include "io/ansi.h"
#include "io/locale.h"
#include "io/translation.h"

namespace quillon::lot {
namespace fs = std::filesystem;
namespace {

enum class Sorte { Valeur, PrecFiab, DC };

// The kind of a file name by its extension, in any letter case.
std::optional<Sorte> SortePourNom(const fs::path& nom) {
  std::string ext = TexteChemin(nom.extension());
  for (char& c : ext) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  if (ext == ".ptv") return Sorte::Valeur;
  if (ext == ".ptp") return Sorte::PrecFiab;
  if (ext == ".pts") return Sorte::DC;
  return std::nullopt;
}

// A source found: its path, and the path to keep under the output folder;
// or a folder that could not be read through, in its place by name.
struct Trouve {
  std::string source;
  fs::path relatif;
  bool illisible = false;
};

// One path per file, for comparing: absolute, its links and dots resolved.
// A listing asks for the same paths and folders many times over: each is
// resolved once, and a name that is not a link costs one look once its
// folder is known (resolving a path asks the system about each of its
// parts).
class Cles {
 public:
  const std::string& operator()(const std::string& chemin) {
    auto [it, nouveau] = cles_.try_emplace(chemin);
    if (nouveau) it->second = Resoudre(CheminNatif(chemin));
    return it->second;
  }

 private:
  std::string Resoudre(const fs::path& chemin) {
    std::error_code ec;
    const fs::path nom = chemin.filename();
    const bool simple = !nom.empty() && nom != "." && nom != ".." && chemin.has_parent_path();
    if (simple && !fs::is_symlink(fs::symlink_status(chemin, ec))) {
      auto [it, nouveau] = dossiers_.try_emplace(TexteChemin(chemin.parent_path()));
      if (nouveau) it->second = fs::weakly_canonical(fs::absolute(chemin.parent_path(), ec), ec).lexically_normal();
      return TexteChemin((it->second / nom).lexically_normal());
    }
    return TexteChemin(fs::weakly_canonical(fs::absolute(chemin, ec), ec).lexically_normal());
  }

  std::map<std::string, std::string> cles_;
  std::map<std::string, fs::path> dossiers_;
};

// The files of a folder with a known extension, and of its subfolders when
// recursive. A folder that cannot be read, or only in part, is found as
// such and the scan goes on: whatever it gave stays. A link to a folder is
// not followed, nor a folder that is one being read (a loop), nor one of
// `ecartes`.
class Parcours {
 public:
  Parcours(const fs::path& racine, bool recursif, const std::set<std::string>& ecartes, Cles& cle)
      : racine_(racine), recursif_(recursif), ecartes_(ecartes), Cle(cle) {}

  // Sorted by their path within the folder.
  std::vector<Trouve> Lire() {
    Lire(racine_);
    std::sort(trouves_.begin(), trouves_.end(), [](const Trouve& a, const Trouve& b) { return a.relatif < b.relatif; });
    return std::move(trouves_);
  }

 private:
  void Lire(const fs::path& dossier) {
    ouverts_.push_back(dossier);
    bool complet = true;
    std::error_code ec;
    for (fs::directory_iterator it(dossier, ec), fin; !ec && it != fin; it.increment(ec)) {
      std::error_code ecEntree;
      const fs::file_status statut = it->status(ecEntree);
      if (fs::is_directory(statut)) {
        if (recursif_ && Entrer(*it)) Lire(it->path());
      } else if (fs::is_regular_file(statut) || statut.type() == fs::file_type::not_found) {
        // A link that leads nowhere is listed: its run says it cannot be opened.
        if (SortePourNom(it->path().filename())) Garder(it->path(), false);
      } else if (ecEntree) {
        complet = false;  // neither a folder nor a file, as far as can be told
      }
    }
    if (ec || !complet) Garder(dossier, true);
    ouverts_.pop_back();
  }

  bool Entrer(const fs::directory_entry& e) {
    std::error_code ec;
    if (e.is_symlink(ec) || ecartes_.contains(Cle(TexteChemin(e.path())))) return false;
    return std::none_of(ouverts_.begin(), ouverts_.end(),
                        [&](const fs::path& p) { return fs::equivalent(p, e.path(), ec); });
  }

  void Garder(const fs::path& chemin, bool illisible) {
    trouves_.push_back({TexteChemin(chemin), chemin.lexically_relative(racine_), illisible});
  }

  fs::path racine_;
  bool recursif_;
  const std::set<std::string>& ecartes_;
  Cles& Cle;
  std::vector<fs::path> ouverts_;  // from the folder given down to the one being read
  std::vector<Trouve> trouves_;
};

// The new extension, in capitals when the source's was.
std::string NouvelleExtension(const std::string& source, Conversion conversion) {
  const char* ext = conversion == Conversion::ValEnPrecFiab    ? "ptp"
                    : conversion == Conversion::PrecFiabEnMD01 ? "ptm"
                                                               : "ptv";
  std::string texte = ext;
  const std::string ancienne = source.substr(source.size() - 3);
  if (std::all_of(ancienne.begin(), ancienne.end(), [](char c) { return c >= 'A' && c <= 'Z'; })) {
    for (char& c : texte) c = static_cast<char>(c - 'a' + 'A');
  }
  return texte;
}

Echec Deja(const std::string& chemin) { return {Echec::Raison::DejaDansLeLot, {}, chemin}; }

// A source reached twice (named twice, through a folder and by its name,
// through a link) is one file of the batch, where it was first reached.
void GarderUneFois(std::vector<FichierLot>& fichiers, Cles& Cle) {
  std::set<std::string> vues;
  std::vector<FichierLot> gardes;
  for (FichierLot& f : fichiers) {
    if (vues.insert(Cle(f.source)).second) gardes.push_back(std::move(f));
  }
  fichiers = std::move(gardes);
}

// Files of the batch that would write where another one reads or writes are
// left out: threads must never share a file.
void EcarterConflits(std::vector<FichierLot>& fichiers, bool verification, Cles& Cle) {
  std::set<std::string> sources;
  for (const FichierLot& f : fichiers) sources.insert(Cle(f.source));
  std::map<std::string, bool> ecrits;
  for (FichierLot& f : fichiers) {
    if (f.empechement) continue;
    const std::string& source = Cle(f.source);
    std::vector<const std::string*> propres = {verification ? nullptr : &f.cible, &f.log};
    for (const std::string& e : f.exports) propres.push_back(&e);
    for (std::size_t k = 0; k < propres.size() && !f.empechement; ++k) {
      if (propres[k] == nullptr) continue;
      const std::string& cle = Cle(*propres[k]);
      if (cle == source && k < 2) continue;  // the run itself refuses it
      // An export is never a source, nor the target or log of its own file.
      const bool propre = k >= 2 && (cle == source || cle == Cle(f.cible) || cle == Cle(f.log));
      if (propre || ecrits[cle] || sources.contains(cle)) f.empechement = Deja(*propres[k]);
    }
    if (f.empechement) continue;
    for (const std::string* ecrit : propres) {
      if (ecrit != nullptr) ecrits[Cle(*ecrit)] = true;
    }
  }
}

}  // namespace

std::string TexteEchec(const Echec& echec) {
  switch (echec.raison) {
    case Echec::Raison::Run: return CauseFatale(echec.fatale);
    case Echec::Raison::DossierIlisible:
      return "Le dossier " + CheminAffichable(echec.chemin) + Ansi(u8" ne peut pas être parcouru").str();
    case Echec::Raison::DejaDansLeLot:
      return "Le fichier " + CheminAffichable(echec.chemin) + Ansi(u8" sert déjà à un autre fichier du lot").str();
  }
  return "";
}

namespace {

// The folders a scan does not enter: those the batch writes into, for a
// second run to find what the first one found.
std::set<std::string> DossiersEcartes(const OptionsLot& options, Cles& Cle) {
  std::set<std::string> ecartes;
  if (!options.dossierSortie.empty()) ecartes.insert(Cle(options.dossierSortie));
  if (!options.dossierRapport.empty()) ecartes.insert(Cle(options.dossierRapport));
  return ecartes;
}

}  // namespace

ListeLot ListerFichiers(const OptionsLot& options) {
  ListeLot liste;
  Cles cles;
  const std::set<std::string> ecartes = DossiersEcartes(options, cles);
  for (const std::string& source : options.sources) {
    std::vector<Trouve> trouves;
    std::error_code ec;
    if (fs::is_directory(CheminNatif(source), ec)) {
      trouves = Parcours(CheminNatif(source), options.recursif, ecartes, cles).Lire();
    } else if (SortePourNom(CheminNatif(source).filename())) {
      trouves.push_back({source, CheminNatif(source).filename()});
    } else {
      liste.erreur = Formater("%s n'est ni un dossier, ni un fichier .ptv, .ptp ou .pts", {source});
      return liste;
    }
    for (const Trouve& t : trouves) {
      FichierLot f;
      f.source = t.source;
      if (t.illisible) {
        f.empechement = Echec{Echec::Raison::DossierIlisible, {}, t.source};
        liste.fichiers.push_back(f);
        continue;
      }
      switch (*SortePourNom(CheminNatif(t.source).filename())) {
        case Sorte::Valeur: f.conversion = Conversion::ValEnPrecFiab; break;
        case Sorte::DC: f.conversion = Conversion::DCEnVal; break;
        case Sorte::PrecFiab:
          if (options.ciblePtp == CiblePtp::Aucune) {
            liste.erreur = Formater("%s est un fichier .ptp : dites avec --ptp-en s'il devient .ptv ou .ptm", {t.source});
            return liste;
          }
          f.conversion = options.ciblePtp == CiblePtp::Valeur ? Conversion::PrecFiabEnVal : Conversion::PrecFiabEnMD01;
          break;
      }
      const std::string ext = NouvelleExtension(t.source, f.conversion);
      if (options.dossierSortie.empty()) {
        f.cible = t.source.substr(0, t.source.size() - 3) + ext;
        f.log = t.source + ".log";
      } else {
        const fs::path base = CheminNatif(options.dossierSortie) / t.relatif;
        const std::string texte = TexteChemin(base);
        f.cible = texte.substr(0, texte.size() - 3) + ext;
        f.log = texte + ".log";
      }
      if (!options.dossierRapport.empty()) {
        f.rapport = TexteChemin(CheminNatif(options.dossierRapport) / t.relatif) + ".html";
      }
      liste.fichiers.push_back(f);
    }
  }
  GarderUneFois(liste.fichiers, cles);
  if (!options.cible.empty()) {
    if (liste.fichiers.size() != 1) {
      liste.erreur = Formater("--cible ne va qu'avec une seule source, et le lot compte %s fichiers",
                              {std::to_string(liste.fichiers.size())});
      return liste;
    }
    liste.fichiers[0].cible = options.cible;
  }
  for (FichierLot& f : liste.fichiers) {
    if (f.cible.empty()) continue;
    const std::size_t point = f.cible.find_last_of('.');
    const std::size_t barre = f.cible.find_last_of("/\\");
    const std::string base = point != std::string::npos && (barre == std::string::npos || point > barre)
                                 ? f.cible.substr(0, point)
                                 : f.cible;
    for (FormatExport format : options.exports) {
      for (std::string& e : FichiersExport(format, base)) f.exports.push_back(std::move(e));
    }
  }
  EcarterConflits(liste.fichiers, options.verification, cles);
  return liste;
}

}  // namespace quillon::lot
