#pragma once

#include "platform/interface/alert.h"

#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace display {

struct AlertText {
  std::string caption;
  std::string text;
  std::vector<std::string> buttons;
  std::vector<char> letters; // one per button, 0 for none
  int32 escapeButton = -1;
  int32 defaultButton = 0;
  alert_type type = B_INFO_ALERT;
  bool ignoresSpace = false;
};

/** Shows the question in front of the window that `inFrontOf` returns (empty: without a parent) and blocks until it is
    answered. Returns the index of the button, or of the Escape button after `limitUs`. Any thread but the display
    thread. */
int32 ask(const AlertText& question, const std::function<QWidget*()>& inFrontOf, bigtime_t limitUs);

/** Shows the notice in front of the active window and returns at once. Any thread. */
void post_alert(const AlertText& notice);

} // namespace display
