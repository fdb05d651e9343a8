#include "common/koreva.h"
#include "platform/app/message.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"
#include "plugin/exit_state.h"
#include "plugin/pref.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <utility>

namespace {

class Settings : public testing::Test {
protected:
  Settings() {
    setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    gPref = new TPref;
    gExitState = new TExitState;
  }
  ~Settings() override {
    report_modifiers(0);
    delete std::exchange(gPref, nullptr);
    delete std::exchange(gExitState, nullptr);
  }
  ScratchFolder fFolder;
};

} // namespace

TEST_F(Settings, ExitStatesOutliveTheRun) {
  gExitState->fMode = 1;
  gExitState->fPanelFolder = "/music";
  gExitState->fWindowFrame = {1, 2, 300, 400};
  ASSERT_TRUE(save_exit_state("VesmoE", "State.arc"));
  *gExitState = TExitState();
  EXPECT_FALSE(load_global("VesmoE", "State.arc")) << "there are no shared settings";
  EXPECT_EQ(gExitState->fMode, 1);
  EXPECT_EQ(gExitState->fPanelFolder, "/music");
  EXPECT_EQ(gExitState->fWindowFrame, (BRect{1, 2, 300, 400}));
}

TEST_F(Settings, AbsentFieldsKeepTheirValuesAndWrongOnesAreReported) {
  BMessage archive;
  archive.AddInt32("TmDf", -500);
  EXPECT_TRUE(gPref->Unarchive(archive));
  EXPECT_EQ(gPref->Values()->timeOffsetMs, -500);
  EXPECT_EQ(gPref->Values()->fontFamily, "Haru");
  archive.AddString("WEnc", "no number");
  archive.AddInt32("WCRT", 2);
  EXPECT_FALSE(gPref->Unarchive(archive));
  EXPECT_EQ(gPref->Values()->writeCRType, 2) << "the rest is read all the same";
}

TEST_F(Settings, SharedSettingsReadBackWhole) {
  TPrefValues values;
  values.stayOnTop = true;
  values.pollIntervalUs = 99999;
  values.lyrics = {9, 8, 7, 6};
  values.fontFamily = std::string(63, 'x') + "日本";
  gPref->SetValues(values);
  BMessage archive;
  ASSERT_TRUE(gPref->Archive(&archive));
  TPref read;
  ASSERT_TRUE(read.Unarchive(archive));
  EXPECT_TRUE(read.Values()->stayOnTop);
  EXPECT_EQ(read.Values()->pollIntervalUs, 99999);
  EXPECT_EQ(read.Values()->lyrics, (rgb_color{9, 8, 7, 6}));
  EXPECT_EQ(read.Values()->fontFamily, std::string(63, 'x')) << "cut between characters";
}

TEST_F(Settings, FourModifiersHoldTheSettingsOff) {
  ASSERT_TRUE(save_exit_state("VesmoE", "State.arc"));
  report_modifiers(B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY | B_CAPS_LOCK);
  gExitState->fMode = 1;
  EXPECT_FALSE(save_exit_state("VesmoE", "State.arc"));
  EXPECT_FALSE(load_global("VesmoE", "State.arc"));
  EXPECT_EQ(gExitState->fMode, 1);
  report_modifiers(B_SHIFT_KEY | B_COMMAND_KEY);
  load_global("VesmoE", "State.arc");
  EXPECT_EQ(gExitState->fMode, 0) << "what was saved before";
}

namespace {
/** The four keys are pressed while the exit state is being read. */
class LateKeys : public TExitState {
public:
  bool Load(const BEntry& entry) override {
    report_modifiers(B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY);
    return TExitState::Load(entry);
  }
};
} // namespace

TEST_F(Settings, TheModifiersAreReadOnceWhenLoadingBegins) {
  ASSERT_TRUE(save_exit_state("VesmoE", "State.arc"));
  BEntry shared;
  ASSERT_TRUE(koreva::get_entry("VesmoShared_Prefs.arc", &shared, koreva::kSettingsDir, "Shared"));
  ASSERT_TRUE(gPref->Save(shared));
  delete std::exchange(gExitState, new LateKeys);
  EXPECT_TRUE(load_global("VesmoE", "State.arc"));
}

