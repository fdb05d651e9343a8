#include "companion/prefs/command_list.h"

#include "language/llt.h"
#include "platform/interface/key_text.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {
constexpr float kMargin = 4;
constexpr float kPartOfName = 0.66F;
} // namespace

class TCommandList::TRow : public BListItem {
public:
  void Show(const std::string& name, const std::string& keys) {
    fName = name;
    fKeys = keys;
  }
  void Update(BView* view, const BFont* font) override {
    BFont own;
    view->GetFont(&own);
    own.GetHeight(&fFontHeight);
    BListItem::Update(view, font);
  }
  void DrawItem(BView* view, BRect frame, bool) override {
    const auto look = gPref->Values();
    view->SetHighColor(IsSelected() ? look->activeBackground : look->background);
    view->FillRect(frame);
    view->SetHighColor(IsSelected() ? look->activeLyrics : look->lyrics);
    const float baseLine = frame.top + fFontHeight.ascent;
    const float keysAt = frame.left + frame.Width() * kPartOfName;
    auto* const list = static_cast<BListView*>(view);
    list->DrawRowText({fName, {frame.left + kMargin, baseLine}, std::max(keysAt - frame.left - 2 * kMargin, 1.0F)});
    list->DrawRowText({fKeys, {keysAt, baseLine}, std::max(frame.right - keysAt - kMargin, 1.0F)});
  }

private:
  std::string fName;
  std::string fKeys;
  font_height fFontHeight;
};

TCommandList::TCommandList(std::function<void()> whenSelected)
    : BListView({}, "Commands"), fWhenSelected(std::move(whenSelected)) {
  std::vector<BListItem*> rows;
  for (size_t i = 0; i < kCommands; ++i) rows.push_back(fRows.emplace_back(std::make_unique<TRow>()).get());
  AddList(rows);
}

TCommandList::~TCommandList() {
  fWhenSelected = nullptr; // the page that deletes its views is gone already
  MakeEmpty();
}

void TCommandList::SelectionChanged() {
  if (fWhenSelected) fWhenSelected();
}

void TCommandList::ShowKeys(const TKeys& keys) {
  SetViewColor(gPref->Values()->background);
  std::vector<std::string> shown;
  for (const TEditorCommand& each : all_commands()) shown.push_back(keys.Of(each.id));
  shown = shown_keys(shown);
  for (size_t i = 0; i < kCommands; ++i) {
    fRows[i]->Show(gLLT->Text(all_commands()[i].textKey), shown[i]);
    InvalidateItem(static_cast<int32>(i));
  }
}

TCommandId TCommandList::Selected() const {
  return command_of(CurrentSelection()).value_or(TCommandId{});
}
