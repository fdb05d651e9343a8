#include "songtags/helper/song_format.h"

#include "songtags/helper/byte_order.h"

#include <string_view>

namespace {

constexpr size_t kOggHeaderBytes = 27;

/** Frame header of MPEG audio, layer I to III. */
bool is_mpeg_frame(std::string_view bytes) {
  if (bytes.size() < 4) return false;
  const uint64_t header = big_endian(bytes.substr(0, 4));
  const auto version = header >> 19 & 3;
  const auto layer = header >> 17 & 3;
  const auto rate = header >> 12 & 15;
  return header >> 21 == 0x7ff && version != 1 && layer != 0 && rate != 15 && (header >> 10 & 3) != 3;
}

/** The first page holds the first packet only. A second stream begins right after it, and is refused: pages of other
    streams are not known to stay as they are. */
TSongKind ogg_kind(TagLib::IOStream* stream) {
  const std::string page = bytes_at(stream, 0, kOggHeaderBytes + 255);
  if (page.size() < kOggHeaderBytes + 2 || page[26] != 1) return TSongKind::kUnknown;
  const std::string_view packet = std::string_view(page).substr(kOggHeaderBytes + 1);
  const long next = static_cast<long>(kOggHeaderBytes) + 1 + static_cast<unsigned char>(page[kOggHeaderBytes]);
  const std::string second = bytes_at(stream, next, kOggHeaderBytes);
  if (!second.starts_with("OggS") || second.size() < kOggHeaderBytes || (second[5] & 2) != 0)
    return TSongKind::kUnknown;
  if (packet.starts_with("\x01vorbis")) return TSongKind::kVorbis;
  if (packet.starts_with("OpusHead")) return TSongKind::kOpus;
  if (packet.starts_with("\x7F"
                         "FLAC"))
    return TSongKind::kOggFlac;
  return TSongKind::kUnknown;
}

} // namespace

std::string bytes_at(TagLib::IOStream* stream, long offset, size_t size) {
  stream->seek(offset);
  const TagLib::ByteVector bytes = stream->readBlock(size);
  return {bytes.data(), bytes.size()};
}

size_t id3_size(TagLib::IOStream* stream) {
  const std::string header = bytes_at(stream, 0, 10);
  if (header.size() < 10 || !header.starts_with("ID3")) return 0;
  const bool hasFooter = header[3] == 4 && (header[5] & 0x10) != 0;
  return 10 + synchsafe(std::string_view(header).substr(6)) + (hasFooter ? 10 : 0);
}

TSongKind song_kind(TagLib::IOStream* stream) {
  const size_t id3 = id3_size(stream);
  const std::string start = bytes_at(stream, static_cast<long>(id3), 12);
  if (start.starts_with("fLaC")) return TSongKind::kFlac;
  if (id3 > 0 || is_mpeg_frame(start)) return TSongKind::kMpeg;
  if (start.starts_with("OggS")) return ogg_kind(stream);
  if (start.size() >= 8 && start.compare(4, 4, "ftyp") == 0) return TSongKind::kMp4;
  return TSongKind::kUnknown;
}

TSongFormat format_of(TSongKind kind) {
  switch (kind) {
  case TSongKind::kUnknown:
    return TSongFormat::kNone;
  case TSongKind::kMpeg:
    return TSongFormat::kId3;
  case TSongKind::kMp4:
    return TSongFormat::kMp4;
  default:
    return TSongFormat::kVorbisComment;
  }
}
