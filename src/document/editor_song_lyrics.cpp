/** Lyrics inside the song that is playing: opened where there is no lyrics file, and written by command. */

#include "document/document_file.h"
#include "document/edit_session.h"
#include "document/editor_view.h"
#include "document/song_lyrics_job.h"
#include "hostlink/current_song_finder.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/line_limit.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/storage/entry.h"
#include "plugin/file_choices.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
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

void TVesmoEView::MItemWriteIntoSongClicked() {
  if (fSongLyrics->IsRunning()) return SetStatBarStr(gLLT->Text("StatBarStr_Song_Busy"));
  fSongFinder->Start(); // or a search that is running already becomes this one
  fSearchesByItself = false;
  fSongIsForWriting = true;
}

bool TVesmoEView::TakeSong(const BMessage& answer) {
  const bool isForWriting = fSongIsForWriting;
  if (answer.what != kMsgPlayerSilent) fSongIsForWriting = false; // else the search goes on
  std::string song;
  entry_ref lyricsFile;
  const bool isFound = answer.what == kMsgSongFound && answer.FindString("song", &song) == B_OK && !song.empty() &&
                       answer.FindRef("refs", &lyricsFile) == B_OK;
  if (!isFound || fSongLyrics->IsRunning() || (!isForWriting && BEntry(&lyricsFile).Exists())) return false;
  fSongLyrics->Read(song, isForWriting ? entry_ref() : lyricsFile);
  return true;
}

void TVesmoEView::SongLyricsRead() {
  if (!fSongLyrics->Finish()) return;
  if (fSongLyrics->LyricsFile().IsEmpty()) return AskWriteIntoSong();
  const TEmbeddedLyrics* const lyrics = best_lyrics(fSongLyrics->Reading().lyrics);
  if (lyrics && !has_too_many_lines(lyrics->text)) return ShowLyricsInside(lyrics->text);
  BMessage open(kMsgSongFound);
  open.AddRef("refs", &fSongLyrics->LyricsFile());
  open.AddBool(kForCurrentSong, true);
  PostOpen(open);
}

/** As a document without a file; nothing is lost as long as it is not changed. */
void TVesmoEView::ShowLyricsInside(const std::string& text) {
  if (!AskSave(BMessage(kMsgSongLyricsRead), this)) return;
  const auto settings = gPref->Values();
  TOpenedLyrics opened;
  opened.form = {encoding_of(settings->writeEncoding), line_end_of(settings->writeCRType),
                 dialect_of(load_file_choices().newDialect)};
  opened.lines = document_lines(text);
  prepare_for_editing(&opened.lines);
  fSession->Show(opened.lines);
  fDocument.Open(opened);
  fSession->DocumentStarted();
  fFile->Follow();
  SetWinTitle();
  SetStatBarStr((gLLT->Text("StatBarStr_From_Song") + leaf_of(fSongLyrics->Song())).c_str());
}

void TVesmoEView::AskWriteIntoSong() {
  const TSongReading& reading = fSongLyrics->Reading();
  if (reading.status != TSongStatus::kDone) return tell(error_text(reading.status, fSongLyrics->Song()));
  fSession->Active().FlushEdits();
  const std::string text = text_for_song(fDocument.CopyLines());
  if (text.empty()) return tell(gLLT->Text("Err_Song_No_Text"));
  if (text.size() > kMostLyricsBytes) return tell(error_text(TSongStatus::kTooLarge, fSongLyrics->Song()));
  const long answer =
      ask(preview_text(*fSongLyrics, text), {cancel_button(true), text_button("Button_Write_Song", 'W')});
  if (answer == kWriteButton) fSongLyrics->Write(text);
}

void TVesmoEView::SongLyricsWritten() {
  if (!fSongLyrics->Finish()) return;
  const TSongStatus status = fSongLyrics->Written();
  if (status != TSongStatus::kDone) return tell(error_text(status, fSongLyrics->Song()));
  SetStatBarStr((gLLT->Text("StatBarStr_Song_Written") + leaf_of(fSongLyrics->Song())).c_str());
}
