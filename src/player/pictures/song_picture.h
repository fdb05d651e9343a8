#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** What is shown of a song: its waveform and its cover. */
struct TSongPicture {
  /** Per part of the song, 0 to 255, the loudest part 255; empty if there is no sound. */
  std::vector<unsigned char> loudness;
  int coverWidth = 0;
  int coverHeight = 0;
  /** RGB, 8 bits each, row by row. */
  std::string cover;
};

/** Serialized for the pipe and the cache. Numbers are 32-bit little-endian: "SNPK", version 1, the number of parts, the
    cover's width and height; then the parts, then the cover. */
std::string picture_bytes(const TSongPicture& picture);
/** Empty unless the bytes are exactly of that format and within its limits. */
std::optional<TSongPicture> parse_picture(std::string_view bytes);

/** Size of the serialized picture that the bytes start with; 0 if they do not start with one. */
size_t picture_size(std::string_view bytes);

constexpr size_t kMostParts = 4000;
constexpr int kLargestCover = 192;
constexpr size_t kLargestPicture = 20 + kMostParts + size_t{3} * kLargestCover * kLargestCover;
