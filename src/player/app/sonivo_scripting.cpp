/** The player's answers to front ends and scripts. */

#include "platform/app/message.h"
#include "player/app/sonivo_app.h"
#include "player/frontend/front_end_host.h"
#include "player/model/info_record.h"
#include "player/model/player_messages.h"
#include "plugin/message_codes.h"

#include <algorithm>

void TSonivoApp::Handshake(const BMessage& message) const {
  BMessage answer(kMsgHostHandshake);
  if (message.IsSourceRemote())
    answer.AddString("Signature", fHost->Signature());
  else
    answer.AddMessenger("Msgr", BMessenger(fHost));
  message.SendReply(&answer);
}

bool TSonivoApp::HandleWish(const BMessage& message) {
  int32 number = 0;
  switch (message.what) {
  case kMsgHostSeek:
    if (message.FindInt32("Time", &number) == B_OK) Seek(number);
    return true;
  case kMsgHostSeekBy:
    if (message.FindInt32("Time", &number) == B_OK) Seek(int64{Sound().PositionMs()} + number);
    return true;
  case kMsgHostPlayPause:
    PlayPause();
    return true;
  case kMsgHostSpeedBy:
    if (message.FindInt32("Percent", &number) == B_OK)
      SetSpeed(int64{fOther ? fOther->speedPercent : fState.speedPercent} + number);
    return true;
  case kMsgHostMarks:
    TakeMarks(message);
    return true;
  default:
    return false;
  }
}

void TSonivoApp::TakeMarks(const BMessage& message) {
  std::string title;
  if (message.FindString("Title", &title) != B_OK) return;
  fMarkedTitle = cut_title(title);
  constexpr int32 kMostMarks = 20000;
  auto marks = std::make_shared<std::vector<int32>>();
  int32 timeMs = 0;
  for (int32 i = 0; i < kMostMarks && message.FindInt32("TimeMs", i, &timeMs) == B_OK; ++i) marks->push_back(timeMs);
  std::sort(marks->begin(), marks->end());
  fMarksMs = marks;
  StateChanged();
}

namespace {

/** Takes the specifier in force off when it names `property` in that form. */
bool pop_specifier(BMessage* message, const char* property, uint32 form, int32* index) {
  std::string name;
  uint32 found = 0;
  if (message->GetCurrentSpecifier(&name, &found, index) != B_OK || name != property || found != form) return false;
  return message->PopSpecifier() == B_OK;
}

bool names_entry(BMessage* message, uint32 form, int32* index) {
  return pop_specifier(message, "Playlist", B_DIRECT_SPECIFIER, nullptr) &&
         pop_specifier(message, "Entry", form, index);
}

void refuse(const BMessage& message, status_t error, const char* reason) {
  BMessage answer(B_MESSAGE_NOT_UNDERSTOOD);
  answer.AddInt32("error", error);
  answer.AddString("message", reason);
  message.SendReply(&answer);
}

} // namespace

bool TSonivoApp::HandleScript(BMessage* message) {
  const bool counts = message->what == B_COUNT_PROPERTIES;
  const bool executes = message->what == B_EXECUTE_PROPERTY;
  if (!counts && !executes && message->what != B_GET_PROPERTY) return false;
  int32 index = -1;
  if (!names_entry(message, counts ? B_DIRECT_SPECIFIER : B_INDEX_SPECIFIER, &index)) {
    refuse(*message, B_BAD_VALUE, "Only the entries of the playlist can be addressed");
  } else if (counts) {
    CountEntries(*message);
  } else if (executes) {
    ExecuteEntry(index);
  } else {
    GetEntry(*message, index);
  }
  return true;
}

/** Another player that is the source has one entry: the song it is at. */
void TSonivoApp::ExecuteEntry(int32 index) {
  fPlayedSearch = 0;
  if (!fOther) return PlaySong(index, false);
  if (index == 0) fBus.SetPaused(false);
}

void TSonivoApp::CountEntries(const BMessage& message) const {
  BMessage answer(B_REPLY);
  answer.AddInt32("result", fOther ? 1 : fPlaylist.Count());
  message.SendReply(&answer);
}

/** As in the record: the two are compared byte for byte. Front ends know the current song by its title, so another one
    of that title goes by its path. */
std::string TSonivoApp::ToldTitle(const TSong& song) const {
  const std::string title = cut_title(song.title);
  const TSong* const current = fOther ? nullptr : fPlaylist.CurrentSong();
  const bool isTaken = current && current->path != song.path && cut_title(current->title) == title;
  return isTaken ? cut_title(song.path) : title;
}

void TSonivoApp::GetEntry(const BMessage& message, int32 index) const {
  const TSong* const song = fOther ? (index == 0 ? &fOther->song : nullptr) : fPlaylist.At(index);
  if (song == nullptr) return refuse(message, B_BAD_INDEX, "The playlist has no such entry");
  BMessage answer(B_REPLY);
  answer.AddString("filename", song->path);
  answer.AddString("title", ToldTitle(*song));
  answer.AddInt32("time", song->durationMs);
  answer.AddBool("played", song->played);
  answer.AddInt32("nr", index);
  message.SendReply(&answer);
}
