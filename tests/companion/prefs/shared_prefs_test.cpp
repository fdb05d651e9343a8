#include "plugin/shared_prefs.h"

#include "common/koreva.h"
#include "companion/prefs/notices.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "tests/support/messages.h"

using namespace testing;

namespace {

struct SharedPrefs : testing::Test {
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
  static int32 Number(const char* name) { return field<int32>(Stored(), name).value_or(INT32_MIN); }
  ScratchFolder fFolder;
  TPrefValues fBefore;
  TPrefValues fAfter;
};

} // namespace

TEST_F(SharedPrefs, UnknownFieldsAndOthersChangesAreKept) {
  const BMessage others = message_of(0, "Other", "kept", "WEnc", 2);
  const BEntry entry = Entry();
  BFile file(&entry, B_WRITE_ONLY | B_CREATE_FILE);
  EXPECT_EQ(others.Flatten(&file), B_OK);
  fAfter.timeOffsetMs = -90;
  ASSERT_TRUE(store_shared_prefs(notices_of_change(fBefore, fAfter), fAfter));
  EXPECT_EQ(field<std::string>(Stored(), "Other"), "kept");
  EXPECT_EQ(Number("WEnc"), 2) << "the copy in memory is older";
  EXPECT_EQ(Number("TmDf"), -90);
}

TEST_F(SharedPrefs, AGermanDesktopsPlayerStaysGermanWhenAnotherSettingIsStored) {
  Entry();
  fAfter.timeOffsetMs = -90;
  ASSERT_TRUE(store_shared_prefs(notices_of_change(fBefore, fAfter), fAfter));
  EXPECT_FALSE(Stored().HasField("LLTF")) << "no language has been chosen";
  TPrefValues german = fAfter;
  german.languageFile = "German.llt";
  ASSERT_TRUE(store_shared_prefs(notices_of_change(fAfter, german), german));
  ASSERT_TRUE(store_shared_prefs(notices_of_change(german, fAfter), fAfter));
  EXPECT_EQ(field<std::string>(Stored(), "LLTF"), fAfter.languageFile) << "now it is chosen";
}

TEST_F(SharedPrefs, ChangesOfOneGroupShareItsNoticeAndOthersHaveTheirOwn) {
  fAfter.fontLevel = 2;
  fAfter.doubleBuffer = false;
  fAfter.writeEncoding = fAfter.readEncoding = 1;
  fAfter.background.red = 1;
  fAfter.fontFamily = "Other";
  std::map<uint32, std::vector<std::string>> fields;
  for (const BMessage& notice : notices_of_change(fBefore, fAfter)) fields[notice.what] = notice.FieldNames();
  EXPECT_THAT(fields,
              UnorderedElementsAre(Pair(kMsgDefaultStatBar, UnorderedElementsAre("FntL", "DbBf")),
                                   Pair(kMsgEncoding, ElementsAre("WEnc")), Pair(kMsgReadEncoding, ElementsAre("REnc")),
                                   Pair(kMsgAppearance, UnorderedElementsAre("BGCl", "FntF"))));
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
