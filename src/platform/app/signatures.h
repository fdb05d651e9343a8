#pragma once

#include "platform/app/letter_offer.h"

#include <string>
#include <vector>

/** The signatures of this process: the looper of each, and the codes that other processes may send to it. Adding
    one fails with B_NAME_IN_USE, which is logged, while a living looper owns it. Thread-safe. */
status_t add_signature(const std::string& signature, const LetterOffer& offer);
status_t remove_signature(const std::string& signature);
/** Invalid when no living looper owns the signature. */
BMessenger find_signature(const std::string& signature);
/** Empty when no living looper owns the signature. */
LetterOffer find_offer(const std::string& signature);
std::vector<std::string> known_signatures();
