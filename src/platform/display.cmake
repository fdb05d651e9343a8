find_package(Qt6 REQUIRED COMPONENTS Widgets)
find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig)

add_library(vesmo_display SHARED
  ${CMAKE_CURRENT_LIST_DIR}/display/accelerators.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/accessible_role.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/alert_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/button_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/check_box_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/color_button.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/color_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/convert.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/display.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/display_language.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/display_thread.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/drawing.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/field_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/font_metrics.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/image_icon.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/image_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/input_watch.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/key_bytes.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/list_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/menu_field_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/menu_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/menu_widgets.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/native_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/panel_dialog.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/panel_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/picture_painter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/quick_style.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/plain_widget.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/row_list.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/row_model.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/screen.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/string_label.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/string_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/tab_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/text_area.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/text_bytes.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/text_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/text_runs.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/tool_button_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/view_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/widget_guard.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/window_guard.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/window_mover.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/window_peer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/display/workspaces.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/alert.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/bitmap.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/button.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/check_box.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/color_control.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/control.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/file_panel.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/follow.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/font.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/font_families.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/image_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/list_item.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/list_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/list_view_rows.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/list_view_selection.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/menu.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/menu_bar.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/menu_field.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/menu_item.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/picture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/screen.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/scroll_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/string_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/tab_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/text_control.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/text_view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/view.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/view_drawing.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/view_frame.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/window.cpp
  ${CMAKE_CURRENT_LIST_DIR}/interface/window_messages.cpp
)
set_target_properties(vesmo_display PROPERTIES VISIBILITY_INLINES_HIDDEN ON)
target_link_options(vesmo_display PRIVATE -Wl,-Bsymbolic-functions)
target_link_libraries(vesmo_display PUBLIC vesmo_platform PRIVATE window_code Qt6::Widgets PkgConfig::XCB PkgConfig::FONTCONFIG)
target_precompile_headers(vesmo_display PRIVATE <QtWidgets>)
