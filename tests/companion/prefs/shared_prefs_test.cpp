#include "companion/prefs/shared_prefs.h"

#include "common/koreva.h"
#include "companion/prefs/notices.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

namespace {

class SharedPrefs : public testing::Test {
protected:
  SharedPrefs() { setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1); }
  static BEntry Entry() {
    BEntry entry;
    koreva::get_entry("VesmoShared_Prefs.arc", &entry, koreva::kSettingsDir, "Shared");
    return entry;
  }
  static BMessage Stored() {
    const BEntry entry = Entry();
    BFile file(&entry, B_READ_ONLY);
    BMessage fields;
    EXPECT_EQ(fields.Unflatten(&file), B_OK);
    return fields;
  }
  static int32 Number(const char* field) {
    int32 value = INT32_MIN;
    Stored().FindInt32(field, &value);
    return value;
  }
  ScratchFolder fFolder;
  TPrefValues fBefore;
  TPrefValues fAfter;
};

} // namespace

TEST_F(SharedPrefs, UnknownFieldsAndOthersChangesAreKept) {
  BMessage others;
  others.AddString("Other", "kept");
  others.AddInt32("WEnc", 2);
  const BEntry entry = Entry();
  BFile file(&entry, B_WRITE_ONLY | B_CREATE_FILE);
  EXPECT_EQ(others.Flatten(&file), B_OK);
  fAfter.timeOffsetMs = -90;
  ASSERT_TRUE(store_shared_prefs(notices_of_change(fBefore, fAfter), fAfter));
  std::string text;
  EXPECT_EQ(Stored().FindString("Other", &text), B_OK);
  EXPECT_EQ(text, "kept");
  EXPECT_EQ(Number("WEnc"), 2) << "the copy in memory is older";
  EXPECT_EQ(Number("TmDf"), -90);
}

TEST_F(SharedPrefs, EachSettingHasTheNoticeOfItsGroup) {
  const std::tuple<void (*)(TPrefValues&), uint32, const char*> settings[] = {
      {[](TPrefValues& values) { values.stayOnTop = true; }, kMsgStayOnTop, "SoTp"},
      {[](TPrefValues& values) { values.showToolBar = false; }, kMsgToolBar, "STlB"},
      {[](TPrefValues& values) { values.pollIntervalUs = 9000; }, kMsgPollInterval, "MTmI"},
      {[](TPrefValues& values) { values.fontLevel = 2; }, kMsgDefaultStatBar, "FntL"},
      {[](TPrefValues& values) { values.doubleBuffer = false; }, kMsgDefaultStatBar, "DbBf"},
      {[](TPrefValues& values) { values.writeEncoding = 1; }, kMsgEncoding, "WEnc"},
      {[](TPrefValues& values) { values.readEncoding = 1; }, kMsgReadEncoding, "REnc"},
      {[](TPrefValues& values) { values.writeCRType = 1; }, kMsgLineEnds, "WCRT"},
      {[](TPrefValues& values) { values.timeOffsetMs = 1; }, kMsgTimeOffset, "TmDf"},
      {[](TPrefValues& values) { values.languageFile = "German.llt"; }, kMsgLanguageChanged, "LLTF"},
      {[](TPrefValues& values) { values.background.red = 1; }, kMsgAppearance, "BGCl"},
      {[](TPrefValues& values) { values.fontFamily = "Other"; }, kMsgAppearance, "FntF"},
  };
  for (const auto& [change, code, field] : settings) {
    fAfter = fBefore;
    change(fAfter);
    const std::vector<BMessage> notices = notices_of_change(fBefore, fAfter);
    ASSERT_EQ(notices.size(), 1U) << field;
    EXPECT_EQ(notices[0].what, code) << field;
    EXPECT_EQ(notices[0].FieldNames(), std::vector<std::string>{field});
  }
}

TEST_F(SharedPrefs, UnreadableFileIsBackedUpAndReplacedByAllSettings) {
  const std::string torn = "VMSG torn";
  Entry();
  fFolder.Write("KOREVA/Shared/VesmoShared_Prefs.arc", torn);
  fBefore.writeEncoding = fAfter.writeEncoding = 1;
  fAfter.timeOffsetMs = 30;
  ASSERT_TRUE(store_shared_prefs(notices_of_change(fBefore, fAfter), fAfter));
  EXPECT_EQ(fFolder.Read("KOREVA/Shared/VesmoShared_Prefs.arc.unreadable"), torn);
  EXPECT_EQ(Number("TmDf"), 30);
  EXPECT_EQ(Number("WEnc"), 1);
}
