#!/bin/sh
# The training run of the profile-guided build.
#
#   scripts/pgo-train.sh PGO_BUILD_DIR PROFILE_DIR
#
# Runs the instrumented console program of PGO_BUILD_DIR on the bundled
# samples and on generated files of each kind the command line converts (and
# a smaller file of faulty lines, so that the rejection paths are not taken
# for cold), then marks the profile complete with PROFILE_DIR/profil.stamp.
# Does nothing when the stamp is newer than the instrumented program and
# than this script.
set -eu

if [ $# -ne 2 ]; then
  echo "usage: $0 PGO_BUILD_DIR PROFILE_DIR" >&2
  exit 2
fi
racine="$(cd "$(dirname "$0")/.." && pwd)"
quillon="$1/quillon"
generer="$1/bench/quillon_generer"
profil="$2"
marque="$profil/profil.stamp"

if [ -f "$marque" ] && [ "$marque" -nt "$quillon" ] && [ "$marque" -nt "$0" ]; then exit 0; fi

# A profile left by an older program would be merged with the new one.
rm -rf "$profil"
mkdir -p "$profil"
travail="$(mktemp -d)"
trap 'rm -rf "$travail"' EXIT

echo "pgo-train: training the profile-guided build"
lignes=100000
"$generer" ptv "$lignes" 101 "$travail/valeur.ptv"
"$generer" ptp "$lignes" 102 "$travail/precision.ptp"
"$generer" ptv $((lignes / 5)) 103 --faulty "$travail/fautif.ptv"
cp "$racine"/samples/*.ptv "$racine"/samples/*.ptp "$travail/"

# Each run: SOURCE TARGET [SCALE GROUP]. Rejected lines are expected in the
# faulty file and the samples; only a failed run stops the training.
convertir() {
  "$quillon" "$@" >/dev/null || {
    echo "pgo-train: '$quillon $*' failed" >&2
    exit 1
  }
}
mkdir "$travail/cibles"
for source in "$travail"/*.ptv; do
  nom="$(basename "$source" .ptv)"
  convertir "$source" "$travail/cibles/$nom.ptp" 1000 CS
done
for source in "$travail"/*.ptp; do
  nom="$(basename "$source" .ptp)"
  convertir "$source" "$travail/cibles/$nom.ptv"
  convertir "$source" "$travail/cibles/$nom.ptm"
done
touch "$marque"
