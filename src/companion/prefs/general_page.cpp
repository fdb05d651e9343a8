#include "companion/prefs/general_page.h"

#include "companion/prefs/numbers.h"
#include "language/llt.h"
#include "language/load_language.h"
#include "lyrics/lyrics_file.h"
#include "platform/interface/menu_field.h"

#include <algorithm>
#include <map>

namespace {

constexpr int64 kUsPerMs = 1000;
constexpr long kShortestPollMs = 5;
constexpr long kLongestPollMs = 1000;

std::string file_name_of(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

std::string poll_interval(const TPrefValues& values) {
  return std::to_string(values.pollIntervalUs / kUsPerMs);
}

bool take_poll_interval(const std::string& text, TPrefValues* values) {
  const auto ms = whole_number(text, kShortestPollMs, kLongestPollMs);
  if (ms) values->pollIntervalUs = *ms * kUsPerMs;
  return ms.has_value();
}

} // namespace

TGeneralPage::TGeneralPage(std::string languageFolder) : TPrefPage("General"), fFolder(std::move(languageFolder)) {
  const auto index_of = [this](const TPrefValues& values) {
    const auto found = std::ranges::find(fFiles, file_name_of(values.languageFile));
    return found == fFiles.end() ? -1 : static_cast<int32>(found - fFiles.begin());
  };
  fLanguage = AddFreeMenu("Language", "Pref_Language", index_of, [this](int32 index, TPrefValues* values) {
    if (index >= 0) values->languageFile = fFiles[static_cast<size_t>(index)];
  });
  AddMenu(
      "ReadEncoding", "Pref_Read_Encoding", &TPrefValues::readEncoding,
      {{kDetectEncoding, "Pref_Detect"}, {0, "MItem_Encoding_0"}, {1, "MItem_Encoding_1"}, {2, "MItem_Encoding_2"}});
  AddMenu("WriteEncoding", "Pref_Write_Encoding", &TPrefValues::writeEncoding,
          {{0, "MItem_Encoding_0"}, {1, "MItem_Encoding_1"}, {2, "MItem_Encoding_2"}});
  AddMenu("LineEnds", "Pref_Line_Ends", &TPrefValues::writeCRType,
          {{0, "MItem_CR_Type_0"}, {1, "MItem_CR_Type_1"}, {2, "MItem_CR_Type_2"}});
  AddMenu("SongOpening", "Pref_Song_Opening", &TPrefValues::songOpening,
          {{kNeverOpen, "Pref_Open_Never"},
           {kOpenInNewDocument, "Pref_Open_In_New"},
           {kOpenWithEverySong, "Pref_Open_With_Every"}});
  AddText("PollInterval", "Pref_Poll_Interval", poll_interval, take_poll_interval);
  AddCheckBox("ToolBar", "Pref_Tool_Bar", &TPrefValues::showToolBar);
  AddCheckBox("StayOnTop", "Pref_Stay_On_Top", &TPrefValues::stayOnTop);
}

void TGeneralPage::Relabel() {
  TPrefPage::Relabel();
  ListLanguages();
}

void TGeneralPage::ListLanguages() {
  std::map<std::string, std::string> files;
  get_lang_files(fFolder.c_str(), &files);
  std::vector<std::string> names = {gLLT->Text("Pref_Built_In_Language")};
  fFiles = {""};
  for (const auto& [name, path] : files) {
    names.push_back(name);
    fFiles.push_back(file_name_of(path));
  }
  fLanguage->SetChoices(names);
}
