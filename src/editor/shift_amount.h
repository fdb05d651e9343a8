#pragma once

#include <string>

/** True for a whole number of milliseconds by which tags can be shifted: blanks, sign, digits, blanks; within
    +-2147483647. Thread-safe. */
bool is_shift_amount(const std::string& text);
