# Makes NAME.X.manifest of an IDL file whose library is NAME, in the current binary directory, sets its path in
# `variable` in the caller's scope and adds the target of the same name that makes it.
function(kwo_make_manifest variable idl name)
  get_filename_component(source ${idl} ABSOLUTE)
  set(manifest ${CMAKE_CURRENT_BINARY_DIR}/${name}.X.manifest)
  set(maker ${PROJECT_SOURCE_DIR}/cmake/make_manifest.cmake)
  add_custom_command(
    OUTPUT ${manifest}
    COMMAND ${CMAKE_COMMAND} -D "IDL=${source}" -D "BITS=${KWO_BITS}" -D "VERSION=${PROJECT_VERSION}.0"
            -D "OUTPUT=${manifest}" -P ${maker}
    DEPENDS ${source} ${maker}
    COMMENT "Manifest ${name}.X"
    VERBATIM)
  add_custom_target(${variable} ALL DEPENDS ${manifest})
  set(${variable} ${manifest} PARENT_SCOPE)
endfunction()
