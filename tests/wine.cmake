# SPDX-License-Identifier: BSD-2-Clause
# One Wine server for the whole run: a program then starts in hundredths of a second. Its output is
# cut off, or the server would hold the test runner's pipe open for good. One that an interrupted run
# left behind ends first.
find_program(WINESERVER wineserver REQUIRED CMAKE_FIND_ROOT_PATH_BOTH)
add_test(NAME wine.start COMMAND sh -c
  "exec >/dev/null 2>&1 </dev/null; mkdir -p $WINEPREFIX; ${WINESERVER} -k; ${WINESERVER} -w; exec ${WINESERVER} -p")
add_test(NAME wine.boot COMMAND sh -c "exec wineboot -u >/dev/null 2>&1 </dev/null")
add_test(NAME wine.stop COMMAND ${WINESERVER} -k)
set_tests_properties(wine.start PROPERTIES FIXTURES_SETUP wine)
set_tests_properties(wine.boot PROPERTIES FIXTURES_SETUP wine DEPENDS wine.start TIMEOUT 240)
set_tests_properties(wine.stop PROPERTIES FIXTURES_CLEANUP wine)

# Everything else waits for it.
get_property(names DIRECTORY PROPERTY TESTS)
foreach(name ${names})
  if(NOT name MATCHES "^wine[.]")
    set_property(TEST ${name} APPEND PROPERTY FIXTURES_REQUIRED wine)
  endif()
endforeach()
