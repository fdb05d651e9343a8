#include "platform/display/workspaces.h"

#include <QGuiApplication>
#include <QWidget>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace display {

namespace {

constexpr uint32 kAll = UINT32_MAX;

#if QT_CONFIG(xcb)
template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply) {
  return {reply, &std::free};
}

xcb_atom_t desktop_property(xcb_connection_t* connection) {
  constexpr std::string_view kName = "_NET_WM_DESKTOP";
  const auto atom = owned(
      xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, uint16_t{kName.size()}, kName.data()), nullptr));
  return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/** From the window property set by the window manager: the number of one workspace, or all of them. */
uint32 x11_workspaces(xcb_connection_t* connection, xcb_window_t window) {
  static const xcb_atom_t property = desktop_property(connection);
  const auto written = owned(xcb_get_property_reply(
      connection, xcb_get_property(connection, 0, window, property, XCB_ATOM_CARDINAL, 0, 1), nullptr));
  uint32 number = kAll;
  if (written && xcb_get_property_value_length(written.get()) == int{sizeof number})
    std::memcpy(&number, xcb_get_property_value(written.get()), sizeof number);
  return number == kAll ? kAll : uint32{1} << number % 32;
}
#endif

} // namespace

uint32 workspaces_of(const QWidget& window) {
#if QT_CONFIG(xcb)
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  // The offscreen platform has this interface, but no connection.
  if (x11 && x11->connection() && window.internalWinId())
    return x11_workspaces(x11->connection(), static_cast<xcb_window_t>(window.internalWinId()));
#endif
  return kAll;
}

} // namespace display
