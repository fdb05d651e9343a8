#include "editviews/tag_input_item.h"

#include "editviews/problem_texts.h"
#include "lyrics/tag_spans.h"
#include "platform/interface/list_view.h"
#include "plugin/pref.h"
#include "toolkit/readable_colors.h"

#include <algorithm>

namespace {
/** A bar at the right edge, clear of the text. */
constexpr float kSungMarkWidth = 5;
constexpr float kMargin = 4;
/** Between the text and the mark at the right edge. */
constexpr float kSignWidth = 14;

/** The tags at the start of a line, with their brackets. */
size_t bytes_of_tags(const std::string& line) {
  size_t end = 0;
  while (end < line.size() && line[end] == '[') {
    const std::optional<TTagSpan> tag = time_tag_at(line, end);
    if (!tag) break;
    end = tag->End();
  }
  return end;
}
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
  fWords ? DrawWords(view, frame, background) : DrawText(view, frame, background);
  if (fProblem.problem != TLineProblem::kNone) DrawSign(view, frame, background);
}

void TTagInputItem::DrawText(BView* view, BRect frame, rgb_color background) {
  const auto look = gPref->Values();
  const rgb_color color = IsSelected() ? look->activeLyrics : look->lyrics;
  view->SetHighColor(color);
  view->SetLowColor(background);
  const float right = frame.right - kSungMarkWidth - kSignWidth;
  static_cast<BListView*>(view)->DrawRowText({fText, BPoint{frame.left + kMargin, frame.top + smFontH.ascent},
                                              std::max(right - frame.left - kMargin, 1.0F), bytes_of_tags(fText),
                                              quiet_color(color, background)});
}

void TTagInputItem::DrawWords(BView* view, BRect frame, rgb_color background) {
  const auto look = gPref->Values();
  auto* const list = static_cast<BListView*>(view);
  const BPoint start{frame.left + kMargin, frame.top + smFontH.ascent};
  view->SetLowColor(background);
  draw_word_row(list, TTimedLine(fText), *fWords,
                {IsSelected() ? look->activeLyrics : look->lyrics, background, look->activeFrame, start,
                 frame.right - kSungMarkWidth - kSignWidth, smFontH});
  if (!fWords->spoken.empty()) list->DrawRowText({" ", start, 0, 0, {}, fWords->spoken});
}

/** Screen readers get its meaning as the description of the row. */
void TTagInputItem::DrawSign(BView* view, BRect frame, rgb_color background) {
  view->SetHighColor(warning_color(background));
  const float left = frame.right - kSungMarkWidth - kSignWidth + kMargin;
  static_cast<BListView*>(view)->DrawRowText(
      {problem_sign(fProblem.problem), BPoint{left, frame.top + smFontH.ascent}, 0, 0, {}, problem_text(fProblem)});
}
