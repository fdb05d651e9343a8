#pragma once

#include "platform/app/letter_offer.h"

#include <string>
#include <vector>

/** Which looper of this process answers to which signature; other processes may send it the offered codes. Any
    thread. */
status_t add_signature(const std::string& signature, const LetterOffer& offer);
status_t remove_signature(const std::string& signature);
/** An invalid messenger when nobody living bears the signature. */
BMessenger find_signature(const std::string& signature);
/** What other processes may send to it. */
LetterOffer find_offer(const std::string& signature);
/** Those of this process. */
std::vector<std::string> known_signatures();
