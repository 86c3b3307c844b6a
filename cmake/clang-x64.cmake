# Clang for 64-bit Windows, with the headers and libraries of MinGW-w64.
set(CMAKE_SYSTEM_NAME Windows)
set(KWO_BITS 64)
set(KWO_MINGW x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/clang.cmake)
