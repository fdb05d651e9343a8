#include "toolkit/tool_bar.h"

#include "platform/interface/tool_button_peer.h"

#include <algorithm>
#include <string_view>

namespace {
constexpr float kMargin = 2;
} // namespace

TToolBar::TToolBar(BRect frame, const char* name, uint32 resizingMode) : BView(frame, name, resizingMode) {
  SetAccessibleRole(B_TOOL_BAR_ROLE);
}

TToolButton* TToolBar::AppendButton(BRect frame, const char* name, const BBitmap& bitmap, BMessage* message) {
  auto* const button = new TToolButton(frame, name, bitmap, message);
  button->SetFlat(fIsFlat);
  fButtons.push_back(button);
  AddChild(button);
  if (Window()) LayOut();
  return button;
}

void TToolBar::AppendSeparator() {
  AddChild(new TSeparatorButton({}));
  if (Window()) LayOut();
}

TToolButton* TToolBar::FindItem(const char* name) const {
  const auto found =
      std::ranges::find_if(fButtons, [name](const TToolButton* b) { return std::string_view(b->Name()) == name; });
  return found == fButtons.end() ? nullptr : *found;
}

TToolButton* TToolBar::ButtonAt(int32 index) const {
  return index >= 0 && index < CountButtons() ? fButtons[static_cast<size_t>(index)] : nullptr;
}

int32 TToolBar::IndexOf(const TToolButton* button) const {
  const auto found = std::ranges::find(fButtons, button);
  return found == fButtons.end() ? -1 : static_cast<int32>(found - fButtons.begin());
}

void TToolBar::SetFlat(bool flat) {
  fIsFlat = flat;
  for (TToolButton* button : fButtons) button->SetFlat(flat);
}

float TToolBar::PreferredWidth() const {
  const BView* const last = ChildAt(CountChildren() - 1);
  return last ? last->Frame().right + kMargin : 2 * kMargin;
}

void TToolBar::AllAttached() {
  fTips = std::make_unique<TToolTip>(Window());
  LayOut();
}

void TToolBar::DetachedFromWindow() {
  fTips.reset();
}

void TToolBar::LayOut() {
  const display::ToolMetrics metrics = display::tool_metrics();
  float left = kMargin;
  for (int32 i = 0; BView* const child = ChildAt(i); ++i) {
    const auto* const button = dynamic_cast<TToolButton*>(child);
    child->MoveTo(left, kMargin);
    child->ResizeTo(button ? std::max(metrics.button.x, button->LeastWidth()) : metrics.separator - 1,
                    metrics.button.y);
    left = child->Frame().right + 1;
  }
  ResizeTo(Bounds().Width(), metrics.button.y + 2 * kMargin);
}
