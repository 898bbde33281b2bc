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
racine=$tmp/racine
DESTDIR=$racine "$cmake" --install "$build" --prefix /usr >"$tmp/install.txt"
usr=$racine/usr

echecs=0
echec() {
  echo "ÉCHEC: $*" >&2
  echecs=$((echecs + 1))
}

# Files: what must be there, and with which mode.
id=ch.quillon.Quillon
attendus="755 bin/quillon
755 bin/quillon-lot
644 share/bash-completion/completions/quillon
644 share/bash-completion/completions/quillon-lot
644 share/doc/quillon/README.md
644 share/doc/quillon/copyright
644 share/doc/quillon/changelog.gz
644 share/doc/quillon/samples/lot12.ptv
644 share/doc/quillon/samples/lot12.ptp
644 share/doc/quillon/samples/lot12.pts"
if [ "$fenetres" = ON ]; then
  attendus="$attendus
755 bin/quillon-fenetres
644 share/applications/$id.desktop
644 share/metainfo/$id.metainfo.xml
644 share/doc/quillon-fenetres/copyright
644 share/doc/quillon-fenetres/changelog.gz"
  for taille in 16 32 48 64 128 256; do
    attendus="$attendus
644 share/icons/hicolor/${taille}x$taille/apps/$id.png"
  done
fi
if [ "$man" = ON ]; then
  attendus="$attendus
644 share/man/man1/quillon.1.gz
644 share/man/man1/quillon-lot.1.gz"
  [ "$fenetres" = ON ] && attendus="$attendus
644 share/man/man1/quillon-fenetres.1.gz"
fi
echo "$attendus" | while read -r mode chemin; do
  if [ ! -f "$usr/$chemin" ]; then
    echo "ÉCHEC: /usr/$chemin n'est pas installé" >&2
    echo x
  elif [ "$(stat -c %a "$usr/$chemin")" != "$mode" ]; then
    echo "ÉCHEC: /usr/$chemin a le mode $(stat -c %a "$usr/$chemin"), pas $mode" >&2
    echo x
  fi
done >"$tmp/fichiers"
[ -s "$tmp/fichiers" ] && echecs=$((echecs + $(wc -l <"$tmp/fichiers")))

# An icon's file is the size its folder says.
if [ "$fenetres" = ON ]; then
  for taille in 16 32 48 64 128 256; do
    icone=$usr/share/icons/hicolor/${taille}x$taille/apps/$id.png
    [ -f "$icone" ] || continue
    largeur=$(od -An -tu1 -j16 -N4 "$icone" | awk '{print (($1*256+$2)*256+$3)*256+$4}')
    hauteur=$(od -An -tu1 -j20 -N4 "$icone" | awk '{print (($1*256+$2)*256+$3)*256+$4}')
    [ "$largeur x $hauteur" = "$taille x $taille" ] ||
      echec "l'icône ${taille}x$taille fait $largeur x $hauteur"
  done
fi

# Conversions: the same command in two folders, with the build tree's
# programs on the project's samples and with the installed programs on the
# installed samples. Targets and standard output must be the same bytes;
# logs too, their date line aside.
#   name | program | arguments | files written
cas="ptv-ptp|quillon|lot12.ptv lot12.ptp 500 CS|lot12.ptp lot12.ptv.log
ptp-ptv|quillon|lot12.ptp lot12.ptv|lot12.ptv lot12.ptp.log
ptp-ptm|quillon|lot12.ptp lot12.ptm|lot12.ptm lot12.ptp.log
lot-pts|quillon-lot|-t OD lot12.pts|lot12.ptv lot12.pts.log
lot-json|quillon-lot|-p ptm -e 1000 -t CS --json=- lot12.ptp lot12.pts|lot12.ptm lot12.ptp.log lot12.ptv lot12.pts.log"
echo "$cas" | while IFS='|' read -r nom programme arguments fichiers; do
  for cote in construit installe; do
    dossier=$tmp/$nom/$cote
    mkdir -p "$dossier"
    if [ $cote = construit ]; then
      cp "$projet"/samples/lot12.* "$dossier"
      exe=$build/$programme
    else
      cp "$usr"/share/doc/quillon/samples/lot12.* "$dossier"
      exe=$usr/bin/$programme
    fi
    # shellcheck disable=SC2086 # the arguments are words
    (cd "$dossier" && LC_ALL=C "$exe" $arguments >sortie.txt 2>erreur.txt) || true
    for f in $fichiers; do
      case $f in *.log) sed -i 2d "$dossier/$f" 2>/dev/null || true ;; esac
    done
  done
  for f in sortie.txt erreur.txt $fichiers; do
    if [ ! -f "$tmp/$nom/construit/$f" ]; then
      echo "ÉCHEC: $nom: le programme construit n'a pas écrit $f" >&2
      echo x
    elif ! cmp -s "$tmp/$nom/construit/$f" "$tmp/$nom/installe/$f"; then
      echo "ÉCHEC: $nom: $f diffère entre le programme installé et le programme construit" >&2
      echo x
    fi
  done
done >"$tmp/conversions"
[ -s "$tmp/conversions" ] && echecs=$((echecs + $(wc -l <"$tmp/conversions")))

# Without arguments, the installed quillon starts the installed windowed
# program: with no display, that program is the one that says so.
if [ "$fenetres" = ON ]; then
  for exe in "$build/quillon" "$usr/bin/quillon"; do
    message=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM timeout 30 "$exe" 2>&1 >/dev/null || true)
    case $message in
      *"aucun affichage disponible"*) ;;
      *) echec "$exe sans argument n'a pas lancé quillon-fenetres: $message" ;;
    esac
  done
fi

# Bash completion: what the installed scripts offer.
#   command line up to the cursor | expected offers, sorted
completion="quillon-lot --ech|--echelle=
quillon-lot --echelle=5|500 5000
quillon-lot -e 2|2000 250
quillon-lot --ptp-en=|ptm ptv
quillon-lot -t |CS OD
quillon-lot --theme=O|OD
quillon-lot --ver|--verifier --version
quillon-lot -o d|dossier/
quillon-lot -r --j|--json=
quillon-lot a|a.PTS a.ptv
quillon-lot -- -|-x.ptp
quillon-lot -j |
quillon lot12.ptv lot12.ptp |1000 2000 250 4000 500 5000
quillon lot12.ptv lot12.ptp 500 |CS OD"
mkdir -p "$tmp/completion/dossier"
touch "$tmp/completion/a.ptv" "$tmp/completion/a.PTS" "$tmp/completion/a.txt" "$tmp/completion/-x.ptp"
echo "$completion" | while IFS='|' read -r ligne attendu; do
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
  [ "$offert" = "$attendu" ] || { echo "ÉCHEC: complétion de « $ligne »: « $offert » au lieu de « $attendu »" >&2; echo x; }
done >"$tmp/completion.txt"
[ -s "$tmp/completion.txt" ] && echecs=$((echecs + $(wc -l <"$tmp/completion.txt")))

if [ "$echecs" -ne 0 ]; then
  echo "$echecs échec(s)" >&2
  exit 1
fi
echo "installation: $(echo "$attendus" | wc -l) fichiers vérifiés, $(echo "$cas" | wc -l) conversions identiques, $(echo "$completion" | wc -l) complétions"
