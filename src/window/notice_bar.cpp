#include "window/notice_bar.h"

#include "language/llt.h"
#include "platform/interface/button.h"
#include "platform/interface/string_view.h"
#include "plugin/message_codes.h"
#include "toolkit/krv_win.h"

#include <algorithm>

namespace {

constexpr float kStripe = 4;
constexpr float kMargin = 6;
constexpr float kGap = 6;
constexpr float kLeft = kStripe + kMargin;
/** The stripe at the left edge, visible on light and on dark desktops. */
constexpr rgb_color kStripeColor{230, 150, 0, 255};
constexpr const char* kCloseSign = "\u00D7";

/** Size in pixels: one more than BRect::Width and Height. */
BPoint room_of(BView* view) {
  const BPoint size = view->PreferredSize();
  return {size.x + 1, size.y + 1};
}

void place(BView* view, float left, float top, float width, float height) {
  view->MoveTo(left, top);
  view->ResizeTo(std::max(width, 1.0F) - 1, height - 1);
}

float width_of(const std::vector<BButton*>& buttons) {
  float width = 0;
  for (BButton* button : buttons) width += kGap + room_of(button).x;
  return width;
}

} // namespace

TNoticeBar::TNoticeBar(BRect frame, const char* name, std::function<void()> giveFocusBack)
    : TKRVView(frame, name, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, B_WILL_DRAW), fGiveFocusBack(std::move(giveFocusBack)),
      fText(new BStringView({0, 0, 0, 0}, "NoticeText", "")),
      fClose(new BButton({0, 0, 0, 0}, "NoticeClose", kCloseSign, new BMessage(kMsgNoticeClose))) {
  SetAccessibleRole(B_NOTIFICATION_ROLE);
  SetHighColor(kStripeColor);
  AddChild(fText);
  fClose->SetFocusByTabOnly();
  AddChild(fClose);
  Hide();
}

void TNoticeBar::AllAttached() {
  fClose->SetTarget(this);
  LanguageChanged();
  TKRVView::AllAttached();
}

void TNoticeBar::LanguageChanged() {
  fClose->SetToolTip(gLLT->Text("Button_Close"));
  fClose->SetAccessibleName(gLLT->Text("Button_Close"));
}

bool TNoticeBar::HasNotice(int32 id) const {
  return std::ranges::any_of(fNotices, [id](const TNotice& notice) { return notice.id == id; });
}

void TNoticeBar::ShowNotice(const TNotice& notice) {
  const auto same = std::ranges::find(fNotices, notice.id, &TNotice::id);
  const bool isFirst = same == fNotices.begin(); // also of an empty queue
  if (same != fNotices.end())
    *same = notice;
  else
    fNotices.push_back(notice);
  if (isFirst) ShowFirst();
}

void TNoticeBar::RemoveNotice(int32 id) {
  const auto found = std::ranges::find(fNotices, id, &TNotice::id);
  if (found == fNotices.end()) return;
  const bool wasShown = found == fNotices.begin();
  fNotices.erase(found);
  if (wasShown) ShowFirst();
}

/** Hidden and shown again even if another notice was shown, since screen readers announce what appears. */
void TNoticeBar::ShowFirst() {
  const bool hadFocus = HasFocus();
  if (!IsHiddenInParent()) Hide();
  DeleteButtons();
  if (!fNotices.empty()) {
    const TNotice& notice = fNotices.front();
    fText->SetText(notice.text.c_str());
    fText->SetToolTip(notice.text);
    SetAccessibleName(notice.text);
    MakeButtons(notice.buttons);
    LayOut();
    Show();
  }
  static_cast<TKRVWin*>(Window())->PlaceMainChild();
  if (hadFocus) fGiveFocusBack();
}

void TNoticeBar::MakeButtons(const std::vector<TNoticeButton>& buttons) {
  RemoveChild(fClose); // the Tab order is the order of adding
  for (size_t i = 0; i < std::min(buttons.size(), kMostNoticeButtons); ++i) {
    auto* const message = new BMessage(kMsgNoticeButton);
    message->AddInt32("Notice", fNotices.front().id);
    message->AddInt32("Index", static_cast<int32>(i));
    const std::string name = "NoticeButton" + std::to_string(i);
    auto* const button = new BButton({0, 0, 0, 0}, name.c_str(), buttons[i].label.c_str(), message);
    button->SetFocusByTabOnly();
    fButtons.push_back(button);
    AddChild(button);
    button->SetTarget(this);
  }
  AddChild(fClose);
}

