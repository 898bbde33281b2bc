# What the benchmark scripts share, sourced by bash with the script's own
# arguments, BUILD_DIR [SCRATCH_DIR], after setting:
#   defaut      the scratch folder when none is given (ignored by git)
#   programmes  the programs of the build it needs beside quillon, if any
# It checks the arguments and that the build holds quillon,
# bench/quillon_generer, bench/quillon_mesurer and $programmes, and sets
# nom (the script's name, for its messages), racine, build, scratch (made
# here), essais (BENCH_RUNS, default 3, runs per measure), quillon,
# generer, mesurer, resultat and echecs (the targets missed, reported by
# objectifs).
nom="$(basename "$0" .sh)"
if [ $# -lt 1 ] || [ $# -gt 2 ]; then
  echo "usage: $0 BUILD_DIR [SCRATCH_DIR]" >&2
  exit 2
fi
racine="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "$1" && pwd)"
scratch="${2:-$racine/$defaut}"
essais="${BENCH_RUNS:-3}"
echecs=()

quillon="$build/quillon"
generer="$build/bench/quillon_generer"
mesurer="$build/bench/quillon_mesurer"
for exe in quillon bench/quillon_generer bench/quillon_mesurer ${programmes:-}; do
  if [ ! -x "$build/$exe" ]; then
    echo "$nom: $build/$exe is missing; build $build first" >&2
    exit 1
  fi
done
mkdir -p "$scratch"
scratch="$(cd "$scratch" && pwd)"
resultat="$scratch/mesure.txt"

# mesurer CMD...: runs the command $essais times; sets meilleur (best wall
# seconds), cpu (best CPU seconds), rss (largest peak KiB) and sortie (the
# standard output of the last run, also in $scratch/sortie.txt).
mesurer() {
  local sortie_fichier="$scratch/sortie.txt" secondes kib code processeur i
  meilleur=""
  cpu=""
  rss=0
  for ((i = 0; i < essais; i++)); do
    # The files written just before (the generated sources, the last
    # target) go to disk now, not in the background of the timed run.
    sync
    "$mesurer" "$resultat" "$@" >"$sortie_fichier" || true
    read -r secondes kib code processeur <"$resultat"
    if [ "$code" != 0 ]; then
      echo "$nom: '$*' exited with $code" >&2
      cat "$sortie_fichier" >&2
      exit 1
    fi
    if [ -z "$meilleur" ] || plus_petit "$secondes" "$meilleur"; then meilleur="$secondes"; fi
    if [ -z "$cpu" ] || plus_petit "$processeur" "$cpu"; then cpu="$processeur"; fi
    if [ "$kib" -gt "$rss" ]; then rss="$kib"; fi
  done
  sortie="$(cat "$sortie_fichier")"
}

plus_petit() { awk -v a="$1" -v b="$2" 'BEGIN { exit !(a < b) }'; }
# calcul FORMAT EXPRESSION; d(a, b) divides without failing on a zero time.
calcul() { awk "function d(a, b) { return a / (b > 0 ? b : 1e-6) } BEGIN { printf \"$1\", $2 }"; }

# petits_fichiers DIR N LINES: N generated value files of LINES lines each,
# f0001.ptv..., in DIR, made again only when their number or size changed.
petits_fichiers() {
  local dossier="$1" n="$2" lignes_fichier="$3" i
  if [ -f "$dossier/.complet-$n-$lignes_fichier" ]; then return; fi
  echo "Generating $n files of $lignes_fichier lines into $dossier ..."
  rm -rf "$dossier"
  mkdir -p "$dossier"
  for ((i = 1; i <= n; i++)); do
    "$generer" ptv "$lignes_fichier" "$i" "$dossier/f$(printf %04d "$i").ptv"
  done
  touch "$dossier/.complet-$n-$lignes_fichier"
}

# objectifs: the targets missed, if any, after the report.
objectifs() {
  if [ ${#echecs[@]} -gt 0 ]; then
    echo
    echo "Below target:"
    printf '  %s\n' "${echecs[@]}"
  fi
}
