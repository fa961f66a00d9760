#!/usr/bin/env bash
# Builds the Linux release: build/linux-release/package/vornco-<version>-linux-x86_64.tar.gz,
# a folder that runs on a Linux desktop with nothing installed (our own
# shared builds of the SDL2 family beside the game, in lib/).
#
#   scripts/linux-release.sh          build and pack
#   scripts/linux-release.sh --test   then unpack it into an empty folder and
#                                     check it: every library it needs but the
#                                     C library is inside, and it starts and
#                                     shows its title in a virtual X window
set -euo pipefail
cd "$(dirname "$0")/.."
check=0
case "${1:-}" in
  "") ;;
  --test) check=1 ;;
  *) echo "usage: scripts/linux-release.sh [--test]" >&2; exit 2 ;;
esac

bash scripts/setup.sh
prefix=$(bash scripts/sdl-prefix.sh linux | tail -n 1)

build=build/linux-release
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVORN_BUILD_TESTS=OFF \
      -DVORN_WERROR=ON -DCMAKE_PREFIX_PATH="$prefix" -DVORN_BUNDLED_SDL="$prefix" >/dev/null
cmake --build "$build"
rm -rf "$build/package"
cmake --build "$build" --target package >/dev/null
archive=$(ls "$build"/package/vornco-*-linux-x86_64.tar.gz)
if [ "$check" -eq 1 ]; then
  bash tests/release/check_linux_archive.sh "$archive"
fi
echo "linux release: $archive ($(du -h "$archive" | cut -f1))"
