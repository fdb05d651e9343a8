#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/** The atom `moov` of an MP4 file at `offset`, header included, with its lyrics replaced; all other atoms stay byte for
    byte, except that the chunk offsets follow sound data that moves because it is after the atom. Nothing if it is
    damaged or in a form in which that cannot be done. Pure: any thread. */
std::optional<std::string> edited_moov(std::string_view moov, uint64_t offset, const std::string& lyrics);
