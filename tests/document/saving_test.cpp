#include "platform/app/looper_lock.h"
#include "tests/support/editor_fixture.h"

#include "platform/interface/file_panel.h"

#include <sys/xattr.h>

using namespace testing;

struct Saving : EditorByHand {
  int CountFiles() const {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(fFolder.Path())) count += entry.is_regular_file();
    return count;
  }
};

TEST_F(Saving, AnswerWithoutAFileWritesNothingAndTheLineEndsAreThoseOfTheAnswer) {
  Open(fFolder.Write("a.lrc", "[00:01]a\n"));
  Change();
  Send(BMessage(B_SAVE_REQUESTED));
  Send(message_of(B_SAVE_REQUESTED, "directory", ref_of(fFolder.Path())));
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01]a\n");
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(CountFiles(), 1);
  Send(SaveAs("b.lrc", "CRType", 1));
  EXPECT_EQ(fFolder.Read("b.lrc"), std::string("a\r\n\0", 4));
}

TEST_F(Saving, WindowClosesOnlyWhenTheLyricsAreSafe) {
  const std::string path = fFolder.Write("a.lrc", "[00:01]a\n");
  Open(path);
  Change();
  std::filesystem::remove(path);
  std::filesystem::create_directory(path); // nothing can be saved here any more
  const auto close = [&] { PressCloseButton(); };
  Answer("Escape", close);
  EXPECT_FALSE(IsClosed());
  EXPECT_THAT(Answer({"Y", "U"}, close).back().text, HasSubstr(fFolder.File("KOREVA/VesmoE/Recovered_")));
  EXPECT_FALSE(IsClosed());
  EXPECT_TRUE(IsModified());
  SendToView(BMessage(kMsgUndo));
  EXPECT_EQ(Lines().front(), "[00:01]a");
  EXPECT_TRUE(IsModified()) << "no state is known to be on the disk";
  SendToView(BMessage(kMsgRedo));

  std::filesystem::remove(path);
  Answer("Y", close);
  EXPECT_TRUE(IsClosed());
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("a\n\0", 3));
}

TEST_F(Saving, WhatWaitsForTheSaveGoesOnAfterIt) {
  Open(fFolder.Write("a.lrc", "[00:01]a\n"));
  Change();
  Answer("Y", [&] { Open(fFolder.Write("b.lrc", "b\n")); });
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("a\n\0", 3));
  EXPECT_EQ(Title(), "b.lrc - Vesmo Editor");
  Change();
  Answer("N", [&] { Open(fFolder.Write("c.lrc", "c\n")); }); // one Yes is for one save
  EXPECT_EQ(fFolder.Read("b.lrc"), "b\n");
}

TEST_F(Saving, ACommandDoesNotOvertakeTheKeyBeforeIt) {
  Open(fFolder.Write("a.lrc", "[00:10]one\n"));
  Press("Ctrl+E", "Ctrl+End");
  const auto press_then_send = [this](const char* key, BMessage command) {
    hands::press(*fWindow, key);
    fWindow->PostMessage(&command, fWindow->FindView("VesmoEditorView"));
    Settle();
  };
  press_then_send("x", BMessage(kMsgSave));
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("[00:10]one\nx\n\0", 14));
  press_then_send("y", message_of(kMsgShiftTags, "_SmplIptData", "1000"));
  EXPECT_EQ(Lines(), (std::list<std::string>{"[00:11]one", "xy"}));
  EXPECT_EQ(EditView().CurLine(), 1);
  BMessage exportTo = SaveAs("e.lrc", "Format", 0);
  exportTo.what = kMsgExportTo;
  press_then_send("z", exportTo);
  EXPECT_EQ(fFolder.Read("e.lrc"), "[00:11.00]one\nzxy\n");
  Press("Ctrl+Z", "Ctrl+Z");
  EXPECT_EQ(Lines(), (std::list<std::string>{"[00:10]one", "xy"})) << "only the command is undone";
}

/** A changed document that was never saved: it goes through the panel. */
struct SavingNew : EditorByHand {
  SavingNew() { Change(); }
  /** The only other window. */
  BWindow& Panel() const {
    for (const BMessenger& address : fHost->WindowAddresses())
      if (const TLooperLock lock(address); lock && lock.Looper() != fWindow)
        return *static_cast<BWindow*>(lock.Looper());
    throw std::runtime_error("no panel");
  }
};

