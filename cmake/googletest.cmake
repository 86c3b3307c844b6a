# GoogleTest from its sources (Debian's googletest package), because the same tests are also built for Windows.
set(KWO_GOOGLETEST_DIR /usr/src/googletest CACHE PATH "Where GoogleTest's sources are")
if(NOT EXISTS ${KWO_GOOGLETEST_DIR}/CMakeLists.txt)
  message(FATAL_ERROR "GoogleTest's sources are not in ${KWO_GOOGLETEST_DIR}: apt-get install googletest, "
                      "or set KWO_GOOGLETEST_DIR")
endif()
set(INSTALL_GTEST OFF)
set(BUILD_GMOCK OFF)
set(gtest_force_shared_crt ON)
add_subdirectory(${KWO_GOOGLETEST_DIR} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
