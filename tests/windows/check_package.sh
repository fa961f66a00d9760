#!/usr/bin/env bash
# Checks the Windows download as a player gets it: the zip holds the program,
# the catalogue, the music, every picture, font (with its licence) and sound,
# and the README, and nothing a test run left behind; unpacked into an empty
# folder, the program starts under Wine and its start-up report finds every
# one of its files; and its title music, recorded through SDL's disk audio
# driver (decoded by the mixer linked into the .exe), loops twice without a
# silent moment.
# Usage: check_package.sh <vornco-*-win64.zip> <Wine prefix>
set -euo pipefail
zip=$(realpath "$1")
export WINEPREFIX=$(realpath "$2") WINEDEBUG=-all
fail() { echo "check_package: $(basename "$zip"): $*"; exit 1; }

top=$(basename "$zip" .zip)
entries=$(unzip -Z1 "$zip")
for file in vornco.exe README.txt data/levels/levels.json data/music/vorn-title.mp3 \
            data/music/shift-01.ogg data/music/shift-02.ogg data/music/shift-03.ogg \
            assets/fonts/game.ttf assets/fonts/game.ttf.LICENSE.txt \
            assets/fonts/display.ttf assets/fonts/display.ttf.LICENSE.txt \
            assets/images/app_icon.png assets/images/app_icon.ico assets/images/studio_logo.png \
            assets/audio/tick.wav assets/audio/tock.wav assets/audio/siren.wav \
            assets/audio/pass.wav assets/audio/fail.wav assets/audio/click.wav \
            assets/audio/zembrilux-sting.wav; do
  grep -qxF "$top/$file" <<<"$entries" || fail "$file is missing"
done
if grep -E 'vornco_(save|log)\.txt' <<<"$entries"; then
  fail "a save or log file was packed"
fi

work=$(mktemp -d)
game_pid=""
cleanup() {
  [ -n "$game_pid" ] && kill "$game_pid" 2>/dev/null || true
  wineserver -k 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
unzip -q "$zip" -d "$work"
log="$work/$top/data/vornco_log.txt"
(cd "$work" && SDL_VIDEODRIVER=dummy SDL_AUDIODRIVER=dummy \
   exec wine "$work/$top/vornco.exe" >"$work/stdout.txt" 2>&1 </dev/null) &
game_pid=$!
for _ in $(seq 300); do
  grep -qF "DIAG: --- end of startup diagnostics ---" "$log" 2>/dev/null && break
  sleep 0.1
done
grep -qF "DIAG: --- end of startup diagnostics ---" "$log" 2>/dev/null ||
  fail "the unpacked game never finished starting: $(tail -5 "$work/stdout.txt")"
report=$(tr -d '\r' <"$log" | sed -n '/---- diagnostics ----/,$p')
if grep -E '\[(MISS|part|none|FAIL)\]' <<<"$report"; then
  fail "the unpacked game misses some of its files"
fi
grep -qF "DIAG: levels loaded     [ OK ]  (38 stations)" <<<"$report" || fail "the catalogue was not read"
kill "$game_pid" 2>/dev/null || true
wait "$game_pid" 2>/dev/null || true
game_pid=""
wineserver -k 2>/dev/null || true
bash "$(dirname "$0")/../audio/title_loop_test.sh" "$work/$top" vornco.exe ||
  fail "the title music does not loop cleanly"
echo "check_package: $(basename "$zip"): every file present, the unpacked game finds them all, its title loops"
