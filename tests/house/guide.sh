#!/usr/bin/env bash
# The programs of a page are what they say: guide.sh PAGE WORK PROJECT COMPILE...
# Each block of C++ that begins with "// NAME.cpp" is compiled and run with the path of a project
# and of an empty folder; what it prints is the block of text behind it. COMPILE is a command line
# of a compiler to which source and "-o PROGRAM" are added in front of its libraries: a "{}" in it
# stands for them.
set -euo pipefail
page=$1 work=$2 project=$3
shift 3
rm -rf "$work"
mkdir -p "$work"
awk -v work="$work" '
  /^```/ && inside { inside = 0; close(file); next }
  /^```cpp$/ { inside = 1; file = "/dev/null"; first = 1; next }
  /^```text$/ && name != "" { inside = 1; file = work "/" name ".txt"; first = 0; name = ""; next }
  /^```/ { inside = 1; file = "/dev/null"; first = 0; next }
  inside && first { first = 0
    if ($0 ~ /^\/\/ [a-z]+\.cpp/) { name = $2; sub(/\.cpp.*/, "", name); file = work "/" name ".cpp" } }
  inside { print > file }' "$page"
count=$(find "$work" -name '*.cpp' | wc -l)
if [ "$count" -lt 9 ]; then
  echo "$page has $count programs: they were not recognised" >&2
  exit 1
fi
compile() {
  local name=$1 command=() word
  shift
  for word in "$@"; do
    if [ "$word" = "{}" ]; then command+=("$name.cpp" -o "$name"); else command+=("$word"); fi
  done
  "${command[@]}"
}
export -f compile
find "$work" -name '*.cpp' | sed 's/\.cpp$//' | sort |
  xargs -P "$(nproc)" -I NAME bash -c 'compile "$@"' compile NAME "$@"
status=0
for source in "$work"/*.cpp; do
  program=${source%.cpp}
  mkdir "$program.out"
  "$program" "$project" "$program.out" >"$program.said" || { echo "$program failed" >&2; status=1; }
  diff -u "$program.txt" "$program.said" >&2 || status=1
done
exit $status
