// The machine's files, through POSIX descriptors. A file created for
// writing is written to an unnamed file of its folder (O_TMPFILE), or where
// the file system has none to a named temporary file there; on closing it
// is synced, given a temporary name, and renamed over its name; its folder
// is synced after. A file with other hard links gets the finished bytes
// written into it instead. A thread of a batch may defer the sync and the
// rename, which a group then shares.
#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "io/file_system.h"
#include "io/temporary_files.h"

namespace quillon {

void SupprimerFichier(const char* chemin) { ::unlink(chemin); }

uint32_t ProcessusCourant() { return static_cast<uint32_t>(::getpid()); }

uint32_t HoteCourant() {
  static const uint32_t empreinte = [] {
    char nom[256] = {};
    ::gethostname(nom, sizeof nom - 1);
    uint32_t h = 2166136261u;  // FNV-1a
    for (const char* c = nom; *c != '\0'; ++c) h = (h ^ static_cast<unsigned char>(*c)) * 16777619u;
    return h;
  }();
  return empreinte;
}

bool ProcessusVivant(uint32_t processus) {
  return processus <= INT_MAX && (::kill(static_cast<pid_t>(processus), 0) == 0 || errno != ESRCH);
}

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

// Starts the writeback of an open file again and again from a thread of its
// own, each time it is asked, while the run goes on writing it: the disk
// takes the file part by part, and the sync before the rename has only the
// last part left. Only the sync is waited for, never the disk's cache
// flush: an error of this writeback is kept against the file and comes out
// of that last sync, which fails the closing.
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
      const bool ecrit = ::sync_file_range(fd, 0, 0, SYNC_FILE_RANGE_WRITE) == 0;
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

// Removes, once per folder and process, the temporary files that runs of
// this machine killed outright left there (named ones only: an unnamed
// file goes with its process).
void NettoyerDossier(const std::string& dossier) {
  static std::mutex mutex;
  static std::set<std::string> vus;
  {
    std::lock_guard<std::mutex> verrou(mutex);
    if (!vus.insert(dossier).second) return;
  }
  DIR* d = ::opendir(dossier.c_str());
  if (d == nullptr) return;
  while (const dirent* e = ::readdir(d)) {
    if (std::strstr(e->d_name, ".quillon-") != nullptr && TemporaireAbandonne(e->d_name)) {
      ::unlinkat(::dirfd(d), e->d_name, 0);
    }
  }
  ::closedir(d);
}

// Gives the unnamed file `fd` the name `chemin`: through its entry in
// /proc, or by its descriptor where the process may (CAP_DAC_READ_SEARCH).
bool Lier(int fd, const std::string& chemin) {
  char proc[64];
  std::snprintf(proc, sizeof proc, "/proc/self/fd/%d", fd);
  if (::linkat(AT_FDCWD, proc, AT_FDCWD, chemin.c_str(), AT_SYMLINK_FOLLOW) == 0) return true;
  return errno != EEXIST && ::linkat(fd, "", AT_FDCWD, chemin.c_str(), AT_EMPTY_PATH) == 0;
}

// A file being written: its descriptor, and its temporary name where it has
// one from the start.
struct Brouillon {
  int fd = -1;
  Temporaire nom;  // empty for an unnamed file

  Brouillon() = default;
  Brouillon(Brouillon&& autre) noexcept : fd(std::exchange(autre.fd, -1)), nom(std::move(autre.nom)) {}

