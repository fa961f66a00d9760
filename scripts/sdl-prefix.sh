#!/usr/bin/env bash
# Builds static 64-bit Windows copies of SDL2, SDL2_image, SDL2_mixer,
# SDL2_ttf, FreeType and GoogleTest with MinGW-w64, from Debian's own source
# packages of the very versions the native build links, and prints the
# folder they were installed into (the last line of standard output).
#
# The folder lives in a cache keyed by those versions, the cross compiler's
# version and this script's and the toolchain file's contents, so a second
# run finds it at once. VORN_CACHE_DIR moves the cache (default:
# ~/.cache/vornco).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
toolchain=$root/cmake/mingw-w64-x86_64.cmake

say() { printf 'windows-prefix: %s\n' "$*" >&2; }

bash "$root/scripts/setup.sh" windows >&2

# The binary package whose source we build, for each library. Their versions
# are the native ones, so both targets run the same library code.
dev_packages=(libsdl2-dev libfreetype-dev libsdl2-image-dev libsdl2-mixer-dev
              libsdl2-ttf-dev libgtest-dev)
sources=()
for p in "${dev_packages[@]}"; do
  sources+=("$(dpkg-query -W -f '${source:Package}=${source:Version}' "$p")")
done

compiler=$(x86_64-w64-mingw32-g++-posix --version | head -n 1)
key=$( { printf '%s\n' "${sources[@]}" "$compiler"; cat "$0" "$toolchain"; } \
       | sha256sum | cut -c1-16)
cache=${VORN_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/vornco}
prefix=$cache/win64-prefix-$key
if [ -f "$prefix/.complete" ]; then
  echo "$prefix"
  exit 0
fi

say "building the library prefix $prefix (a few minutes, once)"
work=$cache/win64-work-$key
rm -rf "$work" "$prefix"
mkdir -p "$work/src" "$work/build"
log=$work/build.log

(cd "$work/src" && apt-get source -qq "${sources[@]}" >>"$log" 2>&1) || {
  cat "$log" >&2; say "apt-get source failed"; exit 1; }
src_of() { find "$work/src" -mindepth 1 -maxdepth 1 -type d -name "$1-[0-9]*" | head -n 1; }

# Configures, builds and installs one library into the prefix.
build() {
  local name=$1 dir=$2; shift 2
  say "$name"
  if ! { cmake -S "$dir" -B "$work/build/$name" -G Ninja \
           -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DVORN_WINDOWS_PREFIX="$prefix" \
           -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" \
           -DBUILD_SHARED_LIBS=OFF "$@" &&
         cmake --build "$work/build/$name" &&
         cmake --install "$work/build/$name"; } >>"$log" 2>&1; then
    tail -n 60 "$log" >&2
    say "$name failed to build (whole log: $log)"
    exit 1
  fi
}

build sdl2 "$(src_of libsdl2)" -DSDL_SHARED=OFF -DSDL_STATIC=ON -DSDL_TEST=OFF

build freetype "$(src_of freetype)" \
  -DFT_DISABLE_ZLIB=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON \
  -DFT_DISABLE_HARFBUZZ=ON -DFT_DISABLE_BROTLI=ON

# PNG through the bundled stb_image (and saved with the bundled miniz, for the
# screen gallery): the game loads nothing else.
image_formats=()
for f in AVIF BMP GIF JPG JXL LBM PCX PNM QOI SVG TGA TIF WEBP XCF XPM XV; do
  image_formats+=("-DSDL2IMAGE_$f=OFF")
done
build sdl2_image "$(src_of libsdl2-image)" -DSDL2IMAGE_SAMPLES=OFF \
  -DSDL2IMAGE_VENDORED=OFF -DSDL2IMAGE_DEPS_SHARED=OFF -DSDL2IMAGE_BACKEND_STB=ON \
  -DSDL2IMAGE_PNG=ON -DSDL2IMAGE_PNG_SAVE=ON "${image_formats[@]}"
# Its installed config asks for libpng even when stb_image decodes PNG.
sed -i 's/^\( *\)\(set(SDL2IMAGE_PNG\) *ON)/\1\2 OFF)  # stb_image decodes PNG/' \
  "$prefix/lib/cmake/SDL2_image/SDL2_imageConfig.cmake"

# WAV, Ogg Vorbis (stb_vorbis), MP3 (dr_mp3) and FLAC (dr_flac): the formats
# the game's music folder takes, all decoded by code bundled with the mixer.
build sdl2_mixer "$(src_of libsdl2-mixer)" -DSDL2MIXER_SAMPLES=OFF \
  -DSDL2MIXER_VENDORED=OFF -DSDL2MIXER_DEPS_SHARED=OFF -DSDL2MIXER_CMD=OFF \
  -DSDL2MIXER_WAVE=ON -DSDL2MIXER_VORBIS=STB \
  -DSDL2MIXER_MP3=ON -DSDL2MIXER_MP3_DRMP3=ON -DSDL2MIXER_MP3_MPG123=OFF \
  -DSDL2MIXER_FLAC=ON -DSDL2MIXER_FLAC_DRFLAC=ON -DSDL2MIXER_FLAC_LIBFLAC=OFF \
  -DSDL2MIXER_MOD=OFF -DSDL2MIXER_MIDI=OFF -DSDL2MIXER_OPUS=OFF

build sdl2_ttf "$(src_of libsdl2-ttf)" -DSDL2TTF_SAMPLES=OFF \
  -DSDL2TTF_VENDORED=OFF -DSDL2TTF_HARFBUZZ=OFF

build googletest "$(src_of googletest)" -DBUILD_GMOCK=OFF -DINSTALL_GTEST=ON

rm -rf "$work"
touch "$prefix/.complete"
say "done"
echo "$prefix"
