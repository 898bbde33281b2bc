#include "export/sqlite_vfs.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

namespace quillon {
namespace {

// The files opened by OuvrirBaseSur, waiting for SQLite's open to take
// them by the name it was given.
struct Attentes {
  std::mutex mutex;
  std::map<std::string, SupportFichier*> fichiers;
  uint64_t suivant = 0;
} attentes;

// What SQLite holds for an open file: the main database on a support, or
// any other file of the default system in the room after it.
struct FichierBase {
  sqlite3_file base;
  SupportFichier* support;
};

SupportFichier& Support(sqlite3_file* f) { return *reinterpret_cast<FichierBase*>(f)->support; }

int Fermer(sqlite3_file*) { return SQLITE_OK; }  // the caller closes or gives up the file

int Lire(sqlite3_file* f, void* destination, int taille, sqlite3_int64 position) {
  const int64_t lus = Support(f).LireA(static_cast<char*>(destination), static_cast<std::size_t>(taille),
                                       static_cast<uint64_t>(position));
  if (lus < 0) return SQLITE_IOERR_READ;
  if (lus == taille) return SQLITE_OK;
  std::memset(static_cast<char*>(destination) + lus, 0, static_cast<std::size_t>(taille - lus));
  return SQLITE_IOERR_SHORT_READ;
}

int Ecrire(sqlite3_file* f, const void* source, int taille, sqlite3_int64 position) {
  return Support(f).EcrireA(static_cast<const char*>(source), static_cast<std::size_t>(taille),
                            static_cast<uint64_t>(position))
             ? SQLITE_OK
             : SQLITE_IOERR_WRITE;
}

int Tronquer(sqlite3_file* f, sqlite3_int64 taille) {
  return Support(f).Tronquer(static_cast<uint64_t>(taille)) ? SQLITE_OK : SQLITE_IOERR_TRUNCATE;
}

// Synced when it is put in place, as every file written.
int Synchroniser(sqlite3_file*, int) { return SQLITE_OK; }

int Taille(sqlite3_file* f, sqlite3_int64* taille) {
  const int64_t t = Support(f).Taille();
  *taille = t < 0 ? 0 : t;
  return t < 0 ? SQLITE_IOERR_FSTAT : SQLITE_OK;
}

// No other process can see the file: every lock is granted.
int Verrouiller(sqlite3_file*, int) { return SQLITE_OK; }
int VerrouReserve(sqlite3_file*, int* reserve) {
  *reserve = 0;
  return SQLITE_OK;
}
int Controle(sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; }
int Secteur(sqlite3_file*) { return 4096; }
int Caracteristiques(sqlite3_file*) { return 0; }

const sqlite3_io_methods kMethodes = {
    1,      Fermer,     Lire,          Ecrire,        Tronquer, Synchroniser, Taille, Verrouiller,
    Verrouiller, VerrouReserve, Controle, Secteur, Caracteristiques,
    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
};

sqlite3_vfs* Defaut(sqlite3_vfs* vfs) { return static_cast<sqlite3_vfs*>(vfs->pAppData); }

int Ouvrir(sqlite3_vfs* vfs, const char* nom, sqlite3_file* f, int drapeaux, int* sortie) {
  if (nom != nullptr && (drapeaux & SQLITE_OPEN_MAIN_DB) != 0) {
    std::lock_guard<std::mutex> verrou(attentes.mutex);
    const auto trouve = attentes.fichiers.find(nom);
    if (trouve == attentes.fichiers.end()) return SQLITE_CANTOPEN;
    auto* fichier = reinterpret_cast<FichierBase*>(f);
    fichier->base.pMethods = &kMethodes;
    fichier->support = trouve->second;
    attentes.fichiers.erase(trouve);
    if (sortie != nullptr) *sortie = drapeaux;
    return SQLITE_OK;
  }
  // A journal beside the database would be a file of its own, named after
  // a key: none is wanted, and none is made. SQLite's unnamed temporary
  // files go through its own system.
  if (nom != nullptr) return SQLITE_CANTOPEN;
  return Defaut(vfs)->xOpen(Defaut(vfs), nom, f, drapeaux, sortie);
}

// The names given to SQLite are its keys into the waiting files, kept as
// they are.
int CheminComplet(sqlite3_vfs*, const char* nom, int taille, char* sortie) {
  if (static_cast<int>(std::strlen(nom)) >= taille) return SQLITE_CANTOPEN;
  std::strcpy(sortie, nom);
  return SQLITE_OK;
}

sqlite3_vfs* Systeme() {
  static sqlite3_vfs vfs = [] {
    sqlite3_vfs* defaut = sqlite3_vfs_find(nullptr);
    sqlite3_vfs v = *defaut;
    v.iVersion = std::min(defaut->iVersion, 2);
    v.szOsFile = std::max(defaut->szOsFile, static_cast<int>(sizeof(FichierBase)));
    v.pNext = nullptr;
    v.zName = "quillon";
    v.pAppData = defaut;
    v.xOpen = Ouvrir;
    v.xFullPathname = CheminComplet;
    return v;
  }();
  static const bool inscrit = sqlite3_vfs_register(&vfs, 0) == SQLITE_OK;
  return inscrit ? &vfs : nullptr;
}

}  // namespace

int OuvrirBaseSur(SupportFichier& fichier, sqlite3** base) {
  *base = nullptr;
  sqlite3_vfs* vfs = Systeme();
  if (vfs == nullptr) return SQLITE_ERROR;
  std::string nom;
  {
    std::lock_guard<std::mutex> verrou(attentes.mutex);
    nom = "quillon-" + std::to_string(attentes.suivant++);
    attentes.fichiers[nom] = &fichier;
  }
  const int code = sqlite3_open_v2(nom.c_str(), base, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                                   "quillon");
  std::lock_guard<std::mutex> verrou(attentes.mutex);
  attentes.fichiers.erase(nom);  // when SQLite did not take it
  return code;
}

}  // namespace quillon
