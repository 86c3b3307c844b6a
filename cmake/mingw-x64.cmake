# MinGW-w64 for 64-bit Windows: as a cross compiler on Linux, or the compiler itself on Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(KWO_BITS 64)
set(KWO_MINGW x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
