#!/usr/bin/env bash
# Builds everything with AddressSanitizer and UndefinedBehaviorSanitizer and
# runs the whole test suite headless; fuzzes the two file readers; builds and
# checks the Linux download; then cross-builds the Windows game, runs the same
# suite on it under Wine and packs and checks its zip. Installs every package
# it needs first. Exits non-zero on any failure; at the end it says how long
# each part took. VORN_WINDOWS=0 leaves the Windows half out (a quicker local
# run).
set -euo pipefail
cd "$(dirname "$0")"
timings=()
lap() { timings+=("$1 $((SECONDS / 60))m$((SECONDS % 60))s"); SECONDS=0; }
SECONDS=0
bash scripts/setup.sh
lap packages

build=build/sanitize
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
      -DVORN_SANITIZE=ON -DVORN_WERROR=ON -DVORN_BUILD_TESTS=ON >/dev/null
cmake --build "$build"
lap "native build"

export SDL_VIDEODRIVER=dummy
export SDL_AUDIODRIVER=dummy
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$(nproc)"
lap "native tests"

# The catalogue scanner and the save loader against hostile bytes (clang's
# libFuzzer, installed by the script).
bash scripts/fuzz.sh
lap fuzzing

# The Linux download: our own SDL2 libraries (built once from Debian's
# sources, then cached), the archive built, unpacked into an empty folder and
# started there.
bash scripts/sdl-prefix.sh linux >/dev/null
lap "linux libraries"
bash scripts/linux-release.sh --test
lap "linux archive"

# The game on its real target: the SDL2 libraries cross-built once (cached),
# the Windows build tested under Wine, packed.
if [ "${VORN_WINDOWS:-1}" != 0 ]; then
  bash scripts/sdl-prefix.sh windows >/dev/null
  lap "windows libraries"
  bash scripts/windows.sh --test
  lap "windows build and tests"
fi
echo "test.sh: all passed (${timings[*]/%/;})"
