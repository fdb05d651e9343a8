#include "fuzz/fuzz.h"
#include "platform/kernel/unique_fd.h"
#include "songtags/helper/descriptor_stream.h"
#include "songtags/helper/read_lyrics.h"
#include "songtags/helper/song_format.h"
#include "songtags/helper/write_lyrics.h"

#include <sys/mman.h>
#include <unistd.h>

namespace {

/** A file in memory with these bytes. */
UniqueFd file_with(const uint8_t* bytes, size_t size) {
  UniqueFd file(memfd_create("song", MFD_CLOEXEC));
  require(file && pwrite(file.Get(), bytes, size, 0) == static_cast<ssize_t>(size));
  return file;
}

} // namespace

/** A song with any bytes: reading and writing end, and writing the same lyrics again changes nothing. In Ogg files the
    tag library writes the pages, and damaged ones end up anywhere; what it wrote is read again before it is used. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const UniqueFd file = file_with(bytes, size);
  TDescriptorStream stream(file.Get());
  require(parse_song_lyrics(song_lyrics_bytes(read_lyrics(&stream))).has_value());
  const std::string text = "[00:01.00]a\n[65:16.32]b";
  const bool isOgg = bytes_at(&stream, 0, 4) == "OggS";
  if (!write_lyrics(&stream, text) || isOgg) return 0;
  const std::string once = bytes_at(&stream, 0, static_cast<size_t>(stream.length()));
  require(write_lyrics(&stream, text));
  require(bytes_at(&stream, 0, once.size() + 1) == once);
  return 0;
}
