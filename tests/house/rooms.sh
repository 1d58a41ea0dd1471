#!/usr/bin/env bash
# No room calls a room below it: rooms.sh SOURCE OBJECT...
# Reads the symbols of the objects of the library. A symbol that a room defines and a room above it
# uses is named, with one exception: the members of a class that a header of the using room, or of
# one above, defines. Those are declared on their class and defined in the room that owns the rule.
# The order of the rooms is that of the table of docs/architecture.md.
set -euo pipefail
source=$1
shift
objects=()
for object in "$@"; do
  case "$object" in *.o) objects+=("$object") ;; esac  # a precompiled header is none
done
rooms=$(sed -nE 's/^\| `([a-z]+)` \|.*/\1/p' "$source/docs/architecture.md" | awk '!seen[$0]++')
classes=$(cd "$source/src" &&
  grep -rnE --include='*.h' '^ *(class|struct) [A-Za-z_]+( final)?( : .*)?( \{|$)' . |
  sed -E 's#^\./([a-z]+)/[^:]*:[0-9]+: *(class|struct) ([A-Za-z_]+).*#class \1 \3#')
# Most symbols are weak (templates, inline functions) and nobody's: they go before names are made readable.
symbols=$(nm -A "${objects[@]}" 2>/dev/null |
  sed -nE 's/^(.*\.o): *[0-9a-f]* ([TDBRU]) (.*)$/\2 \1 \3/p' | c++filt)
{
  echo "$rooms" | sed 's/^/room /'
  echo "$classes"
  echo "$symbols"
} | awk '
  # The room of an object, also of one that joins the files of a room.
  function RoomOf(object) {
    if (!match(object, /src[\/_][a-z]+[\/_.]/)) return ""
    return substr(object, RSTART + 4, RLENGTH - 5)
  }
  # The class of a member, or nothing: the last name before the own one, without its arguments.
  function OwnerOf(symbol,  parts, count) {
    sub(/^(vtable|typeinfo name|typeinfo|guard variable|non-virtual thunk) (for|to) /, "", symbol)
    sub(/\[abi:[a-z0-9]+\]/, "", symbol)
    sub(/\(.*$/, "", symbol)
    while (gsub(/<[^<>]*>/, "", symbol)) {}
    sub(/^.* /, "", symbol)
    count = split(symbol, parts, "::")
    return count > 1 ? parts[count - 1] : ""
  }
  $1 == "room" { floor[$2] = NR; next }
  $1 == "class" { if (!($3 in home) || floor[$2] < floor[home[$3]]) home[$3] = $2; next }
  {
    kind = $1; room = RoomOf($2); symbol = $0
    sub(/^[^ ]+ [^ ]+ /, "", symbol)
    if (!(room in floor)) next
    if (kind ~ /[TDBR]/) definer[symbol] = room
    if (kind == "U") { used[symbol] = used[symbol] " " room }
  }
  END {
    for (symbol in used) {
      if (!(symbol in definer)) continue
      count = split(used[symbol], users, " ")
      for (i = 1; i <= count; ++i) {
        if (floor[users[i]] >= floor[definer[symbol]]) continue
        owner = OwnerOf(symbol)
        if (owner in home && floor[home[owner]] <= floor[users[i]]) { ++members; continue }
        print users[i] " uses " symbol ", which " definer[symbol] " defines"
        faults = 1
      }
    }
    # The check would also pass if it recognised nothing.
    if (!members) { print "No member of a class is defined below it: the symbols were not read"; faults = 1 }
    exit faults
  }' | sort -u
