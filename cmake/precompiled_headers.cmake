# Headers that many folders include, compiled once for each set of options: standard_headers, standard_headers_small
# (optimized for size in the release build), standard_headers_hidden (that, for plug-in images), qt_headers_small, and
# test_headers. They only save time: every file includes what it uses (tests: tests/support/testing.h), and
# scripts/run_tidy.sh builds without them.
# They are compiled without the compiler cache, which has returned a header that g++ then rejected.
function(add_precompiled name)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/${name}.cpp)
  set_target_properties(${name} PROPERTIES CXX_COMPILER_LAUNCHER "" VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PRIVATE project_options)
  target_precompile_headers(${name} PRIVATE <algorithm> <chrono> <condition_variable> <cstring> <functional> <list> <map>
    <memory> <mutex> <optional> <string> <string_view> <thread> <unordered_map> <utility> <vector> ${ARGN})
endfunction()

find_package(Qt6 REQUIRED COMPONENTS Widgets)
add_precompiled(standard_headers)
add_precompiled(standard_headers_small)
add_precompiled(standard_headers_hidden)
set_target_properties(standard_headers_hidden PROPERTIES CXX_VISIBILITY_PRESET hidden)
add_precompiled(qt_headers_small <QtWidgets>)
target_link_libraries(qt_headers_small PRIVATE Qt6::Widgets)
foreach(small standard_headers_small standard_headers_hidden qt_headers_small)
  target_compile_options(${small} PRIVATE $<$<CONFIG:Release>:-Os>)
endforeach()

if(VESMO_TESTS)
  find_package(GTest REQUIRED)
  add_precompiled(test_headers <gmock/gmock.h> <gtest/gtest.h> <atomic> <filesystem> <fstream> <future> <random> <set> <sstream>)
  target_link_libraries(test_headers PRIVATE GTest::gmock)
endif()
