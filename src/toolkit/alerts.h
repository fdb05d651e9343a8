#pragma once

#include "platform/support/types.h"

#include <initializer_list>
#include <string>

namespace koreva {

enum TAlertType { kInfoAlert, kQuestionAlert, kWarningAlert, kStopAlert };

/** One button of a question: its text, and its accelerator letter where labels show letters. */
struct TAlertButton {
  std::string label;
  char letter = 0;
  /** Pressed by Escape and the close button. */
  bool isHarmless = false;
  /** Pressed by Return, instead of the last button. */
  bool isDefault = false;
  /** The space bar presses no button of the question before the user has moved the focus. */
  bool ignoresSpace = false;
};

/** Asks a question with at most three buttons, from left to right, and blocks the calling thread until it is answered;
    other windows stay usable. Returns the index of the pressed button. `format` is how labels show their letters; if
    empty, they show none and the letters have no effect. */
long show_alert(const std::string& text, const std::string& caption, std::initializer_list<TAlertButton> buttons,
                const std::string& format, TAlertType type = kQuestionAlert);

/** Shows a message with one button and blocks until it is closed. */
void show_msg(const std::string& text, const std::string& caption, const TAlertButton& button,
              const std::string& format, TAlertType type = kWarningAlert);

/** show_msg with a time-out, for when the user may be away. */
void show_msg_for(bigtime_t limitUs, const std::string& text, const std::string& caption, const TAlertButton& button,
                  const std::string& format, TAlertType type = kWarningAlert);

/** Shows a message and returns at once, for threads that must not block. */
void post_msg(const std::string& text, const std::string& caption, const TAlertButton& button,
              const std::string& format, TAlertType type = kWarningAlert);

} // namespace koreva
