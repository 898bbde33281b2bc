#!/bin/sh
# The Windows build's tests under wine (make test-windows):
#   tests/windows/run-tests.sh LINUX_BUILD WIN64_BUILD WIN32_BUILD
# - the unit tests of each Windows build, through CTest under wine;
# - every e2e case (tests/e2e), and Windows' own runs and quillon-lot's
#   (tests/runs_test.cc) against quillon.exe and quillon-lot.exe, driven by
#   the Linux e2e program; the cases that cannot
#   apply on Windows are listed with their reasons in tests/windows/exclus;
# - the windowed mode: quillon.exe without arguments shows the main window
#   (smoke-windowed.sh); the windows themselves are driven by the unit
#   tests (tests/win32_windows_test.cc);
# - quillon-lot.exe's exports against quillon-lot's (exports.sh).
# Everything runs on a virtual X display of its own.
# One wineserver is kept alive for the whole run, in a wine prefix of the
# build's own; wine's debug output is silenced. The i686 build's tests run
# only where a 32-bit wine is installed.
set -eu
linux="$(cd "$1" && pwd)"
win64="$(cd "$2" && pwd)"
win32="$(cd "$3" && pwd)"

export WINEDEBUG=-all
export WINEPREFIX="$win64/wine-prefix"
export WINEARCH=win64
# The windows need a display: a virtual one of our own for the whole run.
. "$(dirname "$0")/../../scripts/xvfb.sh"
xvfb_demarrer test-windows || exit 1
# The server in the background, its output away from ours.
wineserver -p </dev/null >/dev/null 2>&1 || true
trap 'wineserver -k 2>/dev/null || true; kill "$XVFB_PID" 2>/dev/null || true' EXIT
if [ ! -f "$WINEPREFIX/.quillon-pret" ]; then
  echo "test-windows: creating the wine prefix $WINEPREFIX"
  wineboot -i </dev/null >/dev/null 2>&1
  touch "$WINEPREFIX/.quillon-pret"
else
  # Wine's own services started here, their output away from ours: started
  # by the first test instead, they would keep CTest's pipes open.
  wineboot </dev/null >/dev/null 2>&1 || true
fi

# sous_wine NAME BUILD: unit tests, then the e2e cases, of one build.
sous_wine() {
  nom="$1"
  build="$2"
  echo "test-windows: $nom unit tests (ctest under wine)"
  (cd "$build" && ctest --output-on-failure)
  echo "test-windows: $nom e2e cases against quillon.exe and quillon-lot.exe"
  debut=$(date +%s%N)
  QUILLON_EXE_WINDOWS="$build/quillon.exe" QUILLON_LANCEUR="$build/tests/quillon_lanceur.exe" \
    "$linux/tests/quillon_e2e_tests" --gtest_filter='Executable/*:Windows.*:Lot.*' --gtest_brief=1
  fin=$(date +%s%N)
  cas=$(ls -d "$(dirname "$0")/../e2e"/*/ | wc -l)
  echo "test-windows: $nom: $((cas + 4)) cases in $(((fin - debut) / 1000000)) ms"
  echo "test-windows: $nom windowed mode: quillon.exe without arguments"
  "$(dirname "$0")/smoke-windowed.sh" "$build/quillon.exe"
  "$(dirname "$0")/exports.sh" "$linux" "$build"
}

sous_wine x86_64 "$win64"
if dpkg-query -W -f='${Status}' wine32:i386 2>/dev/null | grep -q "install ok installed"; then
  sous_wine i686 "$win32"
else
  echo "test-windows: i686: compiled and linked; its tests need a 32-bit wine (wine32:i386), not installed here: skipped"
fi
echo "test-windows: quillon.exe: $(stat -c %s "$win64/quillon.exe") bytes (x86_64), $(stat -c %s "$win32/quillon.exe") bytes (i686)"
