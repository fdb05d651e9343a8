# What needs no window: loopers, messages, files. No Qt in here.
add_library(vesmo_platform SHARED
  ${CMAKE_CURRENT_LIST_DIR}/app/application.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/desktop_entry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/handler.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/installed_programs.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/looper.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/looper_core.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/message.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/message_flatten.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/message_reply.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/message_runner.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/messenger.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/nonblocking_thread.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/node_monitor.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/outbox.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/remote_letter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/remote_mail.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/return_addresses.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/roster.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/signature_launcher.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/signatures.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/start_program.cpp
  ${CMAKE_CURRENT_LIST_DIR}/app/token_registry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/images.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/modifiers.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/port_connection.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/port_folder.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/port_frame.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/port_line.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/port_return.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/port_service.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/ports.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/remote_port.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/remote_ports.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/semaphores.cpp
  ${CMAKE_CURRENT_LIST_DIR}/kernel/threads.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/directory.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/entry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/entry_ref.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/file.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/find_directory.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/node_info.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/path.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/resources.cpp
  ${CMAKE_CURRENT_LIST_DIR}/storage/status_of.cpp
  ${CMAKE_CURRENT_LIST_DIR}/support/data_io.cpp
  ${CMAKE_CURRENT_LIST_DIR}/support/geometry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/support/list.cpp
  ${CMAKE_CURRENT_LIST_DIR}/support/japanese_tables.cpp
  ${CMAKE_CURRENT_LIST_DIR}/support/log.cpp
  ${CMAKE_CURRENT_LIST_DIR}/support/reported_once.cpp
  ${CMAKE_CURRENT_LIST_DIR}/support/text_encoding.cpp
)
target_link_libraries(vesmo_platform PUBLIC project_options PRIVATE window_code)
# Whole files go through it.
set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/support/text_encoding.cpp
  PROPERTIES COMPILE_OPTIONS $<$<CONFIG:Release>:-O2>)
set_target_properties(vesmo_platform PROPERTIES VISIBILITY_INLINES_HIDDEN ON)
# Its own calls and tables are bound as it is linked, not by name at every start.
target_link_options(vesmo_platform PRIVATE -Wl,-Bsymbolic-functions)
