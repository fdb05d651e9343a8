#include "window/find_bar.h"

#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/check_box.h"
#include "platform/interface/string_view.h"
#include "platform/interface/text_control.h"
#include "platform/kernel/modifiers.h"
#include "plugin/message_codes.h"
#include "toolkit/krv_win.h"

#include <algorithm>
#include <initializer_list>

namespace {

constexpr float kMargin = 6;
constexpr float kGap = 6;
/** Of a text field; it gets what the other views of its row leave. */
constexpr float kLeastField = 140;
constexpr const char* kCloseSign = "\u00D7";

/** Size in pixels: one more than BRect::Width and Height. */
BPoint room_of(BView* view) {
  const BPoint size = view->PreferredSize();
  return {size.x + 1, size.y + 1};
}

bool is_shift_held(const BWindow* window) {
  const BMessage* const key = window ? window->CurrentMessage() : nullptr;
  int32 held = 0;
  return key && key->FindInt32("modifiers", &held) == B_OK && (static_cast<uint32>(held) & B_SHIFT_KEY);
}

} // namespace

TFindBar::TFindBar(BRect frame, const char* name, BHandler* finder, std::function<void()> giveFocusBack)
    : TKRVView(frame, name, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP), fFinder(finder),
      fGiveFocusBack(std::move(giveFocusBack)), fTextLabel(new BStringView({}, "FindTextLabel", "")),
      fText(new BTextControl({}, "FindText", "", "")), fWithLabel(new BStringView({}, "ReplaceWithLabel", "")),
      fWith(new BTextControl({}, "ReplaceWith", "", "")) {
  AddChild(fTextLabel);
  AddChild(fText);
  fPrevious = AddButton("FindPrevious", kMsgFindNext, "Backward", true);
  fNext = AddButton("FindNext", kMsgFindNext, "Backward", false);
  fCase = AddBox("FindCase", false);
  fNoTags = AddBox("FindNoTags", true);
  fClose = AddButton("FindClose", kMsgCloseFind, "", false);
  AddChild(fWithLabel);
  AddChild(fWith);
  fReplace = AddButton("ReplaceOne", kMsgReplace, "All", false);
  fReplaceAll = AddButton("ReplaceAll", kMsgReplace, "All", true);
  Hide();
}

BButton* TFindBar::AddButton(const char* name, uint32 code, const char* field, bool value) {
  auto* const message = new BMessage(code);
  if (*field) message->AddBool(field, value);
  auto* const button = new BButton({}, name, "", message);
  AddChild(button);
  return button;
}

BCheckBox* TFindBar::AddBox(const char* name, bool isOn) {
  auto* const box = new BCheckBox({}, name, "", nullptr);
  box->SetValue(isOn ? 1 : 0);
  AddChild(box);
  return box;
}

void TFindBar::AllAttached() {
  for (BButton* button : {fPrevious, fNext, fClose, fReplace, fReplaceAll}) button->SetTarget(this);
  LanguageChanged();
}

void TFindBar::LanguageChanged() {
  fText->SetLabel(gLLT->Text("Label_Find"));
  fTextLabel->SetText(fText->Label());
  fWith->SetLabel(gLLT->Text("Label_Replace_With"));
  fWithLabel->SetText(fWith->Label());
  fPrevious->SetLabel(gLLT->Text("Button_Previous"));
  fNext->SetLabel(gLLT->Text("Button_Next"));
  fCase->SetLabel(gLLT->Text("Label_Match_Case"));
  fNoTags->SetLabel(gLLT->Text("Label_Without_Tags"));
  fClose->SetLabel(kCloseSign);
  fClose->SetToolTip(gLLT->Text("Button_Close"));
  fClose->SetAccessibleName(gLLT->Text("Button_Close"));
  fReplace->SetLabel(gLLT->Text("Button_Replace_Match"));
  fReplaceAll->SetLabel(gLLT->Text("Button_Replace_All"));
  LayOut();
}

