// A GeoPackage layer's R-tree, filled at once: the boxes of its points
// packed into full nodes (sort-tile-recursive) and written straight into
// the tables of SQLite's R*Tree module, which inserting them one after the
// other through the module would take ten times as long to fill.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quillon {

// A point's box as the R*Tree module keeps it: single-precision bounds, the
// lower rounded down and the upper rounded up, so that the box holds the
// point whatever the rounding.
struct BoiteIndex {
  float yMin, yMax, xMin, xMax;
  int64_t id;  // the row's fid
};

BoiteIndex BoiteDuPoint(int64_t id, double y, double x);

// Fills `table`, a two-dimensional R-tree just created and still empty, with
// `boites` (reordered on the way). False, with SQLite's error left on the
// connection, when a write fails.
bool RemplirArbreR(sqlite3* base, const std::string& table, std::vector<BoiteIndex>& boites);

}  // namespace quillon
