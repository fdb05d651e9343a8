#include "document/song_lyrics_job.h"

#include "platform/app/message.h"
#include "platform/support/log.h"
#include "plugin/message_codes.h"

#include <exception>
#include <utility>

namespace {
/** A killed program ends at once, unless the kernel is waiting for its disk. */
constexpr std::chrono::seconds kPatience{1};
} // namespace

TSongLyricsJob::TSongLyricsJob(const BMessenger& owner, TReader read)
    : fOwner(owner), fRead(std::move(read)), fThread(kPatience) {}

TSongLyricsJob::~TSongLyricsJob() {
  fWork->stop.request_stop();
}

void TSongLyricsJob::Start(uint32 doneCode, std::function<void(TWork&)> work) {
  fWork->isDone = false;
  const auto run = [owner = fOwner, doneCode, state = fWork, doWork = std::move(work)](TAbandonableThread::TProgress*) {
    try {
      doWork(*state);
    } catch (const std::exception& error) {
      log_error("song lyrics", error.what());
    }
    state->isDone = true;
    if (!state->stop.stop_requested()) owner.SendCoalesced(doneCode);
  };
  fIsRunning = fThread.Start("song lyrics", run);
}

void TSongLyricsJob::Read(const std::string& song) {
  if (fIsRunning) return;
  fWork->song = song;
  fWork->reading = {};
  Start(kMsgSongLyricsRead, [read = fRead](TWork& work) { work.reading = read(work.song, work.stop.get_token()); });
}

void TSongLyricsJob::Write(const std::string& text) {
  if (fIsRunning) return;
  fWork->written = TSongStatus::kFailed;
  Start(kMsgSongLyricsWritten, [text](TWork& work) {
    work.written = write_song_lyrics(work.song, work.reading.lyrics.state, text, work.stop.get_token());
  });
}

bool TSongLyricsJob::Finish() {
  if (!fWork->isDone) return false;
  fIsRunning = false;
  return true;
}
