#!/usr/bin/env bash
# Benchmark of the exports: one file of BENCH_LINES valid points (default
# 1000000) converted by quillon-lot alone, then with each export, given its
# system (--srs) and guessing it: one pass over the source either way, but
# for the GeoPackage guessing its system, which reads the source once more
# before the conversion (its reader alone).
#
#   bench/run_bench_exports.sh BUILD_DIR [SCRATCH_DIR]
#
# SCRATCH_DIR (default: bench/out/exports, ignored by git) receives the
# source, the target and the exports; about 1 GB. The time of an export is
# the run's time less the conversion's alone. Targets: the GeoPackage
# within 3 s, each text format within 1 s; memory the conversion's.
set -euo pipefail

defaut=bench/out/exports programmes=quillon-lot
. "$(dirname "$0")/commun.sh"
lignes="${BENCH_LINES:-1000000}"
lot="$build/quillon-lot"
source="$scratch/points.ptv"
if [ ! -f "$source" ] || [ "$(wc -l <"$source")" != "$lignes" ]; then
  echo "Generating a $lignes-line file ..."
  "$generer" ptv "$lignes" 1 "$source"
fi

# exporter ARGS...: the best time and peak memory of quillon-lot with them.
exporter() { mesurer "$lot" -e 1000 -t CS "$@" "$source"; }

echo "Converting $lignes lines ($essais runs each) ..."
exporter
seul="$meilleur" rss_seul="$rss"
echo
echo "quillon-lot exports: best of $essais runs, $(nproc) cores, $lignes points"
printf '%-32s %8s s %8s KiB\n' "conversion alone" "$(calcul %.3f "$seul")" "$rss_seul"
for format in gpkg csv geojson dxf; do
  for srs in --srs=EPSG:2056 ""; do
    exporter --exporter="$format" $srs
    export_seul="$(calcul %.3f "$meilleur - $seul")"
    printf '%-32s %8s s %8s KiB   (export: %s s)\n' "$format ${srs:-(system guessed)}" \
      "$(calcul %.3f "$meilleur")" "$rss" "$export_seul"
    objectif=1
    if [ "$format" = gpkg ]; then objectif=3; fi
    if [ -n "$srs" ] && plus_petit "$objectif" "$export_seul"; then
      echecs+=("$format: $export_seul s, target $objectif s")
    fi
  done
done
echo "load average at the end: $(cut -d' ' -f1-3 /proc/loadavg) (wall times suffer when the machine is busy)"
objectifs
