#include "companion/prefs/shared_prefs.h"

#include "common/koreva.h"
#include "companion/prefs/notices.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "plugin/pref.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

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

TEST_F(SharedPrefs, OthersFieldsAndOthersChangesStay) {
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
  EXPECT_EQ(Number("WEnc"), 2) << "what this program holds is older";
  EXPECT_EQ(Number("TmDf"), -90);
}

TEST_F(SharedPrefs, AFileThatCannotBeReadIsKeptAndReplacedByAllSettings) {
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
