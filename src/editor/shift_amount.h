#pragma once

#include <string>

/** The text is a whole number of milliseconds by which tags can be shifted: blanks, a sign and digits, within
    +-2147483647. Pure: any thread. */
bool is_shift_amount(const std::string& text);
