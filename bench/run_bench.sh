#!/usr/bin/env bash
# Benchmark of the console conversions on large generated files.
#
#   bench/run_bench.sh BUILD_DIR [SCRATCH_DIR]
#
# BUILD_DIR holds the quillon executable and bench/quillon_generer and
# bench/quillon_mesurer. SCRATCH_DIR (default: bench/out, ignored by git)
# receives the generated files, the targets and the logs; about 1 GB.
#
# Measured for each console conversion on a valid file of BENCH_LINES lines
# (default 1000000): the best wall time of BENCH_RUNS runs (default 3), lines
# per second, input MB (10^6 bytes) per second, the peak resident memory, and
# the ratio to reading the same file with cat. Then the same value-to-
# precision conversion on a file whose every line is faulty, and a memory
# check on BENCH_BIG_LINES lines (default 10000000), streamed through a named
# pipe so that no large file is written.
#
# Targets: 3,000,000 lines/s, under 8 MiB of peak memory whatever the size,
# and a faulty file converted within 3 times the time of a valid one.
set -euo pipefail

defaut=bench/out
. "$(dirname "$0")/commun.sh"
lignes="${BENCH_LINES:-1000000}"
grandes="${BENCH_BIG_LINES:-10000000}"

# Targets and thresholds.
objectif_lignes=3000000
objectif_rss_kib=8192
objectif_fautif=3

# --- The files -------------------------------------------------------------
echo "Generating $lignes-line files into $scratch ..."
"$generer" ptv "$lignes" 1 "$scratch/valeur.ptv"
"$generer" ptp "$lignes" 2 "$scratch/precision.ptp"
# The DC file is there for trying by hand: its conversion is not on the
# command line.
"$generer" pts "$lignes" 3 "$scratch/dc.pts"
"$generer" ptv "$lignes" 4 --faulty "$scratch/fautif.ptv"

# The reading errors and writing errors of a run's summary, "R/W".
erreurs() {
  local lecture ecriture
  lecture="$(printf '%s\n' "$sortie" | sed -n 's/^\([0-9]*\) erreur(s) .*lecture.*/\1/p')"
  ecriture="$(printf '%s\n' "$sortie" | sed -n "s/^\([0-9]*\) erreur(s) .*criture.*/\1/p")"
  printf '%s/%s' "${lecture:-?}" "${ecriture:-?}"
}

taille() { stat -c %s "$1"; }

lignes_tableau=()
ligne_tableau() { lignes_tableau+=("$(printf "$@")"); }
format='%-26s %10s %7s %7s %7s %11s %8s %6s %9s %8s'
ligne_tableau "$format" "conversion" "lines/s" "MB/s" "wall s" "CPU s" "lines/CPU s" "peak KiB" "x cat" "errors" "target"

# convertir LABEL SOURCE TARGET [ARGS...]
convertir() {
  local libelle="$1" source="$2" cible="$3"
  shift 3
  local octets cat_s debit
  octets="$(taille "$source")"
  # The raw reading of the same file, its output thrown away.
  mesurer sh -c 'cat "$1" >/dev/null' sh "$source"
  cat_s="$meilleur"
  mesurer "$quillon" "$source" "$cible" "$@"
  debit="$(calcul %.0f "d($lignes, $meilleur)")"
  ligne_tableau "$format" "$libelle" "$debit" "$(calcul %.1f "d($octets, $meilleur) / 1e6")" \
    "$(calcul %.3f "$meilleur")" "$(calcul %.3f "$cpu")" "$(calcul %.0f "d($lignes, $cpu)")" "$rss" \
    "$(calcul %.0f "d($meilleur, $cat_s)")" "$(erreurs)" "$(wc -l <"$cible")"
  temps_conversion="$meilleur"
  cpu_conversion="$cpu"
  if [ "$rss" -ge "$objectif_rss_kib" ]; then echecs+=("$libelle: peak $rss KiB >= $objectif_rss_kib KiB"); fi
  if [ "$libelle" = "${libelle% faulty}" ] && [ "$debit" -lt "$objectif_lignes" ]; then
    echecs+=("$libelle: $debit lines/s < $objectif_lignes")
  fi
}

