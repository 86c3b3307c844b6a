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
# Compiling it takes longer than it ever runs.
foreach(target IN ITEMS gtest gtest_main)
  target_compile_options(${target} PRIVATE -O0 -g0)
endforeach()
# Its own locks on Windows need no thread library, but for one class that is ours to provide there.
if(WIN32)
  # In front of GoogleTest's own folders, where that file is empty.
  target_compile_options(gtest PUBLIC "SHELL:-iquote \"${CMAKE_CURRENT_LIST_DIR}/googletest\"")
endif()
