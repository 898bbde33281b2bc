#!/bin/sh
# Installs what building and testing Quillon needs on Debian 12, and only
# what is missing: running it twice installs nothing the second time.
#   scripts/install-deps.sh          build and test tools, Qt, GoogleTest
#   scripts/install-deps.sh fuzz     clang and its fuzzing runtime as well
#   scripts/install-deps.sh windows  mingw-w64, GoogleTest's sources and wine
#                                    as well, for the Windows build's tests,
#                                    and Debian's source of SQLite, which the
#                                    Windows build compiles for its GeoPackages
#   scripts/install-deps.sh package  the packaging tools as well: CPack's
#                                    dpkg-shlibdeps, lintian, the desktop and
#                                    AppStream validators, makensis, zip
#   scripts/install-deps.sh 32bits   GCC's 32-bit libraries (g++-multilib), for
#                                    the 32-bit Linux build that computes as
#                                    the i686 Windows build does, and Debian's
#                                    source of SQLite, which it compiles too
set -eu

# scdoc turns the manual pages into roff; man-db's man and lexgrog check them.
# chromium loads the check reports in the tests, headless, and prints them
# to PDF, which poppler-utils' pdftotext and pdfinfo read back; attr and acl:
# setfattr and setfacl, for the tests of what a replaced file keeps. SQLite
# writes the GeoPackage exports; GDAL's ogrinfo and the sqlite3 shell read
# them back in the tests, and QGIS's Python bindings open them as a user
# would (a large package: the test that needs it is skipped without it).
# qt6-translations-l10n: Qt's own dialogs in French, German or Italian.
# gettext: msgfmt compiles the translations into the programs, xgettext and
# msgcmp check in the tests that every text has them.
paquets="g++ make cmake libgtest-dev libgmock-dev qt6-base-dev nlohmann-json3-dev locales scdoc man-db chromium poppler-utils attr acl"
paquets="$paquets libsqlite3-dev gdal-bin sqlite3 python3-qgis gettext qt6-translations-l10n"
case "${1:-}" in
  fuzz) paquets="$paquets clang libclang-rt-14-dev" ;;
  windows) paquets="$paquets g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix googletest wine wine64 xvfb xdotool dpkg-dev tcl" ;;
  package) paquets="$paquets dpkg-dev file lintian desktop-file-utils appstream nsis zip unzip binutils" ;;
  32bits) paquets="$paquets g++-multilib dpkg-dev tcl" ;;
esac

manquants=""
for p in $paquets; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    manquants="$manquants $p"
  fi
done

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi

if [ -n "$manquants" ]; then
  echo "install-deps: installing$manquants"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq $manquants
fi

# The French locale, for the tests of the log's month names.
if ! locale -a 2>/dev/null | grep -qi '^fr_FR\.utf-\?8$'; then
  if [ -f /etc/locale.gen ]; then
    $sudo sed -i 's/^# *\(fr_FR.UTF-8 UTF-8\)/\1/' /etc/locale.gen
    grep -q '^fr_FR.UTF-8 UTF-8' /etc/locale.gen || echo 'fr_FR.UTF-8 UTF-8' | $sudo tee -a /etc/locale.gen >/dev/null
    $sudo locale-gen >/dev/null
  fi
fi

# The Windows and 32-bit builds compile SQLite from Debian's own source
# package, kept in /usr/src/quillon-sqlite3 (the folder
# cmake/sqlite-source.cmake looks in); making its amalgamation takes tclsh.
case "${1:-}" in windows | 32bits) sqlite_source=oui ;; *) sqlite_source=non ;; esac
if [ $sqlite_source = oui ] && ! ls /usr/src/quillon-sqlite3/sqlite3-*/src/sqlite.h.in >/dev/null 2>&1; then
  if ! apt-cache showsrc sqlite3 >/dev/null 2>&1; then
    echo "install-deps: adding Debian's source entries"
    printf 'Types: deb-src\nURIs: http://deb.debian.org/debian\nSuites: bookworm bookworm-updates\nComponents: main\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg\n\nTypes: deb-src\nURIs: http://deb.debian.org/debian-security\nSuites: bookworm-security\nComponents: main\nSigned-By: /usr/share/keyrings/debian-archive-keyring.gpg\n' |
      $sudo tee /etc/apt/sources.list.d/quillon-sources.sources >/dev/null
    $sudo apt-get update -qq
  fi
  $sudo mkdir -p /usr/src/quillon-sqlite3
  (cd /usr/src/quillon-sqlite3 && $sudo apt-get source -qq sqlite3)
fi
