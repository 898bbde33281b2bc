#!/bin/sh
# The Windows build's exports against the Linux build's, under wine:
#   tests/windows/exports.sh LINUX_BUILD WINDOWS_BUILD
# The same generated file (valid and faulty lines) exported in every format
# by quillon-lot and quillon-lot.exe: the CSV, GeoJSON and DXF files are the
# same bytes; GDAL's ogrinfo reads the same features from both GeoPackages,
# whose R-trees pass SQLite's own check, all but the styles' write times.
set -eu
linux="$(cd "$1" && pwd)"
windows="$(cd "$2" && pwd)"
if ! command -v ogrinfo >/dev/null || ! command -v sqlite3 >/dev/null; then
  echo "test-windows: exports: ogrinfo or sqlite3 missing (scripts/install-deps.sh): skipped"
  exit 0
fi
d=$(mktemp -d)
trap 'rm -rf "$d"' EXIT
mkdir "$d/linux" "$d/windows"
"$linux/bench/quillon_generer" ptv 3000 11 "$d/a.ptv"
"$linux/bench/quillon_generer" ptv 300 12 --faulty >>"$d/a.ptv"
for s in linux windows; do cp "$d/a.ptv" "$d/$s/"; done
options="-e 1000 -t CS --srs=EPSG:2056 --exporter=gpkg,csv,geojson,dxf a.ptv"
# shellcheck disable=SC2086
(cd "$d/linux" && "$linux/quillon-lot" $options >/dev/null) || [ $? -eq 1 ]
# shellcheck disable=SC2086
(cd "$d/windows" && wine "$windows/quillon-lot.exe" $options >/dev/null) || [ $? -eq 1 ]
for f in a.csv a.csvt a-rejets.csv a-rejets.csvt a.geojson a-rejets.geojson a.dxf; do
  cmp "$d/linux/$f" "$d/windows/$f" || { echo "test-windows: exports: $f differs"; exit 1; }
done
for s in linux windows; do
  # The styles' rows carry the time they were written, which two runs
  # cannot share.
  ogrinfo -ro -al -q "$d/$s/a.gpkg" >"$d/$s.all"
  grep -v '^  update_time ' "$d/$s.all" >"$d/$s.txt"
  for t in points rejets; do
    [ "$(sqlite3 "$d/$s/a.gpkg" "SELECT rtreecheck('rtree_${t}_geom')")" = ok ] ||
      { echo "test-windows: exports: the $s GeoPackage's R-tree of $t"; exit 1; }
  done
done
cmp "$d/linux.txt" "$d/windows.txt" || { echo "test-windows: exports: GDAL reads the GeoPackages differently"; exit 1; }
echo "test-windows: exports: the same CSV, GeoJSON and DXF bytes, the same GeoPackage read by GDAL ($(grep -c '^OGRFeature' "$d/linux.txt") features)"