  // Its name in place of `final`'s: an unnamed file first gets a temporary
  // name of its own (in the list of pending ones while it has it), then
  // that name is renamed over `final`. Gone when that fails.
  bool Placer(const std::string& final) {
    for (uint64_t essai = 0; nom.Vide() && essai < 100; ++essai) {
      Temporaire lien(NomTemporaire(final, essai));
      if (Lier(fd, lien.Chemin())) {
        nom = std::move(lien);
      } else {
        const bool pris = errno == EEXIST;
        lien.Garder();  // not ours to remove
        if (!pris) return false;
      }
    }
    if (nom.Vide() || ::rename(nom.Chemin().c_str(), final.c_str()) != 0) {
      nom.Supprimer();
      return false;
    }
    nom.Garder();
    DossierModifie(Dossier(final));
    return true;
  }
  void Fermer() {
    if (fd >= 0) ::close(fd);
    fd = -1;
  }
};

// The file to be written at `final`, in its folder: unnamed where the file
// system can, else under a temporary name. False when neither can be made.
std::atomic<bool> sansNom{true};

bool CreerBrouillon(const std::string& final, Brouillon& b) {
  const std::string dossier = Dossier(final);
  NettoyerDossier(dossier);
  if (sansNom.load(std::memory_order_relaxed)) {
    b.fd = ::open(dossier.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (b.fd >= 0) return true;
    // Refused by the file system or by an older kernel: a named file.
    if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL && errno != ENOENT) return false;
  }
  for (uint64_t essai = 0; essai < 100; ++essai) {
    std::string temporaire = NomTemporaire(final, essai);
    b.fd = ::open(temporaire.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (b.fd >= 0) {
      b.nom = Temporaire(std::move(temporaire));
      return true;
    }
    if (errno != EEXIST) return false;
  }
  return false;
}

// A file closed while its thread defers placements: complete, still open,
// unnamed or under its temporary name until its group is placed.
class PlacementPosix : public PlacementDifere {
 public:
  PlacementPosix(Brouillon brouillon, std::string final) : b_(std::move(brouillon)), final_(std::move(final)) {}
  ~PlacementPosix() override { b_.Fermer(); }  // the name, if any, goes with b_
  const std::string& Nom() const override { return final_; }
  int Descripteur() const { return b_.fd; }
  bool Placer() {
    const bool place = b_.Placer(final_);
    b_.Fermer();
    return place;
  }

 private:
  Brouillon b_;
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

  int64_t LireA(char* destination, std::size_t taille, uint64_t position) override {
    std::size_t lus = 0;
    while (lus < taille) {
      const ssize_t n = ::pread(fd_, destination + lus, taille - lus, static_cast<off_t>(position + lus));
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) return -1;
      if (n == 0) break;
      lus += static_cast<std::size_t>(n);
    }
    return static_cast<int64_t>(lus);
  }

  bool EcrireA(const char* source, std::size_t taille, uint64_t position) override {
    while (taille > 0) {
      const ssize_t n = ::pwrite(fd_, source, taille, static_cast<off_t>(position));
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) return false;
      source += n;
      position += static_cast<uint64_t>(n);
      taille -= static_cast<std::size_t>(n);
    }
    return true;
  }

  int64_t Taille() override {
    struct stat etat;
    return ::fstat(fd_, &etat) == 0 ? static_cast<int64_t>(etat.st_size) : -1;
  }

  bool Tronquer(uint64_t taille) override { return ::ftruncate(fd_, static_cast<off_t>(taille)) == 0; }

  const Identite& Ident() const { return identite_; }

 protected:
  int fd_;
  Identite identite_;
};

// A file written beside its name and put in place over it on closing; or,
// for a file with other hard links (`enPlace`), written into it once
// complete, so that every name shows the new bytes.
class SupportRemplacement : public SupportPosix {
 public:
  SupportRemplacement(Brouillon brouillon, Identite identite, std::string final, bool enPlace)
      : SupportPosix(std::exchange(brouillon.fd, -1), std::move(identite)),
        nom_(std::move(brouillon.nom)),
        final_(std::move(final)),
        enPlace_(enPlace) {}
  ~SupportRemplacement() override { Abandonner(); }

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

