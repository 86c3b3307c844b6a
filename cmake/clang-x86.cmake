# Clang for 32-bit Windows, with the headers and libraries of MinGW-w64.
set(CMAKE_SYSTEM_NAME Windows)
set(KWO_BITS 32)
set(KWO_MINGW i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/clang.cmake)
