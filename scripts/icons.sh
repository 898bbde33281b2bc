#!/bin/sh
# Writes the application's icon files in data/icons from the picture the
# windows draw (src/ui/app_icon.cc): PNG files for the hicolor theme, and
# quillon.ico for the Windows programs. The files are kept in git; run this
# again only when the picture changes.
#
#   scripts/icons.sh BUILD_DIR     a Linux build with the windows (quillon_apercu)
#
# Needs imagemagick and icoutils.
set -eu
racine="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "$1" && pwd)"
icones="$racine/data/icons"
mkdir -p "$icones"
QT_QPA_PLATFORM=offscreen "$build/quillon_apercu" icone "$icones/quillon-32.png" 2>/dev/null
# The 32 x 32 picture is a pixel drawing: larger sizes repeat its pixels.
for taille in 16 48 64 128 256; do
  filtre=point
  [ "$taille" -lt 32 ] && filtre=box
  convert "$icones/quillon-32.png" -filter "$filtre" -resize "${taille}x${taille}" -strip "$icones/quillon-$taille.png"
done
icotool -c -o "$icones/quillon.ico" "$icones/quillon-16.png" "$icones/quillon-32.png" "$icones/quillon-48.png" \
  "$icones/quillon-256.png"
ls -l "$icones"
