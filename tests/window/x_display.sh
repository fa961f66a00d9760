# Sourced by the tests that show the game in a real window: a virtual X
# server of its own, and the colour of a screen pixel.

# Starts Xvfb with a screen of the given size (default 1366x768, the game's
# canvas; any other size shows it scaled and letter-boxed) on a display
# number of its own choosing, exports DISPLAY and sets xvfb_pid (the caller
# kills it when done). The server picks
# the number and writes it to a pipe (-displayfd), so tests started at the
# same moment never pick the same free number and then kill each other's
# server. -noreset keeps the server up between clients: by default an X
# server resets itself when its last client leaves, and a program that
# connects again in that moment (a second test case opening the display
# right after the first closed it, on a loaded machine) is told "x11 not
# available".
start_virtual_display() {
  local size="${1:-1366x768}" fifo n=""
  fifo=$(mktemp -u "${TMPDIR:-/tmp}/vorn-display.XXXXXX")
  mkfifo "$fifo"
  Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp -noreset 3>"$fifo" >/dev/null 2>&1 &
  xvfb_pid=$!
  read -r -t 20 n <"$fifo" || true
  rm -f "$fifo"
  export DISPLAY=":${n:-0}"
  for _ in $(seq 100); do [ -e "/tmp/.X11-unix/X$n" ] && break; sleep 0.1; done
}

# Where canvas pixel (x, y) shows on a w x h screen, as "X Y": the canvas is
# scaled by the smaller of w / 1366 and h / 768 and centred (the rest is the
# letter box); the point is the middle of the canvas pixel.
canvas_to_screen() {   # x y w h
  awk -v x="$1" -v y="$2" -v w="$3" -v h="$4" 'BEGIN {
    s = w / 1366; if (h / 768 < s) s = h / 768
    printf "%d %d\n", (w - 1366 * s) / 2 + (x + 0.5) * s, (h - 768 * s) / 2 + (y + 0.5) * s }'
}

# The colour at a screen pixel as "r g b".
screen_pixel() {
  import -window root -crop "1x1+$1+$2" -depth 8 txt:- 2>/dev/null |
    sed -n 's/.*(\([0-9]*\),\([0-9]*\),\([0-9]*\).*/\1 \2 \3/p' | head -1
}
