#!/usr/bin/env bash
# Checks the Linux download as a player gets it. Unpacked into an empty
# folder, with no library path set:
# - it holds the game, its data and assets, the README, the menu entry and
#   its icon, and the SDL2 family in lib/;
# - every library the game loads at start, except the C library's own, is
#   found inside the folder (ldd), none is missing;
# - started in a virtual X window, it finds all its files, shows the title
#   terminal after a key on the splash, and quits with 0 when its window is
#   closed;
# - recorded through SDL's disk audio driver, its title music (decoded by the
#   mixer in lib/) loops twice without a silent moment.
# Usage: check_linux_archive.sh <vornco-*-linux-x86_64.tar.gz>
set -euo pipefail
archive=$(realpath "$1")
here=$(cd "$(dirname "$0")/../window" && pwd)
name=$(basename "$archive" .tar.gz)
fail() { echo "check_linux_archive: $name: $*"; exit 1; }

work=$(mktemp -d)
xvfb_pid=""
game_pid=""
cleanup() {
  [ -n "$game_pid" ] && kill "$game_pid" 2>/dev/null || true
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
tar -xzf "$archive" -C "$work"
game=$work/$name
for file in vornco README.txt vornco.desktop vornco.png install-menu-entry.sh \
            data/levels/levels.json data/music/vorn-title.mp3 data/music/shift-01.ogg \
            assets/fonts/game.ttf assets/fonts/game.ttf.LICENSE.txt assets/fonts/display.ttf \
            assets/fonts/display.ttf.LICENSE.txt assets/images/app_icon.png \
            assets/images/studio_logo.png assets/audio/tick.wav assets/audio/click.wav \
            assets/audio/zembrilux-sting.wav lib/libSDL2-2.0.so.0 lib/libSDL2_image-2.0.so.0 \
            lib/libSDL2_mixer-2.0.so.0 lib/libSDL2_ttf-2.0.so.0; do
  [ -e "$game/$file" ] || fail "$file is missing"
done
[ -x "$game/vornco" ] || fail "vornco is not executable"
if find "$game" -name 'vornco_save.txt' -o -name 'vornco_log.txt' | grep -q .; then
  fail "a save or log file was packed"
fi

# What the dynamic loader finds, with nothing but the system's own paths.
# The C library (and the loader and kernel page it brings) is the system's;
# everything else must be ours.
libs=$(env -u LD_LIBRARY_PATH ldd "$game/vornco")
if grep -q 'not found' <<<"$libs"; then
  fail "libraries not found: $(grep 'not found' <<<"$libs" | tr -s ' \t' ' ')"
fi
while read -r soname arrow path _; do
  case "$soname" in
    linux-vdso.so.*|/lib64/ld-linux-x86-64.so.2|libc.so.6|libm.so.6) continue ;;
  esac
  [ "$arrow" = "=>" ] || fail "unexpected ldd line: $soname $arrow $path"
  [[ "$path" == "$game/lib/"* ]] || fail "$soname comes from the system ($path), not the folder"
done <<<"$libs"
for sdl in libSDL2-2.0.so.0 libSDL2_image-2.0.so.0 libSDL2_mixer-2.0.so.0 libSDL2_ttf-2.0.so.0; do
  grep -q "$sdl => $game/lib/$sdl" <<<"$libs" || fail "$sdl is not taken from lib/"
done

command -v Xvfb >/dev/null && command -v xdotool >/dev/null && command -v import >/dev/null ||
  fail "Xvfb, xdotool and ImageMagick are needed for the window check"
source "$here/x_display.sh"
start_virtual_display
log=$game/data/vornco_log.txt
(cd "$work" && unset SDL_VIDEODRIVER LD_LIBRARY_PATH &&
   SDL_AUDIODRIVER=dummy exec "$game/vornco" >"$work/stdout.txt" 2>&1 </dev/null) &
game_pid=$!
window=$(timeout 30 xdotool search --sync --name '^The Vorn Co\.$' | head -1) || fail "no window appeared"
for _ in $(seq 200); do
  grep -qF "DIAG: --- end of startup diagnostics ---" "$log" 2>/dev/null && break
  sleep 0.1
done
report=$(sed -n '/---- diagnostics ----/,$p' "$log")
grep -qF "DIAG: --- end of startup diagnostics ---" <<<"$report" || fail "the game never finished starting"
if grep -E '\[(MISS|part|none|FAIL)\]' <<<"$report"; then
  fail "the unpacked game misses some of its files"
fi

xdotool key --window "$window" space
title=""
for _ in $(seq 100); do
  read -r r g b <<<"$(screen_pixel 400 560)"
  if [ "$g" -gt $((r + 8)) ]; then title=yes; break; fi
  sleep 0.1
done
[ -n "$title" ] || fail "the title terminal's green glass never showed"

python3 "$here/close_window.py" "$window"
status=0
wait "$game_pid" || status=$?
game_pid=""
[ "$status" -eq 0 ] || fail "the game exited with $status"
grep -q "session end" "$log" || fail "no session end in the log"

(unset LD_LIBRARY_PATH && bash "$here/../audio/title_loop_test.sh" "$game" vornco) ||
  fail "the title music does not loop cleanly"
echo "check_linux_archive: $name: self-contained, starts, shows its title, quits cleanly, loops its title"
