#!/usr/bin/env bash
# Redraws the screen pictures in docs/gallery with one command: builds the
# game and the gallery tool (Release, in build/gallery) and runs the tool on
# the freshly built game folder. Extra arguments go to the tool, e.g.
#   scripts/gallery.sh --station button 12
# adds (or refreshes) just that station's picture.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

build=build/gallery
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVORN_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target screen_gallery

# The tool draws into a plain surface and needs no display or sound device.
SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy \
  "$build/screen_gallery" --out docs/gallery --game "$build/game" "$@"

# The painted grain compresses badly; 128 colours look the same at this size
# and keep the gallery small. (No time stamps, so unchanged screens give
# unchanged files.)
if command -v mogrify >/dev/null 2>&1; then
  mogrify -dither None -colors 128 -define png:exclude-chunks=date,time -format png docs/gallery/*.png
fi
