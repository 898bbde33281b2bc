#!/bin/sh
# The Windows packages, from the Windows builds (make package-windows):
#   packaging/windows/package.sh WIN64_BUILD WIN32_BUILD OUT_DIR
# writes into OUT_DIR
#   quillon-VERSION-win64.zip, quillon-VERSION-win32.zip
#       one folder, quillon-VERSION-winNN, with the programs, README.md,
#       LICENSE, NOTICES and samples: Quillon without installing anything
#   quillon-VERSION-win64-installation.exe
#       the installer for x86-64 Windows (quillon.nsi, built with makensis)
# Each build is installed into a folder first (cmake --install --strip, the
# Windows layout of cmake/install.cmake); the zip and the installer take
# that folder.
set -eu
ici=$(cd "$(dirname "$0")" && pwd)
projet=$(cd "$ici/../.." && pwd)
mkdir -p "$3"
sortie=$(cd "$3" && pwd)
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$1/CMakeCache.txt")
[ -n "$version" ] || { echo "package-windows: no version in $1/CMakeCache.txt" >&2; exit 1; }

tmp=$(mktemp -d -t quillon-windows.XXXXXX)
trap 'rm -rf "$tmp"' EXIT

for build in "$1:64" "$2:32"; do
  arch=${build##*:}
  dossier=${build%:*}
  nom=quillon-$version-win$arch
  cmake --install "$dossier" --prefix "$tmp/$nom" --strip >/dev/null
  rm -f "$sortie/$nom.zip"
  # Names in order and no extra attributes, so that the same files give the
  # same zip.
  (cd "$tmp" && find "$nom" | LC_ALL=C sort | TZ=UTC zip -q -X -9 "$sortie/$nom.zip" -@)
  echo "package-windows: $sortie/$nom.zip"
done

# The installer's files: what the x86-64 build installed, file by file, for
# the installer to copy and the uninstaller to remove.
racine=$tmp/quillon-$version-win64
nsh=$tmp/fichiers.nsh
{
  echo '!macro FICHIERS_INSTALLER'
  (cd "$racine" && find . -type d | LC_ALL=C sort) | while read -r d; do
    d=${d#.}
    cible=$(printf '%s' "\$INSTDIR$d" | tr / '\\')
    echo "  SetOutPath \"$cible\""
    find "$racine$d" -maxdepth 1 -type f | LC_ALL=C sort | while read -r f; do
      echo "  File \"$f\""
    done
  done
  echo '!macroend'
  echo '!macro FICHIERS_DESINSTALLER'
  (cd "$racine" && find . -type f | LC_ALL=C sort) | while read -r f; do
    echo "  Delete \"$(printf '%s' "\$INSTDIR${f#.}" | tr / '\\')\""
  done
  # Folders, the deepest first; a folder the user put files into stays.
  (cd "$racine" && find . -mindepth 1 -type d | LC_ALL=C sort -r) | while read -r d; do
    echo "  RMDir \"$(printf '%s' "\$INSTDIR${d#.}" | tr / '\\')\""
  done
  echo '!macroend'
} >"$nsh"

installateur=$sortie/quillon-$version-win64-installation.exe
makensis -V2 -NOCD \
  -DVERSION="$version" -DSOURCE="$racine" -DFICHIERS="$nsh" \
  -DICONE="$projet/data/icons/quillon.ico" -DSORTIE="$installateur" \
  "$ici/quillon.nsi"
[ -f "$racine/quillon-fenetres.exe" ] ||
  echo "package-windows: no quillon-fenetres.exe in the Windows build: the installer has no Start-menu entry" >&2
echo "package-windows: $installateur"
