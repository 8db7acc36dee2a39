# shellcheck shell=bash disable=SC2034
# Shared by the scripts in this folder: the packages, installing what is missing, and talking to the terminal.
# To be sourced by bash with the working directory anywhere; leaves `root` set to the top of the checkout.

set -u -o pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export LC_ALL=C.UTF-8

# Debian 12 packages: what the programs need to be built and to run, and what the checks need on top.
packages_to_build=(
  cmake ninja-build g++ libcups2-dev libfontconfig-dev
  qt6-base-dev qt6-serialport-dev qt6-multimedia-dev qt6-l10n-tools qt6-translations-l10n
  libcli11-dev libfmt-dev nlohmann-json3-dev
  libgtest-dev libgmock-dev
  fonts-dejavu-core
)
packages_to_check=(
  libbenchmark-dev poppler-utils bash-completion
  python3 faketime
  clang clang-format clang-tidy libclang-rt-14-dev
)
# What only the long form of the checks needs: the Windows programs, and the Debian package.
packages_to_check_windows=(g++-mingw-w64-x86-64-posix wine64)
packages_to_check_package=(lintian mmdebstrap appstream)
# What the Debian package is made with.
packages_to_package=(dpkg-dev file pandoc)
# What scripts/bench needs: the libraries that the project file is compared with, and an X server without a screen.
packages_to_bench=(
  libbenchmark-dev python3 pkg-config xvfb
  libinih-dev libsimpleini-dev libglib2.0-dev libboost-dev
)
# What scripts/coverage needs.
packages_to_measure=(llvm python3)

say() { printf '%s\n' "$*"; }
fail() {
  printf 'error: %s\n' "$*" >&2
  return 1
}

# as_root COMMAND...: runs it as root, through sudo where needed. Without a terminal sudo must not ask.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif ! command -v sudo >/dev/null; then
    fail "not root, and there is no sudo to run: $*"
  elif [ -t 0 ]; then
    sudo "$@"
  else
    sudo -n "$@"
  fi
}

# missing_packages NAME...: prints those that are not installed.
missing_packages() {
  local name
  for name in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Abbrev}' "$name" 2>/dev/null | head -c 2)" = ii ] || printf '%s ' "$name"
  done
}

# install_missing NAME...: installs what is missing with apt; silent when nothing is.
install_missing() {
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "This is no Debian system: going on with what is installed."
    return 0
  fi
  local missing log
  missing=$(missing_packages "$@")
  [ -n "$missing" ] || return 0
  say "Installing: $missing"
  log=$(mktemp)
  # A package source that cannot be reached does no harm as long as the others hold what is needed.
  as_root apt-get -qq -o Acquire::Retries=3 update >"$log" 2>&1 ||
    say "apt-get update had trouble; going on all the same."
  # shellcheck disable=SC2086 # one word for each package
  if ! as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o Acquire::Retries=3 -o DPkg::Lock::Timeout=300 \
    install --no-install-recommends $missing >>"$log" 2>&1 </dev/null; then
    tail -n 30 "$log" >&2
    rm -f "$log"
    fail "these packages could not be installed: $missing"
    return 1
  fi
  rm -f "$log"
}

# processors: how many jobs to run at a time.
processors() { nproc 2>/dev/null || echo 2; }

# source_files: the project's own C++ files, one a line, as paths from the root.
source_files() {
  (
    cd "$root" || exit 1
    find base files forms race journal records lane link print results console replay field programs ui tests bench fuzz packaging \
      \( -name '*.h' -o -name '*.cpp' \) -type f 2>/dev/null | LC_ALL=C sort
  )
}
