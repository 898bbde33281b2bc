#!/bin/sh
# Takes again the pictures of Quillon's Windows windows in docs/, under wine:
# the main window with its Fichier menu open, the two option dialogs, the
# about box, and the workbench with a delivery checked and its file with
# rejected lines shown; then the main window, a dialog and the workbench in
# German. Wine runs in a virtual desktop of its own (it draws the frames and
# captions as Windows does) on a virtual X display.
#
#   docs/screenshots-windows.sh [WIN64_BUILD_DIR]    default: build-win64
#
# Needs the Windows build (make windows) and, on Debian: wine, wine64,
# fonts-wine, xvfb, xdotool, imagemagick.
set -eu

docs=$(cd "$(dirname "$0")" && pwd)
build=${1:-$(dirname "$docs")/build-win64}
apercu=$build/quillon_apercu.exe
for outil in wine Xvfb xdotool import; do
  command -v "$outil" >/dev/null || { echo "screenshots-windows: $outil is missing" >&2; exit 1; }
done
[ -f "$apercu" ] || { echo "screenshots-windows: $apercu is missing; run make windows" >&2; exit 1; }

travail=$(mktemp -d)
XVFB_PID=""
finir() {
  wineserver -k 2>/dev/null || true
  [ -z "$XVFB_PID" ] || kill "$XVFB_PID" 2>/dev/null || true
  rm -rf "$travail"
}
trap finir EXIT INT TERM

. "$(dirname "$docs")/scripts/xvfb.sh"
xvfb_demarrer screenshots-windows || exit 1

# A wine prefix of the build's own whose programs open in a virtual desktop.
export WINEDEBUG=-all WINEARCH=win64 WINEPREFIX="$build/wine-prefix-apercu"
if [ ! -f "$WINEPREFIX/.quillon-pret" ]; then
  wineboot -i >/dev/null 2>&1
  wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Apercu /f >/dev/null 2>&1
  touch "$WINEPREFIX/.quillon-pret"
fi
# Room for the main window with its workbench.
wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Apercu /d 1080x780 /f >/dev/null 2>&1

# photographier FICHIER NOM [menu]: shows the window NOM, and takes its
# picture by the rectangle the program prints (with the Fichier menu open
# for "menu").
photographier() {
  fichier=$1 nom=$2 menu=${3:-}
  rect="$travail/rect"
  : >"$rect"
  wine "$apercu" "$nom" >"$rect" 2>/dev/null &
  for _ in $(seq 100); do [ -s "$rect" ] && break; sleep 0.2; done
  [ -s "$rect" ] || { echo "screenshots-windows: $nom did not show" >&2; exit 1; }
  sleep 2
  read -r x y l h <"$rect"
  if [ "$menu" = menu ]; then
    # The keyboard goes to wine's desktop window, then to the main window:
    # F10 selects the menu bar, Down opens Fichier.
    bureau=$(xdotool search --name "Wine desktop" | head -n 1)
    xdotool windowfocus --sync "$bureau" 2>/dev/null || true
    xdotool mousemove $((x + 60)) $((y + 100)) click 1
    sleep 0.3
    xdotool key F10
    sleep 0.3
    xdotool key Down
    sleep 1
  fi
  import -window root -crop "${l}x${h}+${x}+${y}" +repage "$docs/$fichier"
  wineserver -k 2>/dev/null || true
  sleep 1
  echo "screenshots-windows: docs/$fichier (${l}x${h})"
}

photographier windows-fenetre-principale.png principale menu
photographier windows-dialogue-val-prec.png val-prec
photographier windows-dialogue-dc-val.png dc-val
photographier windows-a-propos.png a-propos
photographier windows-atelier.png atelier
# In German (wine would take the host's locale only if it were installed).
export APERCU_LANGUE=de
photographier de-windows-fenetre-principale.png principale menu
photographier de-windows-dialogue-val-prec.png val-prec
photographier de-windows-atelier.png atelier
