/** The editor view's care for what a file holds beside its text, and for what an encoding cannot hold: the user is
    told, and both are kept elsewhere before they are gone. */

#include "common/safety_copy.h"
#include "document/editor_view.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/exact_lyrics.h"
#include "platform/storage/entry.h"
#include "platform/support/log.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

/** More would only fill the screen. */
constexpr size_t kMostNamed = 30;

/** The characters that the encoding cannot hold, each once, with blanks between. */
std::string outside_of(const std::list<std::string>& lines, long encoding) {
  std::vector<std::string> outside;
  for (const std::string& line : lines) {
    if (outside.size() >= kMostNamed || encoded_line(line, encoding)) continue;
    for (const std::string& character : characters_outside(line, encoding)) {
      if (std::find(outside.begin(), outside.end(), character) == outside.end()) outside.push_back(character);
    }
  }
  std::string named;
  for (const std::string& character : outside) named += (named.empty() ? "" : " ") + character;
  return named;
}

} // namespace

/** When a save in place was interrupted, its safety copy is longer than the file. */
std::optional<entry_ref> TVesmoEView::CopyToOpenInstead(const entry_ref& ref) const {
  const std::string copy = longer_safety_copy(ref.FullPath());
  entry_ref found;
  if (copy.empty() || get_ref_for_path(copy.c_str(), &found) != B_OK) return {};
  const std::string question = gLLT->Text("Ask_Open_Copy_1") + copy + gLLT->Text("Ask_Open_Copy_2");
  return ask_no_yes(question) ? std::optional(found) : std::nullopt;
}

void TVesmoEView::TellNotWhole() {
  if (!fIsWhole)
    notify(gLLT->Text("Err_Not_Whole") + ("\n" + fInfo.File.FullPath()) + "\n\n" + gLLT->Text("Hint_Not_Whole"));
}

void TVesmoEView::KeepFileAsItWas() {
  const std::string path = fInfo.File.FullPath();
  fKeptFile = keep_file_for_recovery(path);
  if (fKeptFile.empty()) log_error("save", path + " could not be kept as it was");
}

void TVesmoEView::NoteOutside(const std::list<std::string>& lines, const TLyricsInfo& info) {
  const std::string outside = info.Encoding == 0 ? std::string() : outside_of(lines, info.Encoding);
  fWholeText.clear();
  // Told once for the same characters, not at every save.
  if (!outside.empty() && outside != fOutside) fWholeText = lines_to_bytes(lines, info.CRType, 0);
  fOutside = outside;
}

/** Waits: the window may close after the save, and what is told with it. */
void TVesmoEView::TellLosses(const TLyricsInfo& info) {
  if (!fKeptFile.empty()) tell(gLLT->Text("Hint_File_Kept") + ("\n" + std::exchange(fKeptFile, {})));
  if (fWholeText.empty()) return;
  const std::string encoding = gLLT->Text(("StatBarSymbol_Encoding_" + std::to_string(info.Encoding)).c_str());
  const std::string kept = keep_for_recovery(info.File.FullPath(), std::exchange(fWholeText, {}));
  const std::string where =
      kept.empty() ? gLLT->Text("Hint_Not_Recovered") : gLLT->Text("Hint_Whole_Text_Kept") + ("\n" + kept);
  tell(gLLT->Text("Err_Outside_Encoding_1") + encoding + gLLT->Text("Err_Outside_Encoding_2") + fOutside + "\n\n" +
       where);
}
