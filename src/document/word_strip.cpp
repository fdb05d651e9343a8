#include "document/word_strip.h"

#include "platform/interface/string_view.h"

namespace {

constexpr float kHeight = 15;

BRect bottom_of(BRect frame) {
  frame.top = frame.bottom - kHeight + 1;
  return frame;
}

} // namespace

TWordStrip::TWordStrip(BView* parent, BView* above)
    : fAbove(above),
      fText(new BStringView(bottom_of(above->Frame()), "WordTimes", "", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM)) {
  fText->Hide();
  parent->AddChild(fText);
}

void TWordStrip::Show(const std::optional<std::string>& text) {
  if (text) fText->SetText(text->c_str());
  const bool isShown = !fText->IsHiddenInParent();
  if (isShown == text.has_value()) return;
  const BRect frame = fAbove->Frame();
  fAbove->ResizeTo(frame.Width(), frame.Height() + (isShown ? kHeight : -kHeight));
  isShown ? fText->Hide() : fText->Show();
}

void TWordStrip::MoveBy(float step) {
  const BRect frame = fText->Frame();
  fText->MoveTo(frame.left, frame.top + step);
}
