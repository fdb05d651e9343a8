#include "document/proposal_list.h"

#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr float kMargin = 4;
/** Where the columns begin, in widths of a digit. */
constexpr float kTagAt = 6;
constexpr float kDifferenceAt = 30;
constexpr float kTextAt = 41;

std::string seconds(int32 differenceMs) {
  char text[24];
  std::snprintf(text, sizeof text, "%s%d.%02d s", differenceMs < 0 ? "−" : "+", std::abs(differenceMs) / 1000,
                std::abs(differenceMs) % 1000 / 10);
  return text;
}

} // namespace

class TProposalList::TItem : public BListItem {
public:
  explicit TItem(TProposalRow row) : fRow(std::move(row)) {}
  const TProposedTag& Tag() const { return fRow.tag; }

  void Update(BView* view, const BFont* font) override {
    BFont own;
    view->GetFont(&own);
    own.GetHeight(&fFontHeight);
    fDigit = own.StringWidth("0");
    BListItem::Update(view, font);
  }

  void DrawItem(BView* view, BRect frame, bool) override {
    const auto look = gPref->Values();
    view->SetHighColor(IsSelected() ? look->activeBackground : look->background);
    view->FillRect(frame);
    view->SetHighColor(IsSelected() ? look->activeLyrics : look->lyrics);
    auto* const list = static_cast<BListView*>(view);
    const auto draw = [&](const std::string& text, float digits, float endDigits) {
      const float left = frame.left + kMargin + digits * fDigit;
      const float right = endDigits > 0 ? frame.left + endDigits * fDigit : frame.right - kMargin;
      list->DrawRowText({text, {left, frame.top + fFontHeight.ascent}, std::max(right - left, 1.0F)});
    };
    draw(std::to_string(fRow.tag.line + 1), 0, kTagAt);
    draw(fRow.from + " → " + fRow.to, kTagAt, kDifferenceAt);
    draw(seconds(fRow.differenceMs), kDifferenceAt, kTextAt);
    draw(fRow.text, kTextAt, 0);
  }

private:
  const TProposalRow fRow;
  font_height fFontHeight;
  float fDigit = 8;
};

TProposalList::TProposalList() : BListView({}, "Proposals", B_RANGE_SELECTION_LIST) {}

TProposalList::~TProposalList() {
  MakeEmpty();
}

void TProposalList::SetRows(std::vector<TProposalRow> rows) {
  MakeEmpty();
  fRows.clear();
  for (TProposalRow& row : rows) fRows.push_back(std::make_unique<TItem>(std::move(row)));
  SetViewColor(gPref->Values()->background);
  ShowItems(0);
}

void TProposalList::ShowItems(int32 selected) {
  std::vector<BListItem*> items;
  for (const auto& row : fRows) items.push_back(row.get());
  AddList(items);
  Select(std::min(selected, static_cast<int32>(items.size()) - 1));
  ScrollToSelection();
}

std::vector<TProposedTag> TProposalList::Take(bool all) {
  const row_selection selected = Selection();
  std::vector<TProposedTag> taken;
  std::vector<std::unique_ptr<TItem>> left;
  MakeEmpty();
  for (size_t i = 0; i < fRows.size(); ++i) {
    const bool isTaken = all || (static_cast<int32>(i) >= selected.first && static_cast<int32>(i) <= selected.last);
    if (isTaken) taken.push_back(fRows[i]->Tag());
    if (!isTaken) left.push_back(std::move(fRows[i]));
  }
  fRows = std::move(left);
  ShowItems(std::max(selected.first, int32{0}));
  return taken;
}

const TProposedTag* TProposalList::Current() const {
  const int32 row = CurrentSelection();
  return row >= 0 && row < static_cast<int32>(fRows.size()) ? &fRows[static_cast<size_t>(row)]->Tag() : nullptr;
}

void TProposalList::Invoke() {
  if (Window()) Window()->PostMessage(kMsgHearProposal);
}
