#!/usr/bin/env bash
# Benchmark of the batch program quillon-lot against the console program.
#
#   bench/run_bench_lot.sh BUILD_DIR [SCRATCH_DIR]
#
# BUILD_DIR holds quillon, quillon-lot and bench/quillon_generer and
# bench/quillon_mesurer. SCRATCH_DIR (default: bench/out/lot, ignored by git)
# receives the generated files, the targets and the logs; about 200 MB.
#
# 1. Many small files: BENCH_LOT_FILES generated value files (default 1000)
#    of BENCH_LOT_LINES lines each (default 1000), converted by a shell loop
#    calling quillon once per file, then by quillon-lot with 2 threads, on
#    the same files. Target: quillon-lot at least 5 times faster.
# 2. One large file: BENCH_LINES lines (default 1000000) through quillon and
#    through quillon-lot with one file. Target: the same speed (quillon-lot
#    within 10% of quillon's time).
# 3. Another program's data waiting: the first 300 of the small files
#    through quillon-lot -j 2, on a quiet disk (everything synced before),
#    then right after another program wrote BENCH_SALES_MO MiB (default
#    3000) into the scratch folder without syncing them. The batch syncs
#    only its own files, so the other program's data must not make it wait:
#    target within 1.5 times its quiet time.
# Each timing is the best wall time of BENCH_RUNS runs (default 3).
set -euo pipefail

defaut=bench/out/lot programmes=quillon-lot
. "$(dirname "$0")/commun.sh"
fichiers="${BENCH_LOT_FILES:-1000}"
lignes_petits="${BENCH_LOT_LINES:-1000}"
lignes="${BENCH_LINES:-1000000}"
lot="$build/quillon-lot"
objectif_rapport=5
objectif_grand=1.10

# --- Many small files --------------------------------------------------------
petits="$scratch/petits"
petits_fichiers "$petits" "$fichiers" "$lignes_petits"

echo "Converting $fichiers files ($essais runs each) ..."
# The loop a script would write without quillon-lot.
mesurer sh -c 'for f in "$1"/*.ptv; do "$2" "$f" "${f%.ptv}.ptp" 1000 CS >/dev/null; done' sh "$petits" "$quillon"
boucle="$meilleur"
# The same files named one by one: the targets of the loop, beside them,
# would otherwise be sources of the batch.
mesurer "$lot" -j 2 -e 1000 -t CS "$petits"/*.ptv
lot_petits="$meilleur"
rapport="$(calcul %.1f "d($boucle, $lot_petits)")"
convertis="$(sed -n 's/^Total: [0-9]* fichier(s) : \([0-9]*\) converti.*/\1/p' "$scratch/sortie.txt")"

# --- One large file ----------------------------------------------------------
grand="$scratch/grand.ptv"
if [ ! -f "$grand" ] || [ "$(wc -l <"$grand")" != "$lignes" ]; then
  echo "Generating a $lignes-line file ..."
  "$generer" ptv "$lignes" 1 "$grand"
fi
echo "Converting one $lignes-line file ($essais runs each) ..."
mesurer "$quillon" "$grand" "$scratch/grand-quillon.ptp" 1000 CS
grand_quillon="$meilleur"
mesurer "$lot" -e 1000 -t CS -c "$scratch/grand-lot.ptp" "$grand"
grand_lot="$meilleur"
rapport_grand="$(calcul %.2f "d($grand_lot, $grand_quillon)")"
if ! cmp -s "$scratch/grand-quillon.ptp" "$scratch/grand-lot.ptp"; then
  echo "$nom: the two targets of the large file differ" >&2
  exit 1
fi

# --- Another program's data waiting ------------------------------------------
sales_mo="${BENCH_SALES_MO:-3000}"
groupe=("$petits"/f0*.ptv)
groupe=("${groupe[@]:0:300}")
echo "Converting ${#groupe[@]} files, on a quiet disk then after $sales_mo MiB left unsynced ($essais runs each) ..."
mesurer "$lot" -j 2 -e 1000 -t CS "${groupe[@]}"
calme="$meilleur"
sales=""
for ((i = 0; i < essais; i++)); do
  rm -f "$scratch/autre-programme"
  sync
  dd if=/dev/zero of="$scratch/autre-programme" bs=1M count="$sales_mo" status=none
  "$mesurer" "$resultat" "$lot" -j 2 -e 1000 -t CS "${groupe[@]}" >/dev/null || true
  read -r secondes _ _ _ <"$resultat"
  if [ -z "$sales" ] || plus_petit "$secondes" "$sales"; then sales="$secondes"; fi
done
rm -f "$scratch/autre-programme"
rapport_sales="$(calcul %.2f "d($sales, $calme)")"

# --- Report ------------------------------------------------------------------
echo
echo "quillon-lot benchmark: best of $essais runs, $(nproc) cores"
printf '%-46s %9s s\n' "$fichiers files x $lignes_petits lines, shell loop of quillon" "$(calcul %.3f "$boucle")"
printf '%-46s %9s s   (%s files converted)\n' "$fichiers files x $lignes_petits lines, quillon-lot -j 2" \
  "$(calcul %.3f "$lot_petits")" "${convertis:-?}"
echo "ratio loop / quillon-lot: $rapport (target >= $objectif_rapport)"
printf '%-46s %9s s   (%s lines/s)\n' "1 file x $lignes lines, quillon" "$(calcul %.3f "$grand_quillon")" \
  "$(calcul %.0f "d($lignes, $grand_quillon)")"
printf '%-46s %9s s   (%s lines/s)\n' "1 file x $lignes lines, quillon-lot" "$(calcul %.3f "$grand_lot")" \
  "$(calcul %.0f "d($lignes, $grand_lot)")"
echo "ratio quillon-lot / quillon on the large file: $rapport_grand (target <= $objectif_grand)"
printf '%-46s %9s s\n' "${#groupe[@]} files, quillon-lot -j 2, quiet disk" "$(calcul %.3f "$calme")"
printf '%-46s %9s s\n' "${#groupe[@]} files, after $sales_mo MiB of another's" "$(calcul %.3f "$sales")"
echo "ratio with another program's data waiting / quiet: $rapport_sales (target <= 1.5)"
echo "load average at the end: $(cut -d' ' -f1-3 /proc/loadavg) (wall times suffer when the machine is busy)"
if plus_petit "$rapport" "$objectif_rapport"; then
  echecs+=("many files: quillon-lot only $rapport times faster than the loop")
fi
if plus_petit "$objectif_grand" "$rapport_grand"; then
  echecs+=("large file: quillon-lot takes $rapport_grand times quillon's time")
fi
if plus_petit 1.5 "$rapport_sales"; then
  echecs+=("another program's data: the batch takes $rapport_sales times its quiet time")
fi
if [ "${convertis:-0}" != "$fichiers" ]; then echecs+=("many files: ${convertis:-?} of $fichiers converted"); fi
objectifs
