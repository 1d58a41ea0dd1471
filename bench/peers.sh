#!/usr/bin/env bash
# How long the tool takes for an estate beside programs that do less: bench/peers.sh TOOL FOLDER [RUNS]
#
# One table: medians of RUNS runs (5), taken in turns so that whatever else the machine does meets all
# of them; time on the clock, processor time (user and system), and its ratio to reading the bytes
# alone (cat). The first run of each, which fills the cache of files, does not count. A peer that is not
# installed is left out, with a word. The machine should be quiet: the last line tells its load.
set -euo pipefail
if [ $# -lt 2 ]; then
  sed -n '2,4p' "${BASH_SOURCE[0]}" | cut -c3- >&2
  exit 2
fi
tool=$(realpath "$1") folder=$(realpath "$2") runs=${3:-5}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

find "$folder" -type f \( -iname '*.bas' -o -iname '*.cls' -o -iname '*.frm' -o -iname '*.ctl' \
  -o -iname '*.dob' -o -iname '*.pag' -o -iname '*.dsr' -o -iname '*.vbp' -o -iname '*.vb' \) >"$work/files"
files=$(wc -l <"$work/files")
bytes=$(tr '\n' '\0' <"$work/files" | du -cb --files0-from=- 2>/dev/null | tail -n 1 | cut -f1)
lines=$(tr '\n' '\0' <"$work/files" | xargs -0 cat | wc -l)
echo "$files files, $lines lines, $bytes bytes below $folder"

names=()
declare -A command
add() { names+=("$1"); command[$1]=$2; }
list="tr '\\n' '\\0' <'$work/files' | xargs -0"
add "cat" "$list cat >/dev/null"
add "wc -l" "$list cat | wc -l >/dev/null"
add "cp" "rm -rf '$work/copy'; cp -r '$folder' '$work/copy'"
ctags=$(command -v ctags-universal || command -v ctags || true)
if [ -n "$ctags" ] && "$ctags" --list-languages 2>/dev/null | grep -qx Basic; then
  add "ctags (Basic)" "'$ctags' --languages=Basic --langmap=Basic:.bas.cls.frm.ctl.dob.pag.dsr.vb -L '$work/files' -f /dev/null --quiet=yes"
else
  echo "universal-ctags is not installed: left out" >&2
fi
add "vendrelmodel tree" "'$tool' tree '$folder' --depth 1 --jobs 1 --quiet >/dev/null"
add "vendrelmodel check" "'$tool' check '$folder' --quiet >/dev/null"
add "vendrelmodel names" "'$tool' names '$folder' --quiet >/dev/null"
add "vendrelmodel dump" "'$tool' dump '$folder' --quiet >/dev/null"

# once NAME: runs it and appends "wall processor" to its file.
once() {
  local file="$work/${1//[^a-z]/_}" TIMEFORMAT='%R %U %S'
  local status=0
  { time bash -c "${command[$1]}" >/dev/null 2>&1 || status=$?; } 2>>"$file"
  # 3 and 4 are answers of the tool, 123 that of xargs where a file has gone.
  case $status in 0 | 3 | 4 | 123) ;; *) echo "$1 ended with $status; its figures mean nothing" >&2 ;; esac
}
for ((run = 0; run <= runs; run++)); do
  for name in "${names[@]}"; do
    once "$name"
    [ "$run" -gt 0 ] || : >"$work/${name//[^a-z]/_}"  # the first one filled the cache
  done
done

median() { sort -n | awk '{v[NR] = $1} END {print NR % 2 ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2}'; }
printf '%-22s %10s %14s %12s %8s %8s\n' program "clock (s)" "processor (s)" "Mlines/s" "to cat" "to ctags"
base= index=0
for name in "${names[@]}"; do
  file="$work/${name//[^a-z]/_}"
  wall=$(awk '{print $1}' "$file" | median)
  processor=$(awk '{print $2 + $3}' "$file" | median)
  base=${base:-$processor}
  case $name in ctags*) index=$processor ;; esac
  awk -v n="$name" -v w="$wall" -v p="$processor" -v b="$base" -v i="$index" -v l="$lines" 'BEGIN {
    printf "%-22s %10.3f %14.3f %12.2f %8.1f %8s\n", n, w, p, (p > 0 ? l / p / 1e6 : 0), (b > 0 ? p / b : 0),
           (i > 0 ? sprintf("%.2f", p / i) : "-") }'
done
echo "load of the machine: $(cut -d' ' -f1-3 /proc/loadavg), $(nproc) processors, $runs runs"
