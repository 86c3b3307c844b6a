# Runs the IDL compiler once and takes any word from it for a failure: a default value that it cannot write leaves a
# corrupt type library behind, and the exit code still says success.
execute_process(
  COMMAND "${WIDL}" -D "KWO_VERSION=${VERSION}" -I "${SOURCE_DIR}" -I "${IDL_DIR}" -L "${STDOLE_DIR}" ${KIND}
          -m${BITS} -o "${OUTPUT}" "${IDL}"
  RESULT_VARIABLE result
  OUTPUT_VARIABLE said
  ERROR_VARIABLE said)
string(STRIP "${said}" said)
if(NOT result EQUAL 0 OR NOT said STREQUAL "")
  file(REMOVE "${OUTPUT}")
  message(FATAL_ERROR "${WIDL} ${KIND} ${IDL} (exit code ${result}):\n${said}")
endif()
# Without Perl the type library keeps the time of its build.
if(KIND STREQUAL "-t" AND PERL)
  execute_process(COMMAND "${PERL}" "${CMAKE_CURRENT_LIST_DIR}/clear_typelib_time.pl" "${OUTPUT}" RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    file(REMOVE "${OUTPUT}")
    message(FATAL_ERROR "The time of the build cannot be removed from ${OUTPUT}")
  endif()
endif()
