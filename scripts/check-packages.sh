#!/bin/sh
# Checks the packages as a user gets them.
#
#   scripts/check-packages.sh deb BUILD_DIR
#     (make check-packages) the .deb files of BUILD_DIR/paquets: their
#     fields and computed dependencies, apt's simulated install, their
#     files extracted with dpkg-deb -x and the extracted programs run on
#     the samples (the same bytes as the build tree's programs), lintian
#     (no error, no warning), desktop-file-validate and appstreamcli
#     validate.
#
#   scripts/check-packages.sh windows PACKAGES_DIR LINUX_BUILD_DIR
#     (make check-packages-windows) the zips' contents, then the installer
#     under wine in a fresh prefix: a silent install (/S), the installed
#     quillon.exe converting a sample as the Linux program does, the
#     Start-menu entry, the list of programs, the PATH; the uninstaller
#     removing all of it; and a second install with /SANSPATH and /D.
set -eu
projet=$(cd "$(dirname "$0")/.." && pwd)

tmp=$(mktemp -d -t quillon-paquets.XXXXXX)
nettoyer() { rm -rf "$tmp"; }
trap nettoyer EXIT

. "$projet/tests/install/commun.sh"
verifier() {  # verifier MESSAGE COMMAND...: a failure unless COMMAND succeeds
  verifier_message=$1
  shift
  "$@" >/dev/null 2>&1 || echec "$verifier_message"
}

