// The machine's files on Windows, through the wide API, so that any name
// Windows accepts goes through (names are held in UTF-8). A file created
// for writing is written to a temporary file in its folder, its deletion
// requested from the start, so that a process killed outright leaves
// nothing; on closing it is flushed, the request withdrawn, and the file put
// in place: renamed by its handle, or by ReplaceFileW over an existing file,
// which keeps its attributes and rights. An existing file with other hard
// links gets the finished bytes written into it instead, so that every name
// shows them.
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "io/wide_text.h"
#include "io/file_system.h"
#include "io/temporary_files.h"

namespace quillon {

namespace {

constexpr DWORD kPartageTout = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::atomic<bool> suppressionDemandee{true};

// Asks that the open file go when its last handle closes, or withdraws
// that request.
bool DemanderSuppression(HANDLE fichier, bool oui) {
  FILE_DISPOSITION_INFO info{};
  info.DeleteFile = oui ? TRUE : FALSE;
  return ::SetFileInformationByHandle(fichier, FileDispositionInfo, &info, sizeof info);
}

// Renames the open file `fichier` to the full path `final`, replacing a
// file of that name.
bool RenommerParPoignee(HANDLE fichier, const std::wstring& final) {
  std::vector<char> tampon(sizeof(FILE_RENAME_INFO) + final.size() * sizeof(wchar_t));
  auto* info = reinterpret_cast<FILE_RENAME_INFO*>(tampon.data());
  info->ReplaceIfExists = TRUE;
  info->RootDirectory = nullptr;
  info->FileNameLength = static_cast<DWORD>(final.size() * sizeof(wchar_t));
  std::memcpy(info->FileName, final.data(), final.size() * sizeof(wchar_t));
  return ::SetFileInformationByHandle(fichier, FileRenameInfo, info, static_cast<DWORD>(tampon.size()));
}

std::wstring DossierDe(const std::wstring& chemin) {
  const std::size_t barre = chemin.find_last_of(L"\\/");
  return barre == std::wstring::npos ? std::wstring(L".") : chemin.substr(0, barre);
}

// Removes, once per folder and process, the temporary files that runs of
// this machine killed outright (or a power cut) left there.
void NettoyerDossier(const std::wstring& dossier) {
  static std::mutex mutex;
  static std::set<std::wstring> vus;
  {
    std::lock_guard<std::mutex> verrou(mutex);
    if (!vus.insert(dossier).second) return;
  }
  WIN32_FIND_DATAW trouve;
  const HANDLE recherche = ::FindFirstFileExW((dossier + L"\\*.quillon-*.tmp").c_str(), FindExInfoBasic, &trouve,
                                             FindExSearchNameMatch, nullptr, 0);
  if (recherche == INVALID_HANDLE_VALUE) return;
  do {
    if (TemporaireAbandonne(Utf8(trouve.cFileName))) ::DeleteFileW((dossier + L"\\" + trouve.cFileName).c_str());
  } while (::FindNextFileW(recherche, &trouve));
  ::FindClose(recherche);
}

// What makes a file itself: its volume and index when it exists, and its
// full path (compared without regard to case, as Windows names are).
struct Identite {
  bool existe = false;
  DWORD volume = 0;
  uint64_t index = 0;
  std::wstring chemin;
  DWORD liens = 0;  // its names

