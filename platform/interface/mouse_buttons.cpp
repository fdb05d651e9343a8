#include "platform/interface/interface_defs.h"

#include <atomic>

namespace {

std::atomic<uint32> buttonsDown{0};

} // namespace

uint32 mouse_buttons() {
  return buttonsDown;
}

void report_mouse_buttons(uint32 down) {
  buttonsDown = down;
}
