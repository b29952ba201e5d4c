# Cross-builds the Windows programs on Debian with MinGW-w64 (g++-mingw-w64-x86-64-posix):
#   cmake -S . -B build-windows -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
# The posix thread model gives std::thread and friends; the runtime is linked in statically so
# that every .exe runs without MinGW's DLLs beside it (under Wine, on a Windows machine).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(KESTO_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${KESTO_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KESTO_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${KESTO_MINGW_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${KESTO_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

# ctest starts the test programs through Wine; Makefile's test-windows gives it its prefix.
find_program(KESTO_WINE wine)
if(KESTO_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${KESTO_WINE})
endif()
