#pragma once

#include "platform/support/types.h"

#include <initializer_list>
#include <string>

namespace koreva {

enum TAlertType { kInfoAlert, kQuestionAlert, kWarningAlert, kStopAlert };

/** One button of a question: its text, and the letter that presses it where labels show letters. */
struct TAlertButton {
  std::string label;
  char letter = 0;
  /** What Escape and the close box mean. */
  bool isHarmless = false;
};

/** Asks, and waits for the answer on the calling thread; the other windows stay alive. Buttons stand left to right, at
    most three. Returns the index of the pressed one. `format` is how labels show their letters, empty for not at all:
    the letters then press nothing. */
long show_alert(const std::string& text, const std::string& caption, std::initializer_list<TAlertButton> buttons,
                const std::string& format, TAlertType type = kQuestionAlert);

/** Tells, with one button. */
void show_msg(const std::string& text, const std::string& caption, const TAlertButton& button,
              const std::string& format, TAlertType type = kWarningAlert);

/** Tells, and goes on after that time at the latest: where nobody may be there to read it. */
void show_msg_for(bigtime_t limitUs, const std::string& text, const std::string& caption, const TAlertButton& button,
                  const std::string& format, TAlertType type = kWarningAlert);

/** Tells without waiting until it is read: for threads on which others wait. */
void post_msg(const std::string& text, const std::string& caption, const TAlertButton& button,
              const std::string& format, TAlertType type = kWarningAlert);

} // namespace koreva
