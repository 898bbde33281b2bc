#include "export/export_writer.h"

namespace quillon {

const char* MotFormat(FormatExport format) {
  switch (format) {
    case FormatExport::GeoPackage: return "gpkg";
    case FormatExport::Csv: return "csv";
    case FormatExport::GeoJson: return "geojson";
    case FormatExport::Dxf: return "dxf";
  }
  return "";
}

const char* DescriptionFormat(FormatExport format) {
  switch (format) {
    case FormatExport::GeoPackage: return "GeoPackage";
    case FormatExport::Csv: return "CSV";
    case FormatExport::GeoJson: return "GeoJSON";
    case FormatExport::Dxf: return "DXF";
  }
  return "";
}

bool FormatDisponible(FormatExport format) { return format != FormatExport::GeoPackage || GeoPackageDisponible(); }

std::vector<std::string> FichiersExport(FormatExport format, const std::string& base) {
  switch (format) {
    case FormatExport::GeoPackage: return {base + ".gpkg"};
    case FormatExport::Csv: return {base + ".csv", base + ".csvt", base + "-rejets.csv", base + "-rejets.csvt"};
    case FormatExport::GeoJson: return {base + ".geojson", base + "-rejets.geojson"};
    case FormatExport::Dxf: return {base + ".dxf"};
  }
  return {};
}

std::unique_ptr<EcrivainExport> CreerEcrivain(FormatExport format, const std::string& base, SystemeFichiers& systeme) {
  switch (format) {
    case FormatExport::GeoPackage: return EcrivainGeoPackage(base, systeme);
    case FormatExport::Csv: return EcrivainCsv(base, systeme);
    case FormatExport::GeoJson: return EcrivainGeoJson(base, systeme);
    case FormatExport::Dxf: return EcrivainDxf(base, systeme);
  }
  return nullptr;
}

std::string_view DefinitionSysteme(int epsg) {
  // The Swiss projection on the Bessel ellipsoid, as the EPSG registry
  // defines it, for the new frame (LV95) and the old one (LV03).
  static constexpr std::string_view kLV95 =
      R"(PROJCS["CH1903+ / LV95",GEOGCS["CH1903+",DATUM["CH1903+",SPHEROID["Bessel 1841",6377397.155,299.1528128,AUTHORITY["EPSG","7004"]],AUTHORITY["EPSG","6150"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AUTHORITY["EPSG","4150"]],PROJECTION["Hotine_Oblique_Mercator_Azimuth_Center"],PARAMETER["latitude_of_center",46.9524055555556],PARAMETER["longitude_of_center",7.43958333333333],PARAMETER["azimuth",90],PARAMETER["rectified_grid_angle",90],PARAMETER["scale_factor",1],PARAMETER["false_easting",2600000],PARAMETER["false_northing",1200000],UNIT["metre",1,AUTHORITY["EPSG","9001"]],AXIS["Easting",EAST],AXIS["Northing",NORTH],AUTHORITY["EPSG","2056"]])";
  static constexpr std::string_view kLV03 =
      R"(PROJCS["CH1903 / LV03",GEOGCS["CH1903",DATUM["CH1903",SPHEROID["Bessel 1841",6377397.155,299.1528128,AUTHORITY["EPSG","7004"]],AUTHORITY["EPSG","6149"]],PRIMEM["Greenwich",0,AUTHORITY["EPSG","8901"]],UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AUTHORITY["EPSG","4149"]],PROJECTION["Hotine_Oblique_Mercator_Azimuth_Center"],PARAMETER["latitude_of_center",46.9524055555556],PARAMETER["longitude_of_center",7.43958333333333],PARAMETER["azimuth",90],PARAMETER["rectified_grid_angle",90],PARAMETER["scale_factor",1],PARAMETER["false_easting",600000],PARAMETER["false_northing",200000],UNIT["metre",1,AUTHORITY["EPSG","9001"]],AXIS["Easting",EAST],AXIS["Northing",NORTH],AUTHORITY["EPSG","21781"]])";
  if (epsg == 2056) return kLV95;
  if (epsg == 21781) return kLV03;
  return {};
}

}  // namespace quillon
