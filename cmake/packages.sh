# Sourced by ./run, ./test, ./fuzz.sh, ./check and .ci/run: which packages each of them needs, and why.
# They are the names of Debian 12; each set includes the ones above it.

packages_table='
run   g++              compiles the library and the tool
run   cmake            configures the build
run   ninja-build      runs the build
run   pkg-config       finds the libraries that bring no CMake files
run   libpugixml-dev   XML and path queries
run   libre2-dev       regular expressions in linear time
run   libcli11-dev     the command line of the tool
run   nlohmann-json3-dev reads JSON
run   libtomlplusplus-dev reads the settings files of the tool
run   libutf8proc-dev  upper and lower case beyond ASCII
run   libuchardet-dev  guesses code pages
run   libmimalloc-dev  takes memory in large pages, which the kernel hands out faster
test  libgtest-dev     the test framework
test  libgmock-dev     its matchers
test  chromium         opens the pages of the html command, as a reader would
test  tidy             holds the pages of sites against the rules of HTML
test  graphviz         draws the graphs of sites
test  python3-jsonschema holds JSON against the schema that the tool prints
test  pybind11-dev     the library as a module of Python
test  python3-dev      what that is compiled against
test  python3-pip      installs the module as its users do
test  python3-setuptools builds it for pip
test  python3-wheel    packs it for pip
test  python3-distributed spreads the sample for many projects over workers
test  dpkg-dev         tells what the Debian packages depend on
test  mingw-w64-tools  compiles small type libraries for the tests (widl)
test  git              keeps the revisions that diff --git compares
fuzz  clang            compiles for the sanitizers and the fuzz targets
fuzz  mono-mcs         compiles C# with its documentation; without it those tests are skipped
fuzz  libclang-rt-14-dev what those need at run time
check gcovr            sums up which lines the tests reach
check libbenchmark-dev measures small pieces (preset bench)
check clang-format     checks the layout of the code
check clang-tidy       looks for faults in the code
'

# packages_wanted run|test|fuzz|check: the lines of the table that count, without their first word.
packages_wanted() {
  local sets package why set
  case "$1" in
    run) sets=" run " ;;
    test) sets=" run test " ;;
    fuzz) sets=" run test fuzz " ;;
    *) sets=" run test fuzz check " ;;
  esac
  while read -r set package why; do
    case "$sets" in *" $set "*) [ -n "$package" ] && echo "$package $why" ;; esac
  done <<<"$packages_table"
}

packages_installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q ' ok installed'; }

# packages_name SET: names every package of the set, why it is needed, and whether it is there.
packages_name() {
  local package why state
  while read -r package why; do
    state="to install"
    if packages_installed "$package"; then state="installed"; fi
    printf '  %-20s %-11s %s\n' "$package" "$state" "$why"
  done < <(packages_wanted "$1")
}

# packages_install SET: installs what is missing and names it first; says nothing otherwise.
packages_install() {
  local package why missing=() sudo=()
  while read -r package why; do
    packages_installed "$package" && continue
    [ ${#missing[@]} -gt 0 ] || echo "Packages that will be installed:" >&2
    printf '  %-20s %s\n' "$package" "$why" >&2
    missing+=("$package")
  done < <(packages_wanted "$1")
  [ ${#missing[@]} -gt 0 ] || return 0

  if ! command -v apt-get >/dev/null; then
    echo "This system has no apt-get. Going on with what is installed." >&2
    return 0
  fi
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Run as root: apt-get install ${missing[*]}" >&2
      return 1
    fi
    sudo=(sudo)
  fi
  quietly "${sudo[@]}" apt-get update
  quietly "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y --no-install-recommends "${missing[@]}"
}

# quietly COMMAND...: runs it, and shows what it said only if it fails.
quietly() {
  local log
  log=$(mktemp)
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    return 1
  fi
  rm -f "$log"
}

# build_preset PRESET [TARGET]: configures and builds, and says something only when there is
# something to say: that a first build begins, and what went wrong.
build_preset() {
  if [ ! -f "build/$1/build.ninja" ]; then
    echo "Building into build/$1; the first time takes some minutes." >&2
  fi
  quietly cmake --preset "$1"
  cmake --build --preset "$1" ${2:+--target "$2"} -- --quiet |
    { grep -v '^ninja: no work to do' || true; } >&2
}
