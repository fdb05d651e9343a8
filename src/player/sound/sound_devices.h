#pragma once

#include <string>

/** A fingerprint of the sound servers' sockets and the sound cards: changes when one is added, removed or restarted.
    Never blocks. */
std::string sound_devices();
