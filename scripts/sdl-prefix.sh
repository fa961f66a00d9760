#!/usr/bin/env bash
# Builds our own copies of SDL2, SDL2_image, SDL2_mixer and SDL2_ttf (with
# FreeType) from Debian's source packages of the very versions the native
# build links, and prints the folder they were installed into (the last line
# of standard output).
#
#   scripts/sdl-prefix.sh windows   static, for 64-bit Windows with MinGW-w64
#                                   (and GoogleTest, for the tests under Wine)
#   scripts/sdl-prefix.sh linux     shared, for the Linux release archive: each
#                                   library finds its fellows beside itself, and
#                                   SDL loads X11, Wayland, OpenGL, ALSA and
#                                   PulseAudio from the player's system at run
#                                   time, so nothing else needs shipping
#
# Both decode what the game ships with code built into the libraries: PNG with
# stb_image (saved with miniz, for the screen gallery), Ogg Vorbis with
# stb_vorbis, FLAC with dr_flac, WAV natively, and MP3 with libmpg123 (built
# from Debian's mpg123 source and linked in statically). MP3 goes through
# mpg123 as in the native build, not the bundled dr_mp3: mpg123 reads the
# encoder's delay and padding from the LAME tag and skips them, so the title
# music loops without the 70-80 ms hole dr_mp3 leaves at every loop point.
#
# The folder lives in a cache keyed by the target, those versions, the
# compiler's version and this script's and the toolchain file's contents, so
# a second run finds it at once. VORN_CACHE_DIR moves the cache (default:
# ~/.cache/vornco).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
target=${1:-}
case "$target" in
  windows|linux) ;;
  *)
    echo "usage: scripts/sdl-prefix.sh windows|linux" >&2
    exit 2 ;;
esac

say() { printf 'sdl-prefix (%s): %s\n' "$target" "$*" >&2; }

# Everything this script runs is installed first: the compilers whose
# versions go into the cache key below included, so a machine that has never
# built the game gets them before anything asks for them.
bash "$root/scripts/setup.sh" >&2
if [ "$target" = windows ]; then bash "$root/scripts/setup.sh" windows >&2; fi
# apt-get source needs dpkg-source and Debian's source entries.
bash "$root/scripts/setup.sh" sources >&2

case "$target" in
  windows)
    toolchain=$root/cmake/mingw-w64-x86_64.cmake
    compiler=$(x86_64-w64-mingw32-g++-posix --version | head -n 1)
    shared=OFF ;;
  linux)
    toolchain=""
    compiler=$(c++ --version | head -n 1)
    shared=ON ;;
esac

# The binary package whose source we build, for each library. Their versions
# are the native ones, so every build runs the same library code.
dev_packages=(libsdl2-dev libfreetype-dev libsdl2-image-dev libsdl2-mixer-dev libsdl2-ttf-dev
              libmpg123-0)
[ "$target" = windows ] && dev_packages+=(libgtest-dev)
sources=()
for p in "${dev_packages[@]}"; do
  sources+=("$(dpkg-query -W -f '${source:Package}=${source:Version}' "$p")")
done

key=$( { printf '%s\n' "$target" "${sources[@]}" "$compiler"; cat "$0";
         [ -z "$toolchain" ] || cat "$toolchain"; } | sha256sum | cut -c1-16)
cache=${VORN_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/vornco}
prefix=$cache/$target-prefix-$key
if [ -f "$prefix/.complete" ]; then
  echo "$prefix"
  exit 0
fi

say "building the library prefix $prefix (a few minutes, once)"
work=$cache/$target-work-$key
rm -rf "$work" "$prefix"
mkdir -p "$work/src" "$work/build"
log=$work/build.log

# Downloaded first and unpacked after: the mirror lacks the upstream
# signature (.orig.tar.bz2.asc) that mpg123's source names, which makes a
# plain apt-get source give up; apt has checked every file it did fetch.
(cd "$work/src" && { apt-get source --download-only -qq "${sources[@]}" || true; } &&
   for dsc in *.dsc; do dpkg-source -x --no-check "$dsc" || exit 1; done) >>"$log" 2>&1 || {
  cat "$log" >&2; say "fetching the sources failed"; exit 1; }
src_of() { find "$work/src" -mindepth 1 -maxdepth 1 -type d -name "$1-[0-9]*" | head -n 1; }

