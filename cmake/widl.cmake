# The IDL compiler: one description becomes the header, the identifiers and the type library.
#
#   KWO_WIDL            the compiler (mingw-w64-tools, or MSYS2's mingw-w64-tools)
#   KWO_IDL_DIR         where oaidl.idl and ocidl.idl are (Debian: libwine-dev; MSYS2: with the headers)
#   KWO_STDOLE_DIR      where stdole2.tlb is (Debian: libwine; Windows: its system directory)
#   KWO_PERL            removes the time of the build from the type library (perl); builds differ without it
find_program(KWO_PERL perl)
find_program(KWO_WIDL NAMES ${KWO_MINGW}-widl widl REQUIRED)
find_path(KWO_IDL_DIR oaidl.idl
          PATHS /usr/include/wine/wine/windows /usr/include/wine/windows /usr/${KWO_MINGW}/include
                $ENV{MINGW_PREFIX}/include $ENV{MINGW_PREFIX}/${KWO_MINGW}/include
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(KWO_STDOLE_DIR stdole2.tlb
          PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/i386-linux-gnu/wine/i386-windows
                /usr/lib/wine/x86_64-windows /usr/lib64/wine/x86_64-windows $ENV{SystemRoot}/System32
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)

# Makes NAME.h, NAME_i.c and NAME.tlb of an IDL file in the current binary directory and sets NAME_header, NAME_iids and
# NAME_typelib in the caller's scope.
function(kwo_compile_idl idl)
  get_filename_component(name ${idl} NAME_WE)
  get_filename_component(source ${idl} ABSOLUTE)
  set(header ${CMAKE_CURRENT_BINARY_DIR}/${name}.h)
  set(iids ${CMAKE_CURRENT_BINARY_DIR}/${name}_i.c)
  set(typelib ${CMAKE_CURRENT_BINARY_DIR}/${name}.tlb)
  set(runner ${PROJECT_SOURCE_DIR}/cmake/run_widl.cmake)
  foreach(step IN ITEMS "-h|${header}" "-u|${iids}" "-t|${typelib}")
    string(REPLACE "|" ";" step "${step}")
    list(GET step 0 kind)
    list(GET step 1 output)
    add_custom_command(
      OUTPUT ${output}
      COMMAND ${CMAKE_COMMAND} -D "WIDL=${KWO_WIDL}" -D "IDL_DIR=${KWO_IDL_DIR}" -D "STDOLE_DIR=${KWO_STDOLE_DIR}"
              -D "PERL=$<$<BOOL:${KWO_PERL}>:${KWO_PERL}>" -D "BITS=${KWO_BITS}" -D "KIND=${kind}" -D "OUTPUT=${output}"
              -D "IDL=${source}" -D "SOURCE_DIR=${PROJECT_SOURCE_DIR}/src"
              -D "VERSION=${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}" -P ${runner}
      DEPENDS ${source} ${ARGN} ${runner} ${PROJECT_SOURCE_DIR}/cmake/clear_typelib_time.pl
      COMMENT "IDL ${name}: ${kind}"
      VERBATIM)
  endforeach()
  set(${name}_header ${header} PARENT_SCOPE)
  set(${name}_iids ${iids} PARENT_SCOPE)
  set(${name}_typelib ${typelib} PARENT_SCOPE)
endfunction()
