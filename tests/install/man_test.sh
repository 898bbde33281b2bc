#!/bin/sh
# The manual pages as man shows them:
# - each page renders without any warning from man or groff, at 80 columns
#   and at 60, compressed as installed and not;
# - lexgrog finds its name section, and its name line names the page;
# - quillon-lot(1) and the bash completion know every option and every exit
#   status that quillon-lot --aide lists, and each page the version.
#
#   man_test.sh MAN_DIR QUILLON_LOT COMPLETION_FILE
set -eu
pages=$1 lot=$2 completion=$3
export LC_ALL=C.UTF-8
tmp=$(mktemp -d -t quillon-man.XXXXXX)
trap 'rm -rf "$tmp"' EXIT
. "$(dirname "$0")/commun.sh"

version=$("$lot" --version | sed -n 's/.*Version \([0-9.]*\).*/\1/p')
n=0
for page in "$pages"/*.1 "$pages"/*/*.1; do  # the translated pages too
  nom=$(basename "$page" .1) n=$((n + 1))
  for fichier in "$page" "$page.gz"; do for largeur in 80 60; do
    if ! erreurs=$(MANWIDTH=$largeur man --warnings -E UTF-8 -l "$fichier" 2>&1 >/dev/null); then
      echec "$fichier: man a échoué: $erreurs"
    elif [ -n "$erreurs" ]; then echec "$fichier à $largeur colonnes: $erreurs"; fi
  done; done
  ligne=$(lexgrog "$page" 2>&1) || echec "$nom: lexgrog ne trouve pas la section du nom: $ligne"
  case $ligne in *"\"$nom - "*) ;; *) echec "$nom: la ligne du nom ne nomme pas la page: $ligne" ;; esac
  MANWIDTH=80 man -E UTF-8 -l "$page" 2>/dev/null | tail -n 1 | grep -q "Quillon $version" ||
    echec "$nom: le pied de page ne porte pas la version $version"
done
[ "$n" -ge 2 ] || echec "$n page(s) de manuel dans $pages"

# What quillon-lot --aide lists, the page and the completion must know; the
# completion offers nothing else.
texte=$(MANWIDTH=200 man -E UTF-8 -l "$pages/quillon-lot.1" 2>/dev/null)
aide=$("$lot" --aide)
offertes=$(bash -c '. "$1"; compopt() { :; }; COMP_WORDS=(quillon-lot -); COMP_CWORD=1; _quillon_lot
  printf "%s\n" "${COMPREPLY[@]}"' sh "$completion" | tr -d = | sort -u)
options=$( (echo "$aide" | grep -o -- '--[a-z][a-z-]*'; echo "$aide" | grep -o -- '^ *-[a-zA-Z],' | tr -d ' ,') | sort -u)
for option in $options; do
  echo "$texte" | grep -q -- "$option\b" || echec "quillon-lot(1) ne décrit pas $option"
done
echo "$options" >"$tmp/aide" && echo "$offertes" >"$tmp/offertes"
comm -23 "$tmp/aide" "$tmp/offertes" | while read -r o; do echec "la complétion ne propose pas $o"; done
comm -13 "$tmp/aide" "$tmp/offertes" | while read -r o; do echec "la complétion propose $o, que quillon-lot --aide ne connaît pas"; done
codes=$(echo "$aide" | sed -n '/^Codes de sortie/,$p' | sed -n 's/^ *\([0-9][0-9]*\) .*/\1/p')
[ -n "$codes" ] || echec "quillon-lot --aide ne liste aucun code de sortie"
section=$(echo "$texte" | sed -n '/^CODE DE RETOUR/,/^[A-Z]/p')
for code in $codes; do
  echo "$section" | grep -q "^ *$code\$" || echec "quillon-lot(1) ne décrit pas le code de retour $code"
done

bilan "pages de manuel" "$n pages sans avertissement"
