# MinGW-w64 for 32-bit Windows: as a cross compiler on Linux, or the compiler itself on Windows.
set(CMAKE_SYSTEM_NAME Windows)
set(KWO_BITS 32)
set(KWO_MINGW i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
