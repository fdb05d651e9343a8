#include "platform/interface/view.h"
#include "tests/support/keeping.h"

namespace {

/** Records drops. */
class DropView : public BView {
public:
  using BView::BView;
  void MessageReceived(BMessage* message) override {
    if (message->what != B_SIMPLE_DATA) return BView::MessageReceived(message);
    fDrop = *message;
    ++fCount;
  }
  BMessage fDrop;
  int fCount = 0;
};

class DropWindow : public BWindow {
public:
  DropWindow() : BWindow({50, 60, 349, 259}, "drops") {
    fOuter = new DropView({0, 0, 149, 199}, "outer");
    fOuter->AddChild(new BView({10, 10, 99, 99}, "inner"));
    AddChild(fOuter);
  }
  DropView* fOuter;
};

} // namespace

using Drop = WithWindow<DropWindow>;

TEST_F(Drop, FilesReachTheViewUnderTheMouseInOneMessage) {
  hands::drop_files(*fWindow, {20, 30}, {"/tmp/a b.lrc", "/tmp/詩.lrc"});
  hands::drop_files(*fWindow, {200, 100}, {"/tmp/a.lrc"}); // outside the view
  hands::settle(*fWindow);
  const BMessage& drop = fWindow->fOuter->fDrop;
  ASSERT_EQ(fWindow->fOuter->fCount, 1) << "the inner view does not handle it";
  entry_ref first, second;
  EXPECT_EQ(drop.FindRef("refs", 0, &first), B_OK);
  EXPECT_EQ(drop.FindRef("refs", 1, &second), B_OK);
  EXPECT_EQ(first.FullPath(), "/tmp/a b.lrc");
  EXPECT_EQ(second.name, "詩.lrc");
}