echo "Converting ($essais runs each) ..."
convertir "value -> precision" "$scratch/valeur.ptv" "$scratch/valeur.ptp" 1000 CS
temps_valide="$temps_conversion"
cpu_valide="$cpu_conversion"
convertir "precision -> value" "$scratch/precision.ptp" "$scratch/precision.ptv"
convertir "precision -> MD01" "$scratch/precision.ptp" "$scratch/precision.ptm"
convertir "value -> precision faulty" "$scratch/fautif.ptv" "$scratch/fautif.ptp" 1000 CS
rapport_fautif="$(calcul %.2f "d($temps_conversion, $temps_valide)")"
rapport_fautif_cpu="$(calcul %.2f "d($cpu_conversion, $cpu_valide)")"
if plus_petit "$objectif_fautif" "$rapport_fautif"; then
  echecs+=("faulty file: $rapport_fautif x the valid one > $objectif_fautif")
fi
log_fautif="$(taille "$scratch/fautif.ptv.log")"

# --- Memory on a very large file, through a named pipe ---------------------
echo "Streaming $grandes lines through a pipe ..."
tuyau="$scratch/grand.ptv"
rm -f "$tuyau" "$scratch/grand.ptp"
mkfifo "$tuyau"
ln -s /dev/null "$scratch/grand.ptp"
"$generer" ptv "$grandes" 5 "$tuyau" &
generateur=$!
"$mesurer" "$resultat" "$quillon" "$tuyau" "$scratch/grand.ptp" 1000 CS >"$scratch/sortie.txt" || true
# A converter that never opened the pipe would leave the generator waiting.
kill "$generateur" 2>/dev/null || true
wait "$generateur" 2>/dev/null || true
read -r secondes_grand rss_grand code_grand cpu_grand <"$resultat"
sortie="$(cat "$scratch/sortie.txt")"
lues="$(sed -n 's/^\([0-9]*\) ligne(s) lues.*/\1/p' "$scratch/sortie.txt")"
erreurs_grand="$(erreurs)"
rm -f "$tuyau" "$scratch/grand.ptp"
if [ "$code_grand" != 0 ] || [ "${lues:-0}" != "$grandes" ]; then
  echecs+=("large file: exit $code_grand, ${lues:-?} lines read of $grandes")
fi
if [ "$rss_grand" -ge "$objectif_rss_kib" ]; then echecs+=("large file: peak $rss_grand KiB >= $objectif_rss_kib KiB"); fi

# --- Report ----------------------------------------------------------------
echo
echo "Quillon benchmark: $lignes lines per file ($(taille "$scratch/valeur.ptv") bytes), best of $essais runs, $(nproc) cores"
echo "executable: $quillon"
printf '%s\n' "${lignes_tableau[@]}"
echo
echo "faulty / valid (value -> precision): $rapport_fautif in wall time, $rapport_fautif_cpu in CPU time (target <= $objectif_fautif); faulty log: $log_fautif bytes"
echo "$grandes lines through a pipe: peak $rss_grand KiB (target < $objectif_rss_kib KiB), $(calcul %.2f "$secondes_grand") s wall, $(calcul %.2f "$cpu_grand") s CPU, errors $erreurs_grand"
echo "lines/s and MB/s: on the best wall time; x cat: best wall time over that of cat on the same file;"
echo "errors: reading/writing errors of the run's summary (0/0 expected for a valid file);"
echo "target: lines written (the MD01 conversion skips the themes 7x and 8x)"
echo "load average at the end: $(cut -d' ' -f1-3 /proc/loadavg) (wall times suffer when the machine is busy)"
objectifs
