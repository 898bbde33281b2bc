#include "app/batch/sources.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "app/batch/platform.h"
#include "io/ansi.h"
#include "io/locale.h"

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

// A source found: its path, and the path to keep under the output folder.
struct Trouve {
  std::string source;
  fs::path relatif;
};

// The files of a folder with a known extension, sorted by their path within
// it; false when the folder could not be read through.
bool Parcourir(const std::string& dossier, bool recursif, std::vector<Trouve>& trouves) {
  const fs::path racine = CheminNatif(dossier);
  std::vector<fs::path> relatifs;
  std::error_code ec;
  auto garder = [&](const fs::directory_entry& e) {
    std::error_code ecFichier;
    if (e.is_regular_file(ecFichier) && SortePourNom(e.path().filename())) {
      relatifs.push_back(e.path().lexically_relative(racine));
    }
  };
  if (recursif) {
    for (fs::recursive_directory_iterator it(racine, ec), fin; !ec && it != fin; it.increment(ec)) garder(*it);
  } else {
    for (fs::directory_iterator it(racine, ec), fin; !ec && it != fin; it.increment(ec)) garder(*it);
  }
  std::sort(relatifs.begin(), relatifs.end());
  for (const fs::path& r : relatifs) trouves.push_back({TexteChemin(racine / r), r});
  return !ec;
}

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

// One path per file, for comparing: absolute, its dots resolved.
std::string Cle(const std::string& chemin) {
  std::error_code ec;
  const fs::path p = fs::weakly_canonical(fs::absolute(CheminNatif(chemin), ec), ec);
  return TexteChemin(p.lexically_normal());
}

Echec Deja(const std::string& chemin) { return {Echec::Raison::DejaDansLeLot, {}, chemin}; }

// Files of the batch that would write where another one reads or writes are
// left out, and so is a source given twice: threads must never share a file.
void EcarterConflits(std::vector<FichierLot>& fichiers, bool verification) {
  std::map<std::string, int> sources;
  for (const FichierLot& f : fichiers) ++sources[Cle(f.source)];
  std::map<std::string, bool> ecrits;
  std::map<std::string, bool> lus;
  for (FichierLot& f : fichiers) {
    if (f.empechement) continue;
    const std::string source = Cle(f.source);
    if (lus[source]) {
      f.empechement = Deja(f.source);
      continue;
    }
    lus[source] = true;
    std::vector<const std::string*> propres = {verification ? nullptr : &f.cible, &f.log};
    for (const std::string& e : f.exports) propres.push_back(&e);
    for (std::size_t k = 0; k < propres.size() && !f.empechement; ++k) {
      if (propres[k] == nullptr) continue;
      const std::string cle = Cle(*propres[k]);
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

ListeLot ListerFichiers(const OptionsLot& options) {
  ListeLot liste;
  for (const std::string& source : options.sources) {
    std::vector<Trouve> trouves;
    std::error_code ec;
    if (fs::is_directory(CheminNatif(source), ec)) {
      if (!Parcourir(source, options.recursif, trouves)) {
        FichierLot illisible;
        illisible.source = source;
        illisible.empechement = Echec{Echec::Raison::DossierIlisible, {}, source};
        liste.fichiers.push_back(illisible);
      }
    } else if (SortePourNom(CheminNatif(source).filename())) {
      trouves.push_back({source, CheminNatif(source).filename()});
    } else {
      liste.erreur = source + " n'est ni un dossier, ni un fichier .ptv, .ptp ou .pts";
      return liste;
    }
    for (const Trouve& t : trouves) {
      FichierLot f;
      f.source = t.source;
      switch (*SortePourNom(CheminNatif(t.source).filename())) {
        case Sorte::Valeur: f.conversion = Conversion::ValEnPrecFiab; break;
        case Sorte::DC: f.conversion = Conversion::DCEnVal; break;
        case Sorte::PrecFiab:
          if (options.ciblePtp == CiblePtp::Aucune) {
            liste.erreur = t.source + " est un fichier .ptp : dites avec --ptp-en s'il devient .ptv ou .ptm";
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
      liste.fichiers.push_back(f);
    }
  }
  if (!options.cible.empty()) {
    if (liste.fichiers.size() != 1) {
      liste.erreur = "--cible ne va qu'avec une seule source, et le lot compte " +
                     std::to_string(liste.fichiers.size()) + " fichiers";
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
  EcarterConflits(liste.fichiers, options.verification);
  return liste;
}

}  // namespace quillon::lot
