#pragma once

#include <string>

/** Describes the sound servers' sockets and the sound cards there are now: the text changes when one is added, removed
   or restarted. Waits for none of them. */
std::string sound_devices();
