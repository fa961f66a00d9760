# Sourced by the tests that show the game in a real window: a virtual X
# server of its own, and the colour of a screen pixel.

# Starts Xvfb at 1366x768 on a display number nobody uses, exports DISPLAY and
# sets xvfb_pid (the caller kills it when done).
start_virtual_display() {
  local n=90
  while [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ]; do n=$((n + 1)); done
  Xvfb ":$n" -screen 0 1366x768x24 -nolisten tcp >/dev/null 2>&1 &
  xvfb_pid=$!
  export DISPLAY=":$n"
  for _ in $(seq 100); do [ -e "/tmp/.X11-unix/X$n" ] && break; sleep 0.1; done
}

# The colour at a screen pixel as "r g b".
screen_pixel() {
  import -window root -crop "1x1+$1+$2" -depth 8 txt:- 2>/dev/null |
    sed -n 's/.*(\([0-9]*\),\([0-9]*\),\([0-9]*\).*/\1 \2 \3/p' | head -1
}
