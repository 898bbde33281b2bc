#include "export/exports.h"

#include <algorithm>
#include <cmath>

#include "formats/field_readers.h"
#include "formats/ptp_format.h"
#include "formats/ptv_format.h"
#include "formats/pts_format.h"
#include "io/encoding.h"
#include "io/journal.h"
#include "io/text_file.h"

namespace quillon {
namespace {

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
// "O", "N", or absent.
void OuiNon(Valeur& v, int32_t code) {
  v.texte.clear();
  if (code == kOui) v.texte.push_back('O');
  if (code == kNon) v.texte.push_back('N');
  v.present = !v.texte.empty();
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
  using C = ColonnePoint;
  const bool altitude = p.Altitude != 0;
  Entier(e[C::Theme], p.Theme);
  Entier(e[C::Commune], p.NoCommune);
  Entier(e[C::Plan], p.NoPlan);
  Texte(e[C::Numero], e.numero);
  Entier(e[C::Nature], p.Nature);
  Reel(e[C::Y], p.CoordY);
  Reel(e[C::X], p.CoordX);
  Reel(e[C::Altitude], p.Altitude, altitude);
  Reel(e[C::PrecPlan], p.PrecPlan, p.FiabPlan != 0);
  OuiNon(e[C::FiabPlan], p.FiabPlan);
  Reel(e[C::PrecAlt], p.PrecAlt, altitude && p.FiabAlt != 0);
  OuiNon(e[C::FiabAlt], altitude ? p.FiabAlt : 0);
  Entier(e[C::Valeur], p.Valeur, p.Valeur != 0);
  OuiNon(e[C::FichePFP3], p.FichePFP3);
  TexteSource(e[C::Commentaire], p.Commentaire);
  TexteSource(e[C::Type], p.Type);
  Entier(e[C::Ligne], ligne);
}

// What could be read of a rejected line: `lus` tells whether its theme,
// commune, plan and point number were, without being rejected.
void RemplirRejet(const Point& p, const std::array<bool, 4>& lus, int64_t ligne, std::string_view source,
                  std::string_view messages, Enregistrement& e) {
  e.couche = Couche::Rejets;
  e.y = p.CoordY;
  e.x = p.CoordX;
  e.altitude = 0;
  e.theme = -1;
  TexteUtf8(p.NoPoint, e.numero);
  using C = ColonneRejet;
  Entier(e[C::Ligne], ligne);
  Entier(e[C::Theme], p.Theme, lus[0]);
  Entier(e[C::Commune], p.NoCommune, lus[1]);
  Entier(e[C::Plan], p.NoPlan, lus[2]);
  Texte(e[C::Numero], lus[3] ? std::string_view(e.numero) : std::string_view());
  Reel(e[C::Y], p.CoordY);
  Reel(e[C::X], p.CoordX);
  Texte(e[C::Messages], Cp1252VersUtf8(messages));
  Texte(e[C::Source], Cp1252VersUtf8(source));
}

// Whether a line's point goes to a layer of the exports, converted or
// rejected, as far as the source's own readers of its Y and X tell: both
// read. The MD01 run skips the lines of other themes that read whole.
bool CoordonneesLues(std::string_view ligne, const DemandeExport& d, Point& p, Journal& muet) {
  if (d.conversion == Conversion::DCEnVal) {
    return LireCoordonneeYPtDC(ligne, p.CoordY, muet) && LireCoordonneeXPtDC(ligne, p.CoordX, muet);
  }
  if (d.conversion == Conversion::PrecFiabEnMD01 && LireTheme(ligne, p.Theme, muet) && !EstThemeMD01(p.Theme) &&
      LireLignePtPrecFiab(ligne, p, muet)) {
    return false;
  }
  return LireCoordonneeY(ligne, p.CoordY, muet) && LireCoordonneeX(ligne, p.CoordX, muet);
}

}  // namespace

int SystemeDeLEmprise(const Emprise& e) {
  if (e.vide) return 0;
  auto dans = [&](double dy, double dx) {
    return e.yMin >= 480000 + dy && e.yMax <= 850000 + dy && e.xMin >= 70000 + dx && e.xMax <= 300000 + dx;
  };
  if (dans(2000000, 1000000)) return 2056;
  if (dans(0, 0)) return 21781;
  return 0;
}

bool PreparerExport(const DemandeExport& d, EnteteExport& entete, BilanExport& bilan) {
  entete.epsg = d.epsg;
  entete.systemeConnu = d.epsg != 0;
  bilan.epsg = d.epsg;
  const bool geopackage =
      std::find(d.formats.begin(), d.formats.end(), FormatExport::GeoPackage) != d.formats.end();
  if (entete.systemeConnu || !geopackage) return true;
  // The GeoPackage's geometries carry the system: a first pass guesses it
  // before the first row, reading the coordinates alone.
  FluxTexte source;
  if (!OuvrirFichierLecture(source, d.source, *d.systeme)) {
    bilan.erreur = {d.source, RaisonFatale::Ouverture};
    return false;
  }
  Journal muet;  // the messages are the run's to write
  muet.SansFichier();
  Point p;
  Emprise emprise;
  std::string_view ligne;
  while (!source.AtEndOfStream() && source.ReadLine(ligne)) {
    if (d.arret != nullptr && d.arret->load(std::memory_order_relaxed)) {
      bilan.interrompu = true;
      return false;
    }
    if (CoordonneesLues(ligne, d, p, muet)) emprise.Ajouter(p.CoordY, p.CoordX);
  }
  if (source.EnErreur()) {
    bilan.erreur = {d.source, RaisonFatale::Lecture};
    return false;
  }
  entete.epsg = bilan.epsg = SystemeDeLEmprise(emprise);
  entete.systemeConnu = true;
  return true;
}

// --- The exports of a run ----------------------------------------------------

// One line handed over: the point as its step left it, and its texts (the
// target line of a converted point; the source line and the messages of a
// rejected one). A block's lines keep their room from one use to the next.
struct Paquet {
  int64_t ligne = 0;
  bool converti = false;
  std::array<bool, 4> lus{};  // theme, commune, plan, point number read
  Point point;
  std::string texte;
  std::string messages;
};

struct ExportsEnCours::Lot {
  static constexpr std::size_t kLignes = 2048;
  std::vector<Paquet> paquets = std::vector<Paquet>(kLignes);
  std::size_t nombre = 0;
};

ExportsEnCours::ExportsEnCours(const DemandeExport& demande, const EnteteExport& entete)
    : demande_(demande), entete_(entete) {
  bilan_.epsg = entete.epsg;
  for (int k = 0; k < 4; ++k) {
    lots_.push_back(std::make_unique<Lot>());
    libres_.push_back(lots_.back().get());
  }
}

ExportsEnCours::~ExportsEnCours() { Arreter(true); }

void ExportsEnCours::Arreter(bool abandon) {
  if (!fil_.joinable()) return;
  {
    const std::lock_guard<std::mutex> garde(verrou_);
    if (courant_ != nullptr && courant_->nombre > 0) pleins_.push_back(courant_), courant_ = nullptr;
    fin_ = true;
    abandon_ = abandon_ || abandon;
  }
  signal_.notify_all();
  fil_.join();
}

void ExportsEnCours::Debut() {
  courant_ = libres_.back();
  libres_.pop_back();
  fil_ = std::thread([this] { Travailler(); });
}

void ExportsEnCours::Ligne(const LigneObservee& l) {
  const bool converti = !l.cible.empty();
  // The themes of every line placed, skipped ones included: the colours'
  // ranks, as in the check report (read by the writers' thread once told
  // that the run is over, under the lock).
  if (l.Coordonnees()) themes_.Ajouter(l.point->Theme);
  // Skipped lines, and rejected ones that cannot be placed, go nowhere.
  if (!converti && (l.messages.empty() || !l.Coordonnees())) return;
  Paquet& p = courant_->paquets[courant_->nombre++];
  p.ligne = l.numero;
  p.converti = converti;
  const auto lu = [&](ChampPoint champ) { return (l.illisibles & Bit(champ)) == 0; };
  p.lus = {lu(ChampPoint::Theme), lu(ChampPoint::Commune), lu(ChampPoint::Plan), lu(ChampPoint::NumeroPoint)};
  p.point = *l.point;
  p.texte = converti ? l.cible : l.texte;
  p.messages.clear();
  // Each message as the log words it after its line number, " | " between.
  if (!converti) AjouterMessages(p.messages, l.messages, " | ", true);
  if (courant_->nombre == Lot::kLignes) Transmettre();
}

// The full block to the writers' thread, and an empty one back, once the
// writers have given one back.
void ExportsEnCours::Transmettre() {
  std::unique_lock<std::mutex> verrou(verrou_);
  pleins_.push_back(courant_);
  signal_.notify_all();
  signal_.wait(verrou, [&] { return !libres_.empty(); });
  courant_ = libres_.back();
  libres_.pop_back();
}

// The writers' thread: it makes the writers, writes each block's records,
// and ends the files once told that the run is over; everything SQLite
// does is done here. After a failure it only gives the blocks back.
void ExportsEnCours::Travailler() {
  Commencer();
  std::unique_lock<std::mutex> verrou(verrou_);
  for (;;) {
    signal_.wait(verrou, [&] { return !pleins_.empty() || fin_; });
    if (pleins_.empty() || abandon_) break;
    Lot* lot = pleins_.front();
    pleins_.erase(pleins_.begin());
    verrou.unlock();
    if (!echec_) EcrireLot(*lot);
    lot->nombre = 0;
    verrou.lock();
    libres_.push_back(lot);
    signal_.notify_all();
  }
  const bool abandon = abandon_;
  verrou.unlock();
  Finir(abandon);
}

void ExportsEnCours::Echouer(const ErreurFatale& erreur) {
  bilan_.erreur = erreur;
  echec_ = true;
}

void ExportsEnCours::Commencer() {
  muet_.SansFichier();  // the target's reading back says nothing
  for (FormatExport format : demande_.formats) {
    std::unique_ptr<EcrivainExport> ecrivain = CreerEcrivain(format, demande_.base, *demande_.systeme);
    if (ecrivain == nullptr) return Echouer({FichiersExport(format, demande_.base).front(), RaisonFatale::Creation});
    ecrivains_.push_back(std::move(ecrivain));
    if (!ecrivains_.back()->Commencer(entete_)) return Echouer(ecrivains_.back()->Erreur());
  }
}

// Each line of a block as its record, to every writer; the extent of
// them all, for a system guessed at the end.
void ExportsEnCours::EcrireLot(const Lot& lot) {
  Enregistrement& e = enregistrement_;
  for (std::size_t k = 0; k < lot.nombre; ++k) {
    const Paquet& p = lot.paquets[k];
    emprise_.Ajouter(p.point.CoordY, p.point.CoordX);
    if (p.converti) {
      PointDeLaCible(demande_.conversion, p.point, p.texte, point_, muet_);
      RemplirPoint(point_, p.ligne, e);
      themesCibles_.Ajouter(e.theme);
      ++bilan_.points;
    } else {
      RemplirRejet(p.point, p.lus, p.ligne, p.texte, p.messages, e);
      ++bilan_.rejets;
    }
    for (auto& ecrivain : ecrivains_) {
      if (!ecrivain->Ecrire(e)) return Echouer(ecrivain->Erreur());
    }
  }
}

// Every file ended, each writer told the system, then every file put in
// place; or all given up.
void ExportsEnCours::Finir(bool abandon) {
  FinExport fin;
  fin.epsg = entete_.systemeConnu ? entete_.epsg : SystemeDeLEmprise(emprise_);
  fin.themes = themes_;
  fin.themes.Ajouter(themesCibles_);
  for (auto& ecrivain : ecrivains_) {
    if (echec_ || abandon) break;
    if (!ecrivain->Terminer(fin)) Echouer(ecrivain->Erreur());
  }
  for (auto& ecrivain : ecrivains_) {
    if (echec_ || abandon) break;
    if (!ecrivain->Placer()) Echouer(ecrivain->Erreur());
  }
  if (echec_ || abandon) {
    for (auto& ecrivain : ecrivains_) ecrivain->Abandonner();
  } else {
    bilan_.complet = true;
    bilan_.epsg = fin.epsg;
  }
  ecrivains_.clear();
}

BilanExport ExportsEnCours::Terminer() {
  if (!fil_.joinable()) Debut();  // a run that never started: no line
  Arreter(false);
  return bilan_;
}

BilanExport Exporter(const DemandeExport& d) {
  BilanExport bilan;
  EnteteExport entete;
  if (!PreparerExport(d, entete, bilan)) return bilan;
  ExportsEnCours exports(d, entete);
  SystemeSansEcriture systeme(*d.systeme);
  AffichageRetenu affichage;
  ReglagesExecution r;
  r.affichage = &affichage;
  r.systeme = &systeme;
  r.arret = d.arret;
  r.observateur = &exports;
  r.DefinirSource(d.source);
  r.FichierCible.Nom = d.base + ".quillon-export";
  if (!Convertir(r, d.conversion, d.options)) {
    if (r.Interrompu) bilan.interrompu = true;
    else bilan.erreur = affichage.Erreur();
    return bilan;
  }
  return exports.Terminer();
}

}  // namespace quillon
