# Shared by the two MinGW-w64 toolchain files, which say the bitness and the target's name.
if(KWO_BITS EQUAL 64)
  set(CMAKE_SYSTEM_PROCESSOR AMD64)
else()
  set(CMAKE_SYSTEM_PROCESSOR X86)
endif()

# Debian installs two flavours side by side. The "posix" one brings a thread library that a DLL cannot be rid of: every
# load would cost the host a thread-local slot (docs/architecture.md). The other has no std::mutex and no std::thread.
find_program(KWO_CXX NAMES ${KWO_MINGW}-g++-win32 ${KWO_MINGW}-g++ REQUIRED)
find_program(KWO_CC NAMES ${KWO_MINGW}-gcc-win32 ${KWO_MINGW}-gcc REQUIRED)
find_program(KWO_RC NAMES ${KWO_MINGW}-windres windres REQUIRED)
set(CMAKE_CXX_COMPILER ${KWO_CXX})
set(CMAKE_C_COMPILER ${KWO_CC})
set(CMAKE_RC_COMPILER ${KWO_RC})

set(CMAKE_FIND_ROOT_PATH /usr/${KWO_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
