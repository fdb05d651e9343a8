#pragma once

#include "platform/support/types.h"

#include <string>

class BWindow;

namespace display {

/** Codes of the messages to a window that shows a picture or a text from a distance. */
struct ViewerCodes {
  uint32 fullScreen; // rect "frame": to return to; absent: full screen has ended
  uint32 zoom;       // int32 "By": steps; 0: normal size
  uint32 menu;       // the context menu is wanted: the window answers by show_viewer_menu
};

struct ViewerMenuTexts {
  std::string fullScreen;
  std::string larger;
  std::string smaller;
  std::string normalSize;
};

/** Lets the user switch the window to full screen (F11, double click; Escape ends it) and zoom (Ctrl+wheel, Ctrl++,
    Ctrl+-, Ctrl+0). Once for a window, on its thread. */
void add_viewer_input(BWindow* window, const ViewerCodes& codes);
/** Opens the context menu at the pointer. */
void show_viewer_menu(BWindow* window, const ViewerMenuTexts& texts);

} // namespace display
