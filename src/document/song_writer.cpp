#include "document/song_writer.h"

#include "document/edit_session.h"
#include "document/song_lyrics_job.h"
#include "hostlink/current_song_finder.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "plugin/message_codes.h"
#include "songtags/song_text.h"

#include <algorithm>

namespace {

enum { kCancelButton, kWriteButton };

std::string leaf_of(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

const char* error_key(TSongStatus status) {
  switch (status) {
  case TSongStatus::kNotSupported:
    return "Err_Song_Format";
  case TSongStatus::kNotFound:
    return "Err_Song_Missing";
  case TSongStatus::kNoPermission:
    return "Err_Song_Permission";
  case TSongStatus::kIsLink:
    return "Err_Song_Link";
  case TSongStatus::kChanged:
    return "Err_Song_Changed";
  case TSongStatus::kTooLarge:
    return "Err_Song_Too_Large";
  case TSongStatus::kDamaged:
  case TSongStatus::kOtherTags:
    return "Err_Song_Damaged";
  case TSongStatus::kDiskFull:
    return "Err_Song_Disk_Full";
  default:
    return "Err_Song_Failed";
  }
}

std::string error_text(TSongStatus status, const std::string& song) {
  return gLLT->Text(error_key(status)) + ("\n" + song);
}

std::string count_text(const std::string& text) {
  const long lines = std::count(text.begin(), text.end(), '\n') + 1;
  return gLLT->Text("Hint_Song_Lines") + std::to_string(lines) + gLLT->Text("Hint_Song_Tags") +
         std::to_string(synced_lines(text).size());
}

std::string list_of(const std::vector<TEmbeddedLyrics>& lyrics) {
  std::string list;
  for (const TEmbeddedLyrics& one : lyrics) {
    list += std::string("\n    ") + place_name(one.place) + " – " + count_text(one.text);
  }
  return list;
}

/** What writing changes. */
std::string preview_text(const TSongLyricsJob& job, const std::string& text) {
  const TLyricsInSong& song = job.Reading().lyrics;
  std::string preview = gLLT->Text("Ask_Write_Song") + ("\n" + job.Song()) + "\n\n" + gLLT->Text("Hint_Song_Written") +
                        list_of(lyrics_to_write(song.format, text));
  if (!song.found.empty()) preview += std::string("\n\n") + gLLT->Text("Hint_Song_Replaced") + list_of(song.found);
  return preview + "\n\n" + gLLT->Text("Hint_Song_Rest");
}

} // namespace

TSongWriter::TSongWriter(BLooper* looper, Sonivo_FrontEnd* frontEnd, TEditSession* session, const TDocument* document)
    : BHandler("SongWriter"), fSession(session), fDocument(document) {
  looper->AddHandler(this);
  fFinder = std::make_unique<TCurrentSongFinder>(frontEnd, BMessenger(this));
  fJob = std::make_unique<TSongLyricsJob>(BMessenger(this));
}

TSongWriter::~TSongWriter() = default;

void TSongWriter::MessageReceived(BMessage* message) {
  std::string song;
  switch (message->what) {
  case kMsgSongFound:
    if (message->FindString("song", &song) == B_OK) fJob->Read(song);
    return;
  case kMsgNoSong:
    return tell(gLLT->Text("Err_No_Current_Song"));
  case kMsgPlayerSilent:
    return fSession->Report(gLLT->Text("Err_Player_Does_Not_Answer"));
  case kMsgSongLyricsRead:
    if (fJob->Finish()) Ask();
    return;
  case kMsgSongLyricsWritten:
    if (fJob->Finish()) Report();
    return;
  default:
    BHandler::MessageReceived(message);
  }
}

void TSongWriter::Start() {
  if (fJob->IsRunning()) return fSession->Report(gLLT->Text("StatBarStr_Song_Busy"));
  fFinder->Start();
}

void TSongWriter::Ask() {
  const TSongReading& reading = fJob->Reading();
  if (reading.status != TSongStatus::kDone) return tell(error_text(reading.status, fJob->Song()));
  fSession->Active().FlushEdits();
  const std::string text = text_for_song(fDocument->CopyLines());
  if (text.empty()) return tell(gLLT->Text("Err_Song_No_Text"));
  if (text.size() > kMostLyricsBytes) return tell(error_text(TSongStatus::kTooLarge, fJob->Song()));
  const long answer = ask(preview_text(*fJob, text), {cancel_button(true), text_button("Button_Write_Song", 'W')});
  if (answer == kWriteButton) fJob->Write(text);
}

void TSongWriter::Report() {
  const TSongStatus status = fJob->Written();
  if (status != TSongStatus::kDone) return tell(error_text(status, fJob->Song()));
  fSession->Report(gLLT->Text("StatBarStr_Song_Written") + leaf_of(fJob->Song()));
}
