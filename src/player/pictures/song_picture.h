#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** What can be seen of a song: how loud each part of it is, and its cover. */
struct TSongPicture {
  /** 0 to 255, the loudest part 255; empty when there was no sound. */
  std::vector<unsigned char> loudness;
  int coverWidth = 0;
  int coverHeight = 0;
  /** Red, green, blue for each point, line by line. */
  std::string cover;
};

/** The form that goes through the pipe and lies in the cache, numbers as 4 bytes, least significant first: "SNPK",
    version 1, the count of parts, the cover's width and height; then the parts, then the cover. */
std::string picture_bytes(const TSongPicture& picture);
/** Nothing, when the bytes are not exactly of that form and within its bounds. */
std::optional<TSongPicture> parse_picture(std::string_view bytes);

/** How many bytes the picture has that these begin with; 0 when they are no beginning of one. */
size_t picture_size(std::string_view bytes);

constexpr size_t kMostParts = 4000;
constexpr int kLargestCover = 192;
constexpr size_t kLargestPicture = 20 + kMostParts + size_t{3} * kLargestCover * kLargestCover;
