#!/usr/bin/env bash
# Installs the Debian packages the game needs to build, run and test.
# Quick when everything is already there: it asks dpkg first and only calls
# apt-get for what is missing.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  libsdl2-dev libsdl2-image-dev libsdl2-mixer-dev libsdl2-ttf-dev
  libgtest-dev python3 lame vorbis-tools
  xvfb xdotool imagemagick
  fonts-jetbrains-mono fonts-roboto-unhinted fonts-dejavu-core
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -eq 0 ]; then
  exit 0
fi

echo "setup: installing ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
  sudo_cmd=()
elif command -v sudo >/dev/null 2>&1; then
  sudo_cmd=(sudo)
else
  echo "setup: missing packages (${missing[*]}) and neither root nor sudo is available" >&2
  exit 1
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
