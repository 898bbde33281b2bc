#include "ui/workbench.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "app/batch/platform.h"
#include "app/batch/sources.h"
#include "io/encoding.h"
#include "io/locale.h"
#include "io/text_file.h"
#include "compare/comparison.h"
#include "report/html.h"
#include "ui/file_actions.h"
#include "version.h"

namespace quillon {
namespace {

namespace fs = std::filesystem;

// Thousands separated by a blank: "45 000".
std::string Milliers(int64_t n) {
  std::string t = std::to_string(n);
  for (int k = static_cast<int>(t.size()) - 3; k > 0; k -= 3) t.insert(std::size_t(k), " ");
  return t;
}

LigneFichier LigneNonTraitee(const std::string& chemin, std::string raison) {
  LigneFichier l;
  l.source = chemin;
  l.issue = lot::Issue::NonTraite;
  l.raison = std::move(raison);
  return l;
}

// A dropped path's kind: a folder, a point file to run, or a row of its own.
enum class Sorte { Dossier, Points, Autre, Absent };

Sorte SorteDe(const std::string& chemin) {
  std::error_code ec;
  const fs::file_status s = fs::status(lot::CheminNatif(chemin), ec);
  if (fs::is_directory(s)) return Sorte::Dossier;
  if (SortePourChemin(chemin)) return Sorte::Points;  // missing or unreadable: its run fails, and says why
  return fs::exists(s) ? Sorte::Autre : Sorte::Absent;
}

bool SousLeDossier(const std::string& fichier, const std::string& dossier) {
  if (fichier.size() <= dossier.size() || fichier.compare(0, dossier.size(), dossier) != 0) return false;
  const char c = fichier[dossier.size()];
  return c == '/' || c == '\\' || dossier.back() == '/' || dossier.back() == '\\';
}

// The row of a file of the batch, before it runs.
LigneFichier LigneDuLot(const lot::FichierLot& f, const lot::OptionsLot& o) {
  LigneFichier l;
  l.source = f.source;
  l.cible = o.verification ? std::string() : f.cible;
  l.journal = f.log;
  l.conversion = f.conversion;
  const int32_t groupe = f.conversion == Conversion::DCEnVal && o.groupeTheme == 0 ? kGroupeCS : o.groupeTheme;
  l.options = {o.classeEchelle, groupe};
  l.verification = o.verification;
  return l;
}

void Resultat(LigneFichier& l, const lot::ResultatFichier& r) {
  l.issue = r.issue;
  l.comptes = {r.lues, r.ignorees, r.erreursLecture, r.erreursEcriture};
  l.raison = r.echec ? Cp1252VersUtf8(lot::TexteEchec(*r.echec)) : std::string();
  l.controle = r.controles != nullptr;
  if (r.controles) {
    l.doublons = static_cast<int64_t>(r.controles->doublons.size());
    l.proches = static_cast<int64_t>(r.controles->proches.size());
    l.prochesTronques = r.controles->prochesTronques;
    l.eloignes = static_cast<int64_t>(r.controles->eloignes.size());
  }
}

}  // namespace

std::string Avancement::Texte() const {
  return Formater("%1$s / %2$s fichiers — %3$s lignes/s",
                  {Milliers(static_cast<int64_t>(faits)), Milliers(static_cast<int64_t>(total)),
                   Milliers(std::llround(lignesParSeconde))});
}

Atelier::Atelier(ReglagesExecution& reglages, Services& services, VueAtelier& vue)
    : reglages_(reglages), services_(services), vueAtelier_(vue), lot_([this] { vueAtelier_.Reveiller(); }) {}

Atelier::~Atelier() {
  lot_.Annuler();
  lot_.Attendre();
  ++lecture_;
  if (lecteur_.joinable()) lecteur_.join();
}

// --- Bringing files in ----------------------------------------------------------

void Atelier::Deposer(const std::vector<std::string>& chemins) {
  if (lot_.EnCours()) {
    services_.messages.Message(vueAtelier_.Fenetre(), kTitreApplication,
                               Traduire("Un contrôle est en cours : attendez sa fin ou arrêtez-le avant d'en lancer un autre."));
    return;
  }
  std::vector<std::string> sources;
  for (const std::string& chemin : chemins) {
    switch (SorteDe(chemin)) {
      case Sorte::Dossier:
      case Sorte::Points: sources.push_back(chemin); break;
      case Sorte::Autre:
        table_.Ajouter(LigneNonTraitee(chemin, Traduire("n'est pas un fichier de points (.ptv, .ptp ou .pts)")));
        break;
      case Sorte::Absent: table_.Ajouter(LigneNonTraitee(chemin, Traduire("introuvable"))); break;
    }
  }
  vueAtelier_.Rafraichir(kPartieTable);
  if (sources.empty()) return;
  LogiqueDialogueLot dialogue(choix_, services_.dialogues, services_.messages);
  if (!vueAtelier_.MontrerDialogueLot(dialogue)) return;
  Lancer(sources);
}

void Atelier::Lancer(const std::vector<std::string>& sources) {
  const lot::OptionsLot options = OptionsDuChoix(choix_, sources);
  lot::ListeLot liste = lot::ListerFichiers(options);
  if (!liste.erreur.empty()) {
    services_.messages.Message(vueAtelier_.Fenetre(), kTitreApplication, liste.erreur);
    return;
  }
  for (const std::string& source : sources) {
    if (SorteDe(source) != Sorte::Dossier) continue;
    const bool vide = std::none_of(liste.fichiers.begin(), liste.fichiers.end(),
                                   [&](const lot::FichierLot& f) { return SousLeDossier(f.source, source); });
    if (vide) table_.Ajouter(LigneNonTraitee(source, Traduire("aucun fichier de points (.ptv, .ptp ou .pts)")));
  }
  fichiersLot_ = std::move(liste.fichiers);
  lignesLot_.clear();
  for (const lot::FichierLot& f : fichiersLot_) lignesLot_.push_back(table_.Ajouter(LigneDuLot(f, options)));
  avancement_ = {true, 0, fichiersLot_.size(), 0};
  vueAtelier_.Rafraichir(kPartieTable | kPartieAvancement | kPartieActions);
  const unsigned fils = std::clamp(std::thread::hardware_concurrency(), 1u, lot::kFilsMax);
  lot_.Demarrer(fichiersLot_, options, fils);
}

void Atelier::mnuControlerFichiers_Click() {
  const std::vector<std::string> fichiers = services_.dialogues.OuvrirPlusieurs(
      vueAtelier_.Fenetre(), Traduire("Contrôler des fichiers de points"), std::string(Traduire(kFiltreComparer)));
  if (!fichiers.empty()) Deposer(fichiers);
}

void Atelier::mnuControlerDossier_Click() {
  const std::optional<std::string> dossier =
      services_.dialogues.ChoisirDossier(vueAtelier_.Fenetre(), Traduire("Contrôler un dossier de points"), "");
  if (dossier) Deposer({*dossier});
}

void Atelier::AjouterExecution(LigneFichier ligne) {
  const std::size_t index = table_.Ajouter(std::move(ligne));
  Choisir(index);
  vueAtelier_.Rafraichir(kPartieTable | kPartieActions);
}

// --- Watching the run -------------------------------------------------------------

void Atelier::TraiterEvenements() {
  unsigned parties = 0;
  for (LotFenetre::Evenement& e : lot_.Prendre()) {
    if (e.sorte == LotFenetre::Evenement::Sorte::Fichier && e.index < lignesLot_.size()) {
      LigneFichier l = table_.ParIndex(lignesLot_[e.index]);
      Resultat(l, e.resultat);
      table_.Ajouter(std::move(l));
      ++avancement_.faits;
      parties |= kPartieTable | kPartieAvancement;
    } else if (e.sorte == LotFenetre::Evenement::Sorte::Avancement) {
      avancement_.lignesParSeconde = static_cast<double>(e.lignes) / std::max(lot_.Secondes(), 1e-3);
      parties |= kPartieAvancement;
    } else if (e.sorte == LotFenetre::Evenement::Sorte::Fin) {
      Fin();
      parties |= kPartieTable | kPartieAvancement | kPartieActions;
    }
  }
  std::vector<std::function<void()>> taches;
  {
    std::lock_guard<std::mutex> garde(verrou_);
    taches.swap(taches_);
  }
  for (auto& tache : taches) tache();
  if (parties != 0) vueAtelier_.Rafraichir(parties);
}

// The first file with problems is shown.
void Atelier::Fin() {
  lot_.Attendre();
  avancement_.enCours = false;
  for (std::size_t rang = 0; rang < table_.Taille(); ++rang) {
    const std::size_t index = table_.Index(rang);
    const bool duLot = std::find(lignesLot_.begin(), lignesLot_.end(), index) != lignesLot_.end();
    const LigneFichier& l = table_.Ligne(rang);
    if (duLot && l.Probleme() && l.issue != lot::Issue::NonTraite && l.issue != lot::Issue::Echec) {
      Choisir(index);
      return;
    }
  }
}

void Atelier::btnAnnuler_Click() { lot_.Annuler(); }

bool Atelier::PeutFermer() {
  if (lot_.EnCours()) {
    if (!services_.messages.Question(vueAtelier_.Fenetre(), kTitreApplication,
                                     Traduire("Un contrôle est en cours. L'arrêter et quitter ?"))) {
      return false;
    }
    lot_.Annuler();
  }
  lot_.Attendre();
  TraiterEvenements();
  return true;
}

// --- The table ------------------------------------------------------------------

std::optional<std::size_t> Atelier::RangChoisi() const {
  if (!choisi_) return std::nullopt;
  return table_.Rang(*choisi_);
}

void Atelier::Table_Clic(std::size_t rang) {
  if (rang >= table_.Taille()) return;
  Choisir(table_.Index(rang));
  vueAtelier_.Rafraichir(kPartieTable | kPartieActions);
}

void Atelier::Table_Entete(int colonne) {
  if (colonne < 0 || colonne >= TableFichiers::kColonnes) return;
  table_.Trier(static_cast<TableFichiers::Colonne>(colonne + 1));
  vueAtelier_.Rafraichir(kPartieTable);
}

// --- The file shown ------------------------------------------------------------------

void Atelier::Choisir(std::size_t index) {
  if (choisi_ == index && (lu_ || !messageFichier_.empty())) return;
  choisi_ = index;
  Lire(index);
}

// Read on a thread of its own, the window alive meanwhile; a reading that
// another has replaced stops and is forgotten.
void Atelier::Lire(std::size_t index) {
  const uint64_t numero = ++lecture_;
  if (lecteur_.joinable()) lecteur_.join();
  lu_ = false;
  ligneChoisie_.reset();
  const LigneFichier ligne = table_.ParIndex(index);
  if (ligne.issue == lot::Issue::NonTraite && !ligne.raison.empty()) {
    messageFichier_ = ligne.source + " : " + ligne.raison;
    vueAtelier_.Rafraichir(kPartieFichier | kPartieActions);
    return;
  }
  messageFichier_ = Formater("Lecture de %s…", {ligne.source});
  vueAtelier_.Rafraichir(kPartieFichier | kPartieActions);
  lecteur_ = std::thread([this, numero, ligne] {
    const std::atomic<bool> arret{false};
    auto montre = std::make_shared<FichierMontre>();
    std::string erreur;
    const bool ok = montre->Lire(ligne, *reglages_.systeme, erreur, &arret);
    Poster([this, numero, montre, ok, erreur] {
      if (numero != lecture_) return;
      lu_ = ok;
      messageFichier_ = ok ? std::string() : erreur;
      montre_ = std::make_unique<FichierMontre>(std::move(*montre));
      if (ok && montre_->Plan().Etendue()) vue_.Ajuster(*montre_->Plan().Etendue());
      vueAtelier_.Rafraichir(kPartieFichier | kPartieActions);
    });
  });
}

void Atelier::Poster(std::function<void()> tache) {
  {
    std::lock_guard<std::mutex> garde(verrou_);
    taches_.push_back(std::move(tache));
  }
  vueAtelier_.Reveiller();
}

Dessin Atelier::Dessiner() const {
  if (!lu_) {
    Dessin d;
    d.largeur = vue_.largeur, d.hauteur = vue_.hauteur;
    d.pixels.assign(std::size_t(std::max(0, d.largeur)) * std::size_t(std::max(0, d.hauteur)), 0xFFFFFFFFu);
    return d;
  }
  return Composer(montre_->Plan(), vue_, ligneChoisie_);
}

void Atelier::Carte_Taille(int largeur, int hauteur) {
  const bool premiere = vue_.largeur == 0 || vue_.hauteur == 0;
  vue_.largeur = largeur, vue_.hauteur = hauteur;
  if (premiere && lu_ && montre_->Plan().Etendue()) vue_.Ajuster(*montre_->Plan().Etendue());
  vueAtelier_.Rafraichir(kPartieCarte);
}

void Atelier::Carte_Molette(int delta, double px, double py) {
  vue_.Zoomer(FacteurMolette(delta), px, py);
  vueAtelier_.Rafraichir(kPartieCarte);
}

void Atelier::Carte_Glisser(double dx, double dy) {
  vue_.Deplacer(dx, dy);
  vueAtelier_.Rafraichir(kPartieCarte);
}

void Atelier::Carte_Clic(double px, double py) {
  if (!lu_) return;
  const std::optional<uint32_t> ligne = PointSous(montre_->Plan(), vue_, px, py);
  if (!ligne) return;
  ligneChoisie_ = ligne;
  vueAtelier_.Rafraichir(kPartieCarte | kPartieFichier);
}

std::string Atelier::Carte_Survol(double px, double py) const {
  if (!lu_) return {};
  const std::optional<uint32_t> ligne = PointSous(montre_->Plan(), vue_, px, py);
  return ligne ? montre_->TexteDeLaLigne(*ligne) : std::string();
}

void Atelier::btnVueDEnsemble_Click() {
  if (lu_ && montre_->Plan().Etendue()) vue_.Ajuster(*montre_->Plan().Etendue());
  vueAtelier_.Rafraichir(kPartieCarte);
}

void Atelier::Liste_Clic(bool rejets, std::size_t rang) {
  if (!lu_) return;
  const std::vector<EntreeListe>& liste = rejets ? montre_->Rejets() : montre_->Constats();
  if (rang >= liste.size()) return;
  Centrer(liste[rang].ligne);
}

std::optional<std::size_t> Atelier::RangDansListe(bool rejets) const {
  if (!lu_ || !ligneChoisie_) return std::nullopt;
  const std::vector<EntreeListe>& liste = rejets ? montre_->Rejets() : montre_->Constats();
  for (std::size_t k = 0; k < liste.size(); ++k) {
    if (liste[k].ligne == *ligneChoisie_) return k;
  }
  return std::nullopt;
}

void Atelier::Centrer(uint32_t ligne) {
  ligneChoisie_ = ligne;
  if (const auto i = montre_->Plan().PointDeLaLigne(ligne)) {
    const PlanCarte::Point& p = montre_->Plan().Points()[*i];
    vue_.Centrer(p.y, p.x);
  }
  vueAtelier_.Rafraichir(kPartieCarte);
}

// --- The buttons ------------------------------------------------------------------

FichierRapporte Atelier::Rapporte() const {
  const LigneFichier& l = table_.ParIndex(*choisi_);
  FichierRapporte f;
  f.source = l.source, f.cible = l.cible, f.journal = l.journal;
  f.conversion = l.conversion, f.options = l.options, f.verification = l.verification;
  f.bilan = {l.comptes[0], l.comptes[1], l.comptes[2], l.comptes[3]};
  f.rejets = l.comptes[2] + l.comptes[3] != 0;
  return f;
}

void Atelier::btnVoirRapport_Click() {
  if (!FichierActif()) return;
  VoirRapportDuFichier(services_, *reglages_.systeme, vueAtelier_.Fenetre(), Rapporte(), montre_->Lignes(),
                       montre_->Verifications());
}

void Atelier::btnVoirRapportLot_Click() {
  if (!LotActif()) return;
  std::vector<LigneIndex> lignes;
  for (std::size_t rang = 0; rang < table_.Taille(); ++rang) {
    const LigneFichier& l = table_.Ligne(rang);
    LigneIndex i;
    i.source = l.source;
    i.issue = lot::MotIssue(l.issue);
    i.comptes = l.comptes;
    lignes.push_back(std::move(i));
  }
  MontrerRapport(services_, *reglages_.systeme, vueAtelier_.Fenetre(),
                 services_.documents.DossierTemporaire() + "quillon-lot.html",
                 IndexHtml("quillon", DateHeureJournal(), lignes));
}

void Atelier::btnExporter_Click() {
  if (FichierActif()) ExporterFichier(services_, *reglages_.systeme, vueAtelier_.Fenetre(), Rapporte());
}

void Atelier::btnOuvrirDossier_Click() {
  if (!choisi_) return;
  const LigneFichier& l = table_.ParIndex(*choisi_);
  const std::string& fichier = !l.cible.empty() ? l.cible : !l.journal.empty() ? l.journal : l.source;
  const std::string dossier = lot::TexteChemin(lot::CheminNatif(fichier).parent_path());
  if (!services_.documents.OuvrirDossier(dossier.empty() ? std::string(".") : dossier)) {
    services_.messages.Message(vueAtelier_.Fenetre(), kTitreApplication,
                               Formater("Le dossier %s ne peut pas être ouvert", {dossier}));
  }
}

}  // namespace quillon
