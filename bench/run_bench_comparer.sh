#!/usr/bin/env bash
# Benchmark of quillon-lot --comparer on two large deliveries of the same
# points.
#
#   bench/run_bench_comparer.sh BUILD_DIR [SCRATCH_DIR]
#
# BUILD_DIR holds quillon-lot and bench/quillon_generer and
# bench/quillon_mesurer. SCRATCH_DIR (default: bench/out/comparer, ignored by
# git) receives the two files, about 180 MB.
#
# The old file is a generated value file of BENCH_LINES lines (default
# 1000000); the new one is the same file with 1 % of its points moved by
# 5 cm, 1 % gone and 1 % new. Measured: the best wall time of BENCH_RUNS runs
# (default 3) and the peak resident memory. Targets: 3 s and 256 MiB.
set -euo pipefail

defaut=bench/out/comparer programmes=quillon-lot
. "$(dirname "$0")/commun.sh"
lignes="${BENCH_LINES:-1000000}"
objectif_secondes=3
objectif_rss_kib=$((256 * 1024))

ancien="$scratch/ancien.ptv" nouveau="$scratch/nouveau.ptv"
if [ ! -f "$nouveau" ] || [ "$(wc -l <"$ancien")" != "$lignes" ]; then
  echo "Generating two $lignes-line files into $scratch ..."
  "$generer" ptv "$lignes" 1 "$ancien"
  # Line n: n % 100 == 1 gone, == 2 moved 5 cm east, == 3 followed by a
  # new point (the same line under a number no generated line has).
  LC_ALL=C awk '{
    sub(/\r$/, "")
    k = NR % 100
    if (k == 1) next
    if (k == 2) $0 = substr($0, 1, 32) sprintf("%11.3f", substr($0, 33, 11) + 0.05) substr($0, 44)
    printf "%s\r\n", $0
    if (k == 3) printf "%s%12.0f%s\r\n", substr($0, 1, 10), 900000000000 + NR, substr($0, 23)
  }' "$ancien" >"$nouveau"
fi

echo "Comparing ($essais runs) ..."
meilleur="" rss=0
for ((i = 0; i < essais; i++)); do
  sync
  "$mesurer" "$resultat" "$build/quillon-lot" --comparer "$ancien" "$nouveau" >"$scratch/sortie.txt" || true
  read -r secondes kib code processeur <"$resultat"
  if [ "$code" != 1 ]; then
    echo "$nom: quillon-lot --comparer exited with $code (1 expected)" >&2
    exit 1
  fi
  if [ -z "$meilleur" ] || plus_petit "$secondes" "$meilleur"; then meilleur="$secondes"; fi
  if [ "$kib" -gt "$rss" ]; then rss="$kib"; fi
done

echo
echo "quillon-lot --comparer benchmark: best of $essais runs, $(nproc) cores"
printf '%-44s %9s s   %s MiB peak\n' "2 files x $lignes lines, 1 % moved/gone/new" "$(calcul %.3f "$meilleur")" \
  "$(calcul %.1f "$rss / 1024")"
grep '^total' "$scratch/sortie.txt" | tr '\t' ' '
echo "load average at the end: $(cut -d' ' -f1-3 /proc/loadavg) (wall times suffer when the machine is busy)"
if plus_petit "$objectif_secondes" "$meilleur"; then echecs+=("comparison: $meilleur s (target $objectif_secondes s)"); fi
if [ "$rss" -gt "$objectif_rss_kib" ]; then echecs+=("comparison: $rss KiB peak (target $objectif_rss_kib KiB)"); fi
objectifs
