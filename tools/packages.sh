# What the build and the tests need from Debian. Sourced by ./run and ./check.

PACKAGES_RUN="g++ cmake ninja-build libcli11-dev libpugixml-dev zlib1g-dev"
PACKAGES_WINDOW="$PACKAGES_RUN libwxgtk3.2-dev cmark-gfm"
PACKAGES_CHECK="$PACKAGES_WINDOW libgtest-dev libgmock-dev python3 clang-format g++-mingw-w64-x86-64-posix libz-mingw-w64-dev gpsbabel \
clang libclang-rt-dev xvfb openbox imagemagick"
PACKAGES_PACKAGES="$PACKAGES_WINDOW dpkg-dev debhelper lintian debootstrap man-db desktop-file-utils appstream"
PACKAGES_WINDOWS="$PACKAGES_CHECK g++-mingw-w64-i686-posix make xz-utils zip unzip nsis wine64 fonts-wine"

# install_packages NAME...: installs what is missing, as root or through sudo; ends the script when it cannot.
install_packages() {
  local missing=() name
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This system is not Debian, so nothing can be installed here. Needed are the equivalents of these Debian" >&2
    echo "packages: $*" >&2
    echo "Going on with what is there." >&2
    return 0
  fi
  for name in "$@"; do
    dpkg-query -W -f '${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "These packages are missing: ${missing[*]}" >&2
      echo "Install them as root (apt-get install ${missing[*]}) and start again." >&2
      exit 1
    fi
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}" >&2
  local log
  log=$(mktemp)
  if ! { "${as_root[@]}" apt-get update &&
         "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
           "${missing[@]}"; } >"$log" 2>&1; then
    tail -20 "$log" >&2
    echo "Could not install: ${missing[*]}" >&2
    exit 1
  fi
  rm -f "$log"
}