  // Synced before it is named and renamed, so that a crash of the machine
  // leaves the previous file or the new one, whole; the folder after it, so
  // that the new one is what comes back.
  bool Fermer() override {
    if (fd_ < 0) return false;
    const bool fond = !fond_ || fond_->Terminer();
    fond_.reset();
    if (!fond) {
      Abandonner();
      return false;
    }
    if (enPlace_) return FermerEnPlace();
    if (differer) {
      diferes.push_back(std::make_unique<PlacementPosix>(Reprendre(), final_));
      return true;
    }
    if (::fdatasync(fd_) != 0) {
      Abandonner();
      return false;
    }
    Brouillon b = Reprendre();
    const bool place = b.Placer(final_);
    b.Fermer();
    return place;
  }

  void Abandonner() override {
    fond_.reset();
    SupportPosix::Fermer();
    nom_.Supprimer();
  }

 private:
  static constexpr uint64_t kTranche = uint64_t{4} << 20;

  // The file as it was made, taken back from this support.
  Brouillon Reprendre() {
    Brouillon b;
    b.fd = std::exchange(fd_, -1);
    b.nom = std::move(nom_);
    return b;
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

  Temporaire nom_;  // empty for an unnamed file
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
    Brouillon brouillon;
    if (!CreerBrouillon(final, brouillon)) return nullptr;
    // A file with other names is written into at the end: it keeps all it
    // has. Another one is replaced by a file that keeps its permission bits,
    // its extended attributes and access lists, and where allowed its owner
    // and group.
    const bool enPlace = existe && etat.st_nlink > 1;
    if (existe && !enPlace) {
      if (::fchown(brouillon.fd, etat.st_uid, etat.st_gid) != 0) { /* another's file, not root: ours now */ }
      CopierAttributs(final.c_str(), brouillon.fd);
      ::fchmod(brouillon.fd, etat.st_mode & 07777);
    }
    return std::make_unique<SupportRemplacement>(std::move(brouillon), identite, final, enPlace);
  }
};

}  // namespace

void DifererPlacements(bool oui) { differer = oui; }

void UtiliserFichiersSansNom(bool oui) { sansNom.store(oui); }

std::vector<std::unique_ptr<PlacementDifere>> PlacementsDiferes() {
  std::vector<std::unique_ptr<PlacementDifere>> pris;
  pris.swap(diferes);
  return pris;
}

// Every file of the group has its writeback started at once, then each is
// synced: its own data and size, never another program's, most of its
// pages on their way already. Then each is named and renamed, in order. A
// file whose sync failed is not placed.
constexpr std::size_t kSynchronisationsSimultanees = 4;

std::vector<bool> PlacerGroupe(const std::vector<std::unique_ptr<PlacementDifere>>& groupe) {
  const auto placement = [&](std::size_t k) -> PlacementPosix& { return static_cast<PlacementPosix&>(*groupe[k]); };
  for (std::size_t k = 0; k < groupe.size(); ++k) {
    ::sync_file_range(placement(k).Descripteur(), 0, 0, SYNC_FILE_RANGE_WRITE);
  }
  // A few at once, so that the disk takes their last writes and the flushes
  // of its cache together.
  std::vector<char> ecrits(groupe.size(), 0);
  std::atomic<std::size_t> suivant{0};
  const auto synchroniser = [&] {
    for (std::size_t k; (k = suivant.fetch_add(1)) < groupe.size();) {
      ecrits[k] = ::fdatasync(placement(k).Descripteur()) == 0;
    }
  };
  std::vector<std::thread> fils;
  for (std::size_t f = 1; f < std::min<std::size_t>(kSynchronisationsSimultanees, groupe.size()); ++f) {
    fils.emplace_back(synchroniser);
  }
  synchroniser();
  for (std::thread& f : fils) f.join();
  std::vector<bool> places(groupe.size(), false);
  for (std::size_t k = 0; k < groupe.size(); ++k) places[k] = ecrits[k] && placement(k).Placer();
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
    enAttente.groupes = false;
  }
  for (const std::string& dossier : dossiers) SynchroniserDossier(dossier);
}

SystemeFichiers& SystemeFichiersReel() {
  static SystemeFichiersPosix systeme;
  return systeme;
}

}  // namespace quillon
