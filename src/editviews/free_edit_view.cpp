#include "editviews/free_edit_view.h"

#include "family/appearance.h"
#include "language/llt.h"
#include "lyrics/line_limit.h"
#include "lyrics/lyrics_file.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {

/** No line of ordinary length wraps at this width. */
constexpr float kUnwrappedWidth = 10000;

/** Keys that move the caret or have no effect on text. */
bool leaves_text_alone(char key) {
  switch (key) {
  case B_HOME:
  case B_END:
  case B_INSERT:
  case B_PAGE_UP:
  case B_PAGE_DOWN:
  case B_FUNCTION_KEY:
  case B_ESCAPE:
  case B_LEFT_ARROW:
  case B_RIGHT_ARROW:
  case B_UP_ARROW:
  case B_DOWN_ARROW:
    return true;
  default:
    return false;
  }
}

} // namespace

TFreeEditView::TFreeEditView(BRect frame)
    : BTextView(frame, "FreeEditView", B_FOLLOW_ALL_SIDES, B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE) {
  SetAccessibleName("Lyrics");
  LanguageChanged();
}

void TFreeEditView::LanguageChanged() {
  SetPlaceholder(gLLT->Text("Hint_Empty_Document"));
}

void TFreeEditView::SetLines(const std::list<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  SetText(text);
  fLineCount = static_cast<int32>(lines.size());
}

void TFreeEditView::GetLines(std::list<std::string>* lines) const {
  std::list<std::string> own;
  text_to_lines(Text().c_str(), &own);
  lines->splice(lines->end(), own);
}

void TFreeEditView::WidenTextRect() {
  SetTextRect({0, 0, kUnwrappedWidth, Bounds().bottom});
}

void TFreeEditView::FitTextRect() {
  SetTextRect(Bounds());
}

void TFreeEditView::SetCurLine(int32 line) {
  WidenTextRect();
  GoToLine(line);
  FitTextRect();
  ScrollToSelection();
}

int32 TFreeEditView::CurLine() {
  WidenTextRect();
  const int32 line = CurrentLine();
  FitTextRect();
  return line;
}

void TFreeEditView::SetAppearance() {
  const auto look = gPref->Values();
  SetViewColor(look->background);
  SetLowColor(look->background);
  BFont font;
  GetFont(&font);
  font = lyrics_font(font, *look);
  SetFontAndColor(font, look->lyrics);
  Invalidate();
}

std::string TFreeEditView::StatBarSymbol() const {
  return gLLT->Text("StatBarSymbol_Free_Edit");
}

std::string TFreeEditView::DefaultStatBarStr() const {
  return gLLT->Text("Default_StatBarStr_Free_Edit");
}

void TFreeEditView::Clear() {
  SetLines({});
  SetModified(false);
}

void TFreeEditView::KeyDown(const char* bytes, int32 count) {
  BTextView::KeyDown(bytes, count);
  // Also for keys without effect, such as Backspace at the start.
  if (count != 1 || !leaves_text_alone(bytes[0])) SetModified(true);
}

void TFreeEditView::InsertText(std::string_view text) {
  if (fLineCount + std::ranges::count(text, '\n') > kMostLines) return PasteRefused();
  BTextView::InsertText(text);
  SetModified(true);
}

void TFreeEditView::PasteRefused() {
  BMessage report(kMsgStatBarStr);
  report.AddString("StatBarStr", gLLT->Text("Err_Paste_Too_Long"));
  if (Window()) Window()->PostMessage(&report);
}

void TFreeEditView::AttachedToWindow() {
  BTextView::AttachedToWindow();
  SetAppearance();
}

void TFreeEditView::FrameResized(float width, float height) {
  BTextView::FrameResized(width, height);
  SetTextRect({0, 0, width, height});
}

void TFreeEditView::TextChanged(const text_change& change) {
  TLinesChange edit{change.first, change.removed, change.lines};
  // The text after the last line feed is a line only if it is not empty.
  const bool touchesEnd = change.first + static_cast<int32>(change.lines.size()) == change.count;
  if (touchesEnd && edit.lines.back().empty()) edit.lines.pop_back();
  edit.removed = std::clamp(change.removed, int32{0}, std::max(int32{0}, fLineCount - change.first));
  fLineCount += static_cast<int32>(edit.lines.size()) - edit.removed;
  const int32 last = change.first + std::max(int32{0}, static_cast<int32>(edit.lines.size()) - 1);
  if (Listener()) Listener()->LinesEdited(edit, TEditKind::kTyping, change.first, last);
}

bool TFreeEditView::Replay(const TReplay& replay) {
  const TLinesChange& step = replay.change;
  if (!ReplaceLines({step.first, step.removed, step.lines, 0})) return false;
  fLineCount += static_cast<int32>(step.lines.size()) - step.removed;
  if (step.lines.size() > 1) SetCurLine(replay.line); // else the caret is already after the change
  return true;
}
