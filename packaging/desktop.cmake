# What makes the programs at home on a desktop: menu entries, icons, the type of lyrics files, the software centre's page,
# and the pages of the manual.
install(FILES sonivo.desktop vesmo-editor.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES icons/sonivo.svg icons/vesmo-editor.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES icons/text-x-lrc.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes)
install(FILES vesmo-editor.mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME vesmo-editor.xml)
install(FILES org.koreva.vesmo_editor.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

find_program(GZIP gzip REQUIRED)
# As the distribution keeps its texts: packed, the same bytes for the same text.
function(install_packed source name where)
  set(packed ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz)
  add_custom_command(OUTPUT ${packed} DEPENDS ${source} VERBATIM
    COMMAND sh -c "'${GZIP}' -9nc '${source}' >'${packed}'")
  string(MAKE_C_IDENTIFIER packed_${name} target)
  add_custom_target(${target} ALL DEPENDS ${packed})
  install(FILES ${packed} DESTINATION ${where})
endfunction()

install_packed(${CMAKE_CURRENT_SOURCE_DIR}/man/sonivo.1 sonivo.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_packed(${CMAKE_CURRENT_SOURCE_DIR}/man/vesmo-lrc.1 vesmo-lrc.1 ${CMAKE_INSTALL_MANDIR}/man1)
install_packed(${CMAKE_CURRENT_SOURCE_DIR}/changelog changelog ${CMAKE_INSTALL_DATADIR}/doc/vesmo-editor)
install(FILES copyright ${CMAKE_SOURCE_DIR}/docs/file-formats.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vesmo-editor)
install(FILES ${CMAKE_SOURCE_DIR}/demo/demo.opus ${CMAKE_SOURCE_DIR}/demo/demo.txt
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vesmo-editor/examples)

set(completions ${CMAKE_SOURCE_DIR}/src/tools/vesmo_lrc/completions)
install(FILES ${completions}/vesmo-lrc.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME vesmo-lrc)
install(FILES ${completions}/_vesmo-lrc DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES ${completions}/vesmo-lrc.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
