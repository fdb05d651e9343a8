#include "songtags/helper/write_lyrics.h"

#include "songtags/helper/byte_order.h"
#include "songtags/helper/id3_edit.h"
#include "songtags/helper/mp4_edit.h"
#include "songtags/helper/song_format.h"
#include "songtags/helper/vorbis_comment_edit.h"

#include <id3v2framefactory.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <vorbisfile.h>

namespace {

using TLyrics = std::vector<TEmbeddedLyrics>;

constexpr size_t kMostMoovBytes = 64 << 20;
constexpr size_t kBlockHeaderBytes = 4;
constexpr size_t kMostBlockBytes = (1 << 24) - 1;
constexpr int kCommentBlock = 4;
constexpr unsigned char kLastBlock = 0x80;

TagLib::ByteVector vector_of(const std::string& bytes) {
  return {bytes.data(), static_cast<unsigned>(bytes.size())};
}

/** A new tag repeats what the song has in older ones, since readers look into the newest only. */
std::string fresh_id3(TagLib::IOStream* stream) {
  const TagLib::MPEG::File file(stream, TagLib::ID3v2::FrameFactory::instance(), false);
  TagLib::ID3v2::Tag fresh;
  TagLib::Tag::duplicate(file.tag(), &fresh);
  if (fresh.isEmpty()) return {};
  const TagLib::ByteVector bytes = fresh.render(TagLib::ID3v2::v3);
  return {bytes.data(), bytes.size()};
}

bool write_id3(TagLib::IOStream* stream, const TLyrics& lyrics) {
  const size_t size = id3_size(stream);
  const std::string old = size > 0 ? bytes_at(stream, 0, size) : fresh_id3(stream);
  const auto made = size == 0 || old.size() == size ? edited_id3(old, lyrics) : std::nullopt;
  if (made) stream->insert(vector_of(*made), 0, size);
  return made.has_value();
}

/** A metadata block of FLAC: type and size in its header, then the content. */
struct TBlock {
  long offset = 0;
  unsigned char type = 0; // with kLastBlock
  size_t size = 0;        // without header
  long End() const { return offset + static_cast<long>(kBlockHeaderBytes + size); }
};

std::optional<TBlock> block_at(TagLib::IOStream* stream, long offset) {
  const std::string header = bytes_at(stream, offset, kBlockHeaderBytes);
  if (header.size() < kBlockHeaderBytes) return {};
  const TBlock block{offset, static_cast<unsigned char>(header[0]), big_endian(std::string_view(header).substr(1))};
  return block.End() <= stream->length() ? std::optional(block) : std::nullopt;
}

std::optional<std::string> comment_block(unsigned char type, std::string_view comment, const TLyrics& lyrics) {
  const auto made = edited_vorbis_comment(comment, lyrics);
  if (!made || made->size() > kMostBlockBytes) return {};
  return static_cast<char>(type) + big_endian_bytes(made->size(), 3) + *made;
}

/** The comment block is replaced, or inserted after the first block, which has to stay the first. */
bool write_flac(TagLib::IOStream* stream, const TLyrics& lyrics) {
  const auto first = block_at(stream, static_cast<long>(id3_size(stream)) + 4);
  auto block = first;
  while (block && (block->type & ~kLastBlock) != kCommentBlock && (block->type & kLastBlock) == 0)
    block = block_at(stream, block->End());
  if (!block) return false;
  const bool isThere = (block->type & ~kLastBlock) == kCommentBlock;
  const long content = block->offset + static_cast<long>(kBlockHeaderBytes);
  const std::string old = isThere ? bytes_at(stream, content, block->size) : empty_vorbis_comment();
  const unsigned char last = (isThere ? block->type : first->type) & kLastBlock;
  const auto made = comment_block(kCommentBlock | last, old, lyrics);
  if (!made) return false;
  if (isThere) {
    stream->insert(vector_of(*made), static_cast<unsigned long>(block->offset), kBlockHeaderBytes + block->size);
  } else {
    stream->insert(vector_of(*made), static_cast<unsigned long>(first->End()), 0);
    const auto type = static_cast<unsigned char>(first->type & ~kLastBlock);
    stream->insert(vector_of(std::string(1, static_cast<char>(type))), static_cast<unsigned long>(first->offset), 1);
  }
  return true;
}

/** The second packet of an Ogg stream is the comment, between what its codec puts around it. `File` only serves to
    replace the packet: its own `save` would write all comments again. */
template <typename File>
bool write_ogg(TagLib::IOStream* stream, size_t startBytes, const TLyrics& lyrics) {
  File file(stream, false);
  if (!file.isValid()) return false;
  const TagLib::ByteVector packet = file.packet(1);
  const std::string_view old(packet.data(), packet.size());
  if (old.size() < startBytes) return false;
  const auto made = edited_vorbis_comment(old.substr(startBytes), lyrics);
  if (!made) return false;
  file.setPacket(1, vector_of(std::string(old.substr(0, startBytes)) + *made));
  return file.TagLib::Ogg::File::save();
}

/** In Ogg the comment of FLAC is a whole metadata block. */
bool write_ogg_flac(TagLib::IOStream* stream, const TLyrics& lyrics) {
  TagLib::Ogg::FLAC::File file(stream, false);
  if (!file.isValid()) return false;
  const TagLib::ByteVector packet = file.packet(1);
  const std::string_view old(packet.data(), packet.size());
  const auto type = old.empty() ? '\0' : old.front();
  if (old.size() < kBlockHeaderBytes || (type & 0x7f) != kCommentBlock) return false;
  const auto made = comment_block(static_cast<unsigned char>(type), old.substr(kBlockHeaderBytes), lyrics);
  if (!made) return false;
  file.setPacket(1, vector_of(*made));
  return file.TagLib::Ogg::File::save();
}

/** Header of an atom at the top of the file. */
struct TTopAtom {
  std::string name;
  long offset = 0;
  uint64_t size = 0;
};

std::optional<TTopAtom> top_atom_at(TagLib::IOStream* stream, long offset) {
  const std::string header = bytes_at(stream, offset, 16);
  const auto rest = static_cast<uint64_t>(stream->length() - offset);
  if (header.size() < 8) return {};
  uint64_t size = big_endian(std::string_view(header).substr(0, 4));
  if (size == 1 && header.size() == 16) size = big_endian(std::string_view(header).substr(8, 8));
  if (size == 0) size = rest;
  if (size < 8 || size > rest) return {};
  return TTopAtom{header.substr(4, 4), offset, size};
}

/** Fragments have offsets of their own, in many forms; such files are streams rather than songs. */
bool write_mp4(TagLib::IOStream* stream, const std::string& text) {
  std::optional<TTopAtom> moov;
  const long length = stream->length();
  for (long offset = 0; offset < length;) {
    const auto atom = top_atom_at(stream, offset);
    if (!atom || atom->name == "moof" || (atom->name == "moov" && moov)) return false;
    if (atom->name == "moov") moov = atom;
    offset += static_cast<long>(atom->size);
  }
  if (!moov || moov->size > kMostMoovBytes) return false;
  const auto offset = static_cast<unsigned long>(moov->offset);
  const auto made = edited_moov(bytes_at(stream, moov->offset, moov->size), offset, text);
  if (made) stream->insert(vector_of(*made), offset, moov->size);
  return made.has_value();
}

} // namespace

bool write_lyrics(TagLib::IOStream* stream, const std::string& text) {
  const TSongKind kind = song_kind(stream);
  const TLyrics lyrics = lyrics_to_write(format_of(kind), text);
  switch (kind) {
  case TSongKind::kMpeg:
    return write_id3(stream, lyrics);
  case TSongKind::kFlac:
    return write_flac(stream, lyrics);
  case TSongKind::kVorbis:
    return write_ogg<TagLib::Vorbis::File>(stream, std::string_view("\x03vorbis").size(), lyrics);
  case TSongKind::kOpus:
    return write_ogg<TagLib::Ogg::Opus::File>(stream, std::string_view("OpusTags").size(), lyrics);
  case TSongKind::kOggFlac:
    return write_ogg_flac(stream, lyrics);
  case TSongKind::kMp4:
    return write_mp4(stream, lyrics.front().text);
  case TSongKind::kUnknown:
    break;
  }
  return false;
}
