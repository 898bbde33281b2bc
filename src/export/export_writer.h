// The writers of the exports, one per format. Each is fed one record at a
// time and keeps nothing of it: memory stays the same whatever the source.
// Each writes its files beside their final names and puts them in place
// only when complete; given up (or destroyed before), it leaves the files
// of those names as they were.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "export/record.h"
#include "model/colors.h"
#include "model/extent.h"
#include "io/display.h"
#include "io/file_system.h"

namespace quillon {

enum class FormatExport { GeoPackage, Csv, GeoJson, Dxf };

// "gpkg", "csv", "geojson", "dxf".
const char* MotFormat(FormatExport format);
// "GeoPackage", "CSV", "GeoJSON", "DXF": the format's name for a user.
const char* DescriptionFormat(FormatExport format);
// False for the GeoPackage in a build without SQLite.
bool FormatDisponible(FormatExport format);

// What the writers know before the first record: the coordinate system
// (EPSG code, 0 for none) when it is known then, given or guessed by a
// first pass. Otherwise it is told at the end (Terminer), which the
// GeoPackage, whose geometries carry it, cannot wait for.
struct EnteteExport {
  int epsg = 0;
  bool systemeConnu = false;
};

// What the writers learn at the end: the system (EPSG code, 0 for none),
// the header's when it was known; the themes found in the source, whose
// ranks give the points' colours (model/colors.h), as in the check
// report and the main window.
struct FinExport {
  int epsg = 0;
  ThemesTrouves themes;
};

class EcrivainExport {
 public:
  virtual ~EcrivainExport() = default;
  // False, and Erreur() tells, when a file cannot be created or written.
  virtual bool Commencer(const EnteteExport& entete) = 0;
  virtual bool Ecrire(const Enregistrement& e) = 0;
  // Ends the files, written out whole but not yet in place.
  virtual bool Terminer(const FinExport& fin) = 0;
  // Then puts them in place: once every writer of an export has ended its
  // files, so that a failure while writing leaves none of them in place.
  virtual bool Placer() = 0;
  virtual void Abandonner() = 0;
  const ErreurFatale& Erreur() const { return erreur_; }

 protected:
  // `detail`: why, in the words of the library that failed (Windows-1252).
  bool Echouer(const std::string& fichier, RaisonFatale raison, std::string detail = {}) {
    erreur_ = {fichier, raison, std::move(detail)};
    return false;
  }

 private:
  ErreurFatale erreur_;
};

// The files a format writes for `base` (the path without its extension):
// base.gpkg; base.csv, base.csvt, base-rejets.csv, base-rejets.csvt;
// base.geojson, base-rejets.geojson; base.dxf.
std::vector<std::string> FichiersExport(FormatExport format, const std::string& base);

std::unique_ptr<EcrivainExport> CreerEcrivain(FormatExport format, const std::string& base, SystemeFichiers& systeme);

// One per format, in its own file.
std::unique_ptr<EcrivainExport> EcrivainCsv(const std::string& base, SystemeFichiers& systeme);
std::unique_ptr<EcrivainExport> EcrivainGeoJson(const std::string& base, SystemeFichiers& systeme);
std::unique_ptr<EcrivainExport> EcrivainDxf(const std::string& base, SystemeFichiers& systeme);
std::unique_ptr<EcrivainExport> EcrivainGeoPackage(const std::string& base, SystemeFichiers& systeme);  // null without SQLite
bool GeoPackageDisponible();

// The well-known text of the two Swiss systems (EPSG 2056 and 21781);
// empty for any other code.
std::string_view DefinitionSysteme(int epsg);

}  // namespace quillon
