#!/bin/sh
# quillon.exe started without arguments, under wine on the current (virtual)
# display: the main window must show, found by its title, and nothing may
# reach standard output. The program is then closed.
#   tests/windows/smoke-windowed.sh QUILLON_EXE
set -eu
exe="$1"
titre="Convertir fichier de points aux formats KQ"
sortie=$(mktemp)
trap 'rm -f "$sortie"' EXIT
wine "$exe" >"$sortie" 2>/dev/null
# Waits until the window is there (--sync), 20 s at most.
fenetre=$(timeout 20 xdotool search --sync --name "^$titre\$" 2>/dev/null | head -n 1 || true)
if [ -z "$fenetre" ]; then
  echo "smoke-windowed: no window titled \"$titre\"" >&2
  exit 1
fi
xdotool windowclose "$fenetre" 2>/dev/null || xdotool windowkill "$fenetre" 2>/dev/null || true
if [ -s "$sortie" ]; then
  echo "smoke-windowed: quillon.exe wrote to standard output:" >&2
  cat "$sortie" >&2
  exit 1
fi
echo "smoke-windowed: window \"$titre\" shown, standard output empty"
