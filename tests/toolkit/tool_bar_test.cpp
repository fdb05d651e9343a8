#include "tests/support/messages.h"
#include "tests/support/with_window.h"
#include "toolkit/tool_bar.h"

#include "tests/support/keeping.h"
#include "window/tool_bar_images.h"

namespace {

/** Open, Save | Std; their messages go to the window. */
struct BarWindow : Keeping<BWindow> {
  BarWindow() : Keeping({100, 100, 399, 299}, "tools") {
    fBar = new TToolBar({0, 0, 299, 30}, "ToolBar");
    fBar->AppendButton({}, "Open", GetBitmap("TBSave"), new BMessage('_opn'));
    fBar->AppendButton({}, "Save", GetBitmap("TBSave"), new BMessage('_sav'));
    fBar->AppendSeparator();
    fBar->AppendButton({0, 0, 99, 9}, "Std", GetBitmap("TBSave"), new BMessage(message_of('mode', "Mode", 1)))
        ->SetValue(0);
    AddChild(fBar);
  }
  TToolBar* fBar;
};

} // namespace

struct ToolBar : WithWindow<BarWindow> {
  std::vector<uint32> AfterClick(const char* button) {
    return After([&] { hands::click(*fWindow, button, {8, 8}); });
  }
  std::vector<uint32> AfterKey(const char* key) {
    return After([&] { hands::press(*fWindow, key); });
  }
  TToolBar& Bar() { return *fWindow->fBar; }
  using Codes = std::vector<uint32>;
};

TEST_F(ToolBar, ClickSendsTheMessageAndChangesNothingElse) {
  EXPECT_EQ(AfterClick("Std"), Codes{'mode'});
  EXPECT_EQ(field<int32>(fWindow->fReceived.front(), "Mode"), 1);
  EXPECT_EQ(Bar().FindItem("Std")->Value(), 0);
  EXPECT_FALSE(hands::spoken(*fWindow, "Std").isOn) << "only the program changes it";
  EXPECT_EQ(AfterClick("Std"), Codes{'mode'}) << "a copy each time";
  EXPECT_EQ(hands::focused_view(*fWindow), "Open") << "a click does not move the focus";
  for (const char* key : {"Space", "Return"}) EXPECT_EQ(AfterKey(key), Codes{'_opn'}) << key;
}

TEST_F(ToolBar, ButtonsStandSideBySideAndAreCountedWithoutSeparators) {
  EXPECT_EQ(Bar().CountButtons(), 3);
  EXPECT_EQ(Bar().IndexOf(Bar().FindItem("Std")), 2);
  EXPECT_EQ(Bar().ButtonAt(1), Bar().FindItem("Save"));
  EXPECT_EQ(Bar().FindItem("Separator"), nullptr);
  EXPECT_EQ(Bar().IndexOf(nullptr), -1);
  for (const int32 none : {3, -1}) EXPECT_EQ(Bar().ButtonAt(none), nullptr);
  const BRect open = hands::control_frame(*fWindow, "Open"), save = hands::control_frame(*fWindow, "Save");
  const BRect std = hands::control_frame(*fWindow, "Std");
  EXPECT_EQ(save.left, open.right + 1);
  EXPECT_GT(std.left, save.right + 1) << "space for the separator";
  EXPECT_EQ(std.Width(), 99) << "at least as wide as its frame";
  EXPECT_EQ(std.Height(), open.Height());
  EXPECT_EQ(Bar().PreferredWidth(), std.right + open.left);
}

TEST_F(ToolBar, TipsAppearOnHoverAndTabAndDisappearWithTheFocus) {
  Bar().FindItem("Open")->SetTip("Open");
  Bar().FindItem("Save")->SetTip("Save the lyrics");
  EXPECT_EQ(hands::spoken(*fWindow, "Save").name, "Save the lyrics") << "for screen readers";
  EXPECT_EQ(hands::spoken(*fWindow, "Save").role, "Button");
  hands::rest_mouse_on(*fWindow, "Open");
  EXPECT_EQ(hands::tip_shown(), "Open");
  AfterKey("Tab");
  EXPECT_EQ(hands::tip_shown(), "Save the lyrics");
  Bar().FindItem("Save")->SetTip("歌詞を保存");
  AfterKey("Shift+Tab");
  EXPECT_EQ(hands::tip_shown(), "Open");
  AfterKey("Tab");
  EXPECT_EQ(hands::tip_shown(), "歌詞を保存") << "in the current language";
  AfterKey("Tab");
  EXPECT_NE(hands::tip_shown(), "歌詞を保存") << "a button without a tip has the focus";
  After([&] { Bar().FindItem("Save")->MakeFocus(); });
  EXPECT_NE(hands::tip_shown(), "歌詞を保存") << "the focus was not moved by Tab";
}

TEST_F(ToolBar, DisabledOnAndFlatAreVisible) {
  TToolButton& save = *Bar().FindItem("Save");
  const auto looks = [this] { return hands::pixels(*fWindow, "Save"); };
  const std::string before = looks();
  save.SetEnabled(false);
  EXPECT_FALSE(hands::spoken(*fWindow, "Save").isEnabled);
  EXPECT_NE(looks(), before);
  EXPECT_EQ(AfterClick("Save"), Codes{});
  AfterKey("Tab");
  EXPECT_EQ(hands::focused_view(*fWindow), "Std") << "a disabled button is skipped";
  save.SetEnabled(true);
  save.SetValue(1);
  EXPECT_TRUE(hands::spoken(*fWindow, "Save").isOn);
  EXPECT_NE(looks(), before);
  save.SetValue(0);
  Bar().SetFlat(false);
  EXPECT_NE(looks(), before);
  Bar().SetFlat(true);
  EXPECT_EQ(looks(), before);
  EXPECT_EQ(hands::spoken(*fWindow, "ToolBar").role, "ToolBar");
}
