# The game's own sounds and pictures are not checked in: a small tool paints
# and synthesises them at build time, straight into the game folder. The tool
# is never linked into the game. Music is encoded with the lame and oggenc
# command-line encoders (scripts/setup.sh installs them).
#
# The generator runs on the build machine. A cross build (the Windows game)
# builds its own native copy first, from this same source tree, as a small
# native sub-build that makes nothing but the generator.
if(NOT CMAKE_CROSSCOMPILING)
  add_executable(vorn_asset_generator
    ${CMAKE_CURRENT_SOURCE_DIR}/tools/asset_generator.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/tools/asset_images.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/tools/asset_sounds.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/tools/asset_music.cpp
    ${CMAKE_CURRENT_SOURCE_DIR}/tools/music_kit.cpp)
  target_link_libraries(vorn_asset_generator PRIVATE vorn_options ${VORN_SDL_LIBS})
  # Optimised even in debug builds: it synthesises a few million samples on
  # every build that touches it, and nobody steps through it in a debugger.
  target_compile_options(vorn_asset_generator PRIVATE -O2)
  set(VORN_ASSET_GENERATOR_COMMAND vorn_asset_generator)
  set(VORN_ASSET_GENERATOR_PATH $<TARGET_FILE:vorn_asset_generator>)
  set(VORN_ASSET_INPUTS vorn_asset_generator)
else()
  include(ExternalProject)
  set(VORN_HOST_TOOLS_DIR ${CMAKE_BINARY_DIR}/host-tools)
  set(VORN_ASSET_GENERATOR_COMMAND ${VORN_HOST_TOOLS_DIR}/vorn_asset_generator)
  ExternalProject_Add(vorn_host_tools
    SOURCE_DIR ${CMAKE_CURRENT_SOURCE_DIR}
    BINARY_DIR ${VORN_HOST_TOOLS_DIR}
    CMAKE_GENERATOR Ninja
    CMAKE_ARGS -DCMAKE_BUILD_TYPE=Release -DVORN_BUILD_TESTS=OFF
               -DVORN_WERROR=${VORN_WERROR}
    BUILD_COMMAND ${CMAKE_COMMAND} --build . --target vorn_asset_generator
    BUILD_ALWAYS ON
    BUILD_BYPRODUCTS ${VORN_ASSET_GENERATOR_COMMAND}
    INSTALL_COMMAND ""
    STEP_TARGETS build)
  set(VORN_ASSET_GENERATOR_PATH ${VORN_ASSET_GENERATOR_COMMAND})
  set(VORN_ASSET_INPUTS vorn_host_tools ${VORN_ASSET_GENERATOR_COMMAND})
endif()

set(VORN_GENERATED_ASSETS
  ${VORN_GAME_DIR}/assets/audio/tick.wav
  ${VORN_GAME_DIR}/assets/audio/tock.wav
  ${VORN_GAME_DIR}/assets/audio/siren.wav
  ${VORN_GAME_DIR}/assets/audio/pass.wav
  ${VORN_GAME_DIR}/assets/audio/fail.wav
  ${VORN_GAME_DIR}/assets/audio/click.wav
  ${VORN_GAME_DIR}/assets/audio/zembrilux-sting.wav
  ${VORN_GAME_DIR}/data/music/vorn-title.mp3
  ${VORN_GAME_DIR}/data/music/shift-01.ogg
  ${VORN_GAME_DIR}/data/music/shift-02.ogg
  ${VORN_GAME_DIR}/data/music/shift-03.ogg
  ${VORN_GAME_DIR}/assets/images/app_icon.png
  ${VORN_GAME_DIR}/assets/images/app_icon.ico
  ${VORN_GAME_DIR}/assets/images/studio_logo.png)

# The wordmark is set in the display font the game ships; the generator
# draws block letters when that font is absent. The source font is listed
# so a different font regenerates the logo; the target dependency below
# makes sure the shipped copy is in place first.
set(VORN_ASSET_FONT ${VORN_GAME_DIR}/assets/fonts/display.ttf)
if(EXISTS ${VORN_DISPLAY_FONT})
  list(APPEND VORN_ASSET_INPUTS ${VORN_DISPLAY_FONT})
endif()

add_custom_command(OUTPUT ${VORN_GENERATED_ASSETS}
  COMMAND ${VORN_ASSET_GENERATOR_COMMAND} ${VORN_GAME_DIR} ${VORN_ASSET_FONT}
  DEPENDS ${VORN_ASSET_INPUTS}
  COMMENT "Generating the game's sounds and images"
  VERBATIM)
add_custom_target(vorn_assets ALL DEPENDS ${VORN_GENERATED_ASSETS})
add_dependencies(vorn_assets game_folder)
add_dependencies(vornco vorn_assets)