void TNoticeBar::DeleteButtons() {
  for (BButton* button : fButtons) {
    RemoveChild(button);
    delete button;
  }
  fButtons.clear();
}

void TNoticeBar::LayOut() {
  if (fNotices.empty()) return;
  const float width = Bounds().Width() + 1;
  float rowHeight = std::max(room_of(fText).y, room_of(fClose).y);
  for (BButton* button : fButtons) rowHeight = std::max(rowHeight, room_of(button).y);
  const bool fits =
      kLeft + room_of(fText).x + width_of(fButtons) + kGap + rowHeight + kMargin <= width || fButtons.empty();
  const float bottom = fits ? PlaceSideBySide(width, rowHeight) : PlaceInRows(width, rowHeight);
  place(fClose, width - kMargin - rowHeight, kMargin, rowHeight, rowHeight);
  if (Bounds().Height() == bottom + kMargin - 1) return;
  ResizeTo(Bounds().Width(), bottom + kMargin - 1);
  static_cast<TKRVWin*>(Window())->PlaceMainChild();
}

/** Returns the bottom of what was placed. */
float TNoticeBar::PlaceSideBySide(float width, float rowHeight) {
  const float right = width - kMargin - rowHeight - width_of(fButtons);
  place(fText, kLeft, kMargin, right - kGap - kLeft, rowHeight);
  float left = right;
  for (BButton* button : fButtons) {
    place(button, left, kMargin, room_of(button).x, rowHeight);
    left += room_of(button).x + kGap;
  }
  return kMargin + rowHeight;
}

/** The text in the first row, the buttons in as many further ones as they need. */
float TNoticeBar::PlaceInRows(float width, float rowHeight) {
  place(fText, kLeft, kMargin, width - kMargin - rowHeight - kGap - kLeft, rowHeight);
  float left = kLeft;
  float top = kMargin + rowHeight + kGap;
  for (BButton* button : fButtons) {
    const float own = room_of(button).x;
    if (left > kLeft && left + own + kMargin > width) {
      left = kLeft;
      top += rowHeight + kGap;
    }
    place(button, left, top, std::min(own, width - kMargin - left), rowHeight);
    left += own + kGap;
  }
  return top + rowHeight;
}

void TNoticeBar::Draw(BRect) {
  FillRect({0, 0, kStripe - 1, Bounds().bottom});
}

void TNoticeBar::KeyDown(const char* bytes, int32 count) {
  if (bytes[0] == B_ESCAPE) return Close();
  TKRVView::KeyDown(bytes, count);
}

void TNoticeBar::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgNoticeButton:
    return ButtonPressed(*message);
  case kMsgNoticeClose:
    return Close();
  default:
    TKRVView::MessageReceived(message);
  }
}

/** A press that was on its way when another notice took the place means nothing. */
void TNoticeBar::ButtonPressed(const BMessage& message) {
  int32 id = 0;
  int32 index = 0;
  if (fNotices.empty() || message.FindInt32("Notice", &id) != B_OK || message.FindInt32("Index", &index) != B_OK)
    return;
  const TNotice& notice = fNotices.front();
  if (notice.id != id || index < 0 || static_cast<size_t>(index) >= notice.buttons.size()) return;
  notice.target.SendMessage(&notice.buttons[static_cast<size_t>(index)].message, BMessenger(), 0);
}

void TNoticeBar::Close() {
  if (fNotices.empty()) return;
  const TNotice notice = fNotices.front();
  RemoveNotice(notice.id);
  if (notice.whenClosed.what != 0) notice.target.SendMessage(&notice.whenClosed, BMessenger(), 0);
}

bool TNoticeBar::HasFocus() const {
  return fClose->IsFocus() || std::ranges::any_of(fButtons, [](const BButton* button) { return button->IsFocus(); });
}
