// The machine's files, through POSIX descriptors. A file created for
// writing is written to a temporary file in its folder, synced, and renamed
// over its name on closing.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

#include "io/file_system.h"
#include "io/temporary_files.h"

namespace quillon {

void SupprimerFichier(const char* chemin) { ::unlink(chemin); }

bool PlacerFichier(const std::string& temporaire, const std::string& final) {
  const int fd = ::open(temporaire.c_str(), O_RDWR | O_CLOEXEC);
  if (fd < 0) return false;
  const bool ecrit = ::fsync(fd) == 0;
  return ::close(fd) == 0 && ecrit && ::rename(temporaire.c_str(), final.c_str()) == 0;
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

// Starts writing a range of a file to the disk, without waiting for it.
void LancerEcritureDisque(int fd, uint64_t debut, uint64_t taille) {
#ifdef SYNC_FILE_RANGE_WRITE
  ::sync_file_range(fd, static_cast<off_t>(debut), static_cast<off_t>(taille), SYNC_FILE_RANGE_WRITE);
#else
  (void)fd, (void)debut, (void)taille;  // the sync on closing does it all
#endif
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

// A file written beside its name and renamed over it on closing.
class SupportRemplacement : public SupportPosix {
 public:
  SupportRemplacement(int fd, Identite identite, std::string temporaire, std::string final)
      : SupportPosix(fd, std::move(identite)), temporaire_(std::move(temporaire)), final_(std::move(final)) {}
  ~SupportRemplacement() override { SupportPosix::Fermer(); }

  // The disk is asked to start writing every few megabytes, while the run
  // goes on, so that the sync on closing has little left to wait for.
  bool Ecrire(const char* source, std::size_t taille) override {
    if (!EcrireTout(fd_, source, taille)) return false;
    ecrit_ += taille;
    if (ecrit_ - lance_ >= kTranche) {
      LancerEcritureDisque(fd_, lance_, ecrit_ - lance_);
      lance_ = ecrit_;
    }
    return true;
  }

  // Synced before the rename, so that a crash of the machine leaves the
  // previous file or the new one, whole. The folder is not synced after
  // it: a crash soon after may bring back the previous file, whole too,
  // and the sync would cost a tenth of the run of a large file.
  bool Fermer() override {
    if (fd_ < 0) return false;
    const bool ecrit = ::fsync(fd_) == 0;
    if (!SupportPosix::Fermer() || !ecrit || ::rename(temporaire_.Chemin().c_str(), final_.c_str()) != 0) {
      temporaire_.Supprimer();
      return false;
    }
    temporaire_.Garder();
    return true;
  }

  void Abandonner() override {
    SupportPosix::Fermer();
    temporaire_.Supprimer();
  }

 private:
  static constexpr uint64_t kTranche = uint64_t{4} << 20;

  Temporaire temporaire_;
  std::string final_;
  uint64_t ecrit_ = 0;  // bytes written so far
  uint64_t lance_ = 0;  // of which the disk was asked to start writing
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
      const int fd = ::open(temporaire.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (fd < 0) {
        if (errno == EEXIST) continue;
        return nullptr;
      }
      // The new file keeps the permission bits, and where allowed the
      // owner, of the one it replaces.
      if (existe) {
        if (::fchown(fd, etat.st_uid, etat.st_gid) != 0) { /* another owner's file: ours now */ }
        ::fchmod(fd, etat.st_mode & 07777);
      }
      return std::make_unique<SupportRemplacement>(fd, identite, temporaire, final);
    }
    return nullptr;
  }
};

}  // namespace

SystemeFichiers& SystemeFichiersReel() {
  static SystemeFichiersPosix systeme;
  return systeme;
}

}  // namespace quillon
