// The machine's files, through POSIX descriptors. A file created for
// writing is written to a temporary file in its folder, synced, and renamed
// over its name on closing; its folder is synced after. A file with other
// hard links gets the finished bytes written into it instead. A thread of a
// batch may defer the sync and the rename, which a group then shares.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "io/file_system.h"
#include "io/temporary_files.h"

namespace quillon {

void SupprimerFichier(const char* chemin) { ::unlink(chemin); }

namespace {

// What makes a file itself: its inode when it exists, and the path it has
// or will have, its folder resolved.
struct Identite {
  bool existe = false;
  dev_t dev = 0;
  ino_t ino = 0;
  std::string chemin;

  bool Meme(const Identite& autre) const {
    if (existe && autre.existe) return dev == autre.dev && ino == autre.ino;
    return !chemin.empty() && chemin == autre.chemin;
  }
};

std::string Dossier(const std::string& chemin) {
  const std::size_t barre = chemin.find_last_of('/');
  if (barre == std::string::npos) return ".";
  return barre == 0 ? "/" : chemin.substr(0, barre);
}

std::string Nom(const std::string& chemin) { return chemin.substr(chemin.find_last_of('/') + 1); }

// The path with its folder made absolute and free of links; empty when the
// folder cannot be resolved.
std::string CheminResolu(const std::string& chemin) {
  char dossier[PATH_MAX];
  if (::realpath(Dossier(chemin).c_str(), dossier) == nullptr) return {};
  const std::string d = dossier;
  return (d == "/" ? d : d + "/") + Nom(chemin);
}

// Follows the symbolic links that `chemin` names, even one that points to
// nothing yet: the file to write is the one at the end of the links.
std::string SuivreLiens(std::string chemin) {
  for (int saut = 0; saut < 40; ++saut) {
    struct stat etat;
    if (::lstat(chemin.c_str(), &etat) != 0 || !S_ISLNK(etat.st_mode)) return chemin;
    char cible[PATH_MAX];
    const ssize_t n = ::readlink(chemin.c_str(), cible, sizeof cible - 1);
    if (n <= 0) return chemin;
    const std::string lien(cible, static_cast<std::size_t>(n));
    chemin = lien.front() == '/' || chemin.find('/') == std::string::npos ? lien : Dossier(chemin) + "/" + lien;
  }
  return chemin;
}

bool EcrireTout(int fd, const char* source, std::size_t taille) {
  while (taille > 0) {
    const ssize_t n = ::write(fd, source, taille);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    if (n == 0) return false;
    source += n;
    taille -= static_cast<std::size_t>(n);
  }
  return true;
}

// Syncs an open file again and again from a thread of its own, each time it
// is asked, while the run goes on writing it: the disk takes the file part
// by part, and the sync before the rename has only the last part left.
class SynchronisationDeFond {
 public:
  explicit SynchronisationDeFond(int fd) : fil_([this, fd] { Boucle(fd); }) {}
  ~SynchronisationDeFond() { Terminer(); }
  // Waits for the sync under way, if any; false when one of them failed (a
  // failure is told once: the sync on closing would not see it again).
  bool Terminer() {
    {
      std::lock_guard<std::mutex> verrou(mutex_);
      fin_ = true;
    }
    signal_.notify_one();
    if (fil_.joinable()) fil_.join();
    return !echec_;
  }
  void Demander() {
    {
      std::lock_guard<std::mutex> verrou(mutex_);
      demande_ = true;
    }
    signal_.notify_one();
  }

 private:
  void Boucle(int fd) {
    std::unique_lock<std::mutex> verrou(mutex_);
    for (;;) {
      signal_.wait(verrou, [this] { return demande_ || fin_; });
      if (fin_) return;
      demande_ = false;
      verrou.unlock();
      const bool ecrit = ::fdatasync(fd) == 0;
      verrou.lock();
      if (!ecrit) echec_ = true;
    }
  }