TEST_F(SavingNew, CloseWaitsForTheNameAndForNothingElse) {
  const hands::Question asked = Answer("Y", [&] { PressCloseButton(); });
  EXPECT_EQ(asked.text, "Untitled has unsaved changes.\nSave them?");
  EXPECT_FALSE(IsClosed());
  hands::type_file_name(Panel(), "named.lrc");
  EXPECT_TRUE(Until([&] { return IsClosed(); }));
  EXPECT_EQ(fFolder.Read(("named.lrc")), std::string("\n\0", 2));
}

TEST_F(SavingNew, SaveAsCarriesOutTheCommandThatItWasGiven) {
  Send(message_of(kMsgSaveAs, "NxtM", BMessage(B_QUIT_REQUESTED), "NxtMT", static_cast<BHandler*>(fWindow)));
  hands::type_file_name(Panel(), "named.lrc");
  EXPECT_TRUE(Until([&] { return IsClosed(); }));
}

TEST_F(SavingNew, CancelledPanelDropsTheWaitingCommand) {
  Answer("Y", [&] { PressCloseButton(); });
  hands::press(Panel(), "Escape");
  EXPECT_TRUE(Until([&] { return !hands::is_shown(Panel()) && fWindow->IsActive(); })); // the keys come back
  EXPECT_TRUE(IsModified());
  Press("Ctrl+2");
  hands::type_file_name(Panel(), "later.lrc");
  EXPECT_TRUE(Until([&] { return Title() == "later.lrc - Vesmo Editor"; }));
  Settle();
  EXPECT_FALSE(IsClosed());
}

TEST_F(SavingNew, LineEndsThatTheSettingsDoNotKnowAreThoseThePanelShows) {
  SetPref([](TPrefValues* values) { values->writeCRType = 7; });
  Answer("N", [this] { Press("Ctrl+N"); });
  EXPECT_THAT(Status(), HasSubstr("<LF>"));
  Send(BMessage(kMsgSaveAs));
  hands::type_file_name(Panel(), "new.lrc");
  EXPECT_TRUE(Until([&] { return Title() == "new.lrc - Vesmo Editor"; }));
  EXPECT_EQ(fFolder.Read("new.lrc"), std::string("\n\0", 2));
  Settle();
  EXPECT_THAT(hands::menu_lines(*fWindow, {"F - File", "O - Open…"}).front().label, HasSubstr("new.lrc"));
}

TEST_F(Saving, ExportWritesACopyAndTouchesNothingElse) {
  const std::string path = fFolder.Write("a.lrc", "[00:01:50]a\n[00:03]b\n");
  std::filesystem::create_symlink(path, fFolder.File("link.lrc"));
  Open(path);
  Change();
  const auto export_to = [this](const char* name, int32 format) {
    BMessage answer = SaveAs(name, "Format", format);
    answer.what = kMsgExportTo;
    Send(answer);
  };
  export_to("b.lrc", 0);
  EXPECT_EQ(fFolder.Read("b.lrc"), "a\n[00:03.00]b\n");
  EXPECT_THAT(Status(), EndsWith("Exported as b.lrc"));
  export_to("b.srt", 2);
  EXPECT_EQ(fFolder.Read("b.srt"), "1\n00:00:03,000 --> 00:00:08,000\nb\n\n");
  EXPECT_THAT(Status(), EndsWith("Exported as b.srt – lines without a time tag left out: 1"));
  EXPECT_THAT(Answer("U", [&] { export_to("b.enhanced", 1); }).text, EndsWith("no line has any."));
  EXPECT_THAT(Answer("U", [&] { export_to("link.lrc", 0); }).text, EndsWith("another name for the export."));
  export_to("none", 3);
  EXPECT_EQ(CountFiles(), 4); // the link counts as a file
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01:50]a\n[00:03]b\n");
}

TEST_F(Saving, SetsTheTypeOfTheFileUnlessItHasOne) {
  const std::string path = fFolder.Write("a.lrc", "[00:01]a\n");
  if (setxattr(path.c_str(), "user.test", "1", 1, 0) != 0) GTEST_SKIP() << "no extended attributes here";
  Open(path);
  for (const std::string type : {"text/plain", "text/x-own"}) {
    Change();
    Press("Ctrl+S");
    char found[64] = {};
    EXPECT_GT(getxattr(path.c_str(), "user.mime_type", found, sizeof found), 0);
    EXPECT_EQ(found, type);
    setxattr(path.c_str(), "user.mime_type", "text/x-own", 10, 0);
  }
}