  bool Meme(const Identite& autre) const {
    if (existe && autre.existe) return volume == autre.volume && index == autre.index;
    return !chemin.empty() && ::CompareStringOrdinal(chemin.c_str(), -1, autre.chemin.c_str(), -1, TRUE) == CSTR_EQUAL;
  }
};

std::wstring CheminComplet(const std::wstring& chemin) {
  wchar_t tampon[32768];
  const DWORD n = ::GetFullPathNameW(chemin.c_str(), 32768, tampon, nullptr);
  return n > 0 && n < 32768 ? std::wstring(tampon, n) : std::wstring();
}

void LireIdentite(HANDLE fichier, Identite& identite) {
  BY_HANDLE_FILE_INFORMATION info;
  if (!::GetFileInformationByHandle(fichier, &info)) return;
  identite.existe = true;
  identite.volume = info.dwVolumeSerialNumber;
  identite.index = (uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow;
  identite.liens = info.nNumberOfLinks;
}

OVERLAPPED Position(uint64_t position) {
  OVERLAPPED ou{};
  ou.Offset = static_cast<DWORD>(position);
  ou.OffsetHigh = static_cast<DWORD>(position >> 32);
  return ou;
}

class SupportWin32 : public SupportFichier {
 public:
  SupportWin32(HANDLE fichier, Identite identite) : fichier_(fichier), identite_(std::move(identite)) {}
  ~SupportWin32() override {
    if (fichier_ != INVALID_HANDLE_VALUE) ::CloseHandle(fichier_);
  }

  int64_t Lire(char* destination, std::size_t taille) override {
    DWORD lus = 0;
    const DWORD demande = taille > (DWORD{1} << 30) ? (DWORD{1} << 30) : static_cast<DWORD>(taille);
    if (::ReadFile(fichier_, destination, demande, &lus, nullptr)) return lus;
    return ::GetLastError() == ERROR_BROKEN_PIPE ? 0 : -1;  // a pipe's writer gone: its end
  }

  bool Ecrire(const char* source, std::size_t taille) override {
    while (taille > 0) {
      const DWORD morceau = taille > (DWORD{1} << 30) ? (DWORD{1} << 30) : static_cast<DWORD>(taille);
      DWORD ecrits = 0;
      if (!::WriteFile(fichier_, source, morceau, &ecrits, nullptr) || ecrits == 0) return false;
      source += ecrits;
      taille -= ecrits;
    }
    return true;
  }

  bool Fermer() override {
    const HANDLE fichier = fichier_;
    fichier_ = INVALID_HANDLE_VALUE;
    return fichier != INVALID_HANDLE_VALUE && ::CloseHandle(fichier);
  }

  bool MemeFichier(const SupportFichier& autre) const override {
    const auto* w = dynamic_cast<const SupportWin32*>(&autre);
    return w != nullptr && w->identite_.Meme(identite_);
  }

  int64_t LireA(char* destination, std::size_t taille, uint64_t position) override {
    std::size_t lus = 0;
    while (lus < taille) {
      OVERLAPPED ou = Position(position + lus);
      DWORD n = 0;
      const DWORD demande = static_cast<DWORD>(std::min<std::size_t>(taille - lus, DWORD{1} << 30));
      if (!::ReadFile(fichier_, destination + lus, demande, &n, &ou)) {
        if (::GetLastError() == ERROR_HANDLE_EOF) break;
        return -1;
      }
      if (n == 0) break;
      lus += n;
    }
    return static_cast<int64_t>(lus);
  }

  bool EcrireA(const char* source, std::size_t taille, uint64_t position) override {
    while (taille > 0) {
      OVERLAPPED ou = Position(position);
      DWORD n = 0;
      const DWORD morceau = static_cast<DWORD>(std::min<std::size_t>(taille, DWORD{1} << 30));
      if (!::WriteFile(fichier_, source, morceau, &n, &ou) || n == 0) return false;
      source += n;
      position += n;
      taille -= n;
    }
    return true;
  }

  int64_t Taille() override {
    LARGE_INTEGER taille;
    return ::GetFileSizeEx(fichier_, &taille) ? taille.QuadPart : -1;
  }

  bool Tronquer(uint64_t taille) override {
    LARGE_INTEGER position;
    position.QuadPart = static_cast<LONGLONG>(taille);
    return ::SetFilePointerEx(fichier_, position, nullptr, FILE_BEGIN) && ::SetEndOfFile(fichier_);
  }

  const Identite& Ident() const { return identite_; }

 protected:
  HANDLE fichier_;
  Identite identite_;
};

// A file written beside its name and put in place on closing.
class SupportRemplacement : public SupportWin32 {
 public:
  SupportRemplacement(HANDLE fichier, Identite identite, std::string temporaire, std::wstring final, bool remplace)
      : SupportWin32(fichier, std::move(identite)),
        temporaire_(std::move(temporaire)),
        final_(std::move(final)),
        remplace_(remplace) {}
  ~SupportRemplacement() override { SupportWin32::Fermer(); }

  // Flushed to the disk before it is put in place, so that a crash of the
  // machine leaves the previous file or the new one, whole. A new file is
  // renamed by its handle, and flushed again for its new name.
  bool Fermer() override {
    if (fichier_ == INVALID_HANDLE_VALUE) return false;
    bool place = ::FlushFileBuffers(fichier_) && DemanderSuppression(fichier_, false);
    if (place && !remplace_) {
      place = RenommerParPoignee(fichier_, final_) && ::FlushFileBuffers(fichier_);
      if (place) temporaire_.Garder();
    }
    place = SupportWin32::Fermer() && place;
    if (place && remplace_) place = Remplacer();
    if (!place) {
      temporaire_.Supprimer();
      return false;
    }
    temporaire_.Garder();
    return true;
  }

  void Abandonner() override {
    SupportWin32::Fermer();
    temporaire_.Supprimer();
  }

 private:
  bool Remplacer() {
    const std::wstring temporaire = Large(temporaire_.Chemin());
    if (remplace_ && identite_.liens > 1) return Recopier(temporaire);
    if (remplace_ && ::ReplaceFileW(final_.c_str(), temporaire.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                                    nullptr, nullptr)) {
      return true;
    }
    // No previous file, or it went away meanwhile.
    return ::MoveFileExW(temporaire.c_str(), final_.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
  }

  // The finished file's bytes written into the existing one, its other
  // names then showing them; not in one step, since no rename can replace
  // a file under all its names: a failure while copying can leave it part
  // new. Flushed before the temporary file goes.
  bool Recopier(const std::wstring& temporaire) {
    const HANDLE source = ::CreateFileW(temporaire.c_str(), GENERIC_READ, kPartageTout, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (source == INVALID_HANDLE_VALUE) return false;
    const HANDLE cible =
        ::CreateFileW(final_.c_str(), GENERIC_WRITE, kPartageTout, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    bool ok = cible != INVALID_HANDLE_VALUE;
    std::vector<char> tampon(1 << 20);
    while (ok) {
      DWORD lus = 0, ecrits = 0;
      ok = ::ReadFile(source, tampon.data(), static_cast<DWORD>(tampon.size()), &lus, nullptr);
      if (!ok || lus == 0) break;
      ok = ::WriteFile(cible, tampon.data(), lus, &ecrits, nullptr) && ecrits == lus;
    }
    ok = ok && ::SetEndOfFile(cible) && ::FlushFileBuffers(cible);
    if (cible != INVALID_HANDLE_VALUE) ok = ::CloseHandle(cible) && ok;
    ::CloseHandle(source);
    return ok && ::DeleteFileW(temporaire.c_str());
  }

  Temporaire temporaire_;  // UTF-8, as the list of pending temporaries holds it
  std::wstring final_;
  bool remplace_;
};

bool EstProtege(const Identite& identite, std::span<const SupportFichier* const> proteges) {
  for (const SupportFichier* p : proteges) {
    const auto* w = dynamic_cast<const SupportWin32*>(p);
    if (w != nullptr && w->Ident().Meme(identite)) return true;
  }
  return false;
}

class SystemeFichiersWin32 : public SystemeFichiers {
 public:
  std::unique_ptr<SupportFichier> OuvrirLecture(const std::string& nom) override {
    if (nom.empty()) return nullptr;
    const std::wstring chemin = Large(nom);
    // Without FILE_FLAG_BACKUP_SEMANTICS a folder cannot be opened.
    const HANDLE fichier =
        ::CreateFileW(chemin.c_str(), GENERIC_READ, kPartageTout, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (fichier == INVALID_HANDLE_VALUE) return nullptr;
    Identite identite{false, 0, 0, CheminComplet(chemin)};
    LireIdentite(fichier, identite);
    return std::make_unique<SupportWin32>(fichier, identite);
  }

  std::unique_ptr<SupportFichier> CreerEcriture(
      const std::string& nom, std::span<const SupportFichier* const> proteges) override {
    if (nom.empty()) return nullptr;
    std::wstring final = Large(nom);
    Identite identite{false, 0, 0, CheminComplet(final)};
    if (identite.chemin.empty()) return nullptr;
    const DWORD attributs = ::GetFileAttributesW(final.c_str());
    const bool existe = attributs != INVALID_FILE_ATTRIBUTES;
    if (!existe) {
      const DWORD erreur = ::GetLastError();
      if (erreur != ERROR_FILE_NOT_FOUND) return nullptr;  // no such folder, no right...
    } else if (attributs & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) {
      return nullptr;  // a read-only file is never replaced, whoever runs
    }
    if (existe) {
      // Opening it for writing, without changing it, tells whether it may be
      // written (read-only, rights, open elsewhere without sharing) and what
      // it is.
      const HANDLE essai =
          ::CreateFileW(final.c_str(), GENERIC_WRITE, kPartageTout, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
      if (essai == INVALID_HANDLE_VALUE) return nullptr;
      LireIdentite(essai, identite);
      const bool disque = ::GetFileType(essai) == FILE_TYPE_DISK;
      if (EstProtege(identite, proteges)) {
        ::CloseHandle(essai);
        return nullptr;
      }
      // A device (NUL, CON) is written to as it is.
      if (!disque) return std::make_unique<SupportWin32>(essai, identite);
      // A link is written through: the file it points to is replaced.
      if (attributs & FILE_ATTRIBUTE_REPARSE_POINT) {
        wchar_t vrai[32768];
        const DWORD n = ::GetFinalPathNameByHandleW(essai, vrai, 32768, FILE_NAME_NORMALIZED);
        if (n > 0 && n < 32768) final.assign(vrai, n);
      }
      ::CloseHandle(essai);
    } else if (EstProtege(identite, proteges)) {
      return nullptr;
    }
    const std::string finalUtf8 = Utf8(final);
    NettoyerDossier(DossierDe(CheminComplet(final)));
    for (uint64_t essai = 0; essai < 100; ++essai) {
      const std::string temporaire = NomTemporaire(finalUtf8, essai);
      // Shared for deletion, so that an interruption can remove it while it
      // is still open; its deletion asked for at once.
      const HANDLE fichier = ::CreateFileW(Large(temporaire).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                                           FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                           FILE_ATTRIBUTE_NORMAL, nullptr);
      if (fichier == INVALID_HANDLE_VALUE) {
        if (::GetLastError() == ERROR_FILE_EXISTS) continue;
        return nullptr;
      }
      if (suppressionDemandee.load(std::memory_order_relaxed) && !DemanderSuppression(fichier, true)) {
        ::CloseHandle(fichier);
        SupprimerFichier(temporaire.c_str());
        return nullptr;
      }
      return std::make_unique<SupportRemplacement>(fichier, identite, temporaire, CheminComplet(final), existe);
    }
    return nullptr;
  }
};

}  // namespace

void SupprimerFichier(const char* chemin) { ::DeleteFileW(Large(chemin).c_str()); }

uint32_t ProcessusCourant() { return ::GetCurrentProcessId(); }

uint32_t HoteCourant() {
  static const uint32_t empreinte = [] {
    wchar_t nom[MAX_COMPUTERNAME_LENGTH + 1] = {};
    DWORD taille = MAX_COMPUTERNAME_LENGTH + 1;
    ::GetComputerNameW(nom, &taille);
    uint32_t h = 2166136261u;  // FNV-1a, over the UTF-8 name
    for (const char c : Utf8(std::wstring_view(nom, taille))) h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
    return h;
  }();
  return empreinte;
}

// A process that cannot be opened for want of rights is alive.
bool ProcessusVivant(uint32_t processus) {
  const HANDLE p = ::OpenProcess(SYNCHRONIZE, FALSE, processus);
  if (p == nullptr) return ::GetLastError() != ERROR_INVALID_PARAMETER;
  const bool vivant = ::WaitForSingleObject(p, 0) == WAIT_TIMEOUT;
  ::CloseHandle(p);
  return vivant;
}

// Windows has no sync of a whole volume that a program may call without
// rights: each file is flushed and put in place when closed.
void DifererPlacements(bool) {}
// Without it, a temporary file is a plain file until put in place.
void UtiliserFichiersSansNom(bool oui) { suppressionDemandee.store(oui); }
std::vector<std::unique_ptr<PlacementDifere>> PlacementsDiferes() { return {}; }
std::vector<bool> PlacerGroupe(const std::vector<std::unique_ptr<PlacementDifere>>& groupe) {
  return std::vector<bool>(groupe.size(), false);
}

// MoveFileExW's write-through and ReplaceFileW commit the folder's change
// with the rename: nothing is left to sync afterwards.
void GrouperSynchronisationsDossiers() {}
void SynchroniserDossiers() {}

SystemeFichiers& SystemeFichiersReel() {
  static SystemeFichiersWin32 systeme;
  return systeme;
}

}  // namespace quillon
