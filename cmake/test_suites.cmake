# add_suites(PROGRAM FILE...): a test for CTest for each suite that the files of a test program define. A suite is one
# process, for starting a process takes longer than most tests; suites run in parallel. The names are read from the
# sources: running each program after it is linked, to ask for them, takes longer than building it.
# Uses PROGRAM_TIMEOUT of the calling function, in seconds, for each suite.
# The toolkit is not instrumented: its own locks are invisible to the thread checker, ours are not.
function(add_suites program)
  set(suites "")
  foreach(file ${ARGN})
    cmake_path(ABSOLUTE_PATH file)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    file(STRINGS ${file} heads REGEX "^TEST(_F|_P)?\\(")
    list(TRANSFORM heads REPLACE "^TEST[_FP]*\\( *([A-Za-z0-9_]+).*" "\\1")
    list(APPEND suites ${heads})
  endforeach()
  list(REMOVE_DUPLICATES suites)
  foreach(suite ${suites})
    add_test(NAME ${program}.${suite} COMMAND ${program} --gtest_brief=1 --gtest_filter=${suite}.*:*/${suite}.*)
    set_tests_properties(${program}.${suite} PROPERTIES TIMEOUT ${PROGRAM_TIMEOUT} ENVIRONMENT
      "TSAN_OPTIONS=ignore_noninstrumented_modules=1;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/player/foreign_leaks.txt")
  endforeach()
endfunction()
