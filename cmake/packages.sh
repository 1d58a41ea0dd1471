# Sourced by ./run, ./test and .ci/run: the packages each needs, named before they are installed.
packages_run="g++ cmake ninja-build pkg-config libpugixml-dev libre2-dev libcli11-dev nlohmann-json3-dev libutf8proc-dev libuchardet-dev"
packages_test="$packages_run libgtest-dev libgmock-dev"

packages_install() { # run|test [--no-install]
  local want missing=() package sudo=""
  case "$1" in run) want=$packages_run ;; *) want=$packages_test ;; esac
  for package in $want; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  if [ "${2:-}" = "--no-install" ]; then
    echo "Packages: $want"; echo "Missing: ${missing[*]:-none}"; exit 0
  fi
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing packages: ${missing[*]}" >&2
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -q >&2
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" >&2
}
