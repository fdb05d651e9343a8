#include "common/koreva.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "plugin/kept_record.h"
#include "plugin/message_codes.h"
#include "plugin/shared_prefs.h"
#include "tests/support/full_disk.h"
#include "tests/support/messages.h"
#include "tests/support/plugin_globals.h"

namespace {

struct Settings : testing::Test, PluginGlobals {
  ~Settings() override { report_modifiers(0); }
  static bool Save() { return save_exit_state("VesmoE", "State.arc"); }
  static bool Load() { return load_global("VesmoE", "State.arc"); }
  const std::string kState = "KOREVA/VesmoE/State.arc";
};

} // namespace

TEST_F(Settings, AbsentFieldsKeepTheirValuesAndWrongOnesAreReported) {
  BMessage archive = message_of(0, "TmDf", -500);
  EXPECT_TRUE(gPref->Unarchive(archive));
  EXPECT_EQ(gPref->Values()->timeOffsetMs, -500);
  EXPECT_EQ(gPref->Values()->fontFamily, "Haru");
  add_fields(&archive, "WEnc", "no number", "WCRT", 2, "FntF", std::string(63, 'x') + "日本");
  EXPECT_FALSE(gPref->Unarchive(archive));
  EXPECT_EQ(gPref->Values()->writeCRType, 2) << "the rest is read all the same";
  EXPECT_EQ(gPref->Values()->fontFamily, std::string(63, 'x')) << "cut between characters";
}

TEST_F(Settings, OptionsOfTheEarlierRecordHoldUntilTheyAreStoredWithTheOthers) {
  const auto write = [](const char* name, const BMessage& fields) {
    BEntry entry;
    ASSERT_TRUE(koreva::get_entry(name, &entry, koreva::kSettingsDir, "Shared"));
    BFile file(&entry, B_WRITE_ONLY | B_CREATE_FILE);
    ASSERT_EQ(fields.Flatten(&file), B_OK);
  };
  write("VesmoShared_Files.arc", message_of(0, "NDlc", 1, "RCmn", false));
  load_options();
  EXPECT_EQ(gPref->Values()->newDialect, 1);
  EXPECT_FALSE(gPref->Values()->recognisesCommon);
  ASSERT_TRUE(store_shared_prefs({message_of(kMsgOptions, "NDlc", 0)}, *gPref->Values()));
  gPref->SetValues({});
  load_options();
  EXPECT_EQ(gPref->Values()->newDialect, 0);
  EXPECT_FALSE(gPref->Values()->recognisesCommon);
}

TEST_F(Settings, FourModifiersHoldTheSettingsOff) {
  gExitState->fPanelFolder = "/music";
  ASSERT_TRUE(Save());
  *gExitState = TExitState();
  report_modifiers(B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY | B_CAPS_LOCK);
  gExitState->fMode = 1;
  EXPECT_FALSE(Save());
  EXPECT_FALSE(Load());
  EXPECT_EQ(gExitState->fMode, 1);
  report_modifiers(B_SHIFT_KEY | B_COMMAND_KEY);
  Load();
  EXPECT_EQ(gExitState->fMode, 0) << "what was saved before";
  EXPECT_EQ(gExitState->fPanelFolder, "/music");
}

namespace {
/** The four keys are pressed while the exit state is being read. */
struct LateKeys : TExitState {
  bool Load(const BEntry& entry) override {
    report_modifiers(B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY);
    return TExitState::Load(entry);
  }
};
} // namespace

TEST_F(Settings, TheModifiersAreReadOnceWhenLoadingBegins) {
  ASSERT_TRUE(Save());
  ASSERT_TRUE(save_record(gPref, "Shared", "VesmoShared_Prefs.arc"));
  delete std::exchange(gExitState, new LateKeys);
  EXPECT_TRUE(Load());
}

TEST_F(Settings, WhatCannotBeReadIsKeptBesideTheNewFile) {
  ASSERT_TRUE(Save());
  const auto first = std::filesystem::last_write_time(fFolder.File(kState));
  ASSERT_TRUE(Save());
  EXPECT_EQ(std::filesystem::last_write_time(fFolder.File(kState)), first) << "nothing was new";
  EXPECT_FALSE(std::filesystem::exists(fFolder.File(kState + ".unreadable")));
  fFolder.Write(kState, "somebody else's");
  EXPECT_FALSE(Load());
  EXPECT_TRUE(Save());
  EXPECT_EQ(fFolder.Read(kState + ".unreadable"), "somebody else's");
  EXPECT_EQ(fFolder.Read(kState).substr(0, 4), "VMSG");
  fFolder.Write(kState, "another's");
  EXPECT_TRUE(Save());
  EXPECT_EQ(fFolder.Read(kState + ".unreadable"), "somebody else's") << "an earlier copy stays";
  EXPECT_EQ(fFolder.Read(kState + ".unreadable.2"), "another's");
}

TEST_F(Settings, OldStateSurvivesASaveThatFails) {
  ASSERT_TRUE(Save());
  const std::string before = fFolder.Read(kState);
  gExitState->fMode = 2;
  {
    const FullDisk full(10);
    EXPECT_FALSE(Save());
  }
  EXPECT_EQ(fFolder.Read(kState), before);
}

TEST_F(Settings, ATornFileLeavesTheDefaults) {
  ASSERT_TRUE(Save());
  const std::string whole = fFolder.Read(kState);
  for (const size_t length : {size_t{0}, size_t{5}, whole.size() / 2, whole.size() - 1}) {
    fFolder.Write(kState, whole.substr(0, length));
    *gExitState = TExitState();
    EXPECT_FALSE(load_record(gExitState, "VesmoE", "State.arc")) << length;
    EXPECT_EQ(gExitState->fWindowFrame, (BRect{5, 24, 400, 200}));
  }
}
