#include "plugin/shared_prefs.h"

#include "companion/prefs/notices.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "tests/support/messages.h"

using namespace testing;

namespace {

struct SharedPrefs : testing::Test {
  SharedPrefs() {
    setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    std::filesystem::create_directories(fFolder.File("KOREVA/Shared"));
  }
  bool Store(const TPrefValues& from, const TPrefValues& to) {
    return store_shared_prefs(notices_of_change(from, to), to);
  }
  BMessage Stored() const {
    const std::string bytes = fFolder.Read(kFile);
    BMessage fields;
    EXPECT_EQ(fields.Unflatten(bytes.data(), bytes.size()), B_OK);
    return fields;
  }
  int32 Number(const char* name) const { return field<int32>(Stored(), name).value_or(INT32_MIN); }
  ScratchFolder fFolder;
  const std::string kFile = "KOREVA/Shared/VesmoShared_Prefs.arc";
  TPrefValues fBefore;
  TPrefValues fAfter;
};

} // namespace

TEST_F(SharedPrefs, UnknownFieldsAndOthersChangesAreKept) {
  const std::vector<char> others = message_of(0, "Other", "kept", "WEnc", 2).Flatten();
  fFolder.Write(kFile, std::string(others.begin(), others.end()));
  fAfter.timeOffsetMs = -90;
  ASSERT_TRUE(Store(fBefore, fAfter));
  EXPECT_EQ(field<std::string>(Stored(), "Other"), "kept");
  EXPECT_EQ(Number("WEnc"), 2) << "the copy in memory is older";
  EXPECT_EQ(Number("TmDf"), -90);
}

TEST_F(SharedPrefs, AGermanDesktopsPlayerStaysGermanWhenAnotherSettingIsStored) {
  fAfter.timeOffsetMs = -90;
  ASSERT_TRUE(Store(fBefore, fAfter));
  EXPECT_FALSE(Stored().HasField("LLTF")) << "no language has been chosen";
  TPrefValues german = fAfter;
  german.languageFile = "German.llt";
  ASSERT_TRUE(Store(fAfter, german));
  ASSERT_TRUE(Store(german, fAfter));
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
  fFolder.Write(kFile, torn);
  fBefore.writeEncoding = fAfter.writeEncoding = 1;
  fAfter.timeOffsetMs = 30;
  ASSERT_TRUE(Store(fBefore, fAfter));
  EXPECT_EQ(fFolder.Read(kFile + ".unreadable"), torn);
  EXPECT_EQ(Number("TmDf"), 30);
  EXPECT_EQ(Number("WEnc"), 1);
}
