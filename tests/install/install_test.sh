#!/bin/sh
# The install rules, through an install into a temporary DESTDIR:
# - every file lands where the system looks for it;
# - the installed programs convert the installed samples byte for byte as
#   the build tree's programs convert the project's samples (the log's date
#   line aside);
# - the installed quillon finds the installed windowed program;
# - the installed bash completion offers quillon-lot's options and values.
#
#   install_test.sh CMAKE BUILD_DIR SOURCE_DIR WITH_WINDOWS(ON|OFF) WITH_MAN(ON|OFF)
set -eu
cmake=$1 build=$2 projet=$3 fenetres=$4 man=$5

tmp=$(mktemp -d -t quillon-installation.XXXXXX)
trap 'rm -rf "$tmp"' EXIT
ici=$(cd "$(dirname "$0")" && pwd)
. "$ici/commun.sh"
racine=$tmp/racine
DESTDIR=$racine "$cmake" --install "$build" --prefix /usr >"$tmp/install.txt"
usr=$racine/usr

# Files (fichiers.txt): what must be there, in mode 755 in bin and 644
# elsewhere, by what the build holds (the windowed program, the manual
# pages). An icon's file is the size its folder says.
while read -r quand chemins; do
  # shellcheck disable=SC2254 # the first column is a pattern
  case fen=$fenetres,man=$man in $quand) ;; *) continue ;; esac
  for chemin in $chemins; do
    f=$usr/$chemin mode=644
    echo "$chemin" >>"$tmp/fichiers"
    case $chemin in bin/*) mode=755 ;; esac
    [ -f "$f" ] || { echec "/usr/$chemin n'est pas installé"; continue; }
    [ "$(stat -c %a "$f")" = $mode ] || echec "/usr/$chemin a le mode $(stat -c %a "$f"), pas $mode"
    case $chemin in share/icons/*.png)
      dossier=${chemin#share/icons/hicolor/} dossier=${dossier%%/*}
      taille=$(od -An -tu1 -j16 -N8 "$f" | awk '{ printf "%dx%d", (($1*256+$2)*256+$3)*256+$4, (($5*256+$6)*256+$7)*256+$8 }')
      [ "$taille" = "$dossier" ] || echec "l'icône $dossier fait $taille" ;;
    esac
  done
done <"$ici/fichiers.txt"

# Conversions (conversions.txt): the same command in two folders, with
# the build tree's programs on the project's samples and with the
# installed programs on the installed samples. Targets, standard output and standard error must be
# the same bytes; logs too, their date line aside.
while IFS='|' read -r nom programme arguments fichiers; do
  case $nom in '#'*) continue ;; esac
  # shellcheck disable=SC2086 # the arguments are words
  convertir "$tmp/$nom/construit" "$projet/samples" env LC_ALL=C "$build/$programme" $arguments
  # shellcheck disable=SC2086
  convertir "$tmp/$nom/installe" "$usr/share/doc/quillon/samples" env LC_ALL=C "$usr/bin/$programme" $arguments
  # shellcheck disable=SC2086
  memes "$nom, programme installé" "$tmp/$nom/construit" "$tmp/$nom/installe" sortie.txt erreur.txt $fichiers
done <"$ici/conversions.txt"

# Without arguments, the installed quillon starts the installed windowed
# program, as the build tree's starts its own.
if [ "$fenetres" = ON ]; then
  lance_fenetres "$build/quillon"
  lance_fenetres "$usr/bin/quillon"
fi

# Bash completion (completions.txt): what the installed scripts offer.
mkdir -p "$tmp/completion/dossier"
touch "$tmp/completion/a.ptv" "$tmp/completion/a.PTS" "$tmp/completion/a.txt" "$tmp/completion/-x.ptp"
while IFS='|' read -r ligne attendu; do
  case $ligne in '#'*) continue ;; esac
  offert=$(cd "$tmp/completion" && bash -c '
    for f in "$1"/share/bash-completion/completions/quillon*; do . "$f"; done
    read -ra COMP_WORDS <<<"${2//=/ = }"
    case $2 in *" ") COMP_WORDS+=("") ;; esac
    # "--theme=" ends in its "=": the word under the cursor is "=".
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    compopt() { :; }
    fonction=_quillon_lot
    [ "${COMP_WORDS[0]}" = quillon ] && fonction=_quillon
    $fonction
    for o in "${COMPREPLY[@]}"; do
      [ -d "$o" ] && o=$o/
      printf "%s\n" "$o"
    done | LC_ALL=C sort | tr "\n" " "' sh "$usr" "$ligne" | sed 's/ $//')
  [ "$offert" = "$attendu" ] || echec "complétion de « $ligne »: « $offert » au lieu de « $attendu »"
done <"$ici/completions.txt"

bilan installation "$(wc -l <"$tmp/fichiers") fichiers vérifiés, $(grep -vc '^#' "$ici/conversions.txt") conversions identiques, $(grep -vc '^#' "$ici/completions.txt") complétions"
