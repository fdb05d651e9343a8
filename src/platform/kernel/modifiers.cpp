#include "platform/kernel/modifiers.h"

#include <atomic>

namespace {
std::atomic<uint32> gModifiersDown{0};
}

uint32 modifiers() {
  return gModifiersDown;
}
void report_modifiers(uint32 down) {
  gModifiersDown = down;
}
