#include "document/song_sound_source.h"

#include "hostlink/current_song_finder.h"
#include "hostlink/host_link.h"
#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "songsound/sound_reader.h"

#include <algorithm>

TSongSoundSource::TSongSoundSource(const BView* owner, Sonivo_FrontEnd* frontEnd)
    : BHandler("SongSound"), fFrontEnd(frontEnd) {
  owner->Window()->AddHandler(this);
}

TSongSoundSource::~TSongSoundSource() = default;

void TSongSoundSource::Poll(const TLaneRange& wanted) {
  const std::string title = fFrontEnd->Title();
  const std::string song = title.empty() ? title : title + '\n' + std::to_string(fFrontEnd->DurationMs());
  if (song != fSong) Search(song);
  if (!fPath.empty()) fReader->Read(fPath, std::max(wanted.fromMs, int32{0}), std::max(wanted.toMs, int32{1}));
}

/** A search that is still running is for another song: this one has to wait for it. */
void TSongSoundSource::Search(const std::string& song) {
  if (!fFinder) fFinder = std::make_unique<TCurrentSongFinder>(fFrontEnd, BMessenger(this));
  if (!fReader) fReader = std::make_unique<TSoundReader>(BMessenger(this));
  fReader->Cancel();
  fPath.clear();
  if (!song.empty() && !fFinder->Start()) return;
  fIsSearching = !song.empty();
  fSong = song;
}

void TSongSoundSource::Rest() {
  if (fReader) fReader->Cancel();
  fSong.clear();
  fPath.clear();
  fIsSearching = false;
}

TSoundState TSongSoundSource::State() const {
  if (fSong.empty()) return TSoundState::kNoSong;
  if (fIsSearching) return TSoundState::kReading;
  if (fPath.empty()) return TSoundState::kNoFile;
  if (fReader->HasFailed()) return TSoundState::kFailed;
  return fReader->Sound() ? TSoundState::kKnown : TSoundState::kReading;
}

std::shared_ptr<const TSongSound> TSongSoundSource::Sound() const {
  return fPath.empty() ? nullptr : fReader->Sound();
}

void TSongSoundSource::MessageReceived(BMessage* message) {
  std::string path;
  switch (message->what) {
  case kMsgSongFound:
    if (message->FindString("song", &path) == B_OK) SongFound(path);
    break;
  case kMsgNoSong:
    SongFound({});
    break;
  case kMsgPlayerSilent:
  case kMsgSongSound: // its users look at each poll
    break;
  default:
    BHandler::MessageReceived(message);
  }
}

/** An entry of the playlist may name something else than a file. */
void TSongSoundSource::SongFound(const std::string& path) {
  if (!fIsSearching) return;
  fIsSearching = false;
  fPath = path.starts_with('/') ? path : std::string();
}
