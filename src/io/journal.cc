#include "io/journal.h"

#include <charconv>

#include "io/locale.h"
#include "io/ansi.h"

namespace quillon {
namespace {

// The decimal text of a counter, in `tampon`.
struct TamponEntier {
  char octets[24];
};

std::string_view TexteEntier(int64_t n, TamponEntier& tampon) {
  const auto r = std::to_chars(tampon.octets, tampon.octets + sizeof tampon.octets, n);
  return {tampon.octets, static_cast<std::size_t>(r.ptr - tampon.octets)};
}

}  // namespace

void Journal::Attacher(SystemeFichiers& systeme, const FluxTexte& source, const FluxTexte* cible) {
  systeme_ = &systeme;
  source_ = &source;
  cible_ = cible;
  compteur_ = source.CompteurLignes();
}

void Journal::EcrireLog(bool Lecture, bool AvecLigne, bool AvecPrefixe, bool CompterErreur,
                        std::initializer_list<std::string_view> Message) {
  if (EnEchec()) return;
  if (sansFichier_) {
    if (CompterErreur) ++(Lecture ? NbErreursLecture : NbErreursEcriture);
    Prevenir(Lecture, AvecPrefixe, CompterErreur, Message);
    return;
  }
  if (!LogOuvert) {
    SystemeFichiers& systeme = systeme_ != nullptr ? *systeme_ : SystemeFichiersReel();
    if (!CreerFichierEcriture(FichierLog.Flux, FichierLog.Nom, systeme, {source_, cible_})) {
      echec_ = ErreurFatale{FichierLog.Nom, RaisonFatale::Creation};
      return;
    }
    LogOuvert = true;
  }
  FluxTexte& flux = FichierLog.Flux;
  if (AvecPrefixe) flux.Write(Lecture ? "LECTURE: " : "ECRITURE: ");
  if (AvecLigne) {
    TamponEntier numero;
    flux.Write("ligne ");
    flux.Write(TexteEntier(NumeroLigne(), numero));
    flux.Write(": ");
  }
  for (std::string_view morceau : Message) flux.Write(morceau);
  flux.EndLine();
  if (flux.EnErreur()) echec_ = ErreurFatale{FichierLog.Nom, RaisonFatale::Ecriture};
  if (CompterErreur) ++(Lecture ? NbErreursLecture : NbErreursEcriture);
  Prevenir(Lecture, AvecPrefixe, CompterErreur, Message);
}

void Journal::Prevenir(bool Lecture, bool AvecPrefixe, bool CompterErreur,
                       std::initializer_list<std::string_view> Message) {
  if (ecouteur_ == nullptr || !AvecPrefixe) return;
  ecouteur_->Message({Lecture, CompterErreur, champ_, Message});
}

bool Journal::FermerLog() {
  const bool ferme = FermerFichier(FichierLog.Flux);
  LogOuvert = false;
  return ferme;
}

void Journal::Abandonner() {
  if (LogOuvert) AbandonnerFichier(FichierLog.Flux);
  LogOuvert = false;
}

bool Journal::Vider() {
  if (EnEchec()) return false;
  if (LogOuvert && !FichierLog.Flux.Vider()) echec_ = ErreurFatale{FichierLog.Nom, RaisonFatale::Ecriture};
  return !EnEchec();
}

void Journal::InitialiserLog() {
  if (LogOuvert) FermerLog();
  NbErreursLecture = 0;
  NbErreursEcriture = 0;
  NbLignesIgnorees = 0;
  echec_.reset();
}

ComptesBilan Journal::Bilan() const { return {NumeroLigne(), NbLignesIgnorees, NbErreursLecture, NbErreursEcriture}; }

std::array<std::string, 4> TexteBilan(const ComptesBilan& c) { return TexteBilan(c.lues, c.ignorees, c.lecture, c.ecriture); }

std::array<std::string, 4> TexteBilan(int64_t lues, int64_t ignorees, int64_t lecture, int64_t ecriture) {
  static constexpr auto kIgnorees = Ansi(u8" ligne(s) ignorée(s) lors de la conversion");
  static constexpr auto kLecture = Ansi(u8" erreur(s) constatée(s) lors de la lecture du fichier source");
  static constexpr auto kEcriture = Ansi(u8" erreur(s) constatée(s) lors de l'écriture dans le fichier cible");
  std::array<std::string, 4> lignes;
  TamponEntier tampon;
  lignes[0] = TexteEntier(lues, tampon);
  lignes[0] += " ligne(s) lues dans le fichier source";
  lignes[1] = TexteEntier(ignorees, tampon);
  lignes[1] += kIgnorees;
  lignes[2] = TexteEntier(lecture, tampon);
  lignes[2] += kLecture;
  lignes[3] = TexteEntier(ecriture, tampon);
  lignes[3] += kEcriture;
  return lignes;
}

void Journal::EcrireBilan(Affichage& affichage) {
  const ComptesBilan comptes = Bilan();
  affichage.MontrerBilan(comptes);
  for (const std::string& ligne : TexteBilan(comptes)) EcrireLog(false, false, false, false, {ligne});
}

}  // namespace quillon