TEST_F(Settings, WhatCannotBeReadIsKeptBesideTheNewFile) {
  ASSERT_TRUE(save_exit_state("VesmoE", "State.arc"));
  const auto first = std::filesystem::last_write_time(fFolder.File("KOREVA/VesmoE/State.arc"));
  ASSERT_TRUE(save_exit_state("VesmoE", "State.arc"));
  EXPECT_EQ(std::filesystem::last_write_time(fFolder.File("KOREVA/VesmoE/State.arc")), first) << "nothing was new";
  EXPECT_FALSE(std::filesystem::exists(fFolder.File("KOREVA/VesmoE/State.arc.unreadable")));
  fFolder.Write("KOREVA/VesmoE/State.arc", "somebody else's");
  EXPECT_FALSE(load_global("VesmoE", "State.arc"));
  EXPECT_TRUE(save_exit_state("VesmoE", "State.arc"));
  EXPECT_EQ(fFolder.Read("KOREVA/VesmoE/State.arc.unreadable"), "somebody else's");
  EXPECT_EQ(fFolder.Read("KOREVA/VesmoE/State.arc").substr(0, 4), "VMSG");
  fFolder.Write("KOREVA/VesmoE/State.arc", "another's");
  EXPECT_TRUE(save_exit_state("VesmoE", "State.arc"));
  EXPECT_EQ(fFolder.Read("KOREVA/VesmoE/State.arc.unreadable"), "somebody else's") << "an earlier copy stays";
  EXPECT_EQ(fFolder.Read("KOREVA/VesmoE/State.arc.unreadable.2"), "another's");
}

TEST_F(Settings, LinkPermissionsAndOldStateSurviveASaveThatFails) {
  const std::string real = fFolder.Write("elsewhere.arc", "");
  std::filesystem::create_directories(fFolder.File("KOREVA/VesmoE"));
  std::filesystem::create_symlink(real, fFolder.File("KOREVA/VesmoE/State.arc"));
  std::filesystem::permissions(real, std::filesystem::perms(0600));
  ASSERT_TRUE(save_exit_state("VesmoE", "State.arc"));
  const std::string before = fFolder.Read("elsewhere.arc");
  EXPECT_FALSE(before.empty());
  gExitState->fMode = 2;
  signal(SIGXFSZ, SIG_IGN);
  rlimit unlimited{};
  getrlimit(RLIMIT_FSIZE, &unlimited);
  const rlimit full{10, unlimited.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  EXPECT_FALSE(save_exit_state("VesmoE", "State.arc"));
  setrlimit(RLIMIT_FSIZE, &unlimited);
  signal(SIGXFSZ, SIG_DFL);
  EXPECT_EQ(fFolder.Read("elsewhere.arc"), before);
  EXPECT_TRUE(std::filesystem::is_symlink(fFolder.File("KOREVA/VesmoE/State.arc")));
  EXPECT_EQ(std::filesystem::status(real).permissions(), std::filesystem::perms(0600));
  size_t files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(fFolder.Path()))
    files += !entry.is_directory();
  EXPECT_EQ(files, 2U) << "nothing is left beside them";
}

TEST_F(Settings, ATornFileLeavesTheDefaults) {
  ASSERT_TRUE(save_exit_state("VesmoE", "State.arc"));
  const std::string whole = fFolder.Read("KOREVA/VesmoE/State.arc");
  for (const size_t length : {size_t{0}, size_t{5}, whole.size() / 2, whole.size() - 1}) {
    fFolder.Write("KOREVA/VesmoE/State.arc", whole.substr(0, length));
    BEntry entry;
    koreva::get_entry("State.arc", &entry, koreva::kSettingsDir, "VesmoE");
    TExitState state;
    EXPECT_FALSE(state.Load(entry)) << length;
    EXPECT_EQ(state.fWindowFrame, (BRect{5, 24, 400, 200}));
  }
}
