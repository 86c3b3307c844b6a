# Shared by the two toolchain files of Clang for Windows. What GCC of MinGW-w64 brings, its C++ library above all, comes
# from there; both compilers have the same binary interface.
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
set(gcc ${KWO_CXX})
find_program(KWO_CLANGXX clang++ REQUIRED)
find_program(KWO_CLANG clang REQUIRED)
find_program(KWO_LLD ld.lld REQUIRED)  # the linker of binutils complains about sections that the two compilers make
set(CMAKE_CXX_COMPILER ${KWO_CLANGXX})
set(CMAKE_C_COMPILER ${KWO_CLANG})
set(CMAKE_CXX_COMPILER_TARGET ${KWO_MINGW})
set(CMAKE_C_COMPILER_TARGET ${KWO_MINGW})

execute_process(COMMAND ${gcc} -print-file-name=include/c++ OUTPUT_VARIABLE headers OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${gcc} -print-libgcc-file-name OUTPUT_VARIABLE libraries OUTPUT_STRIP_TRAILING_WHITESPACE)
get_filename_component(libraries ${libraries} DIRECTORY)
# GCC defines these for Windows. Without them, types are compared by a function that the library has, too.
set(CMAKE_CXX_FLAGS_INIT "-stdlib++-isystem ${headers} -isystem ${headers}/${KWO_MINGW} \
-D__GXX_TYPEINFO_EQUALITY_INLINE=0 -D__GXX_MERGED_TYPEINFO_NAMES=0")
foreach(kind IN ITEMS EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -B${libraries} -L${libraries}")
endforeach()
