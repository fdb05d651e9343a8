#pragma once

#include <string>
#include <vector>

/** Decodes the whole song to mono at TSinkRecorder::kRate. Throws std::runtime_error if it cannot be played. */
std::vector<float> decode_song(const std::string& path);
