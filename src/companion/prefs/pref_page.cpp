#include "companion/prefs/pref_page.h"

#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/check_box.h"
#include "platform/interface/color_control.h"
#include "platform/interface/menu_field.h"
#include "platform/interface/string_view.h"
#include "platform/interface/text_control.h"
#include "plugin/message_codes.h"

#include <algorithm>

namespace {

constexpr float kMargin = 12;
constexpr float kGap = 8;
constexpr float kColumnGap = 12;

/** Size in pixels: one more than BRect::Width and Height. */
BPoint room_of(BView* view) {
  return view->PreferredSize() + BPoint{1, 1};
}

void place(BView* view, float left, float top, float width, float height) {
  view->MoveTo(left, top);
  view->ResizeTo(width - 1, height - 1);
}

} // namespace

TPrefPage::TPrefPage(const char* name) : TKRVView({}, name) {}

void TPrefPage::AddCheckBox(const char* name, const char* key, bool TPrefValues::*field) {
  AddFreeCheckBox(
      name, key, [field](const TPrefValues& values) { return values.*field; },
      [field](bool isOn, TPrefValues* values) { values->*field = isOn; });
}

void TPrefPage::AddFreeCheckBox(const char* name, const char* key, std::function<bool(const TPrefValues&)> show,
                                std::function<void(bool, TPrefValues*)> take) {
  auto* const box = new BCheckBox({}, name, "", new BMessage(kMsgSettingChanged));
  fRelabels.push_back([box, key] { box->SetLabel(gLLT->Text(key)); });
  fBindings.push_back(
      {box, [box, show = std::move(show)](const TPrefValues& values) { box->SetValue(show(values) ? 1 : 0); },
       [box, take = std::move(take)](TPrefValues* values) {
         take(box->Value() != 0, values);
         return true;
       }});
  AddWide(box);
}

BMenuField* TPrefPage::AddFreeMenu(const char* name, const char* key, std::function<int32(const TPrefValues&)> show,
                                   std::function<void(int32, TPrefValues*)> take) {
  auto* const menu = new BMenuField({}, name, "", new BMessage(kMsgSettingChanged));
  fBindings.push_back({menu,
                       [menu, show = std::move(show)](const TPrefValues& values) { menu->SetValue(show(values)); },
                       [menu, take = std::move(take)](TPrefValues* values) {
                         take(menu->Value(), values);
                         return true;
                       }});
  AddLabelled(menu, key);
  return menu;
}

void TPrefPage::AddMenu(const char* name, const char* key, int32 TPrefValues::*field,
                        const std::vector<TChoice>& choices) {
  AddChoices(
      name, key, [field](const TPrefValues& values) { return values.*field; },
      [field](int32 value, TPrefValues* values) { values->*field = value; }, choices);
}

void TPrefPage::AddChoices(const char* name, const char* key, std::function<int32(const TPrefValues&)> show,
                           std::function<void(int32, TPrefValues*)> take, const std::vector<TChoice>& choices) {
  const auto index_of = [choices, show = std::move(show)](const TPrefValues& values) {
    const auto found = std::ranges::find(choices, show(values), &TChoice::value);
    return found == choices.end() ? -1 : static_cast<int32>(found - choices.begin());
  };
  const auto take_index = [choices, take = std::move(take)](int32 index, TPrefValues* values) {
    if (index >= 0) take(choices[static_cast<size_t>(index)].value, values);
  };
  BMenuField* const menu = AddFreeMenu(name, key, index_of, take_index);
  fRelabels.push_back([menu, choices] {
    const int32 chosen = menu->Value();
    std::vector<std::string> shown;
    shown.reserve(choices.size());
    for (const TChoice& choice : choices) shown.emplace_back(gLLT->Text(choice.key));
    menu->SetChoices(shown);
    menu->SetValue(chosen);
  });
}

void TPrefPage::AddColor(const char* name, const char* key, rgb_color TPrefValues::*field) {
  auto* const color = new BColorControl({}, name, "", new BMessage(kMsgSettingChanged));
  fBindings.push_back({color, [color, field](const TPrefValues& values) { color->SetValue(values.*field); },
                       [color, field](TPrefValues* values) {
                         values->*field = color->ValueAsColor();
                         return true;
                       }});
  AddLabelled(color, key);
}