  std::mutex mutex_;
  std::condition_variable signal_;
  bool demande_ = false;
  bool fin_ = false;
  bool echec_ = false;
  std::thread fil_;  // last: started once the rest is ready
};

// Syncs a folder, so that a rename in it survives a crash of the machine.
// A file system that cannot sync a folder is left at that: the file renamed
// is itself on the disk already.
void SynchroniserDossier(const std::string& dossier) {
  const int fd = ::open(dossier.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  ::fsync(fd);
  ::close(fd);
}

// The folders whose syncs wait for SynchroniserDossiers, when grouped.
struct DossiersEnAttente {
  std::mutex mutex;
  bool groupes = false;
  std::set<std::string> dossiers;
} enAttente;

void DossierModifie(const std::string& dossier) {
  {
    std::lock_guard<std::mutex> verrou(enAttente.mutex);
    if (enAttente.groupes) {
      enAttente.dossiers.insert(dossier);
      return;
    }
  }
  SynchroniserDossier(dossier);
}

// A file closed while its thread defers placements: complete beside its
// name, in the list of pending temporary files until it is placed.
class PlacementPosix : public PlacementDifere {
 public:
  PlacementPosix(const std::string& temporaire, std::string final)
      : temporaire_(temporaire), final_(std::move(final)) {}
  const std::string& Nom() const override { return final_; }
  const std::string& Temporaire_() const { return temporaire_.Chemin(); }
  bool Placer() {
    if (::rename(temporaire_.Chemin().c_str(), final_.c_str()) != 0) return false;
    temporaire_.Garder();
    DossierModifie(Dossier(final_));
    return true;
  }

 private:
  Temporaire temporaire_;
  std::string final_;
};

thread_local bool differer = false;
thread_local std::vector<std::unique_ptr<PlacementDifere>> diferes;

// Copies the extended attributes of the file `de` onto the open file `fd`:
// the user's own (user.*) and its access lists (system.posix_acl_access).
// One that may not be set here (a security label, a trusted.* attribute for
// another than root) is left out quietly, as the owner is.
void CopierAttributs(const char* de, int fd) {
  ssize_t taille = ::listxattr(de, nullptr, 0);
  if (taille <= 0) return;  // none, or a file system without them
  std::vector<char> noms(static_cast<std::size_t>(taille));
  taille = ::listxattr(de, noms.data(), noms.size());
  std::vector<char> valeur;
  for (const char* nom = noms.data(); taille > 0 && nom < noms.data() + taille; nom += std::strlen(nom) + 1) {
    const ssize_t n = ::getxattr(de, nom, nullptr, 0);
    if (n < 0) continue;
    valeur.resize(static_cast<std::size_t>(n));
    const ssize_t lu = ::getxattr(de, nom, valeur.data(), valeur.size());
    if (lu >= 0) ::fsetxattr(fd, nom, valeur.data(), static_cast<std::size_t>(lu), 0);
  }
}

// Writes the whole of the file `de` over the file `vers` from its start, and
// cuts `vers` to that size.
bool Recopier(int de, int vers) {
  if (::lseek(de, 0, SEEK_SET) != 0 || ::lseek(vers, 0, SEEK_SET) != 0) return false;
  char tampon[1 << 16];
  off_t taille = 0;
  for (;;) {
    const ssize_t n = ::read(de, tampon, sizeof tampon);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return false;
    if (n == 0) break;
    if (!EcrireTout(vers, tampon, static_cast<std::size_t>(n))) return false;
    taille += n;
  }
  return ::ftruncate(vers, taille) == 0;
}

class SupportPosix : public SupportFichier {
 public:
  SupportPosix(int fd, Identite identite) : fd_(fd), identite_(std::move(identite)) {}
  ~SupportPosix() override {
    if (fd_ >= 0) ::close(fd_);
  }

  int64_t Lire(char* destination, std::size_t taille) override {
    for (;;) {
      const ssize_t n = ::read(fd_, destination, taille);
      if (n >= 0) return n;
      if (errno != EINTR) return -1;
    }
  }

  bool Ecrire(const char* source, std::size_t taille) override { return EcrireTout(fd_, source, taille); }

  bool Fermer() override {
    const int fd = fd_;
    fd_ = -1;
    return fd >= 0 && ::close(fd) == 0;
  }

  bool MemeFichier(const SupportFichier& autre) const override {
    const auto* p = dynamic_cast<const SupportPosix*>(&autre);
    return p != nullptr && p->identite_.Meme(identite_);
  }

  const Identite& Ident() const { return identite_; }

 protected:
  int fd_;
  Identite identite_;
};

// A file written beside its name and renamed over it on closing; or, for a
// file with other hard links (`enPlace`), written into it once complete, so
// that every name shows the new bytes.
class SupportRemplacement : public SupportPosix {
 public:
  SupportRemplacement(int fd, Identite identite, std::string temporaire, std::string final, bool enPlace)
      : SupportPosix(fd, std::move(identite)),
        temporaire_(std::move(temporaire)),
        final_(std::move(final)),
        enPlace_(enPlace) {}
  ~SupportRemplacement() override {
    fond_.reset();
    SupportPosix::Fermer();
  }

  // Every few megabytes the file is synced in the background while the run
  // goes on, so that the sync on closing has little left to wait for. A
  // small file is synced on closing only, without a thread.
  bool Ecrire(const char* source, std::size_t taille) override {
    if (!EcrireTout(fd_, source, taille)) return false;
    ecrit_ += taille;
    if (ecrit_ - demande_ >= kTranche) {
      if (!fond_) fond_ = std::make_unique<SynchronisationDeFond>(fd_);
      fond_->Demander();
      demande_ = ecrit_;
    }
    return true;
  }

  // Synced before the rename, so that a crash of the machine leaves the
  // previous file or the new one, whole; the folder after it, so that the
  // new one is what comes back.
  bool Fermer() override {
    if (fd_ < 0) return false;
    const bool fond = !fond_ || fond_->Terminer();
    fond_.reset();
    if (!fond) {
      Abandonner();
      return false;
    }
    if (enPlace_) return FermerEnPlace();
    if (differer) return FermerSansPlacer();
    const bool ecrit = ::fsync(fd_) == 0;
    if (!SupportPosix::Fermer() || !ecrit || ::rename(temporaire_.Chemin().c_str(), final_.c_str()) != 0) {
      temporaire_.Supprimer();
      return false;
    }
    temporaire_.Garder();
    DossierModifie(Dossier(final_));
    return true;
  }

  void Abandonner() override {
    fond_.reset();
    SupportPosix::Fermer();
    temporaire_.Supprimer();
  }

 private:
  static constexpr uint64_t kTranche = uint64_t{4} << 20;

  // Closed complete and left to PlacerGroupe, which syncs it with others;
  // the list of pending temporary files keeps it until then.
  bool FermerSansPlacer() {
    if (!SupportPosix::Fermer()) {
      temporaire_.Supprimer();
      return false;
    }
    diferes.push_back(std::make_unique<PlacementPosix>(temporaire_.Chemin(), final_));
    temporaire_.Garder();  // the placement holds it now
    return true;
  }

  // The finished bytes copied into the file itself, then synced. Not in
  // one step: a failure or a crash while copying leaves it part new.
  bool FermerEnPlace() {
    const int fd = ::open(final_.c_str(), O_WRONLY | O_CLOEXEC);
    bool ecrit = fd >= 0 && Recopier(fd_, fd) && ::fsync(fd) == 0;
    if (fd >= 0 && ::close(fd) != 0) ecrit = false;
    Abandonner();  // the temporary file has served
    return ecrit;
  }

  Temporaire temporaire_;
  std::string final_;
  bool enPlace_;
  uint64_t ecrit_ = 0;    // bytes written so far
  uint64_t demande_ = 0;  // when the last sync was asked for
  std::unique_ptr<SynchronisationDeFond> fond_;
};

bool EstProtege(const Identite& identite, std::span<const SupportFichier* const> proteges) {
  for (const SupportFichier* p : proteges) {
    const auto* posix = dynamic_cast<const SupportPosix*>(p);
    if (posix != nullptr && posix->Ident().Meme(identite)) return true;
  }
  return false;
}

class SystemeFichiersPosix : public SystemeFichiers {
 public:
  std::unique_ptr<SupportFichier> OuvrirLecture(const std::string& nom) override {
    if (nom.empty()) return nullptr;
    const int fd = ::open(nom.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return nullptr;
    struct stat etat;
    if (::fstat(fd, &etat) != 0 || S_ISDIR(etat.st_mode)) {
      ::close(fd);
      return nullptr;
    }
    return std::make_unique<SupportPosix>(fd, Identite{true, etat.st_dev, etat.st_ino, CheminResolu(nom)});
  }

  std::unique_ptr<SupportFichier> CreerEcriture(
      const std::string& nom, std::span<const SupportFichier* const> proteges) override {
    if (nom.empty()) return nullptr;
    // A link is written through: the file it points to gets the new bytes.
    const std::string final = SuivreLiens(nom);
    Identite identite{false, 0, 0, CheminResolu(final)};
    if (identite.chemin.empty()) return nullptr;  // no such folder
    struct stat etat;
    const bool existe = ::stat(final.c_str(), &etat) == 0;
    if (!existe && errno != ENOENT) return nullptr;
    if (existe) {
      identite.existe = true;
      identite.dev = etat.st_dev;
      identite.ino = etat.st_ino;
      if (S_ISDIR(etat.st_mode)) return nullptr;
    }
    if (EstProtege(identite, proteges)) return nullptr;
    // A device or a pipe (/dev/null, /dev/full) is written to as it is.
    if (existe && !S_ISREG(etat.st_mode)) {
      const int fd = ::open(final.c_str(), O_WRONLY | O_CLOEXEC);
      if (fd < 0) return nullptr;
      return std::make_unique<SupportPosix>(fd, identite);
    }
    // A rename would replace a read-only file without a word: its right to
    // be written is checked first, as opening it would.
    if (existe && ::faccessat(AT_FDCWD, final.c_str(), W_OK, AT_EACCESS) != 0) return nullptr;
    for (uint64_t essai = 0; essai < 100; ++essai) {
      const std::string temporaire = NomTemporaire(final, essai);
      const int fd = ::open(temporaire.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (fd < 0) {
        if (errno == EEXIST) continue;
        return nullptr;
      }
      // A file with other names is written into at the end: it keeps all
      // it has. Another one is replaced by a file that keeps its permission
      // bits, its extended attributes and access lists, and where allowed
      // its owner and group.
      const bool enPlace = existe && etat.st_nlink > 1;
      if (existe && !enPlace) {
        if (::fchown(fd, etat.st_uid, etat.st_gid) != 0) { /* another's file, not root: ours now */ }
        CopierAttributs(final.c_str(), fd);
        ::fchmod(fd, etat.st_mode & 07777);
      }
      return std::make_unique<SupportRemplacement>(fd, identite, temporaire, final, enPlace);
    }
    return nullptr;
  }
};

}  // namespace

bool PlacerFichier(const std::string& temporaire, const std::string& final) {
  const int fd = ::open(temporaire.c_str(), O_RDWR | O_CLOEXEC);
  if (fd < 0) return false;
  const bool ecrit = ::fsync(fd) == 0;
  if (::close(fd) != 0 || !ecrit || ::rename(temporaire.c_str(), final.c_str()) != 0) return false;
  DossierModifie(Dossier(final));
  return true;
}

void DifererPlacements(bool oui) { differer = oui; }

std::vector<std::unique_ptr<PlacementDifere>> PlacementsDiferes() {
  std::vector<std::unique_ptr<PlacementDifere>> pris;
  pris.swap(diferes);
  return pris;
}

// One syncfs for each file system the group's files are on, through their
// folders; then each file renamed, in order. A failed sync fails them all.
std::vector<bool> PlacerGroupe(const std::vector<std::unique_ptr<PlacementDifere>>& groupe) {
  std::vector<bool> places(groupe.size(), false);
  std::set<dev_t> synchronises;
  std::set<std::string> dossiers;
  bool ecrit = true;
  for (const auto& p : groupe) {
    const std::string dossier = Dossier(static_cast<const PlacementPosix&>(*p).Temporaire_());
    if (!dossiers.insert(dossier).second) continue;
    const int fd = ::open(dossier.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    struct stat etat;
    if (fd < 0 || ::fstat(fd, &etat) != 0) {
      ecrit = false;
    } else if (synchronises.insert(etat.st_dev).second && ::syncfs(fd) != 0) {
      ecrit = false;
    }
    if (fd >= 0) ::close(fd);
  }
  for (std::size_t k = 0; k < groupe.size() && ecrit; ++k) {
    places[k] = static_cast<PlacementPosix&>(*groupe[k]).Placer();
  }
  return places;
}

void GrouperSynchronisationsDossiers() {
  std::lock_guard<std::mutex> verrou(enAttente.mutex);
  enAttente.groupes = true;
}

void SynchroniserDossiers() {
  std::set<std::string> dossiers;
  {
    std::lock_guard<std::mutex> verrou(enAttente.mutex);
    dossiers.swap(enAttente.dossiers);
  }
  for (const std::string& dossier : dossiers) SynchroniserDossier(dossier);
}

SystemeFichiers& SystemeFichiersReel() {
  static SystemeFichiersPosix systeme;
  return systeme;
}

}  // namespace quillon
