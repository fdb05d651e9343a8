#include "window/notice_bar.h"

#include "tests/support/editor_fixture.h"

using namespace testing;

/** The bar of the real window; its answers go to the manager, whose queue the test reads. */
class Notices : public EditorByHand {
protected:
  TNoticeBar& Bar() const { return *static_cast<TNoticeBar*>(fWindow->FindView("NoticeBar")); }
  void Show(int32 id, const std::string& text, const std::vector<std::string>& labels = {}) {
    TNotice notice{id, text, {}, BMessenger(fManager), BMessage('clsd')};
    for (const std::string& label : labels)
      notice.buttons.push_back({label, BMessage('prs0' + static_cast<uint32>(notice.buttons.size()))});
    Bar().ShowNotice(notice);
    Settle();
  }
  void Remove(int32 id) {
    Bar().RemoveNotice(id);
    Settle();
  }
  std::vector<uint32> Answers() {
    fManager->fReceived.clear();
    fManager->DeliverAll();
    std::vector<uint32> answers;
    for (const uint32 code : fManager->Codes())
      if (code == 'clsd' || (code & 0xffffff00U) == ('prs0' & 0xffffff00U)) answers.push_back(code);
    return answers;
  }
  float TextTop() const { return fWindow->FindView("VesmoEditorView")->Frame().top; }
};

TEST_F(Notices, BarTakesItsRoomFromTheTextOnlyWhileThereIsANotice) {
  const float top = TextTop();
  Show(1, "Unsaved changes were found.", {"Recover", "Discard"});
  EXPECT_EQ(Notice(), "Unsaved changes were found.");
  EXPECT_EQ(TextTop(), Bar().Frame().bottom + 1);
  EXPECT_EQ(Bar().Frame().top, top);
  EXPECT_EQ(hands::spoken(*fWindow, "NoticeBar").role, "Notification");
  EXPECT_EQ(hands::spoken(*fWindow, "NoticeBar").name, "Unsaved changes were found.");
  EXPECT_EQ(hands::spoken(*fWindow, "NoticeButton1").name, "Discard");
  EXPECT_EQ(hands::spoken(*fWindow, "NoticeClose").name, "Close");
  SetPref([](TPrefValues* values) { values->showToolBar = false; });
  Send(BMessage(kMsgToolBar));
  EXPECT_LT(Bar().Frame().top, top) << "the bar moves up into the place of the tool bar";
  EXPECT_EQ(TextTop(), Bar().Frame().bottom + 1);
  Remove(1);
  EXPECT_TRUE(Bar().IsHidden());
  EXPECT_LT(TextTop(), top);
}

TEST_F(Notices, KeysStillGoToTheLyricsWhileANoticeComesIsClickedAndGoes) {
  Open(fFolder.Write("a.lrc", "[00:01]a\n[00:02]b\n"));
  Show(1, "Changed.", {"Compare", "Keep"});
  Change();
  EXPECT_EQ(Lines().front(), "a");
  Click("NoticeButton0");
  EXPECT_THAT(Answers(), ElementsAre('prs0'));
  EXPECT_EQ(hands::focused_view(*fWindow), "TagInputView") << "a click leaves the focus with the lyrics";
  Press("Escape");
  EXPECT_EQ(Notice(), "Changed.") << "Escape in the lyrics closes no notice";
  Press("Shift+Tab", "Shift+Tab");
  EXPECT_EQ(hands::focused_view(*fWindow), "NoticeButton1");
  Press("Space");
  EXPECT_THAT(Answers(), ElementsAre('prs1'));
  Press("Escape");
  EXPECT_THAT(Answers(), ElementsAre('clsd'));
  EXPECT_EQ(Notice(), "");
  EXPECT_EQ(hands::focused_view(*fWindow), "TagInputView");
}

TEST_F(Notices, AreShownOneAfterTheOtherAndRenewedInPlace) {
  Show(1, "first", {"A"});
  Show(2, "second", {"B", "C"});
  EXPECT_EQ(Notice(), "first");
  Show(1, "first, again");
  EXPECT_EQ(Notice(), "first, again");
  EXPECT_EQ(fWindow->FindView("NoticeButton0"), nullptr);
  Click("NoticeClose");
  EXPECT_THAT(Answers(), ElementsAre('clsd'));
  EXPECT_EQ(Notice(), "second");
  EXPECT_NE(fWindow->FindView("NoticeButton1"), nullptr);
  const BMessage stale = message_of(kMsgNoticeButton, "Notice", 1, "Index", 0);
  fWindow->PostMessage(&stale, &Bar());
  Settle();
  EXPECT_THAT(Answers(), IsEmpty()) << "a press of a notice that has gone";
  Show(3, "third");
  Remove(3);
  EXPECT_FALSE(Bar().HasNotice(3));
  EXPECT_EQ(Notice(), "second");
}

TEST_F(Notices, ManyLongButtonsGetRowsOfTheirOwnInANarrowWindow) {
  Show(1, "The file was changed by another program.", {"Compare the versions", "Reload the file", "Keep my version"});
  const float wide = Bar().Frame().Height();
  hands::resize_by_hand(*fWindow, 300, 400);
  EXPECT_TRUE(Until([&] { return Bar().Frame().Height() > wide; }));
  EXPECT_EQ(TextTop(), Bar().Frame().bottom + 1);
  for (const char* button : {"NoticeButton0", "NoticeButton1", "NoticeButton2", "NoticeClose"})
    EXPECT_LE(hands::control_frame(*fWindow, button).right, Bar().Bounds().right) << button;
}

TEST_F(Notices, RecentFilesThatCannotBeStoredAreReportedOnceAndUntilTheyCan) {
  const std::string folder = fFolder.File("KOREVA/VesmoE");
  const auto lock = [&](bool isLocked) {
    using enum std::filesystem::perms;
    std::filesystem::permissions(folder, owner_all);
    std::filesystem::permissions(folder + "/VesmoE_MRU.arc", isLocked ? owner_read : owner_all);
    if (isLocked) std::filesystem::permissions(folder, owner_read | owner_exec);
  };
  lock(true);
  Open(fFolder.Write("a.lrc", "a\n"));
  EXPECT_EQ(Notice(), "The list of recent files could not be saved. The log on standard error gives the reason.");
  Click("NoticeClose");
  Open(fFolder.Write("b.lrc", "b\n"));
  EXPECT_EQ(Notice(), "") << "once is enough";
  lock(false);
  Open(fFolder.Write("c.lrc", "c\n"));
  lock(true);
  Open(fFolder.Write("d.lrc", "d\n"));
  EXPECT_NE(Notice(), "") << "it worked meanwhile";
  lock(false);
  Open(fFolder.Write("e.lrc", "e\n"));
  EXPECT_EQ(Notice(), "");
}
