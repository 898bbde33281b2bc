#!/bin/sh
# Takes again the pictures of Quillon's windows in docs/: the main window
# with its Fichier menu open, the main window's workbench after a folder of
# the samples was checked, the two option dialogs and the about box; the
# main window and a dialog in German. Each
# is taken on a virtual X display with a small window manager (IceWM with its
# Windows 95 theme, or Openbox), frame and caption included.
#
#   docs/screenshots.sh [BUILD_DIR]        default BUILD_DIR: build
#
# Needs a build with the windows (cmake -DQUILLON_UI=ON) and, on Debian:
# xvfb, icewm or openbox, xdotool, x11-utils, imagemagick.
set -eu

docs=$(cd "$(dirname "$0")" && pwd)
build=$(cd "${1:-$(dirname "$docs")/build}" 2>/dev/null && pwd) || { echo "screenshots: no build folder ${1:-build}" >&2; exit 1; }
quillon=$build/quillon
apercu=$build/quillon_apercu

for outil in Xvfb xdotool xwininfo xprop import; do
  command -v "$outil" >/dev/null || { echo "screenshots: $outil is missing" >&2; exit 1; }
done
for programme in "$quillon" "$apercu"; do
  [ -x "$programme" ] || { echo "screenshots: $programme is missing; build with -DQUILLON_UI=ON" >&2; exit 1; }
done

travail=$(mktemp -d)
pids=""
finir() {
  for pid in $pids; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$travail"
}
trap finir EXIT INT TERM

# A display of our own.
. "$(dirname "$docs")/scripts/xvfb.sh"
xvfb_demarrer screenshots "$travail/xvfb.log" || exit 1
pids="$pids $XVFB_PID"
unset QT_QPA_PLATFORM
# No choice of the user's from ? > Langue; the programs in French, whatever
# the language of whoever takes the pictures (xdotool keeps its own locale).
export HOME="$travail"
fr="env LC_ALL=C.UTF-8"

if command -v icewm >/dev/null; then
  mkdir -p "$travail/icewm"
  printf 'ShowTaskBar=0\nTitleFontNameXft="sans-serif:size=9:bold"\n' >"$travail/icewm/preferences"
  printf 'Theme="win95/default.theme"\n' >"$travail/icewm/theme"
  HOME=$travail ICEWM_PRIVCFG=$travail/icewm icewm >"$travail/wm.log" 2>&1 &
elif command -v openbox >/dev/null; then
  openbox >"$travail/wm.log" 2>&1 &
else
  echo "screenshots: no window manager (icewm or openbox); the pictures will have no caption" >&2
  sleep 0 &
fi
pids="$pids $!"
sleep 1

# The rectangle of a window with its frame: X Y W H.
cadre() {
  eval "$(xwininfo -id "$1" | awk -F: '
    /Absolute upper-left X/ {print "x=" $2+0} /Absolute upper-left Y/ {print "y=" $2+0}
    /^ *Width/ {print "w=" $2+0} /^ *Height/ {print "h=" $2+0}')"
  bords=$(xprop -id "$1" _NET_FRAME_EXTENTS 2>/dev/null | sed -n 's/.*= *//p' | tr -d ' ')
  g=0 d=0 hb=0 b=0
  if [ -n "$bords" ]; then
    IFS=, read -r g d hb b <<FIN
$bords
FIN
  fi
  echo "$((x - g)) $((y - hb)) $((w + g + d)) $((h + hb + b))"
}

# photographier FICHIER TITRE [menu|lent] -- COMMAND...: starts the command,
# waits for its window, and takes the picture of the window (with its first
# menu open for "menu"; after the program's work for "lent"), together with
# any popup of the program.
photographier() {
  fichier=$1 titre=$2 menu=$3
  shift 4
  "$@" >"$travail/programme.log" 2>&1 &
  pid=$!
  fenetre=$(timeout 20 xdotool search --sync --onlyvisible --name "^$titre\$" | head -n 1)
  [ -n "$fenetre" ] || { echo "screenshots: no window \"$titre\"" >&2; exit 1; }
  xdotool windowactivate --sync "$fenetre" >/dev/null 2>&1 || true
  xdotool windowmove --sync "$fenetre" 40 50 >/dev/null 2>&1 || true
  sleep 0.5
  [ "$menu" = lent ] && sleep 3
  if [ "$menu" = menu ]; then
    xdotool mousemove --window "$fenetre" 24 10 click 1
    sleep 0.5
    xdotool mousemove --window "$fenetre" 60 42
    sleep 0.3
  fi
  rect=$(
    for w in $(xdotool search --onlyvisible --pid "$pid"); do
      case $(xwininfo -id "$w" | awk -F: '/Map State/ {print $2}') in *IsViewable*) ;; *) continue ;; esac
      # Only the window photographed and the popups over it.
      if [ "$w" = "$fenetre" ] || xprop -id "$w" _NET_WM_WINDOW_TYPE | grep -q -e POPUP_MENU -e DROPDOWN_MENU; then
        cadre "$w"
      fi
    done | awk 'NR == 1 {x0 = $1; y0 = $2; x1 = $1 + $3; y1 = $2 + $4}
                {if ($1 < x0) x0 = $1; if ($2 < y0) y0 = $2
                 if ($1 + $3 > x1) x1 = $1 + $3; if ($2 + $4 > y1) y1 = $2 + $4}
                END {printf "%dx%d+%d+%d", x1 - x0, y1 - y0, x0, y0}'
  )
  import -window root -crop "$rect" +repage "$docs/$fichier"
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
  echo "screenshots: docs/$fichier ($rect)"
}

photographier fenetre-principale.png "Convertir fichier de points aux formats KQ" menu -- $fr "$quillon"
# A delivery of the three samples: the first file with problems is shown.
mkdir -p "$travail/livraison"
cp "$(dirname "$docs")"/samples/lot12.* "$travail/livraison/"
photographier atelier.png "Convertir fichier de points aux formats KQ" lent -- env -C "$travail" LC_ALL=C.UTF-8 "$apercu" atelier livraison
photographier dialogue-val-prec.png "Convertir fichier de points Val en points Préc/Fiab" - -- $fr "$apercu" val-prec
photographier dialogue-dc-val.png "Convertir fichier de points DC en points Val" - -- $fr "$apercu" dc-val
photographier a-propos.png "A propos de Quillon" - -- $fr "$apercu" a-propos
# In German, as a user whose language it is sees them.
photographier de-fenetre-principale.png "Punktdatei in KQ-Formate umwandeln" menu -- \
  env LC_ALL=de_CH.UTF-8 "$quillon"
photographier de-dialogue-val-prec.png "Punkte mit Werten in Punkte Gen./Zuv. umwandeln" - -- \
  env LC_ALL=de_CH.UTF-8 "$apercu" val-prec
