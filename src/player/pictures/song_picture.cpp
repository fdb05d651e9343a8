#include "player/pictures/song_picture.h"

#include <cstdint>

namespace {

constexpr std::string_view kMark = "SNPK";
constexpr uint32_t kVersion = 1;
constexpr size_t kHead = 20;

void put(std::string* bytes, size_t number) {
  for (int shift = 0; shift < 32; shift += 8) bytes->push_back(static_cast<char>(number >> shift & 0xff));
}

uint32_t number_at(std::string_view bytes, size_t at) {
  uint32_t number = 0;
  for (size_t i = 0; i < 4; ++i) number |= static_cast<uint32_t>(static_cast<unsigned char>(bytes[at + i])) << (8 * i);
  return number;
}

} // namespace

std::string picture_bytes(const TSongPicture& picture) {
  std::string bytes(kMark);
  put(&bytes, kVersion);
  put(&bytes, picture.loudness.size());
  put(&bytes, static_cast<size_t>(picture.coverWidth));
  put(&bytes, static_cast<size_t>(picture.coverHeight));
  bytes.append(picture.loudness.begin(), picture.loudness.end());
  return bytes + picture.cover;
}

size_t picture_size(std::string_view bytes) {
  if (bytes.size() < kHead || !bytes.starts_with(kMark) || number_at(bytes, 4) != kVersion) return 0;
  const size_t parts = number_at(bytes, 8);
  const size_t width = number_at(bytes, 12);
  const size_t height = number_at(bytes, 16);
  const bool isBounded = parts <= kMostParts && width <= kLargestCover && height <= kLargestCover;
  return isBounded ? kHead + parts + 3 * width * height : 0;
}

std::optional<TSongPicture> parse_picture(std::string_view bytes) {
  if (bytes.empty() || picture_size(bytes) != bytes.size()) return std::nullopt;
  const size_t parts = number_at(bytes, 8);
  TSongPicture picture;
  picture.coverWidth = static_cast<int>(number_at(bytes, 12));
  picture.coverHeight = static_cast<int>(number_at(bytes, 16));
  bytes.remove_prefix(kHead);
  picture.loudness.assign(bytes.begin(), bytes.begin() + static_cast<long>(parts));
  picture.cover = bytes.substr(parts);
  return picture;
}
