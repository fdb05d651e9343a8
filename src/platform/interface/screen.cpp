#include "platform/interface/screen.h"

#include "platform/interface/screen_peer.h"

BRect screen_frame(BPoint where) {
  return display::usable_screen(where);
}
