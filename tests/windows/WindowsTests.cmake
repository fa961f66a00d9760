# The Windows build's tests, run under Wine: the same unit tests as the
# native build, a check of what kind of program vornco.exe is, and the
# real-window test played against the .exe.
#
# Wine keeps its state in a prefix of its own inside the build tree. It is
# booted once, with its output thrown away: Wine's background services keep
# whatever output they inherit open, which would hang anything reading it.
find_program(VORN_WINE wine REQUIRED)
set(VORN_WINEPREFIX ${CMAKE_BINARY_DIR}/wine)
set(VORN_WINE_ENV WINEPREFIX=${VORN_WINEPREFIX} WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=)
add_custom_command(OUTPUT ${VORN_WINEPREFIX}/system.reg
  COMMAND sh -c "env ${VORN_WINE_ENV} wineboot -i >/dev/null 2>&1"
  COMMENT "Booting the Wine prefix the Windows tests run in"
  VERBATIM)
add_custom_target(vorn_wine_prefix DEPENDS ${VORN_WINEPREFIX}/system.reg)
add_dependencies(vorn_tests vorn_wine_prefix)
set_property(TARGET vorn_tests PROPERTY CROSSCOMPILING_EMULATOR env ${VORN_WINE_ENV} ${VORN_WINE})

# Under Wine the suite runs in one process, in a random order: a Wine
# process costs a quarter of a second to start, which one entry per test
# would pay some eight hundred times.
add_test(NAME OneProcess.EveryTestInRandomOrder COMMAND vorn_tests ${VORN_ONE_PROCESS_ARGS})
set_tests_properties(OneProcess.EveryTestInRandomOrder PROPERTIES
  ENVIRONMENT "SDL_VIDEODRIVER=dummy;SDL_AUDIODRIVER=dummy" TIMEOUT 2400
  FIXTURES_REQUIRED wine)

# One Wine server, with Wine's background services, for the unit tests,
# started with their output thrown away. Started on demand by the test they
# would inherit its output pipe and keep it open, and CTest would wait for
# them to leave before it saw the test end.
add_test(NAME Wine.StartServer
  COMMAND sh -c "exec </dev/null >/dev/null 2>&1; wineserver -k; wineserver -w; wineserver -p && wine cmd /c exit")
add_test(NAME Wine.StopServer COMMAND sh -c "wineserver -k || true")
set_tests_properties(Wine.StartServer PROPERTIES FIXTURES_SETUP wine ENVIRONMENT "${VORN_WINE_ENV}")
set_tests_properties(Wine.StopServer PROPERTIES FIXTURES_CLEANUP wine ENVIRONMENT "${VORN_WINE_ENV}")

# 64-bit, console subsystem, nothing but Windows' own DLLs to import, and a
# manifest declaring per-monitor DPI awareness.
add_test(NAME WindowsExecutable.ConsoleProgramImportingOnlySystemDllsAndMonitorDpiAware
  COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/check_executable.sh $<TARGET_FILE:vornco>)

# The .exe in a real (virtual) X window under Wine, played as natively.
add_test(NAME RealWindow.SplashTitleFiredAndCloseUnderWine
  COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/window/real_window_test.sh ${VORN_GAME_DIR} vornco.exe)
# It needs a Wine server of its own that sees the X display, so it runs once
# the unit tests' server has gone.
set_tests_properties(RealWindow.SplashTitleFiredAndCloseUnderWine PROPERTIES
  ENVIRONMENT "${VORN_WINE_ENV}" SKIP_RETURN_CODE 77 TIMEOUT 300 RUN_SERIAL ON
  DEPENDS Wine.StopServer)

# The title music recorded from the .exe through SDL's disk audio driver
# (which works under Wine, though Wine has no sound device here) across two
# of its loop points: the Windows build's own MP3 decoder must loop it
# without a hole. Like the window test, it needs a Wine server of its own.
add_test(NAME TitleMusic.LoopsWithoutAGapAsRecordedUnderWine
  COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/audio/title_loop_test.sh ${VORN_GAME_DIR} vornco.exe)
set_tests_properties(TitleMusic.LoopsWithoutAGapAsRecordedUnderWine PROPERTIES
  ENVIRONMENT "${VORN_WINE_ENV}" TIMEOUT 400 RUN_SERIAL ON
  DEPENDS Wine.StopServer)

# The same at a 1920x1080 screen: the canvas scaled into the window, every
# click and probe taken through that scale.
add_test(NAME RealWindow.SplashTitleFiredAndCloseUnderWineAt1920x1080
  COMMAND bash ${CMAKE_CURRENT_SOURCE_DIR}/window/real_window_test.sh ${VORN_GAME_DIR} vornco.exe 1920x1080)
set_tests_properties(RealWindow.SplashTitleFiredAndCloseUnderWineAt1920x1080 PROPERTIES
  ENVIRONMENT "${VORN_WINE_ENV}" SKIP_RETURN_CODE 77 TIMEOUT 300 RUN_SERIAL ON
  DEPENDS Wine.StopServer)
