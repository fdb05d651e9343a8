# Drawings are kept as SVG and compiled in as what the display draws: read_drawing(FILE VARIABLE) puts that text there.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
function(read_drawing file variable)
  set(translator ${CMAKE_SOURCE_DIR}/scripts/translate_drawing.py)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file} ${translator})
  execute_process(COMMAND ${Python3_EXECUTABLE} ${translator} ${file} OUTPUT_VARIABLE drawing COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} "${drawing}" PARENT_SCOPE)
endfunction()
