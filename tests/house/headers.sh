#!/usr/bin/env bash
# Each installed header serves alone: headers.sh INCLUDE WORK COMPILER...
# For each header that users see, a source that includes it and nothing else of ours, and makes a
# shared object of each class in it that can be made without arguments. Such a header that needs
# another one first, or knows a member's class by name only, does not compile.
set -euo pipefail
include=$1 work=$2
shift 2
mkdir -p "$work"
sources=()
while read -r header; do
  source=$work/$(echo "${header%.h}" | tr / _).cpp
  sources+=("$source")
  {
    echo "#include \"vendrelmodel/$header\""
    echo '#include <memory>'
    echo '#include <type_traits>'
    echo 'template <typename T> void Make() {'
    echo '  if constexpr (std::is_default_constructible_v<T>) static_cast<void>(std::make_shared<T>());'
    echo '}'
    # What stands in a namespace of its own inside ours ("detail") is none of the user's.
    awk '/^namespace vendrel[a-z:]* \{/ { space = $2; next }
         /^namespace [a-z]+ \{/ { inner = 1 }
         /^\}  \/\/ namespace [a-z]+$/ { inner = 0 }
         /^template/ { skip = 1; next }
         /^(class|struct) [A-Z][A-Za-z]*( final)?( :.*)? \{/ && !skip && !inner {
           print "template void Make<" space "::" $2 ">();" }
         { skip = 0 }' "$include/vendrelmodel/$header"
  } >"$source"
done < <(cd "$include/vendrelmodel" && find . -name '*.h' -not -path './internal/*' | sed 's#^\./##' | sort)
# The check would also pass if it recognised nothing.
made=$(cat "${sources[@]}" | grep -c '^template void Make')
if [ "${#sources[@]}" -lt 50 ] || [ "$made" -lt 100 ]; then
  echo "${#sources[@]} headers with $made classes: the installed headers were not understood" >&2
  exit 1
fi
printf '%s\n' "${sources[@]}" | xargs -P "$(nproc)" -n 1 "$@" -std=c++20 -Wall -Wextra -Werror \
  -fsyntax-only "-I$include"
