#!/bin/sh
# Takes again the pictures of the reports in docs/, with headless Chromium:
# the index of a batch with problems (docs/index-lot.png) and the first page
# of a check report printed on A4 (docs/rapport-imprime.png, through
# poppler's pdftoppm at 60 dpi).
#
#   docs/rapports.sh [BUILD_DIR]        default BUILD_DIR: build
#
# Needs quillon-lot built, chromium and poppler-utils.
set -eu

docs=$(cd "$(dirname "$0")" && pwd)
build=${1:-$(dirname "$docs")/build}
lot=$(cd "$build" && pwd)/quillon-lot
echantillons=$(dirname "$docs")/tests/report

for outil in chromium pdftoppm; do
  command -v "$outil" >/dev/null || { echo "rapports: $outil is missing" >&2; exit 1; }
done
[ -x "$lot" ] || { echo "rapports: $lot is missing" >&2; exit 1; }

travail=$(mktemp -d)
trap 'rm -rf "$travail"' EXIT INT TERM

profils=0
navigateur() {
  profils=$((profils + 1))
  chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --no-first-run --user-data-dir="$travail/profil$profils" \
    --virtual-time-budget=5000 "$@" >"$travail/chromium.log" 2>&1 || { cat "$travail/chromium.log" >&2; exit 1; }
}

# A delivery of twelve files: two with rejected lines, one that cannot be
# read, the others clean.
mkdir "$travail/livraison"
for n in 1 2 3 4 5 6 7 8 9 10 11 12; do
  case $n in
    4 | 11) cp "$echantillons/avec-rejets.ptv" "$travail/livraison/lot$n.ptv" ;;
    *) cp "$echantillons/sans-rejet.ptv" "$travail/livraison/lot$n.ptv" ;;
  esac
done
(cd "$travail" && "$lot" -e 500 -t CS --rapport=rapports livraison/*.ptv livraison/absent.ptv >/dev/null 2>&1) || true
navigateur --window-size=1000,760 --screenshot="$docs/index-lot.png" "file://$travail/rapports/index.html"

navigateur --no-pdf-header-footer --print-to-pdf="$travail/rapport.pdf" \
  "file://$travail/rapports/lot4.ptv.html"
pdftoppm -png -r 60 -f 1 -l 1 -singlefile "$travail/rapport.pdf" "$docs/rapport-imprime"
ls -l "$docs/index-lot.png" "$docs/rapport-imprime.png"
