#!/usr/bin/env bash
# Benchmark of the check report on one large file.
#
#   bench/run_bench_rapport.sh BUILD_DIR [SCRATCH_DIR]
#
# BENCH_LINES generated value lines (default 1000000) through quillon-lot
# without a report, with --rapport and with --json: best wall time and
# largest peak memory of BENCH_RUNS runs (default 3); the report's size; and
# the time headless Chromium takes to load it and draw its picture, less the
# time it takes for an empty page. Targets: a report adds at most 30 % to
# the run, its peak memory stays within 128 MiB, the report within 15 MB and
# its picture within 2 s. Then the same number of lines on 4,091 places
# only (millions of close pairs, the search cut short): that report within
# 2 MB and 2 s. Last, a batch of 2,000 small files, a tenth of them faulty:
# its index shown within 1 s.
set -euo pipefail

defaut=bench/out/rapport programmes=quillon-lot
. "$(dirname "$0")/commun.sh"
lignes="${BENCH_LINES:-1000000}"
lot="$build/quillon-lot"

grand="$scratch/grand.ptv"
if [ ! -f "$grand" ] || [ "$(wc -l <"$grand")" != "$lignes" ]; then
  echo "Generating a $lignes-line file ..."
  "$generer" ptv "$lignes" 1 "$grand"
fi
echo "Converting one $lignes-line file ($essais runs each) ..."
mesurer "$lot" -e 1000 -t CS -c "$scratch/grand.ptp" "$grand"
sans="$meilleur" rss_sans="$rss"
mesurer "$lot" -e 1000 -t CS -c "$scratch/grand.ptp" --rapport="$scratch/rapports" "$grand"
avec="$meilleur" rss_avec="$rss"
mesurer "$lot" -e 1000 -t CS -c "$scratch/grand.ptp" --json="$scratch/controle.json" "$grand"
json="$meilleur" rss_json="$rss"
page="$scratch/rapports/grand.ptv.html"
taille="$(stat -c %s "$page")"

# Chromium: the picture is drawn when the canvas carries data-dessine. The
# best of three loads, less the best of three of an empty page.
navigateur() {
  local debut fin meilleur="" i t
  for i in 1 2 3; do
    debut="$(date +%s.%N)"
    chromium --headless --no-sandbox --disable-gpu --user-data-dir="$scratch/profil" --dump-dom "file://$1" >"$scratch/dom.html" 2>/dev/null
    fin="$(date +%s.%N)"
    t="$(calcul %.3f "$fin - $debut")"
    if [ -z "$meilleur" ] || plus_petit "$t" "$meilleur"; then meilleur="$t"; fi
  done
  echo "$meilleur"
}
echo '<!DOCTYPE html><title>vide</title>' >"$scratch/vide.html"
vide="$(navigateur "$scratch/vide.html")"
charge="$(navigateur "$page")"
grep -q 'data-dessine=' "$scratch/dom.html" || echecs+=("the report's picture was not drawn")
dessin="$(calcul %.3f "$charge - $vide")"

lieux="$scratch/lieux.ptv"
if [ ! -f "$lieux" ] || [ "$(wc -l <"$lieux")" != "$lignes" ]; then
  "$generer" ptv "$lignes" 1 --places 4091 "$lieux"
fi
"$lot" -e 1000 -t CS -c "$scratch/lieux.ptp" --rapport="$scratch/rapports" "$lieux" >/dev/null
page_lieux="$scratch/rapports/lieux.ptv.html"
taille_lieux="$(stat -c %s "$page_lieux")"
charge="$(navigateur "$page_lieux")"
grep -q 'data-dessine=' "$scratch/dom.html" || echecs+=("the few places' picture was not drawn")
dessin_lieux="$(calcul %.3f "$charge - $vide")"

echo
echo "check report benchmark: $lignes lines, best of $essais runs, $(nproc) cores"
printf '%-32s %8s s  %8s KiB\n' "quillon-lot" "$(calcul %.3f "$sans")" "$rss_sans"
printf '%-32s %8s s  %8s KiB\n' "quillon-lot --rapport" "$(calcul %.3f "$avec")" "$rss_avec"
printf '%-32s %8s s  %8s KiB\n' "quillon-lot --json" "$(calcul %.3f "$json")" "$rss_json"
surcout="$(calcul %.2f "d($avec, $sans)")"
echo "report / no report: $surcout (target <= 1.30); report size: $taille bytes; picture in Chromium: $dessin s"
if plus_petit 1.30 "$surcout"; then echecs+=("the report makes the run $surcout times longer"); fi
if [ "$rss_avec" -gt $((128 * 1024)) ]; then echecs+=("peak memory with a report: $rss_avec KiB"); fi
if [ "$taille" -gt 15000000 ]; then echecs+=("report of $taille bytes"); fi
if plus_petit 2 "$dessin"; then echecs+=("picture after $dessin s"); fi
echo "$lignes lines on 4091 places: report size: $taille_lieux bytes; shown in Chromium: $dessin_lieux s"
if [ "$taille_lieux" -gt 2000000 ]; then echecs+=("report of the few places: $taille_lieux bytes"); fi
if plus_petit 2 "$dessin_lieux"; then echecs+=("report of the few places shown after $dessin_lieux s"); fi
petits_fichiers "$scratch/lot" 2000 20
if [ ! -f "$scratch/lot/.fautifs" ]; then
  for ((i = 1; i <= 2000; i += 10)); do
    "$generer" ptv 3 "$i" --faulty >>"$scratch/lot/f$(printf %04d "$i").ptv"
  done
  touch "$scratch/lot/.fautifs"
fi
rm -rf "$scratch/rapports-lot"
"$lot" -e 1000 -t CS -n --rapport="$scratch/rapports-lot" "$scratch/lot" >/dev/null || [ $? -eq 1 ]
charge="$(navigateur "$scratch/rapports-lot/index.html")"
grep -q 'data-pret=' "$scratch/dom.html" || echecs+=("the index's table was not made ready")
index="$(calcul %.3f "$charge - $vide")"
echo "index of 2000 files: $(stat -c %s "$scratch/rapports-lot/index.html") bytes; shown in Chromium: $index s (target <= 1)"
if plus_petit 1 "$index"; then echecs+=("index of 2000 files shown after $index s"); fi
objectifs