void TPrefPage::AddText(const char* name, const char* key, std::function<std::string(const TPrefValues&)> show,
                        std::function<bool(const std::string&, TPrefValues*)> take) {
  auto* const text = new BTextControl({}, name, "", "");
  text->SetModificationMessage(new BMessage(kMsgSettingChanged));
  fBindings.push_back(
      {text, [text, show = std::move(show)](const TPrefValues& values) { text->SetText(show(values).c_str()); },
       [text, take = std::move(take)](TPrefValues* values) { return take(text->Text(), values); }});
  AddLabelled(text, key);
}

void TPrefPage::AddLabelled(BControl* control, const char* key) {
  auto* const label = new BStringView({}, "", "");
  fRelabels.push_back([control, label, key] {
    const char* const text = gLLT->Text(key);
    label->SetText(text);
    control->SetLabel(text);
  });
  AddChild(label);
  AddChild(control);
  fRows.push_back({label, control, nullptr});
}

void TPrefPage::AddWide(BView* view, BButton* button) {
  AddChild(view);
  if (button) AddChild(button);
  fRows.push_back({nullptr, view, button});
}

void TPrefPage::Relabel() {
  for (const auto& relabel : fRelabels) relabel();
}

void TPrefPage::ShowValues(const TPrefValues& values) {
  for (const TBinding& binding : fBindings) binding.show(values);
}

TPrefPage::TTaken TPrefPage::Take(const void* source, TPrefValues* values) const {
  const auto found = std::ranges::find_if(fBindings, [source](const TBinding& b) { return b.control == source; });
  if (found == fBindings.end()) return TTaken::kNotMine;
  return found->take(values) ? TTaken::kTaken : TTaken::kInvalid;
}

void TPrefPage::AllAttached() {
  for (const TRow& row : fRows)
    if (row.label) row.label->SetBuddy(row.view->Name());
  TKRVView::AllAttached();
}

float TPrefPage::LabelWidth() const {
  float width = 0;
  for (const TRow& row : fRows)
    if (row.label) width = std::max(width, room_of(row.label).x + kColumnGap);
  return width;
}

/** All labelled controls have the same width. */
float TPrefPage::ControlWidth() const {
  float width = 0;
  for (const TRow& row : fRows)
    if (row.label) width = std::max(width, room_of(row.view).x);
  return width;
}

float TPrefPage::HeightOf(const TRow& row) const {
  const float label = row.label ? room_of(row.label).y : 0;
  const float button = row.button ? room_of(row.button).y : 0;
  return std::max({room_of(row.view).y, label, button});
}

BPoint TPrefPage::PreferredSize() {
  const float labelWidth = LabelWidth();
  BPoint all{0, 2 * kMargin - kGap};
  for (const TRow& row : fRows) {
    const float before = row.label ? labelWidth : 0;
    const float buttonWidth = row.button ? kColumnGap + room_of(row.button).x : 0;
    all = {std::max(all.x, before + room_of(row.view).x + buttonWidth), all.y + HeightOf(row) + kGap};
  }
  return {all.x + 2 * kMargin - 1, all.y - 1};
}

void TPrefPage::LayOut() {
  const float width = Bounds().Width() + 1 - 2 * kMargin;
  const float labelWidth = LabelWidth();
  const float controlWidth = std::min(ControlWidth(), width - labelWidth);
  float top = kMargin;
  for (const TRow& row : fRows) {
    const float height = HeightOf(row);
    const float before = row.label ? labelWidth : 0;
    const float buttonWidth = row.button ? kColumnGap + room_of(row.button).x : 0;
    if (row.label) place(row.label, kMargin, top, labelWidth - kColumnGap, height);
    place(row.view, kMargin + before, top, row.label ? controlWidth : width - buttonWidth, height);
    if (row.button)
      place(row.button, kMargin + width - buttonWidth + kColumnGap, top, buttonWidth - kColumnGap, height);
    top += height + kGap;
  }
}
