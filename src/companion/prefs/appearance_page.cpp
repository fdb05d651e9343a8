#include "companion/prefs/appearance_page.h"

#include "companion/prefs/lyrics_preview.h"
#include "companion/prefs/numbers.h"
#include "language/llt.h"
#include "platform/interface/font_families.h"
#include "platform/interface/menu_field.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr long kSmallestPoints = 6;
constexpr long kLargestPoints = 96;

std::string points(const TPrefValues& values) {
  return std::to_string(std::lround(values.fontSize));
}

bool take_points(const std::string& text, TPrefValues* values) {
  const auto size = whole_number(text, kSmallestPoints, kLargestPoints);
  if (size) values->fontSize = static_cast<float>(*size);
  return size.has_value();
}

} // namespace

TAppearancePage::TAppearancePage() : TPrefPage("Appearance"), fPreview(new TLyricsPreview) {
  // A font that is not installed is shown as the system font.
  const auto index_of = [this](const TPrefValues& values) {
    const auto found = std::ranges::find(fFamilies, values.fontFamily);
    return found == fFamilies.end() ? 0 : static_cast<int32>(found - fFamilies.begin());
  };
  fFamily = AddFreeMenu("FontFamily", "Pref_Font", index_of, [this](int32 index, TPrefValues* values) {
    if (index >= 0) values->fontFamily = fFamilies[static_cast<size_t>(index)];
  });
  AddText("FontSize", "Pref_Font_Size", points, take_points);
  AddMenu("LyricsWindowSize", "Pref_Display_Size", &TPrefValues::fontLevel,
          {{-4, "Pref_Size_Very_Small"},
           {-2, "Pref_Size_Small"},
           {0, "Pref_Size_Normal"},
           {2, "Pref_Size_Large"},
           {4, "Pref_Size_Very_Large"}});
  AddColor("LyricsColor", "Pref_Color_Lyrics", &TPrefValues::lyrics);
  AddColor("BackgroundColor", "Pref_Color_Background", &TPrefValues::background);
  AddColor("ActiveLyricsColor", "Pref_Color_Active_Lyrics", &TPrefValues::activeLyrics);
  AddColor("ActiveBackgroundColor", "Pref_Color_Active_Background", &TPrefValues::activeBackground);
  AddColor("ActiveFrameColor", "Pref_Color_Active_Frame", &TPrefValues::activeFrame);
  AddCheckBox("ActiveFrame", "Pref_Active_Frame", &TPrefValues::useActiveFrame);
  AddCheckBox("AntiAlias", "Pref_Anti_Alias", &TPrefValues::antiAlias);
  AddWide(fPreview);
}

void TAppearancePage::Relabel() {
  TPrefPage::Relabel();
  ListFamilies();
}

void TAppearancePage::ListFamilies() {
  std::vector<std::string> names = font_families();
  fFamilies = names;
  fFamilies.insert(fFamilies.begin(), "");
  names.insert(names.begin(), gLLT->Text("Pref_System_Font"));
  fFamily->SetChoices(names);
}

void TAppearancePage::ShowValues(const TPrefValues& values) {
  TPrefPage::ShowValues(values);
  Preview(values);
}

void TAppearancePage::Preview(const TPrefValues& values) {
  fPreview->SetLook(values);
}
