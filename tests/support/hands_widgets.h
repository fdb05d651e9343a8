#pragma once

#include "platform/display/display_thread.h"
#include "platform/interface/window.h"
#include "platform/interface/window_peer.h"

#include <QWidget>

#include <string>

/** Shared by the implementation: from a window to its widgets. */
namespace hands {

inline QString q(const std::string& text) {
  return QString::fromStdString(text);
}

/** Runs on the display thread with the window's widget. */
template <class Act>
auto with_widget(BWindow& window, Act act) {
  return display::call([find = window.Peer()->Finder(), act] {
    if constexpr (!std::is_void_v<decltype(act(find()))>)
      return act(find());
    else
      return act(find()), true;
  });
}

inline QWidget* control_of(QWidget* window, const std::string& view) {
  return window->findChild<QWidget*>(q(view));
}

/** Sends a key to the focused widget. */
void send_key(QWidget* window, const std::string& key);
QKeyCombination combination(const std::string& key);

} // namespace hands
