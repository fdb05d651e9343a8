#pragma once

#include "platform/app/messenger.h"

/** The loopers of this process that have asked another process with themselves as the target of the answer. Other
    processes know each by a random number that cannot be guessed; it stays good while the looper lives. Any thread. */
namespace return_addresses {

uint64 number_of(const BMessenger& target);
/** Not valid when the number was never given out, or the looper has gone. */
BMessenger find(uint64 number);

} // namespace return_addresses
