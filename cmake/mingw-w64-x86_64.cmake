# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 (posix threads:
# the win32 flavour of GCC 12 has no std::mutex). Everything links statically
# so the game is one self-contained .exe that imports only system DLLs.
#
# VORN_WINDOWS_PREFIX names the folder holding our static builds of SDL2 and
# its companions (scripts/sdl-prefix.sh windows makes it). Test programs run
# through Wine when it is installed.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# try_compile re-reads this file in a fresh project: hand it the prefix too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VORN_WINDOWS_PREFIX)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
if(VORN_WINDOWS_PREFIX)
  list(PREPEND CMAKE_FIND_ROOT_PATH ${VORN_WINDOWS_PREFIX})
endif()
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
# A release program carries no symbol table: the .exe that is tested is the
# one that ships, at a third of the size.
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT "-s")

find_program(VORN_WINE wine)
if(VORN_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${VORN_WINE})
endif()
