# shellcheck shell=bash disable=SC2034
# Shared by ./eda and ./check: installs the Debian packages that are missing. Sourced, not run.

# What the tool is built with and runs with.
EDA_BUILD_PACKAGES=(g++ cmake ninja-build pkg-config qtbase5-dev rapidjson-dev
                    libarchive-dev fonts-dejavu-core)
# What the tests need besides.
EDA_TEST_PACKAGES=(libgtest-dev libgmock-dev gerbv)
EDA_BENCH_PACKAGES=(libbenchmark-dev libpolyclipping-dev)
EDA_FUZZ_PACKAGES=(clang libclang-rt-dev)

eda_is_installed() {
  [[ "$(dpkg-query --show --showformat='${Status}' "$1" 2>/dev/null || true)" == *" installed" ]]
}

# Runs a command with its output kept back, and shows the end of that only when the command fails.
eda_quietly() {
  local log
  log="$(mktemp)"
  if "$@" >"$log" 2>&1; then
    rm -f "$log"
    return 0
  fi
  echo "failed: $*" >&2
  tail -n 40 "$log" >&2
  rm -f "$log"
  return 1
}

# Installs those of the packages that are missing; says so on standard error. On a system without apt-get it
# only names what has to be there, and the build finds out.
eda_install_missing() {
  local missing=() package root_command=()
  if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian system; needed are the equivalents of: $*" >&2
    return 0
  fi
  for package in "$@"; do
    eda_is_installed "$package" || missing+=("$package")
  done
  ((${#missing[@]} > 0)) || return 0
  if [[ "$(id -u)" != 0 ]]; then
    if ! command -v sudo >/dev/null; then
      echo "Run as root, or install sudo, or install by hand: ${missing[*]}" >&2
      return 1
    fi
    root_command=(sudo)
  fi
  echo "Installing ${missing[*]} ..." >&2
  local settings=(env DEBIAN_FRONTEND=noninteractive)
  local install=("${root_command[@]}" "${settings[@]}" apt-get install --yes --no-install-recommends "${missing[@]}")
  # Package lists may be absent, or so old that the mirror no longer has what they name.
  if ! "${install[@]}" >/dev/null 2>&1; then
    eda_quietly "${root_command[@]}" "${settings[@]}" apt-get update
    eda_quietly "${install[@]}"
  fi
}

# A compiler cache is used where there is one.
eda_use_compiler_cache() {
  if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER="${CMAKE_CXX_COMPILER_LAUNCHER-ccache}"
    # Without these the cache would pass over every file that uses the tests' precompiled header.
    export CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS-pch_defines,time_macros}"
  fi
}
