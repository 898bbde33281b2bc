#!/bin/sh
# GDAL reads back the exports of generated files: every layer of every
# format holds as many features as quillon-lot converted and rejected, in
# the system asked for; the points' fields are those of the target's lines;
# the GeoPackage passes SQLite's integrity check, says 'GPKG', its R-trees
# pass the R*Tree module's own check, and find the points of a box. A
# system guessed at the end of the run is read from the room left for it
# at the top of the GeoJSON, and the drawing holds the same entities.
#   ogrinfo_test.sh QUILLON-LOT QUILLON_GENERER
# Exits 77 (skipped) when ogrinfo or sqlite3 is missing.
set -eu
lot=$1 generer=$2
for outil in ogrinfo ogr2ogr sqlite3; do
  command -v "$outil" >/dev/null || { echo "ignoré : $outil n'est pas installé (paquets gdal-bin, sqlite3)"; exit 77; }
done
d=$(mktemp -d)
trap "rm -rf \"$d\"" EXIT
echec() { echo "ÉCHEC: $*"; exit 1; }
compte() { ogrinfo -ro -so "$1" "$2" | sed -n 's/^Feature Count: //p'; }

"$generer" ptv 3000 7 "$d/a.ptv"
"$generer" ptv 400 8 --faulty >> "$d/a.ptv"
"$lot" -e 1000 -t CS --srs=EPSG:2056 --exporter=gpkg,csv,geojson,dxf "$d/a.ptv" >/dev/null || [ $? -eq 1 ]
points=$(wc -l < "$d/a.ptp")
rejets=$(sqlite3 "$d/a.gpkg" 'SELECT count(*) FROM rejets')
[ "$points" -gt 2000 ] && [ "$rejets" -gt 100 ] || echec "trop peu de points ($points) ou de rejets ($rejets)"

for f in a.gpkg:points a.gpkg:rejets a.csv:a a-rejets.csv:a-rejets a.geojson:points a-rejets.geojson:rejets; do
  n=$(compte "$d/${f%%:*}" "${f#*:}")
  case $f in *rejets*) attendu=$rejets ;; *) attendu=$points ;; esac
  [ "$n" = "$attendu" ] || echec "$f : $n entités, $attendu attendues"
done
for f in a.gpkg a.geojson; do
  ogrinfo -ro -so "$d/$f" points | grep -q 'ID\["EPSG",2056\]\]$' || echec "$f n'est pas en EPSG:2056"
done
n=$(ogrinfo -ro -q -sql "SELECT COUNT(*) AS n FROM entities WHERE Layer <> 'REJETS' AND Text IS NULL" "$d/a.dxf" |
  sed -n 's/.*n (Integer) = //p')
[ "$n" = "$points" ] || echec "a.dxf : $n points, $points attendus"

# The same fields in the three formats, and the target's columns.
champs=theme,commune,plan,numero,nature,y,x,prec_plan,fiab_plan,valeur
for f in a.gpkg:points a.csv:a a.geojson:points; do
  ogr2ogr -f CSV /vsistdout/ "$d/${f%%:*}" "${f#*:}" -select "$champs" | tr -d '"\r' > "$d/$(echo "${f%%:*}" | tr . _).txt"
done
cmp -s "$d/a_gpkg.txt" "$d/a_csv.txt" && cmp -s "$d/a_gpkg.txt" "$d/a_geojson.txt" || echec "les formats diffèrent"
awk 'BEGIN { CONVFMT = "%.10g" } function t(s) { gsub(/^ +| +$/, "", s); return s }
     { print substr($0,1,2)+0 "," substr($0,3,4)+0 "," substr($0,7,4)+0 "," t(substr($0,11,12)) "," substr($0,23,2)+0 "," \
             t(substr($0,33,11))+0 "," t(substr($0,45,11))+0 "," t(substr($0,27,5))+0 "," substr($0,26,1) }' \
  "$d/a.ptp" | tr -d '\r' > "$d/cible.txt"
tail -n +2 "$d/a_gpkg.txt" | cut -d, -f1-9 | awk -F, -v OFS=, -v CONVFMT=%.10g -v OFMT=%.10g '{ $6 += 0; $7 += 0; $8 += 0; print }' > "$d/export.txt"
cmp -s "$d/cible.txt" "$d/export.txt" || { diff "$d/cible.txt" "$d/export.txt" | head -5; echec "les points ne sont pas ceux de la cible"; }

[ "$(sqlite3 "$d/a.gpkg" 'PRAGMA integrity_check')" = ok ] || echec "intégrité du GeoPackage"
[ "$(sqlite3 "$d/a.gpkg" 'PRAGMA application_id')" = 1196444487 ] || echec "application_id n'est pas GPKG"
for t in points rejets; do
  [ "$(sqlite3 "$d/a.gpkg" "SELECT rtreecheck('rtree_${t}_geom')")" = ok ] || echec "le R-tree de $t est incohérent"
done
# The default styles QGIS applies, one per layer, in a table of the contents.
styles=$(sqlite3 "$d/a.gpkg" "SELECT group_concat(f_table_name) FROM layer_styles WHERE useAsDefault AND styleQML LIKE '<!DOCTYPE qgis%'")
[ "$styles" = points,rejets ] || echec "styles par défaut : $styles"
[ "$(sqlite3 "$d/a.gpkg" "SELECT data_type FROM gpkg_contents WHERE table_name = 'layer_styles'")" = attributes ] ||
  echec "layer_styles n'est pas dans gpkg_contents"
boite='2600000 AND 2700000 AND x BETWEEN 1200000 AND 1250000'
dans=$(sqlite3 "$d/a.gpkg" "SELECT count(*) FROM points WHERE y BETWEEN $boite")
index=$(sqlite3 "$d/a.gpkg" "SELECT count(*) FROM rtree_points_geom WHERE minx >= 2600000 AND maxx <= 2700000 AND miny >= 1200000 AND maxy <= 1250000")
[ "$dans" -gt 0 ] && [ "$dans" = "$index" ] || echec "le R-tree trouve $index points, la table $dans"
# Guessed: the GeoJSON's system is written at the end into the room at its
# top, the GeoPackage's by its first pass; with none (the generated file
# mixes both frames), the room stays blank and the file is read all the
# same.
mkdir "$d/devine"
head -n 3000 "$d/a.ptv" | LC_ALL=C awk 'substr($0, 33, 11) + 0 > 2000000' > "$d/devine/lv95.ptv"
cp "$d/a.ptv" "$d/devine/melange.ptv"
for f in lv95 melange; do
  "$lot" -e 1000 -t CS --exporter=gpkg,geojson "$d/devine/$f.ptv" >/dev/null 2>&1 || [ $? -eq 1 ]
  "$lot" -e 1000 -t CS --exporter=geojson -o "$d/devine/seul" "$d/devine/$f.ptv" >/dev/null 2>&1 || [ $? -eq 1 ]
done
for f in lv95.gpkg lv95.geojson seul/lv95.geojson; do
  ogrinfo -ro -so "$d/devine/$f" points | grep -q 'ID\["EPSG",2056\]\]$' || echec "$f : le système deviné n'est pas lu"
done
for f in melange.gpkg melange.geojson seul/melange.geojson; do
  [ "$(compte "$d/devine/$f" points)" -gt 2000 ] || echec "$f sans système n'est pas lu"
done

echo "exports lus par GDAL : $points points, $rejets rejets"
