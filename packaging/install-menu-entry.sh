#!/bin/sh
# Adds The Vorn Co. to your desktop's application menu, pointing at this
# folder (run it again if you move the folder). Nothing else is installed.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
apps=${XDG_DATA_HOME:-$HOME/.local/share}/applications
mkdir -p "$apps"
sed -e "s|^Exec=.*|Exec=\"$here/vornco\"|" -e "s|^Icon=.*|Icon=$here/vornco.png|" \
    -e "/^Icon=/a Path=$here" "$here/vornco.desktop" >"$apps/vornco.desktop"
echo "The Vorn Co. is in your application menu ($apps/vornco.desktop)."
