#include "songtags/helper/id3_edit.h"

#include "songtags/helper/byte_order.h"
#include "songtags/song_text.h"

#include <tbytevector.h>
#include <tstring.h>

#include <algorithm>
#include <cctype>

namespace {

constexpr size_t kTagHeaderBytes = 10;
constexpr size_t kPaddingBytes = 1024;
/** More padding than this is not kept for lyrics that became shorter. */
constexpr size_t kMostPaddingBytes = 64 << 10;
constexpr size_t kMostTagBytes = (size_t{1} << 28) - 1;
constexpr char kUnsynchronisation = '\x80';
constexpr char kExtendedHeader = '\x40';
constexpr char kFrameUnsynchronisation = '\x02';
constexpr char kFrameDataLength = '\x01';
/** Any of these changes where the fields of a frame begin: compression, encryption, grouping. */
constexpr char kFrameChangesV3 = '\xE0';
constexpr char kFrameChangesV4 = '\x4C';

/** What differs between ID3v2.2, 2.3 and 2.4. */
struct TVersion {
  int major;
  size_t idBytes;
  size_t headerBytes;
  const char* uslt;
  const char* sylt;
  TagLib::String::Type encoding; // newer ones are not known to older versions
};
constexpr TVersion kVersions[] = {{2, 3, 6, "ULT", "SLT", TagLib::String::UTF16},
                                  {3, 4, 10, "USLT", "SYLT", TagLib::String::UTF16},
                                  {4, 4, 10, "USLT", "SYLT", TagLib::String::UTF8}};

struct TFrame {
  std::string_view id;
  std::string_view bytes;  // header included
  std::string_view fields; // empty if they are compressed or encrypted
};

struct TTag {
  TVersion version;
  bool isUnsynchronised; // every frame of 2.4; for older versions it is undone when the tag is read
  std::string body;      // the frames, then zeros
};

std::string resynchronised(std::string_view bytes) {
  std::string plain;
  for (size_t i = 0; i < bytes.size(); ++i) {
    plain.push_back(bytes[i]);
    if (bytes[i] == '\xFF' && i + 1 < bytes.size() && bytes[i + 1] == '\0') ++i;
  }
  return plain;
}

/** A zero after each FF that could be mistaken for the start of a sound frame. */
std::string unsynchronised(std::string_view bytes) {
  std::string safe;
  for (size_t i = 0; i < bytes.size(); ++i) {
    safe.push_back(bytes[i]);
    const bool isLast = i + 1 == bytes.size();
    if (bytes[i] == '\xFF' && (isLast || bytes[i + 1] == '\0' || (bytes[i + 1] & 0xE0) == 0xE0)) safe.push_back('\0');
  }
  return safe;
}

/** Size of the extended header at the start of the body; nothing if it is damaged. */
std::optional<size_t> extended_header_size(std::string_view body, int major) {
  if (body.size() < 4) return {};
  const size_t size = major == 3 ? 4 + big_endian(body.substr(0, 4)) : synchsafe(body.substr(0, 4));
  return size >= 6 && size <= body.size() ? std::optional(size) : std::nullopt;
}

std::optional<TTag> parse_tag(std::string_view tag) {
  if (tag.empty()) return TTag{kVersions[1], false, {}};
  if (tag.size() < kTagHeaderBytes || !tag.starts_with("ID3") || tag[3] < 2 || tag[3] > 4) return {};
  const TVersion& version = kVersions[tag[3] - 2];
  const char flags = tag[5];
  const size_t size = synchsafe(tag.substr(6, 4));
  if (size > tag.size() - kTagHeaderBytes) return {};
  TTag parsed{version, (flags & kUnsynchronisation) != 0, std::string(tag.substr(kTagHeaderBytes, size))};
  if (parsed.isUnsynchronised && version.major < 4) {
    parsed.body = resynchronised(parsed.body);
    parsed.isUnsynchronised = false;
  }
  if ((flags & kExtendedHeader) == 0) return parsed;
  if (version.major == 2) return {}; // compressed, in a way that was never defined
  const auto extended = extended_header_size(parsed.body, version.major);
  if (!extended) return {};
  parsed.body.erase(0, *extended);
  return parsed;
}

std::string_view fields_of(std::string_view frame, const TVersion& version) {
  std::string_view fields = frame.substr(version.headerBytes);
  if (version.major == 2) return fields;
  const char flags = frame[9];
  if ((flags & (version.major == 3 ? kFrameChangesV3 : kFrameChangesV4)) != 0) return {};
  const bool hasLength = version.major == 4 && (flags & kFrameDataLength) != 0;
  return fields.substr(hasLength ? std::min<size_t>(4, fields.size()) : 0);
}

/** Nothing if a frame does not fit into the tag, as with the sizes that some programs write into 2.4 tags. */
std::optional<std::vector<TFrame>> frames_of(const TTag& tag) {
  std::vector<TFrame> frames;
  const TVersion& version = tag.version;
  std::string_view rest = tag.body;
  while (rest.size() >= version.headerBytes && rest.front() != '\0') {
    const std::string_view id = rest.substr(0, version.idBytes);
    const auto isNameByte = [](unsigned char byte) { return std::isupper(byte) || std::isdigit(byte); };
    if (!std::all_of(id.begin(), id.end(), isNameByte)) return {};
    const std::string_view digits = rest.substr(version.idBytes, version.major == 2 ? 3 : 4);
    const uint64_t size = version.headerBytes + (version.major == 4 ? synchsafe(digits) : big_endian(digits));
    if (size > rest.size()) return {};
    const std::string_view bytes = rest.substr(0, size);
    frames.push_back({id, bytes, fields_of(bytes, version)});
    rest.remove_prefix(size);
  }
  return rest.find_first_not_of('\0') == std::string_view::npos ? std::optional(frames) : std::nullopt;
}

std::string text_bytes(const std::string& text, TagLib::String::Type encoding) {
  const TagLib::ByteVector bytes = TagLib::String(text, TagLib::String::UTF8).data(encoding);
  const size_t end = encoding == TagLib::String::UTF8 ? 1 : 2;
  return std::string(bytes.data(), bytes.size()) + std::string(end, '\0');
}

/** Language and description of the frame that is replaced, which tell several lyrics of a song apart. */
struct TLyricsName {
  std::string language = "XXX"; // unknown
  std::string description;      // UTF-8
};

TLyricsName name_of(std::string_view fields) {
  TLyricsName name;
  if (fields.size() < 4 || fields[0] < 0 || fields[0] > 3) return name;
  const std::string_view language = fields.substr(1, 3);
  if (std::all_of(language.begin(), language.end(), [](unsigned char byte) { return std::isalpha(byte) != 0; }))
    name.language = language;
  const auto encoding = static_cast<TagLib::String::Type>(fields[0]);
  const size_t width = encoding == TagLib::String::UTF16 || encoding == TagLib::String::UTF16BE ? 2 : 1;
  const std::string_view rest = fields.substr(4);
  size_t end = 0;
  while (end + width <= rest.size() && rest.substr(end, width).find_first_not_of('\0') != std::string_view::npos)
    end += width;
  if (end + width > rest.size()) return name;
  const TagLib::ByteVector bytes(rest.data(), static_cast<unsigned>(end));
  name.description = normalized_text(TagLib::String(bytes, encoding).to8Bit(true));
  return name;
}

std::string frame_bytes(const TTag& tag, const char* id, const std::string& plainFields) {
  const std::string fields = tag.isUnsynchronised ? unsynchronised(plainFields) : plainFields;
  if (tag.version.major == 2) return id + big_endian_bytes(fields.size(), 3) + fields;
  const bool isV4 = tag.version.major == 4;
  const char flag = tag.isUnsynchronised ? kFrameUnsynchronisation : '\0';
  const std::string size =
      isV4 ? synchsafe_bytes(static_cast<uint32_t>(fields.size())) : big_endian_bytes(fields.size(), 4);
  return id + size + '\0' + flag + fields;
}

std::string start_of_fields(const TTag& tag, const TLyricsName& name) {
  return std::string(1, static_cast<char>(tag.version.encoding)) + name.language;
}

std::string uslt_frame(const TTag& tag, const TLyricsName& name, const std::string& text) {
  std::string words = text_bytes(text, tag.version.encoding);
  words.erase(words.size() - (tag.version.major == 4 ? 1 : 2)); // the last field has no end
  return frame_bytes(tag, tag.version.uslt,
                     start_of_fields(tag, name) + text_bytes(name.description, tag.version.encoding) + words);
}

/** A line feed begins each line but the first. */
std::string sylt_frame(const TTag& tag, const TLyricsName& name, const std::string& text) {
  constexpr char kMilliseconds = 2;
  constexpr char kLyricsContent = 1;
  std::string fields =
      start_of_fields(tag, name) + kMilliseconds + kLyricsContent + text_bytes(name.description, tag.version.encoding);
  std::string lineFeed;
  for (const TSyncedLine& line : synced_lines(text)) {
    fields += text_bytes(lineFeed + line.text, tag.version.encoding);
    fields += big_endian_bytes(static_cast<uint64_t>(line.timeMs), 4);
    lineFeed = "\n";
  }
  return frame_bytes(tag, tag.version.sylt, fields);
}

bool is_synced_lyrics(std::string_view fields) {
  return fields.size() > 5 && fields[4] == 2 && fields[5] == 1;
}

/** The new frames take the places of the old ones, since readers show the first of several. */
std::string edited_frames(const TTag& tag, const std::vector<TFrame>& frames,
                          const std::vector<TEmbeddedLyrics>& lyrics) {
  const std::string& text = lyrics.front().text;
  const bool isTimed = lyrics.size() > 1;
  const auto sylt = [&](const TLyricsName& name) { return isTimed ? sylt_frame(tag, name, text) : std::string(); };
  std::optional<TLyricsName> usltName;
  bool hasSylt = false;
  std::string edited;
  for (const TFrame& frame : frames) {
    if (frame.id == tag.version.uslt && !usltName) {
      usltName = name_of(frame.fields);
      edited += uslt_frame(tag, *usltName, text);
    } else if (frame.id == tag.version.sylt && !hasSylt && is_synced_lyrics(frame.fields)) {
      hasSylt = true;
      edited += sylt(name_of(std::string(frame.fields.substr(0, 4)).append(frame.fields.substr(6))));
    } else {
      edited += frame.bytes;
    }
  }
  if (!usltName) edited += uslt_frame(tag, {}, text);
  return hasSylt ? edited : edited + sylt(usltName.value_or(TLyricsName()));
}

/** Keeps the tag's size where possible, so that the sound need not move. */
std::optional<std::string> tag_bytes(const TTag& tag, const std::string& frames, size_t oldSize) {
  const size_t room = oldSize > kTagHeaderBytes ? oldSize - kTagHeaderBytes : 0;
  const bool fits = frames.size() <= room && room - frames.size() <= kMostPaddingBytes;
  const size_t size = fits ? room : frames.size() + kPaddingBytes;
  if (size > kMostTagBytes) return {};
  std::string bytes = "ID3";
  bytes.push_back(static_cast<char>(tag.version.major));
  bytes.push_back('\0');
  bytes.push_back(tag.isUnsynchronised ? kUnsynchronisation : '\0');
  bytes += synchsafe_bytes(static_cast<uint32_t>(size)) + frames;
  bytes.resize(kTagHeaderBytes + size);
  return bytes;
}

} // namespace

std::optional<std::string> edited_id3(std::string_view tag, const std::vector<TEmbeddedLyrics>& lyrics) {
  const std::optional<TTag> parsed = parse_tag(tag);
  const auto frames = parsed ? frames_of(*parsed) : std::nullopt;
  if (!frames || lyrics.empty()) return {};
  return tag_bytes(*parsed, edited_frames(*parsed, *frames, lyrics), tag.size());
}
