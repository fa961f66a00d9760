#!/usr/bin/env bash
# The title music as a player hears it: the game started with SDL's disk
# audio driver, which writes the mixed output to a file in real time, left
# on its own through the splash (the sting, then the title terminal) and
# recorded until the title has come round twice; then no 10 ms of that
# recording from the title's start on may be silent (title_loop_gap.py).
# It takes about a minute and a half, the title's length twice over.
# Usage: title_loop_test.sh <game folder> <executable> [title length in s]
# A Windows executable (name ending in .exe) runs under Wine, in the prefix
# named by WINEPREFIX.
set -euo pipefail
game=$(cd "$1" && pwd)
exe=$2
length=${3:-39.184}   # 16 bars at 98 BPM: 1,728,000 frames
here=$(cd "$(dirname "$0")" && pwd)
runner=()
if [[ "$exe" == *.exe ]]; then
  : "${WINEPREFIX:?set WINEPREFIX to the Wine prefix the game runs in}"
  runner=(wine)
fi
fail() { echo "title loop: FAILED: $*"; [ -f "${log:-}" ] && tail -5 "$log" | tr -d '\r'; exit 1; }

work=$(mktemp -d)
game_pid=""
cleanup() {
  [ -n "$game_pid" ] && kill "$game_pid" 2>/dev/null || true
  [ "${#runner[@]}" -gt 0 ] && wineserver -k 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

# A scratch copy, so the save and log land there and not in the build.
mkdir -p "$work/game"
cp -r "$game/." "$work/game/"
rm -f "$work/game/data/vornco_save.txt" "$work/game/data/vornco_log.txt"
log=$work/game/data/vornco_log.txt
recording=$work/mix.raw
(cd "$work" && SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILE=mix.raw \
   exec "${runner[@]}" "$work/game/$exe" >"$work/stdout.txt" 2>&1 </dev/null) &
game_pid=$!

seconds() { echo $(( $(stat -c %s "$recording" 2>/dev/null || echo 0) / 4 )); }   # frames recorded
announced=""
for _ in $(seq 600); do
  if tr -d '\r' 2>/dev/null <"$log" | grep -q "Audio: title music playing"; then
    announced=$(seconds)
    break
  fi
  kill -0 "$game_pid" 2>/dev/null || fail "the game ended early: $(tail -3 "$work/stdout.txt")"
  sleep 0.1
done
[ -n "$announced" ] || fail "the title music never started"
tr -d '\r' <"$log" | grep -q "Audio: initialised OK" || fail "the disk audio device did not open"

# Two loops of the title, and a little more, recorded after that point.
wanted=$(python3 -c "print(int($announced + (2 * $length + 2.0) * 44100))")
for _ in $(seq 1500); do
  [ "$(seconds)" -ge "$wanted" ] && break
  kill -0 "$game_pid" 2>/dev/null || fail "the game ended while recording"
  sleep 0.2
done
kill -TERM "$game_pid" 2>/dev/null || true
wait "$game_pid" 2>/dev/null || true
game_pid=""
python3 "$here/title_loop_gap.py" "$recording" "$(python3 -c "print($announced / 44100)")" "$length"
