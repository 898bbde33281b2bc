# shellcheck shell=sh disable=SC2154 # $tmp is the caller's
# What the install tests and scripts/check-packages.sh share; sourced by sh
# once $tmp, the caller's temporary folder, exists. Failures are counted in
# a file, so that those of a loop in a pipeline (a subshell) count too. The
# functions' own variables start with their name.
: >"$tmp/echecs"
echec() {
  printf 'ÉCHEC: %s\n' "$*" >&2
  echo x >>"$tmp/echecs"
}
# bilan NAME SUMMARY: exit status 1 after any failure, else the summary.
bilan() {
  set -- "$1" "$2" "$(wc -l <"$tmp/echecs")"
  [ "$3" -eq 0 ] || { echo "$1: $3 échec(s)" >&2; exit 1; }
  echo "$1: $2"
}
# convertir DIR SAMPLES_DIR COMMAND...: COMMAND run in DIR on a copy of the
# samples, its output in sortie.txt and erreur.txt, the logs' date line
# dropped.
convertir() {
  convertir_ici=$1
  mkdir -p "$1" && cp "$2"/lot12.pt? "$1" && shift 2
  (cd "$convertir_ici" && "$@" </dev/null >sortie.txt 2>erreur.txt) || true
  for convertir_log in "$convertir_ici"/*.log; do
    if [ -f "$convertir_log" ]; then sed -i 2d "$convertir_log"; fi
  done
}
# memes NAME DIR1 DIR2 FILE...: each file written in DIR1, the same bytes
# in DIR2.
memes() {
  memes_nom=$1 memes_a=$2 memes_b=$3
  shift 3
  for memes_f in "$@"; do
    if [ ! -f "$memes_a/$memes_f" ]; then echec "$memes_nom: $memes_f n'est pas écrit"
    elif ! cmp -s "$memes_a/$memes_f" "$memes_b/$memes_f"; then echec "$memes_nom: $memes_f n'est pas le même"; fi
  done
}
# lance_fenetres QUILLON: quillon without arguments starts the windowed
# program beside it, which says that there is no display.
lance_fenetres() {
  lance_message=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM timeout 30 "$1" 2>&1 >/dev/null || true)
  case $lance_message in
    *"aucun affichage disponible"*) ;;
    *) echec "$1 sans argument n'a pas lancé quillon-fenetres: $lance_message" ;;
  esac
}
