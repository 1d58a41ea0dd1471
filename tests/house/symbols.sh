#!/usr/bin/env bash
# Every mutable symbol of the library's objects stands in a table with its reason:
#     symbols.sh TABLE OBJECT...
# What is process-wide must be a constant once made, the process's own workspace, or something that
# any number of threads may use. A line of the table is a symbol, " | " and why it may be there.
set -euo pipefail
table=$1
shift
objects=()
for object in "$@"; do
  case "$object" in *.o) objects+=("$object") ;; esac  # a precompiled header is none
done
found=$(
  objdump -t "${objects[@]}" 2>/dev/null |
    awk '$0 ~ /[ \t]\.(data|bss|tdata|tbss)(\.[^ \t]*)?[ \t]/ && $0 !~ /[ \t]\.data\.rel\.ro/ {
           line = $0; sub(/^.*\t[0-9a-f]+ +(\.hidden +)?/, "", line); print line }' | c++filt |
    grep -vE '^\.|^guard variable|^DW\.ref|^typeinfo|^vtable|^std::|^nlohmann::|^__' |
    sed -E 's/\[abi:[a-z0-9]+\]//g
            s/std::basic_string_view<char, std::char_traits<char> >/std::string_view/g
            s/std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >/std::string/g
            s/(KeyedCollection|OnDemand|RareParts)<[^<>]*>/\1<T>/' | sort -u
)
known=$(sed -nE 's/^([^#].*) \| .*$/\1/p' "$table" | sort -u)
status=0
new=$(comm -23 <(echo "$found") <(echo "$known"))
gone=$(comm -13 <(echo "$found") <(echo "$known"))
if [ -n "$new" ]; then
  printf 'Mutable symbols without a reason in %s:\n%s\n' "$table" "$new"
  status=1
fi
if [ -n "$gone" ]; then
  printf 'In %s, but in no object:\n%s\n' "$table" "$gone"
  status=1
fi
exit $status
