# What a player downloads: the game folder exactly as the build lays it out
# (the program, data/ with the catalogue and music, assets/ with pictures,
# fonts and their licences, sounds) plus a short README for players, packed
# under one top-level folder. The log and save a test run may have left in
# the build's own data/ are not part of it.
#
#   cmake --build <build dir> --target package
set(VORN_PACKAGE_SYSTEM linux-x86_64)
if(WIN32)
  set(VORN_PACKAGE_SYSTEM win64)
endif()

install(PROGRAMS $<TARGET_FILE:vornco> DESTINATION .)
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
