# The image of a plug-in that the player loads: add_plugin_image(NAME ENTRY LIBRARY). NewPlugin is its only export; the
# names of the static libraries stay inside.
function(add_plugin_image name entry library)
  set(exports ${CMAKE_SOURCE_DIR}/src/plugin/exports.map)
  add_library(${name} MODULE ${entry})
  set_target_properties(${name} PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/plugins LINK_DEPENDS ${exports})
  target_link_libraries(${name} PRIVATE ${library})
  target_link_options(${name} PRIVATE -Wl,--version-script=${exports})
endfunction()
