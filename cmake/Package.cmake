# What a player downloads: the game folder exactly as the build lays it out
# (the program, data/ with the catalogue and music, assets/ with pictures,
# fonts and their licences, sounds) plus a short README for players, packed
# under one top-level folder. The log and save a test run may have left in
# the build's own data/ are not part of it.
#
#   cmake --build <build dir> --target package
#
# On Windows everything is linked into the .exe. On Linux the release build
# (scripts/linux-release.sh) links our own shared builds of the SDL2 family,
# named by VORN_BUNDLED_SDL (the folder scripts/sdl-prefix.sh linux made),
# and ships them in lib/ beside the game, which finds them through its run
# path; the C++ runtime is linked in, so the game needs nothing of the
# player's system but the C library and what SDL loads itself (X11 or
# Wayland, OpenGL, ALSA or PulseAudio).
set(VORN_BUNDLED_SDL "" CACHE PATH "Our shared SDL2 family to ship in lib/ (Linux release)")
set(VORN_PACKAGE_SYSTEM linux-x86_64)
if(WIN32)
  set(VORN_PACKAGE_SYSTEM win64)
endif()

if(VORN_BUNDLED_SDL AND NOT WIN32)
  # DT_RPATH rather than DT_RUNPATH: it also serves the libraries' own
  # lookups of one another, should their run path ever be lost.
  set_target_properties(vornco PROPERTIES INSTALL_RPATH "$ORIGIN/lib" BUILD_WITH_INSTALL_RPATH OFF)
  target_link_options(vornco PRIVATE -static-libstdc++ -static-libgcc -Wl,--disable-new-dtags)
  file(GLOB VORN_BUNDLED_LIBS ${VORN_BUNDLED_SDL}/lib/libSDL2*-2.0.so.0*)
  install(FILES ${VORN_BUNDLED_LIBS} DESTINATION lib)
  install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/packaging/vornco.desktop
                ${CMAKE_CURRENT_SOURCE_DIR}/packaging/install-menu-entry.sh
          DESTINATION .
          PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                      WORLD_READ WORLD_EXECUTE)
  install(FILES ${VORN_GAME_DIR}/assets/images/app_icon.png DESTINATION . RENAME vornco.png)
  install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/packaging/README-linux.txt
    DESTINATION . RENAME README.txt)
endif()

install(TARGETS vornco RUNTIME DESTINATION .)
install(DIRECTORY ${VORN_GAME_DIR}/data/levels ${VORN_GAME_DIR}/data/music DESTINATION data)
install(DIRECTORY ${VORN_GAME_DIR}/assets DESTINATION .)
if(WIN32)
  install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/packaging/README-windows.txt
    DESTINATION . RENAME README.txt)
endif()

set(CPACK_PACKAGE_NAME vornco)
set(CPACK_PACKAGE_VENDOR "The Vorn Co.")
set(CPACK_PACKAGE_FILE_NAME vornco-${PROJECT_VERSION}-${VORN_PACKAGE_SYSTEM})
if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR TGZ)
endif()
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
include(CPack)
