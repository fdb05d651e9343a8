#pragma once

#include "platform/app/messenger.h"

/** The loopers of this process that other processes may send answers to. Each is known outside by a random number that
    cannot be guessed, valid while the looper lives. Thread-safe. */
namespace return_addresses {

uint64 number_of(const BMessenger& target);
/** Invalid for an unknown number, or when the looper is gone. */
BMessenger find(uint64 number);

} // namespace return_addresses
