#include "companion/prefs/notices.h"
#include "platform/interface/color_control.h"
#include "plugin/kept_record.h"
#include "tests/companion/prefs/pref_world.h"

using namespace testing;

TEST_F(PrefWindow, EveryControlSendsItsChangeAtOnceAndSavesItWhenClosed) {
  Open();
  const struct {
    Tab tab;
    const char* control;
    const char* keys;
    const char* notice;
  } rows[] = {
      {kGeneral, "ReadEncoding", "Down", "Sprc: REnc"},
      {kGeneral, "WriteEncoding", "Down", "Spec: WEnc"},
      {kGeneral, "LineEnds", "Down", "Spcc: WCRT"},
      {kGeneral, "SongOpening", "Down", "Sopc: OpSg"},
      {kGeneral, "PollInterval", "9", "Ssic: MTmI"},
      {kGeneral, "ToolBar", "Space", "Splc: STlB"},
      {kGeneral, "StayOnTop", "Space", "Spsc: SoTp"},
      {kGeneral, "Language", "Down", "_lgc: LLTF"},
      {kAppearance, "FontFamily", "Down", "Spac: FntF"},
      {kAppearance, "FontSize", "9", "Spac: FntS"},
      {kAppearance, "LyricsWindowSize", "Down", "Sedr: FntL"},
      {kAppearance, "ActiveFrame", "Space", "Spac: UAFr"},
      {kAppearance, "AntiAlias", "Space", "Spac: AAli"},
      {kTiming, "TimeOffset", "9", "Sptc: TmDf"},
      {kTiming, "LeadIn", "9", "Sopc: LdIn"},
      {kTiming, "ReplayNudges", "Space", "Sopc: RpNd"},
      {kFiles, "NewDialect", "Down", "Sopc: NDlc"},
      {kFiles, "RecogniseCommon", "Space", "Sopc: RCmn"},
      {kFiles, "ForeignAsUtf8", "Space", "Sopc: FUt8"},
      {kFiles, "RenewCopies", "Space", "Sopc: RnwC"},
  };
  for (const auto& row : rows) {
    SelectTab(row.tab);
    fWindow->FindView(row.control)->MakeFocus();
    Settle();
    EXPECT_NE(hands::spoken(*fWindow, row.control).name, "") << row.control;
    if (*row.keys == '9') Press("Ctrl+A");
    Press(row.keys);
    EXPECT_THAT(Notices(), ElementsAre(row.notice)) << row.control;
  }
  Press("Escape");
  EXPECT_FALSE(hands::is_shown(*fWindow));
  const TPrefValues chosen = *gPref->Values();
  gPref->SetValues({});
  EXPECT_TRUE(load_shared_prefs() && load_options());
  EXPECT_TRUE(notices_of_change(*gPref->Values(), chosen).empty()) << "all is on the disk";
}

TEST_F(PrefWindow, ChangeIsResentWhileTheManagersQueueIsFull) {
  Open();
  while (fManager->PostMessage(kMsgDefaultStatBar) == B_OK) {
  }
  Click("ToolBar");
  Click("StayOnTop");
  Notices();
  EXPECT_TRUE(gPref->Values()->showToolBar);
  EXPECT_TRUE(Until([this] {
    Notices();
    return !gPref->Values()->showToolBar && gPref->Values()->stayOnTop;
  }));
}

TEST_F(PrefWindow, SavesWithoutBeingClosedAndWhenTheProgramEndsRightAfterAChange) {
  Open();
  Click("StayOnTop");
  EXPECT_TRUE(Until([] { return Stored().stayOnTop; }));
  ASSERT_TRUE(StoreDefaults());
  Click("ToolBar");
  ASSERT_TRUE(fWindow->Lock());
  std::exchange(fWindow, nullptr)->Quit();
  EXPECT_FALSE(Stored().showToolBar);
  EXPECT_FALSE(Stored().stayOnTop) << "what was saved before is not saved again";
}

TEST_F(PrefWindow, ChangeThatCouldNotBeSavedIsReportedAndSavedWithTheNextOne) {
  const std::string file = fFolder.File("KOREVA/Shared/VesmoShared_Prefs.arc");
  std::filesystem::create_directories(file + "/in the way");
  Open();
  Click("ToolBar");
  EXPECT_TRUE(Until([this] { return !Label("Error").empty(); }));
  std::filesystem::remove_all(file);
  ASSERT_TRUE(StoreDefaults());
  Click("StayOnTop");
  Press("Escape");
  EXPECT_TRUE(Stored().stayOnTop);
  EXPECT_FALSE(Stored().showToolBar);
}

