#include "platform/interface/screen.h"

#include "platform/display/screen.h"

BRect screen_frame(BPoint where) {
  return display::usable_screen(where);
}
