#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "tests/display/hands.h"

#include <gtest/gtest.h>

namespace {

/** Keeps the last drop that reached it. */
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

} // namespace

TEST(Drop, FilesReachTheViewUnderTheMouseAsOneMessage) {
  auto* window = new BWindow({50, 60, 349, 259}, "drops");
  window->SetRunsOnShow(false);
  auto* outer = new DropView({0, 0, 149, 199}, "outer");
  auto* inner = new BView({10, 10, 99, 99}, "inner");
  outer->AddChild(inner);
  window->AddChild(outer);
  window->Show();
  hands::settle(*window);

  hands::drop_files(*window, {20, 30}, {"/tmp/a b.lrc", "/tmp/詩.lrc"});
  hands::settle(*window);
  ASSERT_EQ(outer->fCount, 1); // the inner view left it to its parent
  entry_ref first, second;
  EXPECT_EQ(outer->fDrop.FindRef("refs", 0, &first), B_OK);
  EXPECT_EQ(outer->fDrop.FindRef("refs", 1, &second), B_OK);
  EXPECT_EQ(first.FullPath(), "/tmp/a b.lrc");
  EXPECT_EQ(second.name, "詩.lrc");
  EXPECT_TRUE(outer->fDrop.WasDropped());
  EXPECT_TRUE(outer->fDrop.IsSourceRemote());
  EXPECT_EQ(outer->fDrop.DropPoint(), (BPoint{70, 90}));

  hands::drop_files(*window, {200, 100}, {"/tmp/a.lrc"});
  hands::settle(*window);
  EXPECT_EQ(outer->fCount, 1);
  window->Lock();
  window->Quit();
}