TEST_F(PrefWindow, InvalidNumbersAreReportedAndChangeNothing) {
  Open();
  for (const char* text : {"4", "1001", "25x", ""}) {
    Type("PollInterval", "250");
    Notices();
    Type("PollInterval", text);
    if (*text == '\0') Press("Delete");
    EXPECT_THAT(Label("Error"), IsEmpty()) << "not while the user may still be typing";
    EXPECT_TRUE(Until([this] { return !Label("Error").empty(); })) << text;
    EXPECT_NE(gPref->Values()->pollIntervalUs, 4000) << text;
  }
  Type("PollInterval", "40");
  EXPECT_THAT(Label("Error"), IsEmpty());
  EXPECT_EQ(Notices().back(), "Ssic: MTmI");
  EXPECT_EQ(gPref->Values()->pollIntervalUs, 40000);
}

TEST_F(PrefWindow, ColourIsPreviewedAndThenCancelledOrAccepted) {
  Open();
  SelectTab(kAppearance);
  const auto color = [this] { return static_cast<BColorControl*>(fWindow->FindView("LyricsColor"))->ValueAsColor(); };
  const std::string preview = hands::pixels(*fWindow, "Preview");
  for (const bool accepts : {false, true}) {
    Click("LyricsColor");
    ASSERT_TRUE(hands::choose_color("#20C040", accepts));
    Settle();
    EXPECT_THAT(Notices(), Each("Spac: LyCl"));
    EXPECT_EQ(color() == (rgb_color{0x20, 0xC0, 0x40, 255}), accepts);
    EXPECT_EQ(gPref->Values()->lyrics, color());
    EXPECT_EQ(hands::pixels(*fWindow, "Preview") != preview, accepts);
  }
  for (const std::string part : {"ActiveLyrics", "ActiveBackground", "ActiveFrame", "Background"}) {
    const std::string before = hands::pixels(*fWindow, "Preview");
    Click((part + "Color").c_str());
    ASSERT_TRUE(hands::choose_color("#803010"));
    Settle();
    EXPECT_NE(hands::pixels(*fWindow, "Preview"), before) << part;
  }
}

TEST_F(PrefWindow, DefaultsAndRevertSetEveryPage) {
  TPrefValues own;
  own.timeOffsetMs = -140;
  own.fontSize = 20;
  own.stayOnTop = true;
  gPref->SetValues(own);
  Open();
  Click("Defaults");
  EXPECT_EQ(gPref->Values()->timeOffsetMs, -140) << "not handled yet";
  EXPECT_THAT(Notices(), testing::UnorderedElementsAre("Spsc: SoTp", "Sptc: TmDf", "Spac: FntS"));
  EXPECT_EQ(gPref->Values()->timeOffsetMs, 0);
  Click("Revert");
  Notices();
  EXPECT_EQ(gPref->Values()->timeOffsetMs, -140);
  EXPECT_EQ(gPref->Values()->fontSize, 20);
  EXPECT_TRUE(hands::spoken(*fWindow, "StayOnTop").isOn);
  Press("Escape");
  EXPECT_EQ(Stored().timeOffsetMs, -140);
}

TEST_F(PrefWindow, AKeyIsTakenFromAnotherCommandOnlyWhenPressedTwice) {
  Open();
  SelectTab(kKeys);
  fWindow->FindView("Commands")->MakeFocus();
  Settle();
  Press("Down"); // the second command
  fWindow->FindView("CommandKey")->MakeFocus();
  Settle();
  const std::string note = Label("KeyNote");
  Press("F9");
  EXPECT_EQ(current_keys()->Of(TCommandId::kOpenCurrent), "F9");
  EXPECT_THAT(Notices(), ElementsAre("Skyc:"));
  Press("Ctrl+S");
  EXPECT_EQ(current_keys()->Of(TCommandId::kOpenCurrent), "F9");
  EXPECT_THAT(Label("KeyNote"), HasSubstr("Ctrl+S belongs to “Save”"));
  Press("Ctrl+S");
  EXPECT_EQ(current_keys()->Of(TCommandId::kOpenCurrent), "Ctrl+S");
  EXPECT_EQ(current_keys()->Of(TCommandId::kSave), "");
  Press("F10");
  EXPECT_THAT(Label("KeyNote"), HasSubstr("fixed meaning"));
  Press("Ctrl+F9");
  EXPECT_EQ(Label("KeyNote"), note);
  const TKeys chosen = *current_keys();
  gKeyBindings->SetValues({});
  EXPECT_TRUE(load_key_bindings());
  EXPECT_EQ(*current_keys(), chosen) << "what is stored";
  Click("DefaultKeys");
  EXPECT_EQ(*current_keys(), TKeys());
}
