# Lays out the game folder beside the executable: data/ (catalogue, music,
# and later the save and log the game writes), assets/ (images, fonts, audio).
foreach(dir data data/levels data/music assets/images assets/fonts assets/audio)
  file(MAKE_DIRECTORY ${VORN_GAME_DIR}/${dir})
endforeach()

set(VORN_GAME_FILES "")

# Copies one file into the game folder at build time, again whenever it changes.
function(vorn_ship_file source destination)
  add_custom_command(OUTPUT ${VORN_GAME_DIR}/${destination}
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${source} ${VORN_GAME_DIR}/${destination}
    DEPENDS ${source}
    COMMENT "Shipping ${destination}"
    VERBATIM)
  set(VORN_GAME_FILES ${VORN_GAME_FILES} ${VORN_GAME_DIR}/${destination} PARENT_SCOPE)
endfunction()

if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/content/levels.json)
  vorn_ship_file(${CMAKE_CURRENT_SOURCE_DIR}/content/levels.json data/levels/levels.json)
endif()

# Fonts come from Debian's font packages (the set-up script installs them),
# each with its licence beside it. A missing one is not fatal: the game falls
# back to system fonts, then to drawing no text.
set(VORN_GAME_FONT /usr/share/fonts/truetype/jetbrains-mono/JetBrainsMono-Medium.ttf
    CACHE FILEPATH "Terminal-style monospace shipped as assets/fonts/game.ttf")
set(VORN_GAME_FONT_LICENSE /usr/share/doc/fonts-jetbrains-mono/copyright
    CACHE FILEPATH "Licence of the game font")
set(VORN_DISPLAY_FONT /usr/share/fonts/truetype/roboto/unhinted/RobotoCondensed-Bold.ttf
    CACHE FILEPATH "Bold display face shipped as assets/fonts/display.ttf")
set(VORN_DISPLAY_FONT_LICENSE /usr/share/doc/fonts-roboto-unhinted/copyright
    CACHE FILEPATH "Licence of the display font")

foreach(kind game display)
  string(TOUPPER ${kind} upper)
  if(EXISTS ${VORN_${upper}_FONT})
    vorn_ship_file(${VORN_${upper}_FONT} assets/fonts/${kind}.ttf)
    if(EXISTS ${VORN_${upper}_FONT_LICENSE})
      vorn_ship_file(${VORN_${upper}_FONT_LICENSE} assets/fonts/${kind}.ttf.LICENSE.txt)
    endif()
  else()
    message(WARNING "Font ${VORN_${upper}_FONT} not found: assets/fonts/${kind}.ttf is left out")
  endif()
endforeach()

add_custom_target(game_folder ALL DEPENDS ${VORN_GAME_FILES})
add_dependencies(vornco game_folder)
