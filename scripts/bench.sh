#!/usr/bin/env bash
# Measures what every frame costs without a GPU: builds the game and the
# benchmark in Release (build/bench) and prints, for every screen and every
# station type, the median and 99th-percentile CPU time of a frame on the
# software renderer in windows of 1366x768, 1920x1080, 2560x1440 and
# 3840x2160, the heaviest frame of each size against 1366x768's, start-up
# step by step, and the resident memory before and after a long run. Extra
# arguments go to the benchmark, e.g.
#   scripts/bench.sh --frames 600 --long-frames 20000
#   scripts/bench.sh --size 1920x1080     # that size (and 1366x768) only
# Run it on a quiet machine; it is a measurement, never a test.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

build=build/bench
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVORN_BUILD_TESTS=OFF >/dev/null
cmake --build "$build" --target frame_bench vornco

# Windows on SDL's dummy driver; no sound device is needed. The
# game's own log lines (each station announces itself) go to a file so the
# table stays readable.
SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy "$build/frame_bench" --game "$build/game" "$@" \
  2>"$build/frame_bench.log" || { tail -20 "$build/frame_bench.log"; exit 1; }
