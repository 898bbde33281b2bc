// SQLite over the file services: a database whose main file is a file the
// file services created for writing, so that it is made, failed and put in
// place as every other file Quillon writes (unnamed until complete where
// the system can, and through the in-memory file system in the tests).
// SQLite's own temporary files still go through its default system.
#pragma once

#include <sqlite3.h>

#include "io/file_system.h"

namespace quillon {

// Opens a new database on the empty file `fichier` (created for writing, to
// be closed or given up by the caller once the database is closed). The
// database keeps no lock and no journal of its own: it is the only user of
// a file that nobody else can see yet. SQLITE_OK, or SQLite's error code,
// `*base` then being a handle for sqlite3_errmsg, to close all the same.
int OuvrirBaseSur(SupportFichier& fichier, sqlite3** base);

}  // namespace quillon
