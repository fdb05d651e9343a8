#include "document/song_lyrics_job.h"

#include "platform/app/message.h"
#include "platform/support/log.h"
#include "plugin/message_codes.h"

#include <exception>
#include <utility>

void TSongLyricsJob::Start(uint32 doneCode, std::function<void(const std::stop_token&)> work) {
  fIsRunning = true;
  fIsDone = false;
  fThread = std::jthread([this, doneCode, work = std::move(work)](const std::stop_token& stop) {
    try {
      work(stop);
    } catch (const std::exception& error) {
      log_error("song lyrics", error.what());
    }
    fIsDone = true;
    if (!stop.stop_requested()) fOwner.SendCoalesced(doneCode);
  });
}

void TSongLyricsJob::Read(const std::string& song) {
  if (fIsRunning) return;
  fSong = song;
  fReading = {};
  Start(kMsgSongLyricsRead, [this](const std::stop_token& stop) { fReading = read_song_lyrics(fSong, stop); });
}

void TSongLyricsJob::Write(const std::string& text) {
  if (fIsRunning) return;
  fWritten = TSongStatus::kFailed;
  Start(kMsgSongLyricsWritten, [this, text](const std::stop_token& stop) {
    fWritten = write_song_lyrics(fSong, fReading.lyrics.state, text, stop);
  });
}

bool TSongLyricsJob::Finish() {
  if (!fIsDone) return false;
  if (fThread.joinable()) fThread.join(); // it only ends now
  fIsRunning = false;
  return true;
}
