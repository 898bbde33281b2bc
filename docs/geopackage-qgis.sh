#!/bin/sh
# Takes again docs/geopackage-qgis.png: the map that QGIS renders, headless,
# of the GeoPackage quillon-lot exports from the small file of the QGIS
# test (tests/exports/qgis_test.py), whose checks it passes on the way.
#
#   docs/geopackage-qgis.sh [BUILD_DIR]        default BUILD_DIR: build
#
# Needs QGIS's Python bindings for the system's Python (python3-qgis).
set -eu

docs=$(cd "$(dirname "$0")" && pwd)
racine=$(dirname "$docs")
build=${1:-$racine/build}
[ -x "$build/quillon-lot" ] || { echo "geopackage-qgis: $build/quillon-lot is missing" >&2; exit 1; }
QT_QPA_PLATFORM=offscreen /usr/bin/python3 "$racine/tests/exports/qgis_test.py" "$build/quillon-lot" \
  "$racine/src/report/check_report.js" "$docs/geopackage-qgis.png"
echo "geopackage-qgis: $(wc -c < "$docs/geopackage-qgis.png") bytes"
