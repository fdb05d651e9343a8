#include "hostlink/current_song_finder.h"

#include "hostlink/host_link.h"
#include "lyrics/lyrics_fname.h"
#include "platform/app/message.h"
#include "platform/kernel/threads.h"
#include "platform/support/log.h"
#include "plugin/message_codes.h"

#include <exception>

namespace {
constexpr bigtime_t kPatienceUs = 2000000;
constexpr bigtime_t kLookUs = 10000;
} // namespace

TCurrentSongFinder::TCurrentSongFinder(Sonivo_FrontEnd* frontEnd, const BMessenger& asker)
    : fFrontEnd(frontEnd), fAsker(asker) {}

TCurrentSongFinder::~TCurrentSongFinder() {
  fEnding = true;
  if (fSearch.joinable()) fSearch.join();
  if (fWatch.joinable()) fWatch.join();
}

bool TCurrentSongFinder::Start() {
  if (fSearching) return false;
  // The previous watch must see the end of its search before the next one starts.
  if (fSearch.joinable()) fSearch.join();
  if (fWatch.joinable()) fWatch.join();
  fSearching = true;
  fSearch = std::thread(&TCurrentSongFinder::Find, this);
  fWatch = std::thread(&TCurrentSongFinder::Watch, this);
  return true;
}

BMessage TCurrentSongFinder::Searched() const {
  SonivoSongEntry entry;
  entry_ref ref;
  const bool found = get_current_song_entry(fFrontEnd, &entry) && entry.filename && *entry.filename &&
                     get_ref_for_path(lyrics_fname(entry).c_str(), &ref) == B_OK;
  BMessage answer(found ? kMsgSongFound : kMsgNoSong);
  if (found) answer.AddRef("refs", &ref);
  if (found) answer.AddString("song", entry.filename);
  free_song_entry(&entry);
  return answer;
}

void TCurrentSongFinder::Find() {
  BMessage answer(kMsgNoSong);
  try {
    answer = Searched();
  } catch (const std::exception& error) {
    log_error("song finder", error.what());
  }
  fSearching = false;
  if (!fEnding) fAsker.SendMessage(&answer, BMessenger(), 0);
}

void TCurrentSongFinder::Watch() {
  int32 answers = fFrontEnd->CountAnswers();
  bigtime_t silentUs = 0;
  while (silentUs < kPatienceUs) {
    if (fEnding || !fSearching) return;
    snooze(kLookUs);
    const int32 answersNow = fFrontEnd->CountAnswers();
    silentUs = answersNow == answers ? silentUs + kLookUs : 0; // a long playlist takes its time
    answers = answersNow;
  }
  const BMessage silent(kMsgPlayerSilent);
  fAsker.SendMessage(&silent, BMessenger(), 0);
}
