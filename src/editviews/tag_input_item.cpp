#include "editviews/tag_input_item.h"

#include "platform/interface/view.h"
#include "plugin/pref.h"

namespace {
/** A bar at the right edge, clear of the text. */
constexpr float kSungMarkWidth = 5;
} // namespace

font_height TTagInputItem::smFontH;

void TTagInputItem::Update(BView* view, const BFont* font) {
  BFont viewFont;
  view->GetFont(&viewFont);
  viewFont.GetHeight(&smFontH);
  BListItem::Update(view, font);
}

void TTagInputItem::DrawItem(BView* view, BRect frame, bool) {
  const auto look = gPref->Values();
  const rgb_color background = IsSelected() ? look->activeBackground : look->background;
  view->SetHighColor(background);
  view->FillRect(frame);
  if (IsCurrent() && look->useActiveFrame) {
    view->SetHighColor(look->activeFrame);
    view->StrokeRect(frame);
  }
  if (fIsSung) {
    view->SetHighColor(look->activeFrame);
    view->FillRect({frame.right - kSungMarkWidth, frame.top + 1, frame.right - 1, frame.bottom - 1});
  }
  view->SetHighColor(IsSelected() ? look->activeLyrics : look->lyrics);
  view->SetLowColor(background);
  view->DrawString(fText, BPoint{frame.left, frame.top + smFontH.ascent});
}
