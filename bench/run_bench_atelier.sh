#!/usr/bin/env bash
# Benchmark of the main window's workbench, without a toolkit.
#
#   bench/run_bench_atelier.sh BUILD_DIR [SCRATCH_DIR]
#
# A folder of BENCH_LOT_FILES small files (default 1000, of
# BENCH_LOT_LINES lines, default 100) dropped on the workbench and checked,
# against quillon-lot -n on the same folder: at most 1.2 times its time.
# Then one file of BENCH_LINES lines (default 1000000) dropped: its picture
# within 1 s of its run's end, and a redraw after a zoom or a pan within
# 50 ms, at the overview (the points' density) and at full zoom. Each
# timing is the best of BENCH_RUNS runs (default 3).
set -euo pipefail

defaut=bench/out/atelier programmes="quillon-lot bench/quillon_bench_atelier"
. "$(dirname "$0")/commun.sh"
fichiers="${BENCH_LOT_FILES:-1000}"
lignes_petits="${BENCH_LOT_LINES:-100}"
lignes="${BENCH_LINES:-1000000}"
atelier="$build/bench/quillon_bench_atelier"

petits="$scratch/petits"
petits_fichiers "$petits" "$fichiers" "$lignes_petits"

# best NAME CMD...: the best value of the line "NAME seconds" that CMD
# prints, over $essais runs.
best() {
  local nom_valeur="$1" valeur meilleure="" i
  shift
  for ((i = 0; i < essais; i++)); do
    "$@" >"$scratch/atelier.txt"
    valeur="$(sed -n "s/^$nom_valeur //p" "$scratch/atelier.txt")"
    if [ -z "$meilleure" ] || plus_petit "$valeur" "$meilleure"; then meilleure="$valeur"; fi
  done
  echo "$meilleure"
}

echo "Checking $fichiers files ($essais runs each) ..."
# The window's batch checks without writing targets, scale 1:250 and CS,
# subfolders included, as its dialog starts.
mesurer "$build/quillon-lot" -n -r -e 250 -t CS "$petits"
lot="$meilleur"
fenetre="$(best lot "$atelier" lot "$petits")"
rapport="$(calcul %.2f "d($fenetre, $lot)")"

grand="$scratch/grand.ptv"
if [ ! -f "$grand" ] || [ "$(wc -l <"$grand")" != "$lignes" ]; then
  echo "Generating a $lignes-line file ..."
  "$generer" ptv "$lignes" 1 "$grand"
fi
echo "Showing one $lignes-line file ($essais runs) ..."
image="" ensemble="" zoom=""
for ((i = 0; i < essais; i++)); do
  "$atelier" carte "$grand" >"$scratch/carte.txt"
  for mesure in image ensemble zoom; do
    cle="$mesure"
    [ "$mesure" = image ] || cle="redessin_$mesure"
    v="$(sed -n "s/^$cle //p" "$scratch/carte.txt")"
    if [ -z "${!mesure}" ] || plus_petit "$v" "${!mesure}"; then printf -v "$mesure" %s "$v"; fi
  done
done

echo
echo "workbench benchmark: best of $essais runs, $(nproc) cores"
printf '%-52s %8s s\n' "$fichiers files x $lignes_petits lines, quillon-lot -n" "$(calcul %.3f "$lot")"
printf '%-52s %8s s\n' "$fichiers files x $lignes_petits lines, the workbench" "$(calcul %.3f "$fenetre")"
echo "ratio workbench / quillon-lot -n: $rapport (target <= 1.2)"
printf '%-52s %8s s   (target <= 1)\n' "$lignes lines: picture after the run's end" "$(calcul %.3f "$image")"
printf '%-52s %8s ms  (target <= 50)\n' "redraw after a zoom, overview" "$(calcul %.1f "$ensemble * 1000")"
printf '%-52s %8s ms  (target <= 50)\n' "redraw after a pan, full zoom" "$(calcul %.1f "$zoom * 1000")"
echo "load average at the end: $(cut -d' ' -f1-3 /proc/loadavg) (wall times suffer when the machine is busy)"
if plus_petit 1.2 "$rapport"; then echecs+=("the workbench takes $rapport times quillon-lot -n"); fi
if plus_petit 1 "$image"; then echecs+=("picture after $image s"); fi
if plus_petit 0.05 "$ensemble"; then echecs+=("redraw at the overview in $ensemble s"); fi
if plus_petit 0.05 "$zoom"; then echecs+=("redraw at full zoom in $zoom s"); fi
objectifs
