#!/bin/sh
# The 32-bit Linux build against the 64-bit one (make test-32bits):
#   tests/32bits/run-tests.sh BUILD_64 BUILD_32
# The 32-bit programs are built as the i686 Windows programs are, SSE2
# arithmetic included, and stand in for them, which cannot run here; they
# must compute as the 64-bit programs do:
# - every e2e case (tests/e2e), and the runs of tests/runs_test.cc that
#   Linux meets, against the 32-bit quillon and quillon-lot, driven by the
#   64-bit e2e program: the outputs and files that the 64-bit programs give;
# - what the value lookups and the number conversions answer over a sweep
#   of their inputs (quillon_balayage): the same bytes from both builds;
# - generated files of every kind, valid and faulty, converted by both
#   builds' quillon at every scale and quillon-lot with every export, the
#   JSON report and the check reports: the same outputs, targets, logs,
#   reports and exports (their dates aside).
set -eu
b64="$(cd "$1" && pwd)"
b32="$(cd "$2" && pwd)"
d=$(mktemp -d)
trap 'rm -rf "$d"' EXIT
export LC_ALL=C

echo "test-32bits: e2e cases and runs against the 32-bit quillon and quillon-lot"
debut=$(date +%s)
# One test program per case, as ctest runs them: the memory a run may take
# is measured with the test program's own.
(cd "$b64" && QUILLON_EXE="$b32/quillon" QUILLON_LOT_EXE="$b32/quillon-lot" \
  ctest -R '^(Executable/CasE2E\.|Fautes\.|Lot\.)' -j 2 --output-on-failure >"$d/ctest.txt" 2>&1) ||
  { cat "$d/ctest.txt"; exit 1; }
echo "test-32bits: $(grep -o '[0-9]*% tests passed.*' "$d/ctest.txt" || tail -n 3 "$d/ctest.txt"), in $(($(date +%s) - debut)) s"

echo "test-32bits: sweep of the value lookups and number conversions"
"$b64/quillon_balayage" >"$d/balayage-64.txt"
"$b32/quillon_balayage" >"$d/balayage-32.txt"
if ! cmp -s "$d/balayage-64.txt" "$d/balayage-32.txt"; then
  echo "test-32bits: the sweeps differ (64-bit, then 32-bit):"
  diff -a "$d/balayage-64.txt" "$d/balayage-32.txt" | head -n 20
  exit 1
fi
echo "test-32bits: sweep: the same $(wc -l <"$d/balayage-64.txt") lines from both builds" \
  "($(cut -d' ' -f1 "$d/balayage-64.txt" | sort | uniq -c | awk '{printf "%s%s %s", (NR > 1 ? ", " : ""), $1, $2}'))"

# Generated files, valid lines then faulty ones.
generer="$b64/bench/quillon_generer"
mkdir "$d/sources"
graine=321
for source in valeurs.ptv precisions.ptp dc.pts; do
  "$generer" "${source#*.}" 20000 $graine "$d/sources/$source"
  "$generer" "${source#*.}" 2000 $((graine + 1)) --faulty >>"$d/sources/$source"
  graine=$((graine + 2))
done

# convertir BUILD FOLDER: every conversion of the sources, in FOLDER.
convertir() {
  b="$1"
  cd "$2"
  cp -r "$d/sources" sources
  for echelle in 250 500 1000 2000 4000 5000; do
    for groupe in CS OD; do
      mkdir "$echelle-$groupe" && cp sources/valeurs.ptv "$echelle-$groupe/"
      "$b/quillon" "$echelle-$groupe/valeurs.ptv" "$echelle-$groupe/valeurs.ptp" $echelle $groupe \
        >"$echelle-$groupe/sortie"
    done
  done
  for cible in ptv ptm; do
    mkdir "en-$cible" && cp sources/precisions.ptp "en-$cible/"
    "$b/quillon" "en-$cible/precisions.ptp" "en-$cible/precisions.$cible" >"en-$cible/sortie"
  done
  "$b/quillon-lot" -p ptv -e 1000 -t CS --exporter=gpkg,csv,geojson,dxf --json=lot.json --rapport=rapports \
    -o lot-ptv sources >lot-ptv.txt 2>lot-ptv.err || [ $? -eq 1 ]
  "$b/quillon-lot" -p ptm -e 250 -t OD --srs=EPSG:21781 --exporter=csv,geojson,dxf --json=- -o lot-ptm sources \
    >lot-ptm.json 2>lot-ptm.err || [ $? -eq 1 ]
  # The dates: each log's second line, those of the check reports, and the
  # GeoPackages' (whose every row and R-tree node is compared as SQLite
  # dumps it).
  find . -name '*.log' -exec sed -i '2s/.*/<date>/' {} +
  find . -name '*.html' -exec sed -i -E 's/[0-9]{2}-[^-<]{3,8}-[0-9]{4}, [0-9]{2}:[0-9]{2}:[0-9]{2}/<date>/g' {} +
  for g in $(find . -name '*.gpkg'); do
    sqlite3 "$g" .dump | sed -E "s/'[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:.]+Z'/'<date>'/g" >"$g.sql"
    rm "$g"
  done
  cd - >/dev/null
}

echo "test-32bits: generated files converted by both builds"
mkdir "$d/64" "$d/32"
convertir "$b64" "$d/64"
convertir "$b32" "$d/32"
if ! diff -r -q "$d/64" "$d/32"; then
  echo "test-32bits: the conversions differ"
  exit 1
fi
echo "test-32bits: conversions: 14 runs of quillon and 2 of quillon-lot over $(cat "$d/sources"/* | wc -l) lines:" \
  "the same $(find "$d/64" -type f ! -path '*/sources/*' | wc -l) files from both builds"
