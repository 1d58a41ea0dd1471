#!/usr/bin/env bash
# Installs the Debian packages in a bare Debian system and runs them there, with what they pull in:
#   tests/house/bare_root.sh FOLDER
# FOLDER holds the packages that cpack made. Needs mmdebstrap, root and a network; no test of ctest.
set -euo pipefail
packages=$(realpath "$1")
samples=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../../samples")
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
mmdebstrap --quiet --variant=apt bookworm "$root"
mkdir -p "$root/packages" "$root/samples"
cp "$packages"/*.deb "$root/packages"
cp -r "$samples/." "$root/samples"
in_root() { chroot "$root" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }
in_root sh -c 'apt-get update -q && apt-get install -qy --no-install-recommends /packages/*.deb' >"$root/log" 2>&1 ||
  { tail -20 "$root/log" >&2; exit 1; }
in_root vendrelmodel tree /samples/Ledger/Ledger.vbp --depth 1
in_root python3 -c 'import vendrelmodel; print(vendrelmodel.load("/samples/Ledger/Ledger.vbp"))'
in_root dpkg -s vendrelmodel | grep -E '^(Status|Version)'
in_root dpkg --purge python3-vendrelmodel libvendrelmodel-dev vendrelmodel libvendrelmodel2
echo "installed, ran and purged in a bare root"
