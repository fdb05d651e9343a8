#include "platform/interface/text_view.h"

#include "platform/app/message.h"
#include "platform/interface/text_peer.h"

using display::TextPeer;

BTextView::BTextView(BRect frame, const char* name, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags) {}

std::shared_ptr<display::ViewPeer> BTextView::MakePeer() {
  auto peer = std::make_shared<TextPeer>(BMessenger(this));
  peer->SetText(fDetachedText);
  peer->SetEditable(fEditable);
  if (fHasTextColor) peer->SetTextColor(HighColor());
  if (!fPlaceholder.empty()) peer->SetPlaceholder(fPlaceholder);
  return peer;
}

void BTextView::DetachedFromWindow() {
  fDetachedText = Text();
}

TextPeer* BTextView::Control() const {
  return static_cast<TextPeer*>(Peer());
}

void BTextView::SetText(std::string_view text) {
  if (Control())
    Control()->SetText(std::string(text));
  else
    fDetachedText = text;
}

std::string BTextView::Text() const {
  return Control() ? Control()->Text() : fDetachedText;
}

void BTextView::InsertText(std::string_view text) {
  if (Control()) Control()->Insert(std::string(text));
}

void BTextView::ScrollToSelection() {
  if (Control()) Control()->ScrollToSelection();
}

void BTextView::GoToLine(int32 line) {
  if (Control()) Control()->GoToLine(line);
}

int32 BTextView::CurrentLine() const {
  return Control() ? Control()->CurrentLine() : 0;
}

void BTextView::SelectInLine(int32 line, std::string_view before, std::string_view text) {
  if (Control()) Control()->SelectInLine(line, std::string(before), std::string(text));
}

void BTextView::SetTextRect(BRect rect) {
  if (Control()) Control()->SetCountWidth(rect.Width() > Bounds().Width() ? static_cast<int>(rect.Width()) : 0);
}

bool BTextView::ReplaceLines(const text_change& change) {
  FlushChanges();
  return Control() && Control()->ReplaceLines(change);
}

void BTextView::FlushChanges() {
  if (!Control()) return;
  for (const text_change& change : Control()->TakeChanges()) TextChanged(change);
}

void BTextView::MakeEditable(bool editable) {
  fEditable = editable;
  if (Control()) Control()->SetEditable(editable);
}

void BTextView::SetFontAndColor(const BFont& font, rgb_color color) {
  SetFont(&font);
  fHasTextColor = true;
  SetHighColor(color);
  if (Control()) Control()->SetTextColor(color);
}

void BTextView::KeyDown(const char* bytes, int32 count) {
  const auto first = static_cast<uint8>(bytes[0]);
  const bool typesTab = first == B_TAB && fEditable; // in a read-only text it moves the focus
  const bool typesText = first == B_RETURN || typesTab || (first >= B_SPACE && first != B_DELETE);
  if (!typesText) return BView::KeyDown(bytes, count);
  if (fEditable) InsertText(std::string_view(bytes, static_cast<size_t>(count)));
}

void BTextView::CommandPressed(const BMessage& message) {
  int32 key = 0;
  int32 modifiers = 0;
  if (!Control() || message.FindInt32("key", &key) != B_OK || message.FindInt32("modifiers", &modifiers) != B_OK)
    return;
  const std::string pasted = Control()->DoCommand(key, modifiers);
  if (!pasted.empty()) InsertText(pasted);
}

void BTextView::SetPlaceholder(const std::string& text) {
  fPlaceholder = text;
  if (Control()) Control()->SetPlaceholder(text);
}

void BTextView::DoCommand(char letter) {
  if (!Control()) return;
  const std::string pasted = Control()->DoCtrlKey(letter);
  if (!pasted.empty()) InsertText(pasted);
}

void BTextView::TextEntered(const BMessage& message) {
  std::string text;
  int32 from = 0;
  int32 length = 0;
  if (message.FindString("text", &text) != B_OK) return;
  if (Control() && message.FindInt32("from", &from) == B_OK && message.FindInt32("length", &length) == B_OK)
    Control()->SelectFromCaret(from, length);
  InsertText(text);
}

void BTextView::MessageReceived(BMessage* message) {
  switch (message->what) {
  case display::DISPLAY_TEXT_COMMAND:
    return CommandPressed(*message);
  case display::DISPLAY_TEXT_ENTERED:
    return TextEntered(*message);
  case display::DISPLAY_TEXT_TOO_LONG:
    return PasteRefused();
  case display::DISPLAY_TEXT_CHANGED:
    return FlushChanges();
  default:
    BView::MessageReceived(message);
  }
}
