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
  std::vector<char> letters; // one a button, 0 for none
  int32 escapeButton = -1;
  int32 defaultButton = 0;
  alert_type type = B_INFO_ALERT;
};

/** Shows the question in front of the window that `inFrontOf` finds (empty: on its own) and waits for the index of the
    button; after `limitUs` it answers with the Escape button. Any thread but the display's. */
int32 ask(const AlertText& question, const std::function<QWidget*()>& inFrontOf, bigtime_t limitUs);

/** Shows the notice in front of the window that the user works in, and goes on. Any thread. */
void post_alert(const AlertText& notice);

} // namespace display
