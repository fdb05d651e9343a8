#pragma once

#include <string>
#include <vector>

/** The whole song as one channel at TSinkRecorder::kRate. Throws std::runtime_error if it cannot be played. */
std::vector<float> decode_song(const std::string& path);
