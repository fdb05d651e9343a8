# The programs, their libraries, and the plug-ins with what lies beside them.
function(install_linked target where rpath)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH ${rpath})
  install(TARGETS ${target} RUNTIME DESTINATION ${where} LIBRARY DESTINATION ${where})
endfunction()

foreach(target vesmo_platform vesmo_display sonivo sonivo-peaks vesmo_lrc vesmo-songtags)
  install_linked(${target} ${home} "$ORIGIN")
endforeach()
install_linked(gen_VesmoE ${home}/plugins "$ORIGIN/..")
install_linked(gen_VesmoD ${home}/plugins "$ORIGIN/..")

install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/language/texts/ DESTINATION ${home}/plugins/Language)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/editor/help/ DESTINATION ${home}/plugins)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/src/window/icons/ DESTINATION ${home}/plugins/pictures)

foreach(command sonivo vesmo-lrc)
  file(RELATIVE_PATH from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${home}/${command})
  file(CREATE_LINK ${from_bin} ${CMAKE_CURRENT_BINARY_DIR}/${command} SYMBOLIC)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${command} DESTINATION ${CMAKE_INSTALL_BINDIR})
endforeach()
