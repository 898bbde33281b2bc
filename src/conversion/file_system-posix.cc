// The machine's files, through POSIX descriptors.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "conversion/file_system.h"

namespace quillon {
namespace {

class SupportPosix : public SupportFichier {
 public:
  SupportPosix(int fd, const struct stat& etat) : fd_(fd), dev_(etat.st_dev), ino_(etat.st_ino) {}
  ~SupportPosix() override {
    if (fd_ >= 0) ::close(fd_);
  }

  long Lire(char* destination, std::size_t taille) override {
    for (;;) {
      const ssize_t n = ::read(fd_, destination, taille);
      if (n >= 0) return static_cast<long>(n);
      if (errno != EINTR) return -1;
    }
  }

  bool Ecrire(const char* source, std::size_t taille) override {
    while (taille > 0) {
      const ssize_t n = ::write(fd_, source, taille);
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

  bool Fermer() override {
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0;
  }

  bool MemeFichier(const SupportFichier& autre) const override {
    const auto* p = dynamic_cast<const SupportPosix*>(&autre);
    return p != nullptr && p->dev_ == dev_ && p->ino_ == ino_;
  }

  bool MemeFichier(const struct stat& etat) const { return etat.st_dev == dev_ && etat.st_ino == ino_; }

 private:
  int fd_;
  dev_t dev_;
  ino_t ino_;
};

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
    return std::make_unique<SupportPosix>(fd, etat);
  }

  std::unique_ptr<SupportFichier> CreerEcriture(
      const std::string& nom, std::span<const SupportFichier* const> proteges) override {
    if (nom.empty()) return nullptr;
    // Opened without truncation first, so that a file that turns out to be
    // one of the protected ones is left exactly as it was.
    const int fd = ::open(nom.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0) return nullptr;
    struct stat etat;
    if (::fstat(fd, &etat) != 0) {
      ::close(fd);
      return nullptr;
    }
    for (const SupportFichier* p : proteges) {
      const auto* posix = dynamic_cast<const SupportPosix*>(p);
      if (posix != nullptr && posix->MemeFichier(etat)) {
        ::close(fd);
        return nullptr;
      }
    }
    if (S_ISREG(etat.st_mode) && ::ftruncate(fd, 0) != 0) {
      ::close(fd);
      return nullptr;
    }
    return std::make_unique<SupportPosix>(fd, etat);
  }
};

}  // namespace

SystemeFichiers& SystemeFichiersReel() {
  static SystemeFichiersPosix systeme;
  return systeme;
}

}  // namespace quillon
