#!/usr/bin/env bash
# The built game in a real X window (a virtual X server), played as a person
# plays it through real X input: a key on the splash, a click on "NEW: EASY",
# the first station's clock left to run out, the fired notice dismissed, and
# the window closed by its close request. Screenshots at each step are
# checked at known places (green glass, red glass, the highlighted menu row),
# and so are the log and the save file.
# Usage: real_window_test.sh <game dir> <executable> [WxH]
# The virtual screen is WxH (default 1366x768, the canvas's own size); at any
# other size the game shows its canvas scaled and letter-boxed, and every
# pointer position and screenshot probe is taken through that scale.
# A Windows executable (name ending in .exe) runs under Wine, in the Wine
# prefix named by WINEPREFIX. Exits 77 (skipped) when the X tools are not
# installed.
set -euo pipefail

game="$1"
exe="$2"
size="${3:-1366x768}"
screen_w="${size%x*}"
screen_h="${size#*x}"
runner=()
tools=(Xvfb xdotool import python3)
if [[ "$exe" == *.exe ]]; then
  : "${WINEPREFIX:?set WINEPREFIX to the Wine prefix the game runs in}"
  runner=(wine)
  tools+=(wine wineserver)
fi
for tool in "${tools[@]}"; do
  if ! command -v "$tool" >/dev/null 2>&1; then
    echo "real window: $tool not installed, skipped"
    exit 77
  fi
done
here="$(cd "$(dirname "$0")" && pwd)"

work="$(mktemp -d)"
shots="${VORN_WINDOW_SHOTS:-$work/shots}"
mkdir -p "$shots" "$work/game/data"
cp "$game/$exe" "$work/game/"
cp -r "$game/data/levels" "$game/data/music" "$work/game/data/"
ln -s "$game/assets" "$work/game/assets"
log="$work/game/data/vornco_log.txt"

xvfb_pid=""
game_pid=""
cleanup() {
  [ -n "$game_pid" ] && kill "$game_pid" 2>/dev/null || true
  [ "${#runner[@]}" -gt 0 ] && wineserver -k 2>/dev/null || true
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

fail() {
  echo "real window: FAILED: $*"
  [ -f "$log" ] && tail -20 "$log"
  exit 1
}

source "$here/x_display.sh"
start_virtual_display "$size"

# The real video driver this time; the dummy audio driver, since the
# machine may have no sound card. (LeakSanitizer flags a leak inside the
# system's D-Bus library under a real X server, which is not ours.)
unset SDL_VIDEODRIVER
export SDL_AUDIODRIVER=dummy
export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0"
if [ "${#runner[@]}" -gt 0 ]; then
  # A Wine server left from headless runs keeps their 1024x768 desktop: start
  # afresh on this display. Wine's Direct3D on a software GL is far slower
  # than real time here, so the game takes SDL's software renderer.
  wineserver -k 2>/dev/null || true
  export SDL_RENDER_DRIVER=software
fi
(cd "$work/game" && exec "${runner[@]}" "./$exe" >"$work/stdout.txt" 2>&1) &
game_pid=$!

window="$(timeout 30 xdotool search --sync --name '^The Vorn Co\.$' | head -1)" || fail "no window appeared"
# No window manager runs here to carry out the game's desktop full screen,
# so the test does what one would: the window covers the whole screen. The
# game then sees its window resized and letter-boxes its canvas into it.
xdotool windowmove "$window" 0 0 windowsize "$window" "$screen_w" "$screen_h"

wait_for_log() {   # text, seconds
  for _ in $(seq $(($2 * 10))); do
    grep -qF "$1" "$log" 2>/dev/null && return 0
    sleep 0.1
  done
  fail "the log never said: $1"
}

# Screen positions of canvas points.
at() { canvas_to_screen "$1" "$2" "$screen_w" "$screen_h"; }
# The colour at a canvas point, as the screen shows it.
pixel() {
  local sx sy
  read -r sx sy <<<"$(at "$1" "$2")"
  screen_pixel "$sx" "$sy"
}

# Waits until the glass at (400, 560) is green or red; saves a screenshot.
wait_for_glass() {   # green|red, name
  for _ in $(seq 100); do
    read -r r g b <<<"$(pixel 400 560)"
    if [ "$1" = green ] && [ "$g" -gt $((r + 8)) ]; then
      import -window root "$shots/$2.png"; return 0
    fi
    if [ "$1" = red ] && [ "$r" -gt $((g + 8)) ]; then
      import -window root "$shots/$2.png"; return 0
    fi
    sleep 0.1
  done
  import -window root "$shots/$2.png"
  fail "the glass never turned $1 for $2 (last $r $g $b)"
}

wait_for_log "DIAG: --- end of startup diagnostics ---" 20
sleep 0.5
import -window root "$shots/splash.png"

xdotool key --window "$window" space
wait_for_glass green title

# Resting the pointer on the second row highlights it instead of the first.
xdotool mousemove $(at 560 402)
sleep 0.4
read -r r0 g0 b0 <<<"$(pixel 560 356)"
read -r r1 g1 b1 <<<"$(pixel 560 402)"
import -window root "$shots/title-hover.png"
[ "$g1" -gt "$((g0 + 5))" ] && [ "$b1" -gt "$((b0 + 5))" ] || fail "hovered row not highlighted (row 0: $r0 $g0 $b0, row 1: $r1 $g1 $b1)"

xdotool mousemove $(at 683 369) click 1
wait_for_log "RUN: start difficulty=EASY" 10
# Hands off: the first station's clock runs out and the notice appears.
wait_for_log "FIRED: at station" 60
wait_for_glass red fired
sleep 0.8
xdotool key --window "$window" space
wait_for_glass green title-again

python3 "$here/close_window.py" "$window"
status=0
wait "$game_pid" || status=$?
game_pid=""
[ "$status" -eq 0 ] || fail "the game exited with $status"

grep -q "session end" "$log" || fail "no session end in the log"
tr -d '\r' <"$work/game/data/vornco_save.txt" | grep -q "^timesFired=1$" || fail "the save does not say timesFired=1"
grep -q "SHIFTCARD: phase=0 ('PROBATION')" "$log" || fail "no probation card in the log"
echo "real window ($size): splash, title, station, fired, title, closed: all as expected"
