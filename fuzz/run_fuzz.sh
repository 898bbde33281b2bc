#!/usr/bin/env bash
# Runs the fuzz targets for a bounded time each.
#
#   fuzz/run_fuzz.sh BUILD_DIR [TARGET...]
#
# BUILD_DIR is a build configured with CXX=clang++ -DQUILLON_FUZZ=ON (make
# fuzz does it). TARGET is ptv, ptp, pts, conversion or rapport; all five by
# default.
#
# FUZZ_SECONDS  time per target (default 60)
# FUZZ_RUNS     executions per target instead: each target runs until it has
#               executed that many inputs (FUZZ_SECONDS, when set as well,
#               still bounds its time)
# FUZZ_JOBS     targets run side by side (default 1)
#
# The working corpus of each target lives in fuzz/corpus-work/TARGET (ignored
# by git) and grows from one run to the next. It is seeded with the files of
# samples/ and with small files from bench/quillon_generer, and every input
# of tests/fuzz-regressions/TARGET is replayed first. An input that crashes
# or breaks a property is left in fuzz/corpus-work/artifacts/; keep it as a
# regression by copying it into tests/fuzz-regressions/TARGET/.
set -euo pipefail

if [ $# -lt 1 ]; then
  echo "usage: $0 BUILD_DIR [ptv|ptp|pts|conversion|rapport...]" >&2
  exit 2
fi
racine="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "$1" && pwd)"
shift
cibles=("$@")
if [ ${#cibles[@]} -eq 0 ]; then cibles=(ptv ptp pts conversion rapport); fi
secondes="${FUZZ_SECONDS:-60}"
borne=(-max_total_time="$secondes")
if [ -n "${FUZZ_RUNS:-}" ]; then
  borne=(-runs="$FUZZ_RUNS")
  if [ -n "${FUZZ_SECONDS:-}" ]; then borne+=(-max_total_time="$secondes"); fi
fi
jobs="${FUZZ_JOBS:-1}"
travail="$racine/fuzz/corpus-work"
artefacts="$travail/artifacts"
regressions="$racine/tests/fuzz-regressions"
generer="$build/bench/quillon_generer"
mkdir -p "$artefacts"

# Seeds. Each line target gets the samples of its kind and small valid and
# faulty files; the conversion target gets the same files behind the two
# bytes that choose the run (see fuzz/harnesses.h): 0x2C value -> precision
# at 1:1000 with CS, 0x01 precision -> value, 0x22 DC -> value with CS, 0x03
# precision -> MD01; 0xFF: no failing file. The report target reads the
# second byte as its tolerance: 0x02 is 0.01 m.
semer() {
  local cible="$1" sorte="$2" entete="$3" graine="$4" etiquette="$5"
  local dossier="$travail/$cible"
  mkdir -p "$dossier"
  local f option
  for f in "$racine"/samples/*."$sorte"; do
    [ -f "$f" ] || continue
    { printf "$entete"; cat "$f"; } >"$dossier/$etiquette-sample-$(basename "$f")"
  done
  if [ -x "$generer" ]; then
    for option in "" --faulty; do
      { printf "$entete"; "$generer" "$sorte" 12 "$graine" $option; } >"$dossier/$etiquette-generated${option:+-faulty}"
    done
  fi
}
for cible in "${cibles[@]}"; do
  case "$cible" in
    ptv | ptp | pts) semer "$cible" "$cible" "" 1 seed ;;
    conversion)
      semer conversion ptv '\054\377' 2 ptv-ptp
      semer conversion ptp '\001\377' 3 ptp-ptv
      semer conversion ptp '\003\377' 4 ptp-ptm
      semer conversion pts '\042\377' 5 pts-ptv
      ;;
    rapport)
      semer rapport ptv '\054\002' 2 ptv-ptp
      semer rapport ptp '\001\002' 3 ptp-ptv
      semer rapport ptp '\003\002' 4 ptp-ptm
      semer rapport pts '\042\002' 5 pts-ptv
      ;;
    *)
      echo "run_fuzz: unknown target $cible" >&2
      exit 2
      ;;
  esac
done

# AddressSanitizer's allocator gives freed memory back to the system now
# and then; on a loaded machine that call alone has outlasted libFuzzer's
# 10-second timeout and been reported as a slow input. It keeps it instead.
export ASAN_OPTIONS="${ASAN_OPTIONS:-allocator_release_to_os_interval_ms=-1}"

# lancer TARGET: replays the regressions, then fuzzes for $secondes.
lancer() {
  local cible="$1"
  local exe="$build/fuzz/quillon_fuzz_$cible"
  if [ ! -x "$exe" ]; then
    echo "run_fuzz: $exe is missing; build $build first" >&2
    return 1
  fi
  local longueur=4096
  if [ "$cible" = conversion ] || [ "$cible" = rapport ]; then longueur=16384; fi
  local anciens=()
  if [ -d "$regressions/$cible" ]; then
    mapfile -t anciens < <(find "$regressions/$cible" -type f | sort)
  fi
  if [ ${#anciens[@]} -gt 0 ]; then
    "$exe" "${anciens[@]}" >"$travail/$cible.regressions.txt" 2>&1 || {
      echo "run_fuzz: $cible: a regression input fails again, see $travail/$cible.regressions.txt" >&2
      return 1
    }
  fi
  "$exe" "$travail/$cible" "${borne[@]}" -max_len="$longueur" -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$artefacts/$cible-" -print_final_stats=1 >"$travail/$cible.txt" 2>&1
}

echo "Fuzzing ${cibles[*]} (${borne[*]} each, $jobs at a time); output in $travail"
echecs=()
en_cours=()
for cible in "${cibles[@]}"; do
  lancer "$cible" &
  en_cours+=("$!:$cible")
  if [ ${#en_cours[@]} -ge "$jobs" ]; then
    pid="${en_cours[0]%%:*}"
    nom="${en_cours[0]#*:}"
    wait "$pid" || echecs+=("$nom")
    en_cours=("${en_cours[@]:1}")
  fi
done
for e in "${en_cours[@]}"; do
  wait "${e%%:*}" || echecs+=("${e#*:}")
done

for cible in "${cibles[@]}"; do
  resume="$(grep -E '^(stat::number_of_executed_units|stat::new_units_added):' "$travail/$cible.txt" 2>/dev/null |
    tr '\n' ' ' || true)"
  echo "  $cible: $(find "$travail/$cible" -type f | wc -l) corpus files; $resume"
done
if [ ${#echecs[@]} -gt 0 ]; then
  echo "run_fuzz: failures in ${echecs[*]}; inputs in $artefacts, logs in $travail/TARGET.txt" >&2
  exit 1
fi
echo "run_fuzz: no failure"
