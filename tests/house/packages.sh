#!/usr/bin/env bash
# The Debian packages hold what they should, name what they need, and work from where they are unpacked:
# packages.sh BUILD SOURCE WORK
# They are unpacked into a folder, beside the libraries of this machine: whether dpkg would install them
# in a bare system is tried by tests/house/bare_root.sh.
set -euo pipefail
build=$1 source=$2 work=$3
rm -rf "$work"
mkdir -p "$work/root"
trap 'rm -rf "$work"' EXIT
(cd "$work" && cpack --config "$build/CPackConfig.cmake" -D CPACK_THREADS=1 >"$work/log" 2>&1) ||
  { cat "$work/log" >&2; exit 1; }
fail() { echo "$*" >&2; exit 1; }

package() { # the file of a package
  local files=("$work/$1"_*.deb)
  [ -f "${files[0]}" ] || fail "there is no package $1"
  echo "${files[0]}"
}

needs() { # PACKAGE, words that must stand among what it depends on
  local depends word
  depends=$(dpkg-deb -f "$(package "$1")" Depends)
  for word in "${@:2}"; do
    grep -qF -- "$word" <<<"$depends" || fail "$1 does not depend on $word: $depends"
  done
}

holds() { # PACKAGE, patterns of files that must be in it
  local files pattern
  files=$(dpkg-deb -c "$(package "$1")" | awk '{print $6}')
  for pattern in "${@:2}"; do
    grep -qE -- "$pattern" <<<"$files" || fail "$1 holds nothing like $pattern"
  done
}

needs vendrelmodel libc6 libpugixml1v5 libre2-9 libutf8proc2 libuchardet0
needs libvendrelmodel2 libc6 libre2-9
needs libvendrelmodel-dev "libvendrelmodel2 (=" libpugixml-dev
needs python3-vendrelmodel "python3 (>=" libre2-9
holds vendrelmodel '/usr/bin/vendrelmodel$' 'man1/vendrelmodel.1$' 'man1/vendrelmodel-find.1$' \
  'bash-completion/completions/vendrelmodel$' 'vendor-completions/_vendrelmodel$' \
  'vendor_completions.d/vendrelmodel.fish$' 'doc/vendrelmodel/manual.html$'
holds libvendrelmodel2 'libvendrelmodel\.so\.2' 
holds libvendrelmodel-dev 'libvendrelmodel\.a$' 'libvendrelmodel\.so ?' 'vendrelmodel\.pc$' \
  'VendrelModelConfig.cmake$' 'include/vendrelmodel/vendrelmodel.h$'
holds python3-vendrelmodel 'dist-packages/vendrelmodel/__init__.py$' '_native\..*so$' '__init__.pyi$'

for file in "$work"/*.deb; do dpkg -x "$file" "$work/root"; done
"$work/root/usr/bin/vendrelmodel" tree "$source/samples/Ledger/Ledger.vbp" --depth 1 | grep -q "project Ledger"
PYTHONPATH=$work/root/usr/lib/python3/dist-packages /usr/bin/python3 -c '
import sys, vendrelmodel
assert vendrelmodel.load(sys.argv[1]).project_name == "Ledger", "not loaded"' \
  "$source/samples/Ledger/Ledger.vbp"
