// The writers of the exports, one per format. Each is fed one record at a
// time and keeps nothing of it: memory stays the same whatever the source.
// Each writes its files beside their final names and puts them in place
// only when complete; given up (or destroyed before), it leaves the files
// of those names as they were.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "export/records.h"
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
// (EPSG code, 0 for none) and, for the DXF drawing, the extent and the
// themes of the points when a first pass gave them.
struct EnteteExport {
  int epsg = 0;
  bool emprise = false;  // the four bounds below are known
  double yMin = 0, yMax = 0, xMin = 0, xMax = 0;
  std::vector<int32_t> themes;  // sorted
};

class EcrivainExport {
 public:
  virtual ~EcrivainExport() = default;
  // False, and Erreur() tells, when a file cannot be created or written.
  virtual bool Commencer(const EnteteExport& entete) = 0;
  virtual bool Ecrire(const Enregistrement& e) = 0;
  // Ends the files and puts them in place.
  virtual bool Terminer() = 0;
  virtual void Abandonner() = 0;
  const ErreurFatale& Erreur() const { return erreur_; }

 protected:
  bool Echouer(const std::string& fichier, RaisonFatale raison) {
    erreur_ = {fichier, raison};
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
