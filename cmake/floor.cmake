# A folder of the program is a library, and a library is a floor:
#   add_floor(NAME [OBJECT] [HIDDEN] [SMALL] [QT] SOURCES file... [LINKS floor...] [LIBRARIES target...])
# LINKS names the floors below; each must have been added already, so the folders cannot form a cycle. What a folder's
# files include is checked against its LINKS by scripts/check_floors.py.
#   OBJECT  part of one of the two shared libraries of the platform
#   HIDDEN  part of a plug-in image: its names stay inside
#   SMALL   optimized for size: what waits for people and messages is sooner read, mapped and bound than fast code runs
#   QT      includes Qt's widgets, precompiled; all others get the standard headers precompiled
function(add_floor name)
  cmake_parse_arguments(PARSE_ARGV 1 FLOOR "OBJECT;HIDDEN;SMALL;QT" "" "SOURCES;LINKS;LIBRARIES")
  foreach(lower ${FLOOR_LINKS})
    if(NOT TARGET ${lower})
      message(FATAL_ERROR "${name} links ${lower}, which is not below it")
    endif()
  endforeach()
  if(FLOOR_OBJECT)
    add_library(${name} OBJECT ${FLOOR_SOURCES})
  else()
    add_library(${name} STATIC ${FLOOR_SOURCES})
  endif()
  set_target_properties(${name} PROPERTIES VISIBILITY_INLINES_HIDDEN ON)
  if(FLOOR_HIDDEN)
    set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden)
  endif()
  if(FLOOR_SMALL)
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-Os>)
  endif()
  if(FLOOR_QT)
    target_precompile_headers(${name} REUSE_FROM qt_headers_small)
  elseif(FLOOR_HIDDEN)
    target_precompile_headers(${name} REUSE_FROM standard_headers_hidden)
  elseif(FLOOR_SMALL)
    target_precompile_headers(${name} REUSE_FROM standard_headers_small)
  else()
    target_precompile_headers(${name} REUSE_FROM standard_headers)
  endif()
  target_link_libraries(${name} PUBLIC project_options ${FLOOR_LINKS} ${FLOOR_LIBRARIES})
endfunction()
