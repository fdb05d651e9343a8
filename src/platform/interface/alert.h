#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

enum alert_type { B_EMPTY_ALERT, B_INFO_ALERT, B_IDEA_ALERT, B_WARNING_ALERT, B_STOP_ALERT };

namespace display {
struct AlertText;
}

/** A question with up to three buttons, modal to the window whose thread calls `Go`. Made with new; `Go`, `GoFor` and
    `Post` delete it. */
class BAlert {
public:
  BAlert(const char* caption, const char* text, const char* button0, const char* button1 = nullptr,
         const char* button2 = nullptr, alert_type type = B_INFO_ALERT);
  BAlert(const BAlert&) = delete;
  BAlert& operator=(const BAlert&) = delete;

  /** Pressing the letter presses the button. 0 for none. */
  void SetShortcut(int32 button, char letter);
  /** The button that Escape and the close button press; a single button always is. Without one the alert has to be
      answered. */
  void SetEscapeButton(int32 button) { fEscapeButton = button; }
  /** The button that Return presses; by default the last one. */
  void SetDefaultButton(int32 button) { fDefaultButton = button; }
  /** The space bar presses no button before the user has moved the focus by a key: for a question that comes
     unexpectedly to a user who is pressing it. */
  void IgnoreSpace() { fIgnoresSpace = true; }

  /** Shows the alert and blocks until it is answered; not on the display thread. Returns the index of the button, from
      left to right, or that of the Escape button (-1 without one) when the display has ended. */
  int32 Go() { return GoFor(B_INFINITE_TIMEOUT); }
  /** `Go` with a time-out, after which it returns the Escape button; the alert stays on the screen until closed. */
  int32 GoFor(bigtime_t limitUs);
  /** Shows the alert in front of the active window and returns at once; the answer is dropped. */
  void Post();

private:
  ~BAlert() = default;
  display::AlertText Content() const;

  std::string fCaption;
  std::string fText;
  std::vector<std::string> fButtons;
  std::vector<char> fLetters;
  int32 fEscapeButton = -1;
  int32 fDefaultButton;
  alert_type fType;
  bool fIgnoresSpace = false;
};
