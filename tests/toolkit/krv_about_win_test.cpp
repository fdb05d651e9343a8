#include "tests/support/plugin_globals.h"
#include "toolkit/krv_about_win.h"

#include "platform/interface/text_view.h"
#include "tests/support/hands.h"
#include "tests/support/testing.h"

struct AboutWin : testing::Test, PluginGlobals {
  AboutWin() {
    fWindow = new TKRVAboutWin("Vesmo Editor", "Ver 3.26");
    fWindow->SetRunsOnShow(false);
  }
  ~AboutWin() override {
    if (fWindow->Lock()) fWindow->Quit();
  }
  void Show(const std::string& usedFile) {
    fWindow->SetContent({"A team", fFolder.Path(), usedFile, "a - "});
    fWindow->BringUp();
    hands::settle(*fWindow);
  }
  std::string FocusAfter(const char* key) {
    hands::press(*fWindow, key);
    hands::settle(*fWindow);
    return hands::focused_view(*fWindow);
  }
  std::string Languages() { return static_cast<BTextView*>(fWindow->FindView("LangInfo"))->Text(); }
  static std::string Language(const std::string& informations) {
    return "[Informations]\nHeader=LLT File Format 100\n" + informations + "[Data]\n";
  }
  TKRVAboutWin* fWindow;
};

TEST_F(AboutWin, ListsTheLanguagesAndMarksTheOneInUse) {
  fFolder.Write("b.llt", Language("Language=Two\nWriter=Somebody\nSpecialThanks=All\n"));
  fFolder.Write("a.llt", Language("Language=One\n"));
  fFolder.Write("broken.llt", "no language");
  Show("/elsewhere/b.llt");
  EXPECT_EQ(Languages(), "○ One\n\u2003\u2003File: a.llt\n\n"
                         "● Two (in use)\n\u2003\u2003Author: Somebody\n\u2003\u2003Special thanks: All\n"
                         "\u2003\u2003File: b.llt\n");
}

TEST_F(AboutWin, WorksByKeyboardIsReadOnlyAndFollowsAResize) {
  Show("");
  EXPECT_TRUE(Languages().starts_with("● English (in use)\n")) << Languages();
  EXPECT_NE(Languages().find("built into the program"), std::string::npos);
  EXPECT_EQ(hands::label_text(*fWindow, "AppAuthor"), "A team");
  EXPECT_EQ(hands::focused_view(*fWindow), "qt_tabwidget_tabbar");
  FocusAfter("Return");
  EXPECT_FALSE(hands::is_shown(*fWindow));
  Show("");
  const std::string program = hands::pixels(*fWindow, "AboutTabs");
  FocusAfter("Right");
  EXPECT_NE(hands::pixels(*fWindow, "AboutTabs"), program) << "the other page";
  EXPECT_EQ(FocusAfter("Tab"), "LangInfo");
  FocusAfter("X");
  EXPECT_EQ(Languages().find('X'), std::string::npos);
  FocusAfter("Escape");
  EXPECT_FALSE(hands::is_shown(*fWindow));
  Show("");
  hands::resize_by_hand(*fWindow, 800, 700);
  hands::settle(*fWindow);
  const BRect tabs = hands::control_frame(*fWindow, "AboutTabs");
  EXPECT_GT(std::min(tabs.Width(), tabs.Height()), 600);
  EXPECT_GT(hands::control_frame(*fWindow, "Close").top, tabs.bottom);
  EXPECT_GT(hands::control_frame(*fWindow, "AppName").Width(), 600);
}
