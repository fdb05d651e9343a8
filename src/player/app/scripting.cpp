#include "player/app/scripting.h"

#include "platform/app/message.h"
#include "player/model/info_record.h"

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

void count_entries(const BMessage& message, const TScriptedList& list) {
  BMessage answer(B_REPLY);
  answer.AddInt32("result", list.otherSong ? 1 : list.songs.Count());
  message.SendReply(&answer);
}

/** As in the information record: the two are compared byte for byte. Front ends recognise the current song by its
    title, so another song with that title is given its path instead. */
std::string unique_title(const TSong& song, const TScriptedList& list) {
  const std::string title = cut_title(song.title);
  const TSong* const current = list.otherSong ? nullptr : list.songs.CurrentSong();
  const bool isTaken = current && current->path != song.path && cut_title(current->title) == title;
  return isTaken ? cut_title(song.path) : title;
}

void get_entry(const BMessage& message, const TScriptedList& list, int32 index) {
  const TSong* const otherSong = index == 0 ? list.otherSong : nullptr;
  const TSong* const song = list.otherSong ? otherSong : list.songs.At(index);
  if (song == nullptr) return refuse(message, B_BAD_INDEX, "The playlist has no such entry");
  BMessage answer(B_REPLY);
  answer.AddString("filename", song->path);
  answer.AddString("title", unique_title(*song, list));
  answer.AddInt32("time", song->durationMs);
  answer.AddBool("played", song->played);
  answer.AddInt32("nr", index);
  message.SendReply(&answer);
}

} // namespace

bool handle_script(BMessage* message, const TScriptedList& list, const std::function<void(int32 index)>& execute) {
  const bool counts = message->what == B_COUNT_PROPERTIES;
  const bool executes = message->what == B_EXECUTE_PROPERTY;
  if (!counts && !executes && message->what != B_GET_PROPERTY) return false;
  int32 index = -1;
  if (!names_entry(message, counts ? B_DIRECT_SPECIFIER : B_INDEX_SPECIFIER, &index)) {
    refuse(*message, B_BAD_VALUE, "Only the entries of the playlist can be addressed");
  } else if (counts) {
    count_entries(*message, list);
  } else if (executes) {
    execute(index);
  } else {
    get_entry(*message, list, index);
  }
  return true;
}
