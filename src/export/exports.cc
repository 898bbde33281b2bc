#include "export/exports.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "io/encoding.h"
#include "io/journal.h"
#include "formats/ptp_format.h"
#include "formats/ptv_format.h"
#include "io/text_file.h"

namespace quillon {
namespace {

constexpr double kInconnu = std::numeric_limits<double>::quiet_NaN();
constexpr int32_t kIdentiteInconnue = std::numeric_limits<int32_t>::min();

// The log of a pass: its lines go to memory, where the pass takes the
// messages of each line, and no log file is written.
class SupportMemoire : public SupportFichier {
 public:
  explicit SupportMemoire(std::string& octets) : octets_(octets) {}
  int64_t Lire(char*, std::size_t) override { return 0; }
  bool Ecrire(const char* source, std::size_t taille) override {
    octets_.append(source, taille);
    return true;
  }
  bool Fermer() override { return true; }
  bool MemeFichier(const SupportFichier& autre) const override { return &autre == this; }

 private:
  std::string& octets_;
};

class SystemeJournalMemoire : public SystemeFichiers {
 public:
  std::unique_ptr<SupportFichier> OuvrirLecture(const std::string&) override { return nullptr; }
  std::unique_ptr<SupportFichier> CreerEcriture(const std::string&, std::span<const SupportFichier* const>) override {
    return std::make_unique<SupportMemoire>(octets);
  }
  std::string octets;
};

// One pass over the source: each line through the conversion's step, then
// handed to `f` with what the step made of it and the log lines it wrote.
// False when the source cannot be opened or read, or the pass was stopped.
template <typename F>
bool Parcourir(const DemandeExport& d, BilanExport& bilan, F&& f) {
  FluxTexte source;
  if (!OuvrirFichierLecture(source, d.source, *d.systeme)) {
    bilan.erreur = {d.source, RaisonFatale::Ouverture};
    return false;
  }
  SystemeJournalMemoire memoire;
  Journal journal;
  journal.Attacher(memoire, source, nullptr);
  const EtapeLigne etape = EtapeDe(d.conversion);
  Point point;
  LigneCible cible;
  std::string_view ligne;
  while (!source.AtEndOfStream() && source.ReadLine(ligne)) {
    if (d.arret != nullptr && d.arret->load(std::memory_order_relaxed)) {
      bilan.interrompu = true;
      return false;
    }
    // What the reader leaves as it was is what it could not read.
    point.CoordY = point.CoordX = kInconnu;
    point.Theme = kIdentiteInconnue;
    point.NoCommune = point.NoPlan = std::numeric_limits<int16_t>::min();
    const bool converti = etape(ligne, point, cible, journal, d.options);
    journal.Vider();
    if (!f(source.Line() - 1, converti, point, cible, ligne, std::string_view(memoire.octets))) return false;
    memoire.octets.clear();
  }
  if (source.EnErreur()) {
    bilan.erreur = {d.source, RaisonFatale::Lecture};
    return false;
  }
  return true;
}

bool CoordonneesLues(const Point& p) { return !std::isnan(p.CoordY) && !std::isnan(p.CoordX); }

// Trimmed of its blanks, in UTF-8, into `sortie` (which keeps its room).
void TexteUtf8(std::string_view texte, std::string& sortie) {
  sortie.clear();
  const std::size_t debut = texte.find_first_not_of(' ');
  if (debut == std::string_view::npos) return;
  AjouterCp1252EnUtf8(sortie, texte.substr(debut, texte.find_last_not_of(' ') - debut + 1));
}

void Entier(Valeur& v, int64_t n, bool present = true) {
  v.present = present;
  v.entier = n;
}
void Reel(Valeur& v, double x, bool present = true) {
  v.present = present;
  v.reel = x;
}
void Texte(Valeur& v, std::string_view texte) {
  v.present = !texte.empty();
  v.texte = texte;
}
// Trimmed, in UTF-8.
void TexteSource(Valeur& v, std::string_view texte) {
  TexteUtf8(texte, v.texte);
  v.present = !v.texte.empty();
}
const char* OuiNon(int32_t code) { return code == kOui ? "O" : code == kNon ? "N" : ""; }

// The messages of the log lines of one line: its reading and writing
// errors and notes, without their line numbers, one after the other.
std::string Messages(std::string_view log) {
  std::string messages;
  while (!log.empty()) {
    const std::size_t fin = log.find("\r\n");
    std::string_view ligne = log.substr(0, fin);
    log = fin == std::string_view::npos ? std::string_view() : log.substr(fin + 2);
    std::string_view prefixe;
    for (std::string_view p : {"LECTURE: ", "ECRITURE: "}) {
      if (ligne.starts_with(p)) prefixe = p;
    }
    if (prefixe.empty()) continue;  // the copy of the source line
    ligne.remove_prefix(prefixe.size());
    if (ligne.starts_with("ligne ")) ligne.remove_prefix(ligne.find(": ") + 2);
    if (!messages.empty()) messages += " | ";
    messages += prefixe;
    messages += ligne;
  }
  return Cp1252VersUtf8(messages);
}

// The point as the target line gives it: the line read back by the
// target's own reader over the point of the source, so that what the writer
// computed (precisions from a value code, or the reverse) is there too.
// The MD01 file has no reader: its point is the source's.
void PointDeLaCible(Conversion conversion, const Point& source, std::string_view cible, Point& point,
                    Journal& muet) {
  point = source;
  if (conversion == Conversion::ValEnPrecFiab) {
    point.FiabPlan = point.FiabAlt = 0;
    LireLignePtPrecFiab(cible, point, muet);
  } else if (conversion != Conversion::PrecFiabEnMD01) {
    point.Valeur = 0;
    LireLignePtVal(cible, point, muet);
  }
}

void RemplirPoint(const Point& p, int64_t ligne, Enregistrement& e) {
  e.couche = Couche::Points;
  e.y = p.CoordY;
  e.x = p.CoordX;
  e.altitude = p.Altitude;
  e.theme = p.Theme;
  TexteUtf8(p.NoPoint, e.numero);
  auto& v = e.valeurs;
  const bool altitude = p.Altitude != 0;
  Entier(v[0], p.Theme);
  Entier(v[1], p.NoCommune);
  Entier(v[2], p.NoPlan);
  Texte(v[3], e.numero);
  Entier(v[4], p.Nature);
  Reel(v[5], p.CoordY);
  Reel(v[6], p.CoordX);
  Reel(v[7], p.Altitude, altitude);
  Reel(v[8], p.PrecPlan, p.FiabPlan != 0);
  Texte(v[9], OuiNon(p.FiabPlan));
  Reel(v[10], p.PrecAlt, altitude && p.FiabAlt != 0);
  Texte(v[11], altitude ? OuiNon(p.FiabAlt) : "");
  Entier(v[12], p.Valeur, p.Valeur != 0);
  Texte(v[13], OuiNon(p.FichePFP3));
  TexteSource(v[14], p.Commentaire);
  TexteSource(v[15], p.Type);
  Entier(v[16], ligne);
}

void RemplirRejet(const Point& p, int64_t ligne, std::string_view source, std::string_view log, Enregistrement& e) {
  e.couche = Couche::Rejets;
  e.y = p.CoordY;
  e.x = p.CoordX;
  e.altitude = 0;
  e.theme = -1;
  TexteUtf8(p.NoPoint, e.numero);
  auto& v = e.valeurs;
  Entier(v[0], ligne);
  Entier(v[1], p.Theme, p.Theme != kIdentiteInconnue);
  Entier(v[2], p.NoCommune, p.NoCommune != std::numeric_limits<int16_t>::min());
  Entier(v[3], p.NoPlan, p.NoPlan != std::numeric_limits<int16_t>::min());
  Texte(v[4], e.numero);
  Reel(v[5], p.CoordY);
  Reel(v[6], p.CoordX);
  Texte(v[7], Messages(log));
  Texte(v[8], Cp1252VersUtf8(source));
}

}  // namespace

int SystemeDeLEmprise(const EnteteExport& e) {
  if (!e.emprise) return 0;
  auto dans = [&](double dy, double dx) {
    return e.yMin >= 480000 + dy && e.yMax <= 850000 + dy && e.xMin >= 70000 + dx && e.xMax <= 300000 + dx;
  };
  if (dans(2000000, 1000000)) return 2056;
  if (dans(0, 0)) return 21781;
  return 0;
}

BilanExport Exporter(const DemandeExport& d) {
  BilanExport bilan;
  const bool dxf = std::find(d.formats.begin(), d.formats.end(), FormatExport::Dxf) != d.formats.end();

  // Two passes, so that memory stays the same whatever the source: the
  // system is guessed from the extent of every converted point, and the
  // drawing declares its layers before its entities, both before the first
  // record is written. The first pass is skipped when the system is given
  // and no drawing is asked for.
  EnteteExport entete;
  entete.epsg = d.epsg;
  if (d.epsg == 0 || dxf) {
    bool themes[100] = {};
    const bool lu = Parcourir(d, bilan, [&](int64_t, bool converti, const Point& p, const LigneCible&,
                                            std::string_view, std::string_view) {
      if (!converti) return true;
      if (!entete.emprise) {
        entete.yMin = entete.yMax = p.CoordY;
        entete.xMin = entete.xMax = p.CoordX;
        entete.emprise = true;
      }
      entete.yMin = std::min(entete.yMin, p.CoordY);
      entete.yMax = std::max(entete.yMax, p.CoordY);
      entete.xMin = std::min(entete.xMin, p.CoordX);
      entete.xMax = std::max(entete.xMax, p.CoordX);
      if (p.Theme >= 0 && p.Theme < 100) themes[p.Theme] = true;
      return true;
    });
    if (!lu) return bilan;
    for (int32_t t = 0; t < 100; ++t) {
      if (themes[t]) entete.themes.push_back(t);
    }
    if (d.epsg == 0) entete.epsg = SystemeDeLEmprise(entete);
  }
  bilan.epsg = entete.epsg;

  std::vector<std::unique_ptr<EcrivainExport>> ecrivains;
  for (FormatExport format : d.formats) {
    ecrivains.push_back(CreerEcrivain(format, d.base, *d.systeme));
    if (ecrivains.back() == nullptr) {
      bilan.erreur = {FichiersExport(format, d.base).front(), RaisonFatale::Creation};
      return bilan;
    }
    if (!ecrivains.back()->Commencer(entete)) {
      bilan.erreur = ecrivains.back()->Erreur();
      return bilan;
    }
  }
  auto ecrire = [&](const Enregistrement& e) {
    for (auto& ecrivain : ecrivains) {
      if (!ecrivain->Ecrire(e)) {
        bilan.erreur = ecrivain->Erreur();
        return false;
      }
    }
    return true;
  };

  SystemeJournalMemoire neant;
  Journal muet;
  muet.UtiliserSysteme(neant);
  Point point;
  Enregistrement e;
  const bool lu = Parcourir(d, bilan, [&](int64_t ligne, bool converti, const Point& p, const LigneCible& cible,
                                          std::string_view source, std::string_view log) {
    if (converti) {
      PointDeLaCible(d.conversion, p, cible.Texte(), point, muet);
      neant.octets.clear();
      RemplirPoint(point, ligne, e);
      ++bilan.points;
      return ecrire(e);
    }
    if (log.empty() || !CoordonneesLues(p)) return true;  // skipped, or nothing to place
    RemplirRejet(p, ligne, source, log, e);
    ++bilan.rejets;
    return ecrire(e);
  });
  if (!lu) return bilan;
  for (auto& ecrivain : ecrivains) {
    if (!ecrivain->Terminer()) {
      bilan.erreur = ecrivain->Erreur();
      return bilan;
    }
  }
  bilan.complet = true;
  return bilan;
}

}  // namespace quillon
