#!/usr/bin/env bash
# Cross-builds the Windows game (64-bit, console subsystem, one self-contained
# vornco.exe) in build/windows and packs it as
# build/windows/package/vornco-<version>-win64.zip.
#
#   scripts/windows.sh          build and pack
#   scripts/windows.sh --test   build, run every test under Wine (the unit
#                               tests, a check of the .exe, the game played in
#                               a virtual X window), then pack and check the zip
#
# Needs only Debian's packages: the first run installs MinGW-w64 and Wine and
# builds the SDL2 libraries from Debian's sources (a few minutes, cached).
set -euo pipefail
cd "$(dirname "$0")/.."
run_tests=0
case "${1:-}" in
  "") ;;
  --test) run_tests=1 ;;
  *) echo "usage: scripts/windows.sh [--test]" >&2; exit 2 ;;
esac

bash scripts/setup.sh
prefix=$(bash scripts/sdl-prefix.sh windows | tail -n 1)

build=build/windows
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
      -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" \
      -DVORN_WINDOWS_PREFIX="$prefix" -DVORN_WERROR=ON \
      -DVORN_BUILD_TESTS="$([ "$run_tests" -eq 1 ] && echo ON || echo OFF)" >/dev/null
cmake --build "$build"

if [ "$run_tests" -eq 1 ]; then
  ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$(nproc)"
fi

rm -rf "$build/package"
cmake --build "$build" --target package >/dev/null
zip=$(ls "$build"/package/vornco-*-win64.zip)
if [ "$run_tests" -eq 1 ]; then
  bash tests/windows/check_package.sh "$zip" "$build/wine"
fi
echo "windows: $zip ($(du -h "$zip" | cut -f1))"
