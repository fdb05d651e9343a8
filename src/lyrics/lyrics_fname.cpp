#include "lyrics/lyrics_fname.h"

#include "common/koreva.h"
#include "platform/storage/entry.h"

std::string lyrics_fname(SonivoSongEntry entry) {
  const std::string song = entry.filename ? entry.filename : "";
  const std::string lrc = koreva::reext(song, "lrc");
  return BEntry(lrc.c_str()).Exists() ? lrc : koreva::reext(song, "txt");
}
