#!/bin/sh
# Converts the bundled samples with the console mode and shows each target,
# log and summary. The files are converted in a scratch folder; the samples
# themselves are never touched.
#   scripts/demo.sh PATH/TO/quillon
set -eu
quillon=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
racine=$(cd "$(dirname "$0")/.." && pwd)
travail=$(mktemp -d "${TMPDIR:-/tmp}/quillon-demo.XXXXXX")
cp "$racine"/samples/lot12.* "$travail"/
cd "$travail"

# The files are Windows-1252; show them in the terminal's encoding.
montrer() {
  echo "---- $1"
  iconv -f CP1252 "$1" 2>/dev/null | tr -d '\r' || tr -d '\r' < "$1"
}

lancer() {
  echo
  echo "==== quillon $*"
  "$quillon" "$@" | tr -d '\r'
}

lancer lot12.ptv lot12-vers.ptp 1000 CS
montrer lot12-vers.ptp
montrer lot12.ptv.log

lancer lot12.ptp lot12-vers.ptv
montrer lot12-vers.ptv
montrer lot12.ptp.log

lancer lot12.ptp lot12-vers.ptm
montrer lot12-vers.ptm
montrer lot12.ptp.log

echo
echo "(The DC file lot12.pts converts from the main window: start quillon without arguments.)"
echo "Results are in $travail"
