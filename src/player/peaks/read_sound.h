#pragma once

#include "player/peaks/song_file.h"
#include "songsound/sound_bytes.h"

#include <optional>
#include <string>

/** Columns of the song from `fromMs` to `toMs` (0, INT_MAX: all of it, with the onsets). Nothing if it is no song. */
std::optional<TReadSound> read_sound(const TSongFile& file, int32 fromMs, int32 toMs);
/** Does so in a sandbox (confined/confined_work.h); serialized. */
std::optional<std::string> read_sound_confined(const TSongFile& file, int32 fromMs, int32 toMs);