void TFindBar::Open(bool replaces) {
  if (IsHiddenInParent()) Show();
  fReplaces = replaces;
  for (BView* view : std::initializer_list<BView*>{fWithLabel, fWith, fReplace, fReplaceAll})
    if (view->IsHiddenInParent() == replaces) replaces ? view->Show() : view->Hide();
  LayOut();
  static_cast<TKRVWin*>(Window())->PlaceMainChild();
  fText->MakeFocus();
  fText->SelectAll();
}

void TFindBar::FindNext(bool backward) {
  if (fText->Text().empty()) return Open(fReplaces);
  Send(kMsgFind, backward, false);
}

void TFindBar::ReplaceRqtd(bool all) {
  if (!fText->Text().empty()) Send(kMsgReplace, false, all);
}

void TFindBar::Send(uint32 code, bool backward, bool all) {
  BMessage wanted(code);
  wanted.AddString("Text", fText->Text());
  wanted.AddString("With", fWith->Text());
  wanted.AddBool("Case", fCase->Value() != 0);
  wanted.AddBool("NoTags", fNoTags->Value() != 0);
  wanted.AddBool("Backward", backward);
  wanted.AddBool("All", all);
  Window()->PostMessage(&wanted, fFinder);
}

void TFindBar::Close() {
  Hide();
  static_cast<TKRVWin*>(Window())->PlaceMainChild();
  fGiveFocusBack();
}

void TFindBar::LayOut() {
  if (IsHiddenInParent()) return;
  float bottom = PlaceRow({fTextLabel, fText, fPrevious, fNext, fCase, fNoTags, fClose}, kMargin);
  if (fReplaces) bottom = PlaceRow({fWithLabel, fWith, fReplace, fReplaceAll}, bottom + kGap);
  if (Bounds().Height() == bottom + kMargin - 1) return;
  ResizeTo(Bounds().Width(), bottom + kMargin - 1);
  static_cast<TKRVWin*>(Window())->PlaceMainChild();
}

float TFindBar::WidthOf(BView* view) const {
  const BPoint room = room_of(view);
  if (view == fTextLabel || view == fWithLabel)
    return std::max(room_of(fTextLabel).x, fReplaces ? room_of(fWithLabel).x : 0);
  return view == fClose ? std::min(room.x, room.y) : room.x;
}

float TFindBar::PlaceRow(const std::vector<BView*>& views, float top) {
  const BView* const field = views[1];
  const float right = Bounds().Width() + 1 - kMargin;
  float others = 0;
  float height = 0;
  for (BView* view : views) {
    height = std::max(height, room_of(view).y);
    if (view != field) others += kGap + WidthOf(view);
  }
  const bool fits = kMargin + kLeastField + others <= right;
  const float besideField = fits ? others : WidthOf(views.front()) + kGap;
  float left = kMargin;
  for (BView* view : views) {
    const float width = view == field ? right - kMargin - besideField : WidthOf(view);
    if (left > kMargin && left + width > right) {
      left = kMargin;
      top += height + kGap;
    }
    view->MoveTo(left, top);
    view->ResizeTo(std::max(std::min(width, right - left), 1.0F) - 1, height - 1);
    left += width + kGap;
  }
  return top + height;
}

void TFindBar::KeyDown(const char* bytes, int32 count) {
  if (bytes[0] == B_ESCAPE) return Close();
  if (bytes[0] != B_RETURN) return TKRVView::KeyDown(bytes, count);
  if (fWith->IsFocus())
    ReplaceRqtd(false);
  else
    FindNext(is_shift_held(Window()));
}

void TFindBar::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgFindNext:
    return FindNext(message->GetBool("Backward"));
  case kMsgReplace:
    return ReplaceRqtd(message->GetBool("All"));
  case kMsgCloseFind:
    return Close();
  default:
    TKRVView::MessageReceived(message);
  }
}
