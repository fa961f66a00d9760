#!/usr/bin/env bash
# Installs the Debian packages the game needs to build, run and test.
# Quick when everything is already there: it asks dpkg first and only calls
# apt-get for what is missing.
#
#   scripts/setup.sh           the native build, its tests and tools
#   scripts/setup.sh game      only what building and playing the game needs
#   scripts/setup.sh windows   the Windows cross build: MinGW-w64, Wine, unzip
#   scripts/setup.sh fuzz      clang with libFuzzer, for scripts/fuzz.sh
#   scripts/setup.sh sources   apt-get source: dpkg-dev and Debian's source
#                              entries (for our own builds of the SDL2 family)
set -euo pipefail

# What the game needs to build and run: the compiler, SDL2 and its companions,
# the encoders that make its sounds and the fonts it ships.
game=(
  cmake ninja-build g++ pkg-config
  libsdl2-dev libsdl2-image-dev libsdl2-mixer-dev libsdl2-ttf-dev
  lame vorbis-tools
  fonts-jetbrains-mono fonts-roboto-unhinted fonts-dejavu-core
)
case "${1:-native}" in
  game)
    packages=("${game[@]}") ;;
  native)
    packages=("${game[@]}" libgtest-dev python3 xvfb xdotool imagemagick) ;;
  windows)
    packages=(g++-mingw-w64-x86-64-posix wine wine64 unzip) ;;
  fuzz)
    packages=(clang libclang-rt-dev) ;;
  sources)
    packages=(dpkg-dev) ;;
  *)
    echo "setup: unknown package set '$1' (game, native, windows, fuzz or sources)" >&2
    exit 2 ;;
esac

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null 2>&1; then
    sudo "$@"
  else
    echo "setup: '$*' needs root, and neither root nor sudo is available" >&2
    exit 1
  fi
}

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

# apt-get source needs deb-src entries; Debian's images ship only deb ones.
# Ours mirror the configured Debian sources exactly, so the sources fetched
# are those of the binaries installed.
refresh=0
deb_src=/etc/apt/sources.list.d/vornco-deb-src
if [ "${1:-native}" = sources ] && [ ! -f "$deb_src.sources" ] && [ ! -f "$deb_src.list" ]; then
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sed 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/debian.sources \
      | as_root tee "$deb_src.sources" >/dev/null
  else
    grep -h '^deb ' /etc/apt/sources.list 2>/dev/null | sed 's/^deb /deb-src /' \
      | as_root tee "$deb_src.list" >/dev/null
  fi
  refresh=1
fi

if [ "${#missing[@]}" -eq 0 ] && [ "$refresh" -eq 0 ]; then
  exit 0
fi

export DEBIAN_FRONTEND=noninteractive
as_root apt-get update -qq
if [ "${#missing[@]}" -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  as_root apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
