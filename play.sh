#!/usr/bin/env bash
# Builds the game (Release) and starts it from its game folder.
set -euo pipefail
cd "$(dirname "$0")"
bash scripts/setup.sh game
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DVORN_BUILD_TESTS=OFF >/dev/null
cmake --build build/release
exec build/release/game/vornco "$@"
