#!/usr/bin/env bash
# Runs the accelerated-renderer pixel checks in a real window on a virtual X
# display (Mesa's OpenGL). Exits 77 (skipped) when Xvfb is missing.
#   accelerated_test.sh TEST_PROGRAM
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
program=$1
command -v Xvfb >/dev/null 2>&1 || { echo "Xvfb missing: skipped"; exit 77; }
source "$here/x_display.sh"
start_virtual_display
trap 'kill $xvfb_pid 2>/dev/null' EXIT
# X11, D-Bus and Mesa keep a few allocations until exit, which the leak
# checker of a sanitizer build would count as ours: leaks are not judged here
# (every other test judges them).
ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0" \
SDL_VIDEODRIVER=x11 SDL_AUDIODRIVER=dummy VORN_ACCELERATED_WINDOW=1 \
  "$program" --gtest_filter='AcceleratedRenderer.*'
