#include "toolkit/tool_bar.h"

#include "tests/support/keeping.h"
#include "window/tool_bar_images.h"

namespace {

/** Open, Save | Std; their messages go to the window. */
class BarWindow : public Keeping<BWindow> {
public:
  BarWindow() : Keeping({100, 100, 399, 299}, "tools") {
    fBar = new TToolBar({0, 0, 299, 30}, "ToolBar");
    fBar->AppendButton({}, "Open", GetBitmap("TBSave"), new BMessage('_opn'));
    fBar->AppendButton({}, "Save", GetBitmap("TBSave"), new BMessage('_sav'));
    fBar->AppendSeparator();
    auto* mode = new BMessage('mode');
    mode->AddInt32("Mode", 1);
    fBar->AppendButton({0, 0, 99, 9}, "Std", GetBitmap("TBSave"), mode)->SetValue(0);
    AddChild(fBar);
  }
  TToolBar* fBar;
};

} // namespace

class ToolBar : public WithWindow<BarWindow> {
protected:
  void Click(const char* button) { hands::click(*fWindow, button, {8, 8}); }
  TToolBar& Bar() { return *fWindow->fBar; }
  using Codes = std::vector<uint32>;
};

TEST_F(ToolBar, ClickSendsTheMessageAndChangesNothingElse) {
  EXPECT_EQ(After([&] { Click("Std"); }), Codes{'mode'});
  int32 mode = 0;
  EXPECT_EQ(fWindow->fReceived.front().FindInt32("Mode", &mode), B_OK);
  EXPECT_EQ(mode, 1);
  EXPECT_EQ(Bar().FindItem("Std")->Value(), 0);
  EXPECT_FALSE(hands::spoken(*fWindow, "Std").isOn) << "only the program changes it";
  EXPECT_EQ(After([&] { Click("Std"); }), Codes{'mode'}) << "a copy each time";
  EXPECT_EQ(hands::focused_view(*fWindow), "Open") << "a click does not move the focus";
}

TEST_F(ToolBar, FrameSetsTheMinimumWidthOfAButton) {
  EXPECT_EQ(Bar().FindItem("Std")->Frame().Width(), 99);
  EXPECT_LT(Bar().FindItem("Open")->Frame().Width(), 99);
  EXPECT_EQ(Bar().FindItem("Std")->Frame().Height(), Bar().FindItem("Open")->Frame().Height());
}

TEST_F(ToolBar, ButtonCanHaveAnotherTarget) {
  const OwnLooper<Keeping<BLooper>> other(new Keeping<BLooper>);
  Bar().FindItem("Open")->SetTarget(other.get());
  EXPECT_EQ(After([&] { Click("Open"); }), Codes{});
  other->DeliverAll();
  EXPECT_EQ(other->Codes(), Codes{'_opn'});
  Bar().FindItem("Open")->SetTarget(&Bar());
  EXPECT_EQ(After([&] { Click("Open"); }), Codes{'_opn'}) << "unhandled messages go to the next handler";
}

TEST_F(ToolBar, ButtonsAreReachedByTabAndPressedBySpaceAndReturn) {
  EXPECT_EQ(hands::focused_view(*fWindow), "Open");
  EXPECT_EQ(After([&] { hands::press(*fWindow, "Space"); }), Codes{'_opn'});
  hands::press(*fWindow, "Tab");
  EXPECT_EQ(hands::focused_view(*fWindow), "Save");
  EXPECT_EQ(After([&] { hands::press(*fWindow, "Return"); }), Codes{'_sav'});
  hands::press(*fWindow, "Tab");
  EXPECT_EQ(hands::focused_view(*fWindow), "Std") << "a separator is skipped";
}

TEST_F(ToolBar, ButtonsAreFoundByNameAndCountedWithoutSeparators) {
  EXPECT_EQ(Bar().CountButtons(), 3);
  EXPECT_EQ(Bar().IndexOf(Bar().FindItem("Std")), 2);
  EXPECT_EQ(Bar().ButtonAt(1), Bar().FindItem("Save"));
  EXPECT_EQ(Bar().FindItem("Separator"), nullptr);
  EXPECT_EQ(Bar().IndexOf(nullptr), -1);
  EXPECT_EQ(Bar().ButtonAt(3), nullptr);
  EXPECT_EQ(Bar().ButtonAt(-1), nullptr);
}

TEST_F(ToolBar, TipsAppearOnHoverAndTabAndDisappearWithTheFocus) {
  Bar().FindItem("Open")->SetTip("Open");
  Bar().FindItem("Save")->SetTip("Save the lyrics");
  EXPECT_EQ(hands::spoken(*fWindow, "Save").name, "Save the lyrics") << "for screen readers";
  EXPECT_EQ(hands::spoken(*fWindow, "Save").role, "Button");
  hands::rest_mouse_on(*fWindow, "Open");
  EXPECT_EQ(hands::tip_shown(), "Open");
  After([&] { hands::press(*fWindow, "Tab"); });
  EXPECT_EQ(hands::tip_shown(), "Save the lyrics");
  Bar().FindItem("Save")->SetTip("歌詞を保存");
  After([&] { hands::press(*fWindow, "Shift+Tab"); });
  EXPECT_EQ(hands::tip_shown(), "Open");
  After([&] { hands::press(*fWindow, "Tab"); });
  EXPECT_EQ(hands::tip_shown(), "歌詞を保存") << "in the current language";
  After([&] { hands::press(*fWindow, "Tab"); });
  EXPECT_NE(hands::tip_shown(), "歌詞を保存") << "a button without a tip has the focus";
  After([&] { Bar().FindItem("Save")->MakeFocus(); });
  EXPECT_NE(hands::tip_shown(), "歌詞を保存") << "the focus was not moved by Tab";
}

TEST_F(ToolBar, DisabledButtonDoesNothingAndIsDimmed) {
  const std::string before = hands::pixels(*fWindow, "Save");
  Bar().FindItem("Save")->SetEnabled(false);
  EXPECT_FALSE(hands::spoken(*fWindow, "Save").isEnabled);
  EXPECT_NE(hands::pixels(*fWindow, "Save"), before);
  EXPECT_EQ(After([&] { Click("Save"); }), Codes{});
  hands::press(*fWindow, "Tab");
  EXPECT_EQ(hands::focused_view(*fWindow), "Std");
}

TEST_F(ToolBar, OnAndFlatAreVisible) {
  const std::string flat = hands::pixels(*fWindow, "Std");
  Bar().FindItem("Std")->SetValue(1);
  EXPECT_TRUE(hands::spoken(*fWindow, "Std").isOn);
  EXPECT_NE(hands::pixels(*fWindow, "Std"), flat);
  Bar().FindItem("Std")->SetValue(0);
  Bar().SetFlat(false);
  EXPECT_NE(hands::pixels(*fWindow, "Std"), flat);
  Bar().SetFlat(true);
  EXPECT_EQ(hands::pixels(*fWindow, "Std"), flat);
}

TEST_F(ToolBar, ButtonsAreLaidOutSideBySide) {
  const BRect open = hands::control_frame(*fWindow, "Open");
  const BRect save = hands::control_frame(*fWindow, "Save");
  const BRect std = hands::control_frame(*fWindow, "Std");
  EXPECT_EQ(save.left, open.right + 1);
  EXPECT_GT(std.left, save.right + 1) << "space for the separator";
  EXPECT_GE(open.Width(), 24);
  EXPECT_LE(open.bottom, Bar().Bounds().bottom);
  EXPECT_EQ(Bar().PreferredWidth(), std.right + open.left);
}
