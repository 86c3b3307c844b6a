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