verifier_deb() {
  build=$(cd "$1" && pwd)
  version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
  arch=$(dpkg --print-architecture)
  cli=$build/paquets/quillon_${version}_$arch.deb
  fen=$build/paquets/quillon-fenetres_${version}_$arch.deb
  for deb in "$cli" "$fen"; do
    [ -f "$deb" ] || { echo "check-packages: $deb is missing (make package)" >&2; exit 1; }
  done

  # Fields: the one version, dependencies computed from the libraries, the
  # command-line package without Qt.
  #   package | field | pattern it must match (grep -E) | pattern it must not match
  champs="$cli|Version|^$version\$|
$cli|Depends|libc6 \(>=|libqt|quillon-fenetres
$cli|Section|^science\$|
$fen|Version|^$version\$|
$fen|Depends|^quillon \(= $version\),.*libqt6widgets6|
$fen|Depends|libc6 \(>=|"
  echo "$champs" | while IFS='|' read -r deb champ oui non; do
    valeur=$(dpkg-deb -f "$deb" "$champ")
    echo "$valeur" | grep -Eq -- "$oui" || echec "$(basename "$deb"): $champ « $valeur » ne correspond pas à $oui"
    if [ -n "$non" ] && echo "$valeur" | grep -Eq -- "$non"; then
      echec "$(basename "$deb"): $champ « $valeur » contient $non"
    fi
  done

  # apt takes them, alone and together (a simulation: nothing is installed).
  verifier "apt ne peut pas installer $(basename "$cli") seul" apt-get install --simulate "$cli"
  verifier "apt ne peut pas installer les deux paquets" apt-get install --simulate "$cli" "$fen"

  # The packages' files, as apt would unpack them.
  racine=$tmp/racine
  for deb in "$cli" "$fen"; do dpkg-deb -x "$deb" "$racine"; done
  usr=$racine/usr
  for f in bin/quillon bin/quillon-lot bin/quillon-fenetres; do
    verifier "/usr/$f absent des paquets" test -x "$usr/$f"
    if ldd "$usr/$f" | grep -q 'not found'; then echec "/usr/$f: une bibliothèque manque"; fi
  done

  # The extracted programs on the extracted samples, against the build
  # tree's programs on the project's samples.
  #   name | program | arguments | files to compare
  cas="ptv-ptp|quillon|lot12.ptv lot12.ptp 1000 OD|lot12.ptp lot12.ptv.log
ptp-ptm|quillon|lot12.ptp lot12.ptm|lot12.ptm lot12.ptp.log
lot|quillon-lot|-p ptm -t CS lot12.ptp lot12.pts|lot12.ptm lot12.ptv lot12.ptp.log lot12.pts.log"
  echo "$cas" | while IFS='|' read -r nom programme arguments fichiers; do
    # shellcheck disable=SC2086 # the arguments are words
    convertir "$tmp/$nom/paquet" "$usr/share/doc/quillon/samples" env LC_ALL=C "$usr/bin/$programme" $arguments
    # shellcheck disable=SC2086
    convertir "$tmp/$nom/construit" "$projet/samples" env LC_ALL=C "$build/$programme" $arguments
    # shellcheck disable=SC2086
    memes "$nom" "$tmp/$nom/construit" "$tmp/$nom/paquet" sortie.txt $fichiers
  done
  grep -q '^Quillon, Version '"$version" "$tmp/ptp-ptm/paquet/sortie.txt" ||
    echec "le quillon du paquet n'écrit pas sa version"

  # quillon without arguments starts the packaged quillon-fenetres.
  lance_fenetres "$usr/bin/quillon"

  # Debian's and freedesktop's own checks.
  if ! lintian --fail-on error,warning --display-info "$cli" "$fen" >"$tmp/lintian" 2>&1; then
    echec "lintian: $(grep -E '^[EW]:' "$tmp/lintian" || tail -n 5 "$tmp/lintian")"
  fi
  verifier "desktop-file-validate: $(desktop-file-validate "$usr"/share/applications/*.desktop 2>&1)" \
    desktop-file-validate "$usr"/share/applications/ch.quillon.Quillon.desktop
  # --no-net: the addresses of the home page and screenshots are not fetched.
  verifier "appstreamcli: $(appstreamcli validate --no-net "$usr"/share/metainfo/*.xml 2>&1)" \
    appstreamcli validate --no-net "$usr"/share/metainfo/ch.quillon.Quillon.metainfo.xml

  bilan check-packages "$(basename "$cli") ($(stat -c %s "$cli") octets), $(basename "$fen") ($(stat -c %s "$fen") octets): \
champs, apt, fichiers, $(echo "$cas" | wc -l) conversions, lintian ($(grep -c '^[IPN]:' "$tmp/lintian" || true) remarque(s) d'information), \
desktop-file-validate, appstreamcli"
}

verifier_windows() {
  paquets=$(cd "$1" && pwd)
  linux=$(cd "$2" && pwd)
  installateur=$(ls "$paquets"/quillon-*-win64-installation.exe)
  version=${installateur##*/quillon-}
  version=${version%-win64-installation.exe}

  # The zips: one folder with the programs, the README, the license, the
  # third-party notices and the samples.
  for arch in 64 32; do
    zip=$paquets/quillon-$version-win$arch.zip
    contenu=$(unzip -Z1 "$zip" 2>/dev/null || true)
    for f in quillon.exe quillon-lot.exe quillon-fenetres.exe README.md LICENSE NOTICES \
      samples/lot12.ptv samples/lot12.ptp samples/lot12.pts; do
      echo "$contenu" | grep -qx "quillon-$version-win$arch/$f" || echec "$(basename "$zip") n'a pas $f"
    done
  done

  export WINEDEBUG=-all WINEARCH=win64 WINEPREFIX="$tmp/wine"
  unset DISPLAY WAYLAND_DISPLAY
  nettoyer() {
    wineserver -k 2>/dev/null || true
    rm -rf "$tmp"
  }
  wineboot -i </dev/null >/dev/null 2>&1
  wineserver -w
  cle_env='HKLM\System\CurrentControlSet\Control\Session Manager\Environment'
  cle_des='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Quillon'
  chemin_avant=$(wine reg query "$cle_env" /v Path 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_EXPAND_SZ *//p')
  c=$WINEPREFIX/drive_c
  dossier=$c/Program\ Files/Quillon
  raccourci=$c/ProgramData/Microsoft/Windows/Start\ Menu/Programs/Quillon.lnk

  # A silent install, with its defaults.
  wine "$installateur" /S </dev/null >/dev/null 2>&1 || echec "l'installateur a échoué"
  wineserver -w
  for f in quillon.exe quillon-lot.exe quillon-fenetres.exe README.md LICENSE NOTICES samples/lot12.ptv desinstaller.exe; do
    verifier "$f n'est pas installé dans Program Files\\Quillon" test -f "$dossier/$f"
  done
  des=$(wine reg query "$cle_des" 2>/dev/null | tr -d '\r')
  for valeur in "DisplayName *REG_SZ *Quillon\$" "DisplayVersion *REG_SZ *$version\$" \
    'UninstallString *REG_SZ *"C:\\Program Files\\Quillon\\desinstaller.exe"$' 'DisplayIcon *REG_SZ'; do
    printf '%s\n' "$des" | grep -Eq "^ *$valeur" || echec "la liste des programmes n'a pas $valeur"
  done
  chemin=$(wine reg query "$cle_env" /v Path 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_EXPAND_SZ *//p')
  [ "$chemin" = "$chemin_avant;C:\\Program Files\\Quillon" ] || echec "PATH après l'installation: $chemin"

  # The Start-menu entry opens the windowed program, a program of the
  # windows subsystem (2 in its PE header).
  if [ -f "$raccourci" ]; then
    strings -a "$raccourci" | grep -qx 'C:\\Program Files\\Quillon\\quillon-fenetres.exe' ||
      echec "le raccourci du menu Démarrer ne vise pas quillon-fenetres.exe"
    pe=$(od -An -tu4 -j60 -N4 "$dossier/quillon-fenetres.exe" | tr -d ' ')
    sous_systeme=$(od -An -tu2 -j$((pe + 92)) -N2 "$dossier/quillon-fenetres.exe" | tr -d ' ')
    [ "$sous_systeme" = 2 ] || echec "quillon-fenetres.exe n'est pas un programme fenêtré (sous-système $sous_systeme)"
  else
    echec "pas d'entrée Quillon dans le menu Démarrer"
  fi

  # The installed quillon.exe converts a sample as the Linux program does
  # (under the C locale, the same bytes on standard output too); the PATH
  # finds both command-line programs.
  convertir "$tmp/windows" "$dossier/samples" wine 'C:\Program Files\Quillon\quillon.exe' lot12.ptp lot12.ptm
  convertir "$tmp/linux" "$projet/samples" env LC_ALL=C "$linux/quillon" lot12.ptp lot12.ptm
  memes "quillon.exe" "$tmp/linux" "$tmp/windows" sortie.txt lot12.ptm lot12.ptp.log
  for programme in quillon quillon-lot; do
    wine cmd /c "$programme" --version </dev/null 2>/dev/null | grep -q "Version $version" ||
      echec "$programme n'est pas trouvé par le PATH"
  done
  wineserver -w

  # The uninstaller removes what was installed.
  wine 'C:\Program Files\Quillon\desinstaller.exe' /S </dev/null >/dev/null 2>&1 || echec "le désinstallateur a échoué"
  wineserver -w
  [ ! -e "$dossier" ] || echec "Program Files\\Quillon reste après la désinstallation: $(cd "$dossier" && find . | tr '\n' ' ')"
  verifier "le raccourci du menu Démarrer reste après la désinstallation" test ! -e "$raccourci"
  verifier "Quillon reste dans la liste des programmes" sh -c "! wine reg query '$cle_des'"
  verifier "Quillon reste dans le registre" sh -c "! wine reg query 'HKLM\\Software\\Quillon'"
  chemin=$(wine reg query "$cle_env" /v Path 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_EXPAND_SZ *//p')
  [ "$chemin" = "$chemin_avant" ] || echec "PATH après la désinstallation: $chemin"

  # Another folder, and the PATH left alone.
  wine "$installateur" /S /SANSPATH '/D=C:\Outils\Quillon' </dev/null >/dev/null 2>&1 || echec "l'installateur a échoué"
  wineserver -w
  verifier "/D n'a pas choisi le dossier" test -f "$c/Outils/Quillon/quillon.exe"
  chemin=$(wine reg query "$cle_env" /v Path 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_EXPAND_SZ *//p')
  [ "$chemin" = "$chemin_avant" ] || echec "PATH après une installation /SANSPATH: $chemin"
  wine 'C:\Outils\Quillon\desinstaller.exe' /S </dev/null >/dev/null 2>&1 || true
  wineserver -w
  verifier "C:\\Outils\\Quillon reste après la désinstallation" test ! -e "$c/Outils/Quillon"
  chemin=$(wine reg query "$cle_env" /v Path 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_EXPAND_SZ *//p')
  [ "$chemin" = "$chemin_avant" ] || echec "PATH après la désinstallation /SANSPATH: $chemin"

  bilan check-packages "$(basename "$installateur") ($(stat -c %s "$installateur") octets) et les zips: installation silencieuse, conversion, menu Démarrer, liste des programmes, PATH, désinstallation"
}

case ${1:-} in
  deb) verifier_deb "$2" ;;
  windows) verifier_windows "$2" "$3" ;;
  *)
    echo "usage: $0 deb BUILD_DIR | windows PACKAGES_DIR LINUX_BUILD_DIR" >&2
    exit 64
    ;;
esac
