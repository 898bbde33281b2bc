// A build without SQLite: no GeoPackage (the other formats are there).
#include "export/export_writer.h"

namespace quillon {

bool GeoPackageDisponible() { return false; }

std::unique_ptr<EcrivainExport> EcrivainGeoPackage(const std::string&, SystemeFichiers&) { return nullptr; }

}  // namespace quillon
