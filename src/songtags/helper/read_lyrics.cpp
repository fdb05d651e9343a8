#include "songtags/helper/read_lyrics.h"

#include "songtags/helper/song_format.h"
#include "songtags/song_text.h"

#include <flacfile.h>
#include <id3v2framefactory.h>
#include <id3v2tag.h>
#include <mp4file.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <synchronizedlyricsframe.h>
#include <tpropertymap.h>
#include <unsynchronizedlyricsframe.h>
#include <vorbisfile.h>
#include <xiphcomment.h>

#include <algorithm>
#include <memory>

namespace {

using TFile = std::unique_ptr<TagLib::File>;
using TSylt = TagLib::ID3v2::SynchronizedLyricsFrame;

/** Null for an unknown kind. Does not look at the sound. */
TFile open_tags(TagLib::IOStream* stream) {
  auto* const frames = TagLib::ID3v2::FrameFactory::instance();
  switch (song_kind(stream)) {
  case TSongKind::kMpeg:
    return std::make_unique<TagLib::MPEG::File>(stream, frames, false);
  case TSongKind::kFlac:
    return std::make_unique<TagLib::FLAC::File>(stream, frames, false);
  case TSongKind::kVorbis:
    return std::make_unique<TagLib::Vorbis::File>(stream, false);
  case TSongKind::kOpus:
    return std::make_unique<TagLib::Ogg::Opus::File>(stream, false);
  case TSongKind::kOggFlac:
    return std::make_unique<TagLib::Ogg::FLAC::File>(stream, false);
  case TSongKind::kMp4:
    return std::make_unique<TagLib::MP4::File>(stream, false);
  case TSongKind::kUnknown:
    break;
  }
  return nullptr;
}

void add(TLyricsPlace place, const std::string& raw, TLyricsInSong* song) {
  const std::string text = normalized_text(raw);
  if (!text.empty() && text.size() <= kMostLyricsBytes) song->found.push_back({place, text});
}

/** Where no text begins with a line feed, each is a line; otherwise those that do begin one. */
std::vector<TSyncedLine> lines_of(const TSylt& frame) {
  std::vector<TSyncedLine> lines;
  const TSylt::SynchedTextList texts = frame.synchedText();
  const bool hasLineFeeds =
      std::any_of(texts.begin(), texts.end(), [](const TSylt::SynchedText& one) { return one.text.startsWith("\n"); });
  for (const TSylt::SynchedText& one : texts) {
    const bool hasLineFeed = one.text.startsWith("\n");
    const bool isNew = !hasLineFeeds || hasLineFeed || lines.empty();
    std::string text = normalized_text((hasLineFeed ? one.text.substr(1) : one.text).to8Bit(true));
    std::replace(text.begin(), text.end(), '\n', ' ');
    if (isNew) {
      lines.push_back({static_cast<int32>(std::min<unsigned>(one.time, INT32_MAX)), text});
    } else {
      lines.back().text += text;
    }
  }
  return lines;
}

void read_id3(TagLib::MPEG::File* file, TLyricsInSong* song) {
  const TagLib::ID3v2::Tag* const tag = file->ID3v2Tag();
  if (tag == nullptr) return;
  for (const auto* const frame : tag->frameList("USLT")) {
    const auto* const uslt = dynamic_cast<const TagLib::ID3v2::UnsynchronizedLyricsFrame*>(frame);
    if (uslt == nullptr) continue;
    add(TLyricsPlace::kUslt, uslt->text().to8Bit(true), song);
    break;
  }
  for (const auto* const frame : tag->frameList("SYLT")) {
    const auto* const sylt = dynamic_cast<const TSylt*>(frame);
    const bool isLyrics =
        sylt && sylt->type() == TSylt::Lyrics && sylt->timestampFormat() == TSylt::AbsoluteMilliseconds;
    if (!isLyrics) continue;
    add(TLyricsPlace::kSylt, synced_text(lines_of(*sylt)), song);
    break;
  }
}

void read_comment(const TagLib::Ogg::XiphComment* comment, TLyricsInSong* song) {
  if (comment == nullptr) return;
  for (const TLyricsPlace place : {TLyricsPlace::kLyrics, TLyricsPlace::kUnsyncedLyrics}) {
    const auto& fields = comment->fieldListMap();
    const auto found = fields.find(place_name(place));
    if (found != fields.end() && !found->second.isEmpty()) add(place, found->second.front().to8Bit(true), song);
  }
}

void read_mp4(const TagLib::MP4::File& file, TLyricsInSong* song) {
  const TagLib::MP4::Tag* const tag = file.tag();
  const TagLib::String name("\251lyr", TagLib::String::Latin1);
  if (tag == nullptr || !tag->contains(name)) return;
  const TagLib::StringList texts = tag->item(name).toStringList();
  if (!texts.isEmpty()) add(TLyricsPlace::kMp4Lyrics, texts.front().to8Bit(true), song);
}

bool is_lyrics_property(const TagLib::String& name) {
  return name == "LYRICS" || name.startsWith("LYRICS:") || name == "UNSYNCEDLYRICS";
}

} // namespace

TLyricsInSong read_lyrics(TagLib::IOStream* stream) {
  TLyricsInSong song;
  song.format = format_of(song_kind(stream));
  const TFile file = open_tags(stream);
  if (!file || !file->isValid()) return {};
  if (auto* const mpeg = dynamic_cast<TagLib::MPEG::File*>(file.get())) read_id3(mpeg, &song);
  if (auto* const flac = dynamic_cast<TagLib::FLAC::File*>(file.get())) read_comment(flac->xiphComment(), &song);
  if (dynamic_cast<TagLib::Ogg::File*>(file.get()))
    read_comment(dynamic_cast<TagLib::Ogg::XiphComment*>(file->tag()), &song);
  if (const auto* const mp4 = dynamic_cast<const TagLib::MP4::File*>(file.get())) read_mp4(*mp4, &song);
  return song;
}

std::string read_other_tags(TagLib::IOStream* stream) {
  const TFile file = open_tags(stream);
  std::string tags;
  if (!file || !file->isValid()) return tags;
  for (const auto& [name, values] : file->properties()) {
    if (!is_lyrics_property(name)) tags += name.to8Bit(true) + "=" + values.toString("\n").to8Bit(true) + '\0';
  }
  return tags;
}
