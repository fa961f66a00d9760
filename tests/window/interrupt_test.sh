#!/usr/bin/env bash
# The built game stopped in the middle of a station, in a real (virtual) X
# window: by SIGTERM, by SIGINT (Ctrl+C in its terminal) or by its window's
# close request. Each must end the session normally, with exit code 0, the
# log's closing line, and the player's progress in the save: the difficulty
# just picked on the title (kept in memory until then) reaches the file.
# Usage: interrupt_test.sh <game dir> term|int|close
# Exits 77 (skipped) when the X tools are not installed.
set -euo pipefail
game="$1"
how="$2"
for tool in Xvfb xdotool import python3; do
  command -v "$tool" >/dev/null 2>&1 || { echo "interrupt: $tool not installed, skipped"; exit 77; }
done
here="$(cd "$(dirname "$0")" && pwd)"
source "$here/x_display.sh"

work="$(mktemp -d)"
mkdir -p "$work/game/data"
cp "$game/vornco" "$work/game/"
cp -r "$game/data/levels" "$game/data/music" "$work/game/data/"
ln -s "$game/assets" "$work/game/assets"
log="$work/game/data/vornco_log.txt"
save="$work/game/data/vornco_save.txt"
xvfb_pid=""
game_pid=""
cleanup() {
  [ -n "$game_pid" ] && kill -KILL "$game_pid" 2>/dev/null || true
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
fail() { echo "interrupt ($how): FAILED: $*"; [ -f "$log" ] && tail -20 "$log"; exit 1; }
wait_for_log() {   # text, seconds
  for _ in $(seq $(($2 * 10))); do
    grep -qF "$1" "$log" 2>/dev/null && return 0
    sleep 0.1
  done
  fail "the log never said: $1"
}

start_virtual_display
unset SDL_VIDEODRIVER
export SDL_AUDIODRIVER=dummy
export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0"
(cd "$work/game" && exec ./vornco >"$work/stdout.txt" 2>&1) &
game_pid=$!
window="$(timeout 30 xdotool search --sync --name '^The Vorn Co\.$' | head -1)" || fail "no window appeared"
wait_for_log "DIAG: --- end of startup diagnostics ---" 20
xdotool key --window "$window" space
wait_for_log "Audio: title music playing" 10
sleep 0.3
xdotool mousemove 683 369 click 1
wait_for_log "RUN: start difficulty=EASY" 10
wait_for_log "LEVEL: 1/38 " 10

case "$how" in
  term) kill -TERM "$game_pid" ;;
  int) kill -INT "$game_pid" ;;
  close) python3 "$here/close_window.py" "$window" ;;
  *) fail "unknown way to stop: $how" ;;
esac
status=0
wait "$game_pid" || status=$?
game_pid=""
[ "$status" -eq 0 ] || fail "the game exited with $status"
grep -q "INFO  session end" "$log" || fail "no session end in the log"
grep -q "FIRED" "$log" && fail "the player was fired"
for line in splashSeen=1 timesFired=0 lastDifficulty=0; do
  grep -qx "$line" "$save" || fail "the save does not hold $line: $(cat "$save")"
done
echo "interrupt ($how): stopped mid-station, exit 0, progress saved"
