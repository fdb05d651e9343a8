# Headers that many folders include, compiled once for each set of options: standard_headers, standard_headers_small
# (optimized for size in the release build) and qt_headers_small. They only save time: every file includes what it uses,
# and scripts/run_tidy.sh builds without them.
function(add_precompiled name)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE project_options)
  target_precompile_headers(${name} PRIVATE ${ARGN})
  if(name MATCHES "_small$")
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-Os>)
  endif()
endfunction()
set(standard_headers <algorithm> <chrono> <condition_variable> <cstring> <functional> <list> <map> <memory> <mutex>
  <optional> <string> <string_view> <thread> <unordered_map> <utility> <vector>)
add_precompiled(standard_headers ${standard_headers})
add_precompiled(standard_headers_small ${standard_headers})
find_package(Qt6 REQUIRED COMPONENTS Widgets)
add_precompiled(qt_headers_small ${standard_headers} <QtWidgets>)
target_link_libraries(qt_headers_small PRIVATE Qt6::Widgets)