common=(-DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_PREFIX_PATH="$prefix"
        -DBUILD_SHARED_LIBS="$shared")
if [ -n "$toolchain" ]; then
  common+=(-DCMAKE_TOOLCHAIN_FILE="$toolchain" -DVORN_WINDOWS_PREFIX="$prefix")
else
  # Shared libraries that look for each other in their own folder first.
  common+=(-DCMAKE_INSTALL_RPATH='$ORIGIN' -DCMAKE_BUILD_WITH_INSTALL_RPATH=ON
           -DCMAKE_POSITION_INDEPENDENT_CODE=ON)
fi

# Configures, builds and installs one library into the prefix.
build() {
  local name=$1 dir=$2; shift 2
  say "$name"
  if ! { cmake -S "$dir" -B "$work/build/$name" -G Ninja "${common[@]}" "$@" &&
         cmake --build "$work/build/$name" &&
         cmake --install "$work/build/$name"; } >>"$log" 2>&1; then
    tail -n 60 "$log" >&2
    say "$name failed to build (whole log: $log)"
    exit 1
  fi
}

if [ "$target" = windows ]; then
  build sdl2 "$(src_of libsdl2)" -DSDL_SHARED=OFF -DSDL_STATIC=ON -DSDL_TEST=OFF
else
  build sdl2 "$(src_of libsdl2)" -DSDL_SHARED=ON -DSDL_STATIC=OFF -DSDL_TEST=OFF -DSDL_RPATH=OFF
fi

# FreeType is linked into SDL2_ttf (static, even for the shared build).
build freetype "$(src_of freetype)" -DBUILD_SHARED_LIBS=OFF \
  -DFT_DISABLE_ZLIB=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON \
  -DFT_DISABLE_HARFBUZZ=ON -DFT_DISABLE_BROTLI=ON

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

# libmpg123 alone (no player, no output library, no network streams), static,
# to be linked into SDL2_mixer. On Windows it opens files through shlwapi,
# which every Windows ships; the static SDL2_mixer's users must link it too.
build mpg123 "$(src_of mpg123)/ports/cmake" -DBUILD_SHARED_LIBS=OFF \
  -DBUILD_PROGRAMS=OFF -DBUILD_LIBOUT123=OFF -DNETWORK=OFF
if [ "$target" = windows ]; then mpg123_libs=shlwapi; else mpg123_libs=m; fi

build sdl2_mixer "$(src_of libsdl2-mixer)" -DSDL2MIXER_SAMPLES=OFF \
  -DSDL2MIXER_VENDORED=OFF -DSDL2MIXER_DEPS_SHARED=OFF -DSDL2MIXER_CMD=OFF \
  -DSDL2MIXER_WAVE=ON -DSDL2MIXER_VORBIS=STB \
  -DSDL2MIXER_MP3=ON -DSDL2MIXER_MP3_DRMP3=OFF -DSDL2MIXER_MP3_MPG123=ON \
  -DMPG123_LINK_LIBRARIES="$mpg123_libs" \
  -DSDL2MIXER_FLAC=ON -DSDL2MIXER_FLAC_DRFLAC=ON -DSDL2MIXER_FLAC_LIBFLAC=OFF \
  -DSDL2MIXER_MOD=OFF -DSDL2MIXER_MIDI=OFF -DSDL2MIXER_OPUS=OFF

# The static SDL2_mixer's config finds libmpg123 again in the game's build;
# the library it needs beside it is written into that finder as its default.
if [ -f "$prefix/lib/cmake/SDL2_mixer/FindMPG123.cmake" ]; then
  sed -i "s/^set(MPG123_LINK_LIBRARIES \"\"/set(MPG123_LINK_LIBRARIES \"$mpg123_libs\"/" \
    "$prefix/lib/cmake/SDL2_mixer/FindMPG123.cmake"
fi

build sdl2_ttf "$(src_of libsdl2-ttf)" -DSDL2TTF_SAMPLES=OFF \
  -DSDL2TTF_VENDORED=OFF -DSDL2TTF_HARFBUZZ=OFF

if [ "$target" = windows ]; then
  build googletest "$(src_of googletest)" -DBUILD_GMOCK=OFF -DINSTALL_GTEST=ON
fi

rm -rf "$work"
touch "$prefix/.complete"
say "done"
echo "$prefix"
