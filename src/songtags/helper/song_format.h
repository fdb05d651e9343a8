#pragma once

#include "songtags/song_lyrics.h"

#include <tiostream.h>

/** What a file is by its content. */
enum class TSongKind { kUnknown, kMpeg, kFlac, kVorbis, kOpus, kOggFlac, kMp4 };

TSongKind song_kind(TagLib::IOStream* stream);
TSongFormat format_of(TSongKind kind);

/** Bytes of the file; fewer at its end. */
std::string bytes_at(TagLib::IOStream* stream, long offset, size_t size);
/** Size of the ID3v2 tag at the start of the file, with header and footer; 0 without one. */
size_t id3_size(TagLib::IOStream* stream);
