#include "tests/support/editor_fixture.h"

#include "commands/command_table.h"
#include "family/message_filters.h"
#include "lyrics/foreign_encoding.h"

using namespace testing;

using WindowMessages = EditorByHand;

TEST_F(WindowMessages, MessagesWithoutTheirFieldsChangeNothing) {
  Open(fFolder.Write("a.lrc", "a\n"));
  for (const uint32 code :
       std::initializer_list<uint32>{B_REFS_RECEIVED, B_CANCEL, kMsgModeChanged, kMsgStatBarStr, kMsgShiftTags,
                                     kMsgIAPChanged, kMsgAddHistory, kMsgRemoveHistory, kMsgHostWindowMoved})
    Send(BMessage(code));
  Send(message_of(B_CANCEL, "source", this));
  Send(message_of(B_REFS_RECEIVED, "refs", "/etc/passwd"));
  SendToView(BMessage(kMsgMode));
  for (const int32 mode : {-1, 99}) SendToView(message_of(kMsgMode, "Mode", mode));
  EXPECT_THAT(Lines(), ElementsAre("a"));
  EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
  EXPECT_TRUE(hands::menu_lines(*fWindow, {"M - Mode", "T - Tag input"}).front().isMarked);
}

TEST_F(WindowMessages, ACoalescedChangeOfOnePreferenceShowsTheOthersToo) {
  gIAP->SetString("AccKeyFormat", "a) ");
  Send(message_of(kMsgIAPChanged, "IAP:SrcIAPItem", "FlatToolBar"));
  EXPECT_EQ(hands::menu_lines(*fWindow, {}).front().label, "F) File");
  SetPref([](TPrefValues* values) { values->stayOnTop = true; });
  Send(BMessage(kMsgPollInterval));
  EXPECT_TRUE(hands::is_on_top(*fWindow));
}

TEST_F(WindowMessages, EveryCommandWithALetterIsInOneMenu) {
  const std::vector<std::string> menus[] = {{"F - File"},
                                            {"E - Edit"},
                                            {"E - Edit", "L - Lines"},
                                            {"E - Edit", "G - Go"},
                                            {"M - Mode"},
                                            {"M - Mode", "T - Tag input"},
                                            {"M - Mode", "O - Words"},
                                            {"M - Mode", "L - Listen"},
                                            {"T - Tools"},
                                            {"H - Help"}};
  std::multiset<std::string> labels;
  for (const auto& menu : menus)
    for (const hands::MenuLine& line : hands::menu_lines(*fWindow, menu)) labels.insert(line.label);
  for (const TEditorCommand& command : all_commands()) {
    const std::string label = command.letter + std::string(" - ") + gLLT->Text(command.textKey);
    EXPECT_EQ(labels.count(label), *command.letter ? 1U : 0U) << label;
  }
  EXPECT_EQ(labels.count(""), 12U) << "separators";
  EXPECT_EQ(hands::menu_lines(*fWindow, {"F - File", "R - Open again as"}).size(), 4 + foreign_encodings().size());
}

TEST_F(WindowMessages, AReportOfMegabytesIsTruncated) {
  Send(message_of(kMsgStatBarStr, "StatBarStr", std::string(5000000, 'x')));
  EXPECT_THAT(Status(), EndsWith(">   " + std::string(1024, 'x')));
}

TEST_F(WindowMessages, RecentFilesAreClearedOnlyWhenTheUserAgrees) {
  Open(fFolder.Write("a.lrc", "a\n"));
  const auto recent = [this] { return hands::menu_lines(*fWindow, {"F - File", "O - Open…"}); };
  for (const auto& [key, count] : {std::pair("N", 3U), {"A", 2U}}) {
    Answer(key, [this] { Send(BMessage(kMsgClearHistory)); });
    EXPECT_EQ(recent().size(), count) << key;
    EXPECT_EQ(recent().back().isEnabled, count == 3) << key;
  }
}

TEST_F(WindowMessages, ClosingKeepsThePlaceOfTheWindowAndItsMode) {
  Press("Ctrl+D");
  hands::move_by_hand(*fWindow, 60, 70);
  Settle();
  const BRect frame = fWindow->Frame();
  Press("Ctrl+W");
  EXPECT_EQ(gExitState->fWindowFrame, frame);
  EXPECT_EQ(gExitState->fMode, 1);
}

TEST_F(WindowMessages, AModeChosenAMomentBeforeTheManagerClosesTheWindowIsKept) {
  const BMessage mode = message_of(kMsgMode, "Mode", 2);
  fWindow->PostMessage(&mode, fWindow->FindView("VesmoEditorView"));
  ASSERT_TRUE(fWindow->DeliverNext()); // its button is pressed by the message after this one
  ASSERT_TRUE(fWindow->Lock());
  fWindow->Quit();
  EXPECT_EQ(gExitState->fMode, 2);
}

TEST_F(WindowMessages, ShiftedTagsKeepTheCurrentLineAndAreReportedAsTyped) {
  Open(fFolder.Write("a.lrc", "[00:10]a\n[00:10:00]b\nc\n"));
  Press("Down");
  Shift(" -1499");
  EXPECT_THAT(Lines(), ElementsAre("[00:09]a", "[00:08:50]b", "c"));
  EXPECT_THAT(Status(), EndsWith("All tags shifted by -1499 [ms]"));
  EXPECT_TRUE(IsModified());
  Press("Delete");
  EXPECT_THAT(Status(), EndsWith("line 2"));
  Shift("99999999999999999999");
  EXPECT_THAT(Lines(), ElementsAre("[99:59]a", "b", "c"));
}

TEST_F(WindowMessages, ChangedKeysAreInMenusTipsAndRowsAtOnce) {
  Open(fFolder.Write("a.lrc", "a\nb\n"));
  gKeyBindings->Unarchive(message_of(0, "stamp", "S", "save", "F4", "later", ".", "play-from", ""));
  Send(BMessage(kMsgKeys));
  const auto save = hands::menu_lines(*fWindow, {"F - File"})[5];
  EXPECT_EQ(save.label, "S - Save");
  EXPECT_EQ(save.shortcut, "F4");
  EXPECT_EQ(fWindow->FindView("TBSave")->ToolTip(), "Save (F4)");
  EXPECT_EQ(hands::spoken(*fWindow, "TBSave").name, "Save");
  PlayAt(1000);
  for (const char* key : {"Space", "+"}) Press(key);
  EXPECT_THAT(Lines(), ElementsAre("a", "b")) << "the keys have lost their meaning";
  hands::press(*fWindow, "S");
  hands::repeat(*fWindow, "S");
  Settle();
  EditView().SetCurLine(0);
  Press(".");
  EXPECT_THAT(Lines(), ElementsAre("[00:01:01]a", "b"));
  Press("F4");
  EXPECT_FALSE(IsModified());
}
