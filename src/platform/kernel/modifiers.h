#pragma once

#include "platform/support/types.h"

/** Command is the Ctrl key, Control is Alt, Option is Super. */
enum : uint32 {
  B_SHIFT_KEY = 0x01,
  B_COMMAND_KEY = 0x02,
  B_CONTROL_KEY = 0x04,
  B_CAPS_LOCK = 0x08,
  B_OPTION_KEY = 0x40,
};

/** The modifiers that are down now, as last reported. Any thread. */
uint32 modifiers();
/** Called by the display thread at each key event and once at start, and by tests. Any thread. */
void report_modifiers(uint32 down);
