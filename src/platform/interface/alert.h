#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

enum alert_type { B_EMPTY_ALERT, B_INFO_ALERT, B_IDEA_ALERT, B_WARNING_ALERT, B_STOP_ALERT };

namespace display {
struct AlertText;
}

/** A question with up to three buttons, in front of the window whose thread asks it. `Go` and `Post` delete it. */
class BAlert {
public:
  BAlert(const char* caption, const char* text, const char* button0, const char* button1 = nullptr,
         const char* button2 = nullptr, alert_type type = B_INFO_ALERT);
  BAlert(const BAlert&) = delete;
  BAlert& operator=(const BAlert&) = delete;

  /** Pressing the letter presses the button. 0 for none. */
  void SetShortcut(int32 button, char letter);
  /** The button that Escape and the close button mean; without one, the alert has no close and Escape does nothing,
      except that the only button of an alert always can be so pressed. */
  void SetEscapeButton(int32 button) { fEscapeButton = button; }
  /** The button that Return means; the last one when not set. */
  void SetDefaultButton(int32 button) { fDefaultButton = button; }

  /** Shows the alert and waits for the answer on the calling thread, which must not be the display's. Returns the index
     of the button, from left to right; the Escape button's (-1 without one) when there is no display or it ends
     meanwhile. */
  int32 Go() { return GoFor(B_INFINITE_TIMEOUT); }
  /** The same, but after that time the answer is the Escape button, and the alert stays until it is closed. */
  int32 GoFor(bigtime_t limitUs);
  /** Shows the alert in front of the window that the user works in, and goes on at once; nobody hears which button
      closes it. Deletes the alert as well. */
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
};
