#!/usr/bin/env bash
# The source folders stand on one another in a fixed order, lowest first:
#   base  data  log  gfx  audio  stations  app
# A file may include its own folder's headers and those of lower folders,
# never a higher one's (so the draw rules and the input state, used by the
# stations, the sound and the app alike, live at the bottom in base/).
#   check_layers.sh SOURCE_DIR
set -euo pipefail
src=$1/src
order=(base data log gfx audio stations app)
rank() { local i; for i in "${!order[@]}"; do [ "${order[$i]}" = "$1" ] && { echo "$i"; return; }; done; echo -1; }
bad=0
for dir in "${order[@]}"; do
  mine=$(rank "$dir")
  while IFS= read -r line; do
    file=${line%%:*}
    target=$(sed -n 's/.*#include "\([a-z_]*\)\/.*/\1/p' <<<"$line")
    [ -z "$target" ] && continue
    theirs=$(rank "$target")
    if [ "$theirs" -lt 0 ]; then
      echo "$file includes from an unknown folder: $line"; bad=1
    elif [ "$theirs" -gt "$mine" ]; then
      echo "$file ($dir) reaches up to $target: $line"; bad=1
    fi
  done < <(grep -rn '#include "' "$src/$dir" || true)
done
[ "$bad" = 0 ] && echo "layers: every include points down or sideways"
exit "$bad"
