#include "document/text_finder.h"

#include "document/edit_session.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "platform/app/message.h"
#include "platform/support/cut_text.h"
#include "plugin/message_codes.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <vector>

namespace {

/** Bytes; more is no line of lyrics. */
constexpr size_t kMostText = 1000;
/** Bytes of all lines; larger files cannot be opened. */
constexpr size_t kMostBytes = size_t{1} << 30;

std::string text_in(const BMessage& message, const char* field) {
  return std::string(cut_text(message.GetString(field), kMostText));
}

TFindOptions options_in(const BMessage& message) {
  return {text_in(message, "Text"), message.GetBool("Case"), message.GetBool("NoTags")};
}

} // namespace

TFindPlace TTextFinder::Place(bool backward) const {
  const int32 line = std::max(fSession->Active().CurLine(), int32{0});
  const bool isAtShown = fDocumentNumber == fDocument->Number() && line == fShown.line;
  if (!isAtShown) return {line, 0};
  const TMatch& match = fShown.match;
  return {line, backward ? match.begin : match.begin + match.length};
}

bool TTextFinder::Handle(const BMessage& message) {
  if (message.what == kMsgFind) {
    Find(message);
    return true;
  }
  if (message.what != kMsgReplace) return false;
  Replace(message);
  return true;
}

void TTextFinder::Find(const BMessage& message) {
  fSession->Active().FlushEdits();
  ShowNext(options_in(message), message.GetBool("Backward"));
}

void TTextFinder::ShowNext(const TFindOptions& options, bool backward) {
  const auto found = nearest_match(fDocument->Lines(), options, Place(backward), backward);
  if (!found) {
    fDocumentNumber = -1;
    return fSession->Report(gLLT->Text("StatBarStr_Not_Found") + options.text);
  }
  fDocumentNumber = fDocument->Number();
  fShown = *found;
  const std::string& line = fDocument->Lines()[static_cast<size_t>(found->line)];
  fSession->Active().ShowMatch(found->line, line.substr(0, found->match.begin),
                               line.substr(found->match.begin, found->match.length));
  fSession->Report(gLLT->Text("StatBarStr_Found_In") + std::to_string(found->line + 1));
}

void TTextFinder::Replace(const BMessage& message) {
  fSession->Active().FlushEdits();
  const TFindOptions options = options_in(message);
  const std::string by = text_in(message, "With");
  if (message.GetBool("All")) return ReplaceAll(options, by);
  ReplaceShown(options, by);
  ShowNext(options, false);
}

void TTextFinder::ReplaceShown(const TFindOptions& options, const std::string& by) {
  const auto row = static_cast<size_t>(fShown.line);
  if (fDocumentNumber != fDocument->Number() || row >= fDocument->Lines().size() ||
      fSession->Active().CurLine() != fShown.line)
    return;
  const std::vector<TMatch> matches = matches_in(fDocument->Lines()[row], options);
  const auto is_shown = [this](const TMatch& match) {
    return match.begin == fShown.match.begin && match.length == fShown.match.length;
  };
  if (std::ranges::none_of(matches, is_shown)) return;
  fSession->Rewrite([&](std::list<std::string>* lines) {
    std::string& line = *std::next(lines->begin(), fShown.line);
    line = replaced(line, {fShown.match}, by);
  });
  fShown.match.length = by.size(); // the next search begins behind it
}

void TTextFinder::ReplaceAll(const TFindOptions& options, const std::string& by) {
  std::list<std::string> lines;
  size_t count = 0;
  size_t bytes = 0;
  for (const std::string& line : fDocument->Lines()) {
    const std::vector<TMatch> matches = matches_in(line, options);
    count += matches.size();
    bytes += line.size() + matches.size() * by.size();
    if (bytes > kMostBytes) return fSession->Report(gLLT->Text("StatBarStr_Too_Much_Text"));
    lines.push_back(replaced(line, matches, by));
  }
  if (count == 0) return fSession->Report(gLLT->Text("StatBarStr_Not_Found") + options.text);
  fSession->Rewrite([&](std::list<std::string>* all) { all->swap(lines); });
  fDocumentNumber = -1;
  fSession->Report(gLLT->Text("StatBarStr_Replaced_Matches") + std::to_string(count));
}
