#!/usr/bin/env bash
# Builds the fuzz targets with Clang and both sanitizers, and runs as many at once as there are
# processors.
#   ./fuzz.sh [SECONDS] [TARGET]     SECONDS for each target (60), TARGET as in fuzz/ (all)
#   ./fuzz.sh --replay [TARGET]      only the seeds and what was found before
#   ./fuzz.sh --smoke [TARGET]       the seeds and 3,000 mutations of them, the same on every machine
# What a target reads grows in build/fuzz-corpus/TARGET; an input that breaks it is left in
# build/fuzz-corpus/TARGET-broken.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. ./cmake/packages.sh

seconds=60
target=
for argument in "$@"; do
  case "$argument" in
    --no-install) packages_name fuzz; exit 0 ;;
    --replay) seconds=0 ;;
    --smoke) seconds=smoke ;;
    [0-9]*) seconds=$argument ;;
    *Fuzz) target=$argument ;;
    *) echo "usage: ./fuzz.sh [SECONDS | --replay | --smoke] [TARGET]" >&2; exit 2 ;;
  esac
done
packages_install fuzz
build_preset asan fuzz_targets

# The options of a target: its dictionary, and how long an input may be.
options_of() {
  case "$1" in
    ProjectFuzz|GroupFuzz) echo "-dict=fuzz/dictionaries/project.dict -max_len=8192" ;;
    ModuleFuzz|ControlsFuzz|WriteFuzz|ColourFuzz|SourceTokensFuzz|UsesFuzz)
      echo "-dict=fuzz/dictionaries/basic.dict -max_len=8192" ;;
    TypeLibFuzz) echo "-max_len=65536" ;;
    AssemblyFuzz|MetadataFuzz|SetFuzz) echo "-max_len=16384" ;;
    *) echo "-max_len=4096" ;;
  esac
}

run_target() {
  local name=$1 corpus="build/fuzz-corpus/$1" seeds="fuzz/seeds/$1"
  local log="$corpus.log" fixed=() limit=(-max_total_time="$seconds")
  case "$seconds" in
    0) limit=(-runs=0) ;;
    smoke)
      # A run tells of the code and not of chance: from the seeds alone, without reading back its own
      # finds by the clock, without taking up what is compared (pointers too), and at fixed addresses
      # where the system allows that.
      limit=(-runs=3000 -seed=1 -reload=0 -use_cmp=0)
      setarch -R true 2>/dev/null && fixed=(setarch -R)
      corpus="build/fuzz-corpus/$name-smoke"
      rm -rf "$corpus"
      ;;
  esac
  mkdir -p "$corpus" "$seeds" "build/fuzz-corpus/$name-broken"
  if [ -x "build/asan/fuzz/${name%Fuzz}Seeds" ]; then
    "build/asan/fuzz/${name%Fuzz}Seeds" "$corpus"
  fi
  # Keeping count of rare features (entropic) would take most of the time.
  # shellcheck disable=SC2046  # the options are words
  if ! "${fixed[@]}" "build/asan/fuzz/$name" "${limit[@]}" $(options_of "$name") -entropic=0 -timeout=60 \
    -rss_limit_mb=4096 -print_final_stats=1 -artifact_prefix="build/fuzz-corpus/$name-broken/" \
    "$corpus" "$seeds" >"$log" 2>&1; then
    tail -n 40 "$log" >&2
    echo "$name: broken; the input is in build/fuzz-corpus/$name-broken" >&2
    return 1
  fi
  printf '%-16s %9s runs %7s covered %6s inputs\n' "$name" \
    "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
    "$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' "$log" | tail -n 1)" \
    "$(find "$corpus" -type f | wc -l)"
}
export seconds
export -f options_of run_target

printf '%s\n' fuzz/*Fuzz.cpp | xargs -n 1 basename -s .cpp | grep -x "${target:-.*}" |
  xargs -P "$(nproc)" -I NAME bash -c 'run_target NAME'
