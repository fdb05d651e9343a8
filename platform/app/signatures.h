#pragma once

#include "platform/app/messenger.h"

#include <string>
#include <vector>

/** Which looper of this process answers to which signature; other processes reach it too. Any thread. */
status_t add_signature(const std::string& signature, const BMessenger& target);
status_t remove_signature(const std::string& signature);
/** An invalid messenger when nobody living bears the signature. */
BMessenger find_signature(const std::string& signature);
/** Those of this process. */
std::vector<std::string> known_signatures();
