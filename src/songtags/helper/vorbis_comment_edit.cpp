#include "songtags/helper/vorbis_comment_edit.h"

#include "songtags/helper/byte_order.h"

#include <strings.h>

namespace {

std::string with_size(std::string_view text) {
  return little_endian_bytes(text.size(), 4).append(text);
}

/** Splits a text with its size in front off the bytes; nothing if they are too short. */
std::optional<std::string_view> take_text(std::string_view* bytes) {
  if (bytes->size() < 4) return {};
  const uint64_t size = little_endian(bytes->substr(0, 4));
  if (size > bytes->size() - 4) return {};
  const std::string_view text = bytes->substr(4, size);
  bytes->remove_prefix(4 + size);
  return text;
}

/** Field names are ASCII, in either case. */
bool is_lyrics_field(std::string_view field) {
  const std::string name(field.substr(0, field.find('=')));
  return strcasecmp(name.c_str(), place_name(TLyricsPlace::kLyrics)) == 0 ||
         strcasecmp(name.c_str(), place_name(TLyricsPlace::kUnsyncedLyrics)) == 0;
}

} // namespace

std::optional<std::string> edited_vorbis_comment(std::string_view comment, const std::vector<TEmbeddedLyrics>& lyrics) {
  const auto vendor = take_text(&comment);
  if (!vendor || comment.size() < 4) return {};
  uint64_t count = little_endian(comment.substr(0, 4));
  comment.remove_prefix(4);
  std::string fields;
  size_t kept = lyrics.size();
  for (; count > 0; --count) {
    const auto field = take_text(&comment);
    if (!field) return {};
    if (is_lyrics_field(*field)) continue;
    fields += with_size(*field);
    ++kept;
  }
  for (const TEmbeddedLyrics& one : lyrics) fields += with_size(std::string(place_name(one.place)) + "=" + one.text);
  return with_size(*vendor) + little_endian_bytes(kept, 4) + fields + std::string(comment);
}

std::string empty_vorbis_comment() {
  return with_size("Vesmo Editor") + little_endian_bytes(0, 4);
}
